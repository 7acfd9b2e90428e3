#include "values/variant.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ostream>

#include "values/locale.h"
#include "values/text.h"

namespace tessaline {

namespace {

std::string separator() { return locale().decimalSeparator(); }

// Digits and decimal exponent of a finite, non-zero number, rounded to `significant` digits,
// trailing zeros removed.
template <class Float>
void decompose(Float value, int significant, bool& negative, std::string& digits, int& exponent) {
  char buffer[64];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific,
                              significant - 1);
  std::string_view text(buffer, static_cast<size_t>(result.ptr - buffer));
  negative = text.front() == '-';
  if (negative) text.remove_prefix(1);
  const size_t e = text.find('e');
  digits.assign(1, text[0]);
  if (text.size() > 1 && text[1] == '.') digits.append(text.substr(2, e - 2));
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
  std::from_chars(text.data() + e + (text[e + 1] == '+' ? 2 : 1), text.data() + text.size(),
                  exponent);
}

// The general number format of the language: fixed notation while the decimal exponent lies
// between -5 and `fixedLimit` (both excluded), exponent form such as 1E+16 or 1.5E-05 beyond.
template <class Float>
std::string formatGeneral(Float value, int significant, int fixedLimit, std::string_view sep) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value > 0 ? "Infinity" : "-Infinity";
  if (value == 0) return "0";
  bool negative = false;
  std::string digits;
  int exponent = 0;
  decompose(value, significant, negative, digits, exponent);

  std::string out = negative ? "-" : "";
  if (exponent > -5 && exponent < fixedLimit) {
    if (exponent >= 0) {
      const size_t whole = static_cast<size_t>(exponent) + 1;
      if (digits.size() <= whole) {
        out += digits;
        out.append(whole - digits.size(), '0');
      } else {
        out.append(digits, 0, whole);
        out += sep;
        out.append(digits, whole);
      }
    } else {
      out += '0';
      out += sep;
      out.append(static_cast<size_t>(-exponent - 1), '0');
      out += digits;
    }
  } else {
    out += digits[0];
    if (digits.size() > 1) {
      out += sep;
      out.append(digits, 1);
    }
    out += exponent < 0 ? "E-" : "E+";
    const int magnitude = std::abs(exponent);
    if (magnitude < 10) out += '0';
    out += std::to_string(magnitude);
  }
  return out;
}

