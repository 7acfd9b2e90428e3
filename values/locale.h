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
  // The digit grouping symbol (LOCALE_STHOUSAND), which the reading of numbers skips.
  virtual std::string thousandsSeparator() const = 0;
  // The currency symbol (LOCALE_SCURRENCY), which the reading of numbers takes before or after
  // the digits.
  virtual std::string currencySymbol() const = 0;
};

// The locale service of this thread. Until a backend installs one, it is US English: ".", ","
// and "$".
const Locale& locale();
// Installs a locale service for this thread; an empty pointer brings back the default.
void setLocale(std::shared_ptr<const Locale> service);

// A locale with fixed symbols, for backends and tests. Without a grouping symbol of its own,
// a locale whose decimal separator is "," groups with "." (as German does), any other with ",".
class FixedLocale : public Locale {
 public:
  explicit FixedLocale(std::string separator, std::string thousands = {},
                       std::string currency = "$")
      : separator_(std::move(separator)),
        thousands_(!thousands.empty()  ? std::move(thousands)
                   : separator_ == "," ? "."
                                       : ","),
        currency_(std::move(currency)) {}
  std::string decimalSeparator() const override { return separator_; }
  std::string thousandsSeparator() const override { return thousands_; }
  std::string currencySymbol() const override { return currency_; }

 private:
  std::string separator_;
  std::string thousands_;
  std::string currency_;
};

}  // namespace tessaline
