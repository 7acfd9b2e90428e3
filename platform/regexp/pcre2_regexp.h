#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tessaline/platform/regexp.h"

// The regular-expression object on PCRE2, with the classic runtime's syntax and behaviour:
// "$" only at the very end, case-sensitive, first match only, braces that aren't quantifiers
// refused. Compiled patterns are kept per thread, so a pattern tested at every key is
// compiled once. Invalid UTF-8 in a tested text matches nothing rather than failing.
namespace tessaline::regexp {

// Installs the engine as this thread's regular-expression engine.
void install();

// Why the classic runtime would refuse a pattern that PCRE2 takes, or nothing.
std::optional<std::string> classicSyntaxError(std::string_view pattern);

}  // namespace tessaline::regexp