// Round half to even, as every conversion to an integer type does.
double roundHalfEven(double value) {
  const double floor = std::floor(value);
  const double fraction = value - floor;
  if (fraction > 0.5) return floor + 1;
  if (fraction < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

double checkedRound(double value, double low, double high) {
  const double rounded = roundHalfEven(value);
  if (!(rounded >= low && rounded <= high)) throw VbError(err::Overflow);
  return rounded;
}

// Dates: the serial range of the language, 1 January 100 to 31 December 9999.
constexpr double kFirstDate = -657434.0;
constexpr double kLastDate = 2958465.99999999;

double numberFromText(const std::string& text) {
  const ParsedNumber parsed = parseNumber(text, separator());
  switch (parsed.outcome) {
    case ParseOutcome::Number:
      return parsed.value;
    case ParseOutcome::Overflow:
      throw VbError(err::Overflow);
    case ParseOutcome::NotANumber:
      break;
  }
  throw VbError(err::TypeMismatch);
}

// Days from 1 March of year 0 style civil arithmetic (proleptic Gregorian).
int64_t daysFromCivil(int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

void civilFromDays(int64_t z, int64_t& y, unsigned& m, unsigned& d) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  y = static_cast<int64_t>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = doy - (153 * mp + 2) / 5 + 1;
  m = mp < 10 ? mp + 3 : mp - 9;
  y += m <= 2;
}

// The serial of 30 December 1899 counted from 1 January 1970.
constexpr int64_t kSerialEpoch = -25569;

bool readUnsigned(std::string_view& text, unsigned& value, size_t maxDigits) {
  size_t n = 0;
  value = 0;
  while (n < text.size() && n < maxDigits && text[n] >= '0' && text[n] <= '9') {
    value = value * 10 + static_cast<unsigned>(text[n] - '0');
    ++n;
  }
  text.remove_prefix(n);
  return n > 0;
}

// Dates as text: "M/D/YYYY" or "YYYY-MM-DD", a time "h:mm[:ss] [AM|PM]", or both.
std::optional<double> parseDateText(std::string_view text) {
  text = trimWhitespace(text);
  if (text.empty()) return std::nullopt;
  double days = 0;
  bool haveDate = false;
  {
    std::string_view rest = text;
    unsigned a = 0, b = 0, c = 0;
    if (readUnsigned(rest, a, 4) && !rest.empty() && (rest[0] == '/' || rest[0] == '-')) {
      const char sep = rest[0];
      rest.remove_prefix(1);
      if (readUnsigned(rest, b, 2) && !rest.empty() && rest[0] == sep) {
        rest.remove_prefix(1);
        if (readUnsigned(rest, c, 4)) {
          unsigned year = sep == '-' ? a : c, month = sep == '-' ? b : a, day = sep == '-' ? c : b;
          if (year < 100) year += year < 30 ? 2000 : 1900;
          if (month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
          const int64_t serial = daysFromCivil(year, month, day) - kSerialEpoch;
          int64_t y = 0;
          unsigned m = 0, d = 0;
          civilFromDays(serial + kSerialEpoch, y, m, d);
          if (m != month || d != day) return std::nullopt;
          days = static_cast<double>(serial);
          haveDate = true;
          text = trimWhitespace(rest);
        }
      }
    }
  }
  if (text.empty()) return haveDate ? std::optional<double>(days) : std::nullopt;
  unsigned h = 0, mi = 0, s = 0;
  if (!readUnsigned(text, h, 2) || text.empty() || text[0] != ':') return std::nullopt;
  text.remove_prefix(1);
  if (!readUnsigned(text, mi, 2)) return std::nullopt;
  if (!text.empty() && text[0] == ':') {
    text.remove_prefix(1);
    if (!readUnsigned(text, s, 2)) return std::nullopt;
  }
  text = trimWhitespace(text);
  if (!text.empty()) {
    const std::string marker = toUpperAscii(std::string(text));
    if ((marker != "AM" && marker != "PM") || h < 1 || h > 12) return std::nullopt;
    h = h % 12 + (marker == "PM" ? 12 : 0);
  }
  if (h > 23 || mi > 59 || s > 59) return std::nullopt;
  const double time = (h * 3600.0 + mi * 60.0 + s) / 86400.0;
  return days + (days < 0 ? -time : time);
}

}  // namespace

const Variant& VariantArray::at(int32_t index) const {
  if (index < lowerBound || index > upperBound()) throw VbError(err::SubscriptOutOfRange);
  return items[static_cast<size_t>(index - lowerBound)];
}

VarType Variant::type() const {
  static constexpr VarType kinds[] = {
      VarType::Empty,  VarType::Null,    VarType::Integer, VarType::Long,
      VarType::Single, VarType::Double,  VarType::Date,    VarType::String,
      VarType::Object, VarType::Boolean, VarType::Byte,    VarType::Array,
  };
  return kinds[value_.index()];
}

bool Variant::isNumeric() const {
  switch (type()) {
    case VarType::Integer:
    case VarType::Long:
    case VarType::Single:
    case VarType::Double:
    case VarType::Date:
    case VarType::Boolean:
    case VarType::Byte:
      return true;
    default:
      return false;
  }
}

std::string formatGeneralNumber(const Variant& value) {
  switch (value.type()) {
    case VarType::Empty:
    case VarType::Null:
      return {};
    case VarType::Single:
    case VarType::Double: {
      const double number = value.toDouble();
      if (std::isinf(number)) return number > 0 ? "1.#INF" : "-1.#INF";
      return value.toText();
    }
    case VarType::String:
      try {
        return formatGeneralNumber(Variant(value.toDouble()));
      } catch (const VbError&) {
        return value.toText();
      }
    default:
      return value.toText();
  }
}

std::string Variant::toText() const {
  switch (type()) {
    case VarType::Empty:
      return {};
    case VarType::Null:
      throw VbError(err::InvalidUseOfNull);
    case VarType::Integer:
      return std::to_string(std::get<int16_t>(value_));
    case VarType::Long:
      return std::to_string(std::get<int32_t>(value_));
    case VarType::Byte:
      return std::to_string(std::get<uint8_t>(value_));
    case VarType::Single:
      return formatSingle(std::get<float>(value_), separator());
    case VarType::Double:
      return formatDouble(std::get<double>(value_), separator());
    case VarType::Date:
      return formatDate(std::get<DateSerial>(value_));
    case VarType::String:
      return std::get<std::string>(value_);
    case VarType::Boolean:
      return std::get<bool>(value_) ? "True" : "False";
    case VarType::Object:
      if (!std::get<std::shared_ptr<Object>>(value_)) throw VbError(err::ObjectNotSet);
      throw VbError(err::TypeMismatch);
    case VarType::Array:
      throw VbError(err::TypeMismatch);
  }
  throw VbError(err::TypeMismatch);
}

double Variant::toDouble() const {
  switch (type()) {
    case VarType::Empty:
      return 0;
    case VarType::Null:
      throw VbError(err::InvalidUseOfNull);
    case VarType::Integer:
      return std::get<int16_t>(value_);
    case VarType::Long:
      return std::get<int32_t>(value_);
    case VarType::Byte:
      return std::get<uint8_t>(value_);
    case VarType::Single:
      return std::get<float>(value_);
    case VarType::Double:
      return std::get<double>(value_);
    case VarType::Date:
      return std::get<DateSerial>(value_).days;
    case VarType::String:
      return numberFromText(std::get<std::string>(value_));
    case VarType::Boolean:
      return std::get<bool>(value_) ? -1.0 : 0.0;
    case VarType::Object:
      if (!std::get<std::shared_ptr<Object>>(value_)) throw VbError(err::ObjectNotSet);
      throw VbError(err::TypeMismatch);
    case VarType::Array:
      throw VbError(err::TypeMismatch);
  }
  throw VbError(err::TypeMismatch);
}

float Variant::toSingle() const {
  const double value = toDouble();
  if (std::isfinite(value) && std::fabs(value) > 3.402823466e38) throw VbError(err::Overflow);
  return static_cast<float>(value);
}

int16_t Variant::toInt16() const {
  if (type() == VarType::Integer) return std::get<int16_t>(value_);
  return static_cast<int16_t>(checkedRound(toDouble(), -32768.0, 32767.0));
}

int32_t Variant::toInt32() const {
  if (type() == VarType::Long) return std::get<int32_t>(value_);
  return static_cast<int32_t>(checkedRound(toDouble(), -2147483648.0, 2147483647.0));
}

uint8_t Variant::toByte() const {
  if (type() == VarType::Byte) return std::get<uint8_t>(value_);
  return static_cast<uint8_t>(checkedRound(toDouble(), 0.0, 255.0));
}

bool Variant::toBool() const {
  switch (type()) {
    case VarType::Boolean:
      return std::get<bool>(value_);
    case VarType::String: {
      const std::string word =
          toUpperAscii(std::string(trimWhitespace(std::get<std::string>(value_))));
      if (word == "TRUE") return true;
      if (word == "FALSE") return false;
      return numberFromText(std::get<std::string>(value_)) != 0;
    }
    default:
      return toDouble() != 0;
  }
}

DateSerial Variant::toDate() const {
  double days = 0;
  switch (type()) {
    case VarType::Date:
      return std::get<DateSerial>(value_);
    case VarType::String: {
      const auto parsed = parseDateText(std::get<std::string>(value_));
      if (!parsed) throw VbError(err::TypeMismatch);
      days = *parsed;
      break;
    }
    default:
      days = toDouble();
      break;
  }
  if (!(days >= kFirstDate && days <= kLastDate)) throw VbError(err::Overflow);
  return DateSerial{days};
}

std::shared_ptr<Object> Variant::toObject() const {
  if (type() != VarType::Object) throw VbError(err::ObjectRequired);
  return std::get<std::shared_ptr<Object>>(value_);
}

const VariantArray& Variant::toArray() const {
  if (type() != VarType::Array) throw VbError(err::TypeMismatch);
  return *std::get<std::shared_ptr<const VariantArray>>(value_);
}

bool Variant::operator==(const Variant& other) const {
  if (isArray() && other.isArray()) {
    const VariantArray& a = toArray();
    const VariantArray& b = other.toArray();
    return a.lowerBound == b.lowerBound && a.items == b.items;
  }
  return value_ == other.value_;
}

std::optional<int> compare(const Variant& a, const Variant& b) {
  if (a.isNull() || b.isNull()) return std::nullopt;
  for (const Variant* v : {&a, &b}) {
    if (v->isObject() || v->isArray()) throw VbError(err::TypeMismatch);
  }
  const bool textA = a.isString() || (a.isEmpty() && b.isString());
  const bool textB = b.isString() || (b.isEmpty() && a.isString());
  if (textA && textB) {
    const int c = a.toText().compare(b.toText());
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
  }
  if (textA) return 1;  // a number is less than a text
  if (textB) return -1;
  const double x = a.toDouble();
  const double y = b.toDouble();
  if (std::isnan(x) || std::isnan(y)) {
    if (std::isnan(x) && std::isnan(y)) return 0;
    return std::isnan(x) ? 1 : -1;
  }
  return x < y ? -1 : (x > y ? 1 : 0);
}

std::string formatDouble(double value, std::string_view decimalSeparator) {
  return formatGeneral(value, 15, 15, decimalSeparator);
}

std::string formatSingle(float value, std::string_view decimalSeparator) {
  return formatGeneral(value, 7, 7, decimalSeparator);
}

std::string formatDate(DateSerial date) {
  if (!std::isfinite(date.days)) return formatDouble(date.days, ".");
  const double whole = std::trunc(date.days);
  int64_t seconds = std::llround(std::fabs(date.days - whole) * 86400.0);
  int64_t day = static_cast<int64_t>(whole);
  if (seconds >= 86400) {
    seconds -= 86400;
    day += date.days < 0 ? -1 : 1;
  }
  std::string out;
  if (day != 0 || seconds == 0) {
    int64_t y = 0;
    unsigned m = 0, d = 0;
    civilFromDays(day + kSerialEpoch, y, m, d);
    out = std::to_string(m) + "/" + std::to_string(d) + "/" + std::to_string(y);
  }
  if (seconds != 0) {
    const int64_t h = seconds / 3600, mi = seconds / 60 % 60, s = seconds % 60;
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%lld:%02lld:%02lld %s",
                  static_cast<long long>(h % 12 == 0 ? 12 : h % 12), static_cast<long long>(mi),
                  static_cast<long long>(s), h < 12 ? "AM" : "PM");
    if (!out.empty()) out += ' ';
    out += buffer;
  }
  return out;
}

ParsedNumber parseNumber(std::string_view text, std::string_view decimalSeparator) {
  text = trimWhitespace(text);
  if (text.empty()) return {};

  if (text[0] == '&') {
    if (text.size() < 3) return {};
    const char kind = static_cast<char>(text[1] | 0x20);
    const int base = kind == 'h' ? 16 : (kind == 'o' ? 8 : 0);
    if (base == 0) return {};
    uint64_t value = 0;
    for (char c : text.substr(2)) {
      int digit = -1;
      if (c >= '0' && c <= '9')
        digit = c - '0';
      else if (base == 16 && (c | 0x20) >= 'a' && (c | 0x20) <= 'f')
        digit = (c | 0x20) - 'a' + 10;
      if (digit < 0 || digit >= base) return {};
      value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(digit);
      if (value > 0xFFFFFFFFull) return {ParseOutcome::Overflow, 0};
    }
    // Eight hexadecimal digits fill a Long: the top bit is its sign.
    const double number = value > 0x7FFFFFFFull ? static_cast<double>(value) - 4294967296.0
                                                : static_cast<double>(value);
    return {ParseOutcome::Number, number};
  }

  size_t i = 0;
  bool negative = false;
  if (text[i] == '+' || text[i] == '-') {
    negative = text[i] == '-';
    ++i;
  }
  std::string normalized;
  size_t digitCount = 0;
  size_t wholeDigits = 0;
  bool seenSeparator = false;
  while (i < text.size()) {
    const char c = text[i];
    if (c >= '0' && c <= '9') {
      normalized += c;
      ++digitCount;
      if (!seenSeparator && (wholeDigits > 0 || c != '0')) ++wholeDigits;
      ++i;
    } else if (!seenSeparator && !decimalSeparator.empty() &&
               text.substr(i, decimalSeparator.size()) == decimalSeparator) {
      normalized += '.';
      seenSeparator = true;
      i += decimalSeparator.size();
    } else {
      break;
    }
  }
  if (digitCount == 0) return {};
  long exponent = 0;
  if (i < text.size()) {
    const char e = static_cast<char>(text[i] | 0x20);
    if (e != 'e' && e != 'd') return {};
    ++i;
    bool negativeExponent = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
      negativeExponent = text[i] == '-';
      ++i;
    }
    if (i == text.size()) return {};
    for (; i < text.size(); ++i) {
      if (text[i] < '0' || text[i] > '9') return {};
      if (exponent < 100000) exponent = exponent * 10 + (text[i] - '0');
    }
    if (negativeExponent) exponent = -exponent;
  }
  normalized += 'e';
  normalized += std::to_string(exponent);
  double value = 0;
  const auto result =
      std::from_chars(normalized.data(), normalized.data() + normalized.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // Too small to hold is zero; too large is an overflow.
    if (static_cast<long>(wholeDigits) + exponent > 0) return {ParseOutcome::Overflow, 0};
    value = 0;
  } else if (result.ec != std::errc()) {
    return {};
  }
  return {ParseOutcome::Number, negative ? -value : value};
}

