#include "tessaline/values/locale.h"

namespace tessaline {

namespace {
std::shared_ptr<const Locale>& installed() {
  thread_local std::shared_ptr<const Locale> service;
  return service;
}
}  // namespace

const Locale& locale() {
  static const FixedLocale fallback(".");
  const auto& service = installed();
  return service ? *service : fallback;
}

void setLocale(std::shared_ptr<const Locale> service) { installed() = std::move(service); }

}  // namespace tessaline
