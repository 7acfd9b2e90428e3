#pragma once

#include <memory>
#include <string>

namespace tessaline {

// The system's number format, as the controls ask for it.
class Locale {
 public:
  virtual ~Locale() = default;
  // The decimal separator of the system's default locale (LOCALE_SDECIMAL): one character on
  // every real system, though nothing forbids more.
  virtual std::string decimalSeparator() const = 0;
};

// The locale service of this thread. Until a backend installs one, the separator is ".".
const Locale& locale();
// Installs a locale service for this thread; an empty pointer brings back the default.
void setLocale(std::shared_ptr<const Locale> service);

// A locale with a fixed separator, for backends and tests.
class FixedLocale : public Locale {
 public:
  explicit FixedLocale(std::string separator) : separator_(std::move(separator)) {}
  std::string decimalSeparator() const override { return separator_; }

 private:
  std::string separator_;
};

}  // namespace tessaline
