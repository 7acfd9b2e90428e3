#include "tessaline/platform/regexp.h"

#include "tessaline/values/vb_error.h"

namespace tessaline::platform {

namespace {
std::function<Ref<RegExp>()>& installed() {
  thread_local std::function<Ref<RegExp>()> factory;
  return factory;
}
}  // namespace

Ref<RegExp> createRegExp() {
  const auto& factory = installed();
  if (!factory) throw VbError(err::Failed, "No regular-expression engine is installed");
  return factory();
}

void setRegExpEngine(std::function<Ref<RegExp>()> factory) { installed() = std::move(factory); }

}  // namespace tessaline::platform
