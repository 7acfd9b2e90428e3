#include "tessaline/values/variant.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ostream>

#include "tessaline/values/dates.h"
#include "tessaline/values/locale.h"
#include "tessaline/values/text.h"

namespace tessaline {

namespace {

std::string separator() { return locale().decimalSeparator(); }

// Digits and decimal exponent of a finite, non-zero number, rounded half away from zero to
// `significant` digits (as the platform rounds: 654322.25 as a Single is "654322.3"), trailing
// zeros removed.
template <class Float>
void decompose(Float value, int significant, bool& negative, std::string& digits, int& exponent) {
  // Enough digits beyond the kept ones that a tie in them is a true tie of the binary value.
  char buffer[96];
  const int extra = 30;
  auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific,
                              significant - 1 + extra);
  std::string_view text(buffer, static_cast<size_t>(result.ptr - buffer));
  negative = text.front() == '-';
  if (negative) text.remove_prefix(1);
  const size_t e = text.find('e');
  std::from_chars(text.data() + e + (text[e + 1] == '+' ? 2 : 1), text.data() + text.size(),
                  exponent);
  std::string all(1, text[0]);
  all.append(text.substr(2, e - 2));
  digits = all.substr(0, static_cast<size_t>(significant));
  if (all[static_cast<size_t>(significant)] >= '5') {
    // Carry the rounding up through the kept digits; 9.99… becomes 10 with one more exponent.
    size_t k = digits.size();
    while (k > 0 && digits[k - 1] == '9') digits[--k] = '0';
    if (k == 0) {
      digits.insert(digits.begin(), '1');
      digits.pop_back();
      ++exponent;
    } else {
      ++digits[k - 1];
    }
  }
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
}

// The platform's text of a double that is no finite number: "1.#INF", "-1.#INF", and for
// not-a-number "-1.#IND" (the indefinite value that arithmetic makes), "1.#QNAN" or
// "-1.#QNAN" (other quiet ones) and "1.#SNAN" (signalling ones).
std::string nonFiniteText(double value) {
  if (std::isinf(value)) return value > 0 ? "1.#INF" : "-1.#INF";
  uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  const bool negative = bits >> 63;
  const uint64_t mantissa = bits & 0xFFFFFFFFFFFFFull;
  const bool quiet = mantissa >> 51;
  if (!quiet) return negative ? "-1.#SNAN" : "1.#SNAN";
  if (negative && mantissa == (1ull << 51)) return "-1.#IND";
  return negative ? "-1.#QNAN" : "1.#QNAN";
}

// The general number format of the language with `significant` digits: fixed notation while
// the number has fewer whole digits than that and needs no more decimal places than that
// (1/30 is "3.33333333333333E-02", 5.6789E-05 is "0.000056789"), exponent form beyond.
template <class Float>
std::string formatGeneral(Float value, int significant, std::string_view sep) {
  if (!std::isfinite(value)) return nonFiniteText(value);
  if (value == 0) return "0";
  bool negative = false;
  std::string digits;
  int exponent = 0;
  decompose(value, significant, negative, digits, exponent);

  const int decimals = exponent < 0 ? -exponent - 1 + static_cast<int>(digits.size()) : 0;
  std::string out = negative ? "-" : "";
  if (exponent < significant && decimals <= significant) {
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

double numberOf(const ParsedNumber& parsed) {
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

double numberFromText(const std::string& text) { return numberOf(parseNumber(text, locale())); }

ParsedNumber radixNumber(std::string_view text, uint32_t& bits);

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
    case VarType::String:
      try {
        return formatGeneralNumber(Variant(value.toDouble()));
      } catch (const VbError&) {
        return value.toText();
      }
    case VarType::Date:
      // A numeric format sees a date as its serial, inside the calendar or not.
      return Variant(value.toDouble()).toText();
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
  if (type() == VarType::Single) return std::get<float>(value_);
  const double value = toDouble();
  // Beyond the largest Single by half a unit in the last place, rounding would give infinity;
  // the infinities lie beyond it too. Not-a-number is beyond nothing and stays one.
  constexpr double kRoundsToInfinity = 3.4028235677973366e38;
  if (std::fabs(value) >= kRoundsToInfinity) throw VbError(err::Overflow);
  return static_cast<float>(value);
}

int16_t Variant::toInt16() const {
  if (type() == VarType::Integer) return std::get<int16_t>(value_);
  if (const auto* text = std::get_if<std::string>(&value_)) {
    // Hexadecimal and octal text that fits 16 bits is the Integer of that bit pattern
    // ("&HFFFF" is -1), while a Long takes the same text as a number (65535).
    const std::string_view trimmed = trimWhitespace(*text);
    uint32_t bits = 0;
    if (!trimmed.empty() && trimmed[0] == '&' &&
        radixNumber(trimmed, bits).outcome == ParseOutcome::Number && bits <= 0xFFFF) {
      return static_cast<int16_t>(bits);
    }
  }
  return static_cast<int16_t>(checkedRound(toDouble(), -32768.0, 32767.0));
}

int32_t Variant::toInt32() const {
  if (type() == VarType::Long) return std::get<int32_t>(value_);
  return static_cast<int32_t>(checkedRound(toDouble(), -2147483648.0, 2147483647.0));
}

uint8_t Variant::toByte() const {
  if (type() == VarType::Byte) return std::get<uint8_t>(value_);
  // True is all bits set: as a Byte, 255.
  if (type() == VarType::Boolean) return std::get<bool>(value_) ? 255 : 0;
  return static_cast<uint8_t>(checkedRound(toDouble(), 0.0, 255.0));
}

bool Variant::toBool() const {
  switch (type()) {
    case VarType::Boolean:
      return std::get<bool>(value_);
    case VarType::String: {
      // The words stand alone, without blanks; blanks around a number are the number's own.
      const std::string word = toUpperAscii(std::get<std::string>(value_));
      if (word == "TRUE" || word == "#TRUE#") return true;
      if (word == "FALSE" || word == "#FALSE#") return false;
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
      days = std::get<DateSerial>(value_).days;
      break;
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
  checkDateRange(days);
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
  return formatGeneral(value, 15, decimalSeparator);
}

std::string formatSingle(float value, std::string_view decimalSeparator) {
  return formatGeneral(value, 7, decimalSeparator);
}

namespace {

// "&H" or "&O" and digits, up to 32 bits; `bits` takes the pattern as written.
ParsedNumber radixNumber(std::string_view text, uint32_t& bits) {
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
  bits = static_cast<uint32_t>(value);
  // Eight hexadecimal digits fill a Long: the top bit is its sign.
  const double number = value > 0x7FFFFFFFull ? static_cast<double>(value) - 4294967296.0
                                              : static_cast<double>(value);
  return {ParseOutcome::Number, number};
}

bool startsWith(std::string_view text, size_t at, std::string_view symbol) {
  return !symbol.empty() && text.substr(at, symbol.size()) == symbol;
}

// The signs, currency symbol and parentheses around the digits. Each may stand once; blanks may
// stand between them and the digits.
struct Affixes {
  bool minus = false;
  bool sign = false;
  bool currency = false;
  bool open = false;
  bool close = false;
};

// Takes what may stand before (or after) the digits, from `at` on; false when a piece stands
// twice.
bool takeAffixes(std::string_view text, size_t& at, const Locale& symbols, Affixes& found,
                 bool before) {
  for (;;) {
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) ++at;
    if (at >= text.size()) return true;
    const char c = text[at];
    if (c == '+' || c == '-') {
      if (found.sign) return false;
      found.sign = true;
      found.minus = c == '-';
      ++at;
    } else if (startsWith(text, at, symbols.currencySymbol())) {
      if (found.currency) return false;
      found.currency = true;
      at += symbols.currencySymbol().size();
    } else if (before && c == '(' && at == 0) {
      found.open = true;
      ++at;
    } else if (!before && c == ')' && found.open && !found.close) {
      found.close = true;
      ++at;
    } else {
      return true;
    }
  }
}

}  // namespace

ParsedNumber parseNumber(std::string_view text, const Locale& symbols) {
  text = trimWhitespace(text);
  if (text.empty()) return {};
  uint32_t bits = 0;
  if (text[0] == '&') return radixNumber(text, bits);

  const std::string decimal = symbols.decimalSeparator();
  const std::string thousands = symbols.thousandsSeparator();
  Affixes affixes;
  size_t i = 0;
  if (!takeAffixes(text, i, symbols, affixes, true)) return {};

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
    } else if (!seenSeparator && startsWith(text, i, decimal)) {
      normalized += '.';
      seenSeparator = true;
      i += decimal.size();
    } else if (!seenSeparator && digitCount > 0 && startsWith(text, i, thousands) &&
               i + thousands.size() < text.size() && text[i + thousands.size()] >= '0' &&
               text[i + thousands.size()] <= '9') {
      // Digit groups: the separator is skipped between digits of the whole part.
      i += thousands.size();
    } else {
      break;
    }
  }
  if (digitCount == 0) return {};
  long exponent = 0;
  if (i < text.size() && ((text[i] | 0x20) == 'e' || (text[i] | 0x20) == 'd')) {
    ++i;
    bool negativeExponent = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
      negativeExponent = text[i] == '-';
      ++i;
    }
    const size_t first = i;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
      if (exponent < 100000) exponent = exponent * 10 + (text[i] - '0');
    }
    if (i == first) return {};
    if (negativeExponent) exponent = -exponent;
  }
  if (!takeAffixes(text, i, symbols, affixes, false) || i != text.size()) return {};
  // Parentheses come in pairs and stand for the minus sign: with a sign of their own, no number.
  if (affixes.open != affixes.close || (affixes.open && affixes.sign)) return {};

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
  const bool negative = affixes.minus || affixes.open;
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
    case VarType::Date: {
      const double days = value.toDouble();
      if (!isDateInRange(days)) return "Date(serial " + formatDouble(days, ".") + ")";
      return "Date(" + value.toText() + ")";
    }
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