std::string describe(const Variant& value) {
  switch (value.type()) {
    case VarType::Empty:
      return "Empty";
    case VarType::Null:
      return "Null";
    case VarType::Integer:
      return "Integer(" + value.toText() + ")";
    case VarType::Long:
      return "Long(" + value.toText() + ")";
    case VarType::Single:
      return "Single(" + formatSingle(value.toSingle(), ".") + ")";
    case VarType::Double:
      return "Double(" + formatDouble(value.toDouble(), ".") + ")";
    case VarType::Date:
      return "Date(" + value.toText() + ")";
    case VarType::String:
      return "String(\"" + value.toText() + "\")";
    case VarType::Boolean:
      return std::string("Boolean(") + (value.toBool() ? "True" : "False") + ")";
    case VarType::Byte:
      return "Byte(" + value.toText() + ")";
    case VarType::Object:
      return value.toObject() ? "Object" : "Nothing";
    case VarType::Array: {
      const VariantArray& array = value.toArray();
      std::string out = "Array(" + std::to_string(array.lowerBound) + ".." +
                        std::to_string(array.upperBound()) + ")[";
      for (size_t k = 0; k < array.items.size(); ++k) {
        if (k) out += ", ";
        out += describe(array.items[k]);
      }
      return out + "]";
    }
  }
  return "?";
}

std::ostream& operator<<(std::ostream& out, const Variant& value) { return out << describe(value); }

}  // namespace tessaline
