#pragma once

#include <functional>
#include <string>

#include "tessaline/values/object.h"

namespace tessaline::platform {

// The regular-expression object of the classic scripting runtime: a pattern and a test, with
// no global flag and no case folding. The syntax is that runtime's: a brace that isn't a
// complete quantifier ({n}, {n,}, {n,m}) is refused, not read as text. A pattern the engine
// refuses raises 5017 ("Syntax error in regular expression") at the test, not before.
class RegExp : public Object {
 public:
  virtual std::string Pattern() = 0;
  virtual void Pattern(const std::string& value) = 0;
  // True when the pattern matches somewhere in the text.
  virtual bool Test(const std::string& sourceString) = 0;
};

// A new regular-expression object from the engine installed on this thread; a failure that
// says so when there is none.
Ref<RegExp> createRegExp();
void setRegExpEngine(std::function<Ref<RegExp>()> factory);

}  // namespace tessaline::platform
