#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tessaline/values/object.h"

namespace tessaline {

// Kinds of value, numbered as the automation VARTYPE of each.
enum class VarType : int16_t {
  Empty = 0,
  Null = 1,
  Integer = 2,
  Long = 3,
  Single = 4,
  Double = 5,
  Date = 7,
  String = 8,
  Object = 9,
  Boolean = 11,
  Byte = 17,
  Array = 8192,
};

// A date as the automation serial: days since 30 December 1899, the time as the fraction.
struct DateSerial {
  double days = 0;
  bool operator==(const DateSerial&) const = default;
};

class Variant;
class Locale;

// An array with its lower bound, as a value holds it. Shared and never changed once held,
// so that copying a value with a long array costs no copy of the elements.
struct VariantArray {
  int32_t lowerBound = 0;
  std::vector<Variant> items;

  int32_t upperBound() const;
  // The element at a VB index; 9 outside the bounds.
  const Variant& at(int32_t index) const;
};

// The one value type at every boundary: what an automation VARIANT held. Conversions follow
// Visual Basic: the text form of a Double has up to 15 significant digits (rounded half away
// from zero; a number that is no finite one reads "1.#INF", "-1.#INF", "-1.#IND" or
// "1.#QNAN", as the platform writes it), conversion to the
// integer types rounds half to even and raises 6 on overflow, text that is no number raises
// 13, Null raises 94 where a value is needed, Empty is "" and 0. The decimal separator of
// every conversion between numbers and text comes from the thread's locale service.
class Variant {
 public:
  Variant() = default;
  Variant(bool value) : value_(value) {}
  Variant(int16_t value) : value_(value) {}
  Variant(int32_t value) : value_(value) {}
  Variant(uint8_t value) : value_(value) {}
  Variant(float value) : value_(value) {}
  Variant(double value) : value_(value) {}
  Variant(const char* text) : value_(std::string(text)) {}
  Variant(std::string text) : value_(std::move(text)) {}
  explicit Variant(std::string_view text) : value_(std::string(text)) {}
  Variant(DateSerial date) : value_(date) {}
  Variant(std::shared_ptr<Object> object) : value_(std::move(object)) {}
  template <class T>
  Variant(const Ref<T>& object) : value_(std::shared_ptr<Object>(object.shared())) {}
  Variant(VariantArray array) : value_(std::make_shared<const VariantArray>(std::move(array))) {}

  static Variant null() {
    Variant v;
    v.value_ = NullTag{};
    return v;
  }
  // Nothing: an object value that refers to no object.
  static Variant nothing() { return Variant(std::shared_ptr<Object>()); }

  VarType type() const;
  bool isEmpty() const { return type() == VarType::Empty; }
  bool isNull() const { return type() == VarType::Null; }
  bool isString() const { return type() == VarType::String; }
  bool isObject() const { return type() == VarType::Object; }
  bool isArray() const { return type() == VarType::Array; }
  // Integer, Long, Single, Double, Byte, Boolean or Date: a value that compares as a number.
  bool isNumeric() const;

  // The number held when the value is a Double, else nothing: a fast path for arrays of
  // doubles, which charts read by the hundred thousand.
  const double* ifDouble() const { return std::get_if<double>(&value_); }

  // The text form (CStr).
  std::string toText() const;
  double toDouble() const;    // CDbl
  float toSingle() const;     // CSng
  int16_t toInt16() const;    // CInt
  int32_t toInt32() const;    // CLng
  uint8_t toByte() const;     // CByte
  bool toBool() const;        // CBool
  DateSerial toDate() const;  // CDate
  // The object referred to; Nothing gives an empty pointer, a value that is no object 13.
  std::shared_ptr<Object> toObject() const;
  // The array held; 13 for a value that is no array.
  const VariantArray& toArray() const;

  // Same kind and same value: the identity that tests want, not the comparison of the
  // language (see compare).
  bool operator==(const Variant& other) const;

 private:
  struct NullTag {
    bool operator==(const NullTag&) const = default;
  };
  using Storage = std::variant<std::monostate, NullTag, int16_t, int32_t, float, double, DateSerial,
                               std::string, std::shared_ptr<Object>, bool, uint8_t,
                               std::shared_ptr<const VariantArray>>;
  Storage value_;
};

inline int32_t VariantArray::upperBound() const {
  return lowerBound + static_cast<int32_t>(items.size()) - 1;
}

// The comparison of the language (Option Compare Binary): -1, 0 or 1, or nothing when either
// side is Null. Numbers compare as numbers, texts byte by byte, a number is less than a text,
// Empty counts as 0 beside a number and as "" beside a text. Objects and arrays raise 13.
std::optional<int> compare(const Variant& a, const Variant& b);

// Conversions between numbers and text with an explicit decimal separator, shared by the
// value model and by every place that writes numbers for people (labels, charts).
std::string formatDouble(double value, std::string_view decimalSeparator);
std::string formatSingle(float value, std::string_view decimalSeparator);
// Format(value, "General Number"): a number, or text that reads as one, in its general form;
// other text as it stands; Empty and Null as "".
std::string formatGeneralNumber(const Variant& value);

enum class ParseOutcome { Number, NotANumber, Overflow };
struct ParsedNumber {
  ParseOutcome outcome = ParseOutcome::NotANumber;
  double value = 0;
};
// Text as the language reads a number with the symbols of a locale: blanks around it, digits
// with one decimal separator and digit groups in the whole part ("1,234.5"), an exponent with
// E or D, a sign before or after the digits ("-5", "5-", "- 5"), parentheses for the minus
// sign ("(5)"), the currency symbol before or after ("$11", "-$1,234.5"), or "&H" and "&O" for
// hexadecimal and octal integers.
ParsedNumber parseNumber(std::string_view text, const Locale& symbols);

// Readable form for tests and transcripts: Double(12.5), String("abc"), Null.
std::string describe(const Variant& value);
std::ostream& operator<<(std::ostream& out, const Variant& value);

}  // namespace tessaline
