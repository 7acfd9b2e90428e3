#include "values/variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "support.h"
#include "values/dates.h"
#include "values/locale.h"

namespace tessaline {
namespace {

using testing::errorOf;

class WithSeparator {
 public:
  explicit WithSeparator(const char* separator) {
    setLocale(std::make_shared<FixedLocale>(separator));
  }
  ~WithSeparator() { setLocale(nullptr); }
};

struct DoubleText {
  double value;
  const char* text;
  friend void PrintTo(const DoubleText& row, std::ostream* out) { *out << row.text; }
};

class DoubleTextForm : public ::testing::TestWithParam<DoubleText> {};

TEST_P(DoubleTextForm, HasFifteenSignificantDigitsAndTheGeneralNotation) {
  EXPECT_EQ(Variant(GetParam().value).toText(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DoubleTextForm,
    ::testing::Values(
        DoubleText{12.5, "12.5"}, DoubleText{0.1 + 0.2, "0.3"},
        DoubleText{1.0 / 3, "0.333333333333333"}, DoubleText{2.0 / 3, "0.666666666666667"},
        DoubleText{-0.5, "-0.5"}, DoubleText{0.0, "0"}, DoubleText{-0.0, "0"},
        DoubleText{100, "100"}, DoubleText{123456789.123456789, "123456789.123457"},
        DoubleText{999999999999999, "999999999999999"}, DoubleText{1e15, "1E+15"},
        DoubleText{1e16, "1E+16"}, DoubleText{-1.5e16, "-1.5E+16"}, DoubleText{1e100, "1E+100"},
        DoubleText{0.0001, "0.0001"}, DoubleText{0.000123, "0.000123"},
        DoubleText{0.00001, "0.00001"}, DoubleText{5.6789e-5, "0.000056789"},
        DoubleText{1.5e-7, "0.00000015"}, DoubleText{1e-15, "0.000000000000001"},
        DoubleText{1.5e-15, "1.5E-15"}, DoubleText{5.6789e-12, "5.6789E-12"},
        DoubleText{1.0 / 30, "3.33333333333333E-02"},
        DoubleText{-1.0 / 30, "-3.33333333333333E-02"}, DoubleText{0.0123, "0.0123"},
        DoubleText{1.7e308, "1.7E+308"}, DoubleText{0.5, "0.5"},
        DoubleText{9.9999999999999995, "10"}, DoubleText{0.12345678901234549, "0.123456789012345"},
        DoubleText{4.94065645841247e-324, "4.94065645841247E-324"}));

struct NonFinite {
  double value;
  const char* text;
  friend void PrintTo(const NonFinite& row, std::ostream* out) { *out << row.text; }
};

class NonFiniteTextForm : public ::testing::TestWithParam<NonFinite> {};

// A test for "#" in the text is how the controls tell a value that is no number: every
// conversion to text has to give the platform's forms.
TEST_P(NonFiniteTextForm, IsThePlatformsInEveryConversionToText) {
  const double value = GetParam().value;
  EXPECT_EQ(Variant(value).toText(), GetParam().text);
  EXPECT_EQ(formatGeneralNumber(Variant(value)), GetParam().text);
  EXPECT_EQ(Variant(static_cast<float>(value)).toText(), GetParam().text);
  EXPECT_EQ(errorOf([&] { Variant(GetParam().text).toDouble(); }), 13);
}

double indefinite() {
  volatile double zero = 0;
  return zero / zero;
}

INSTANTIATE_TEST_SUITE_P(
    Table, NonFiniteTextForm,
    ::testing::Values(NonFinite{std::numeric_limits<double>::infinity(), "1.#INF"},
                      NonFinite{-std::numeric_limits<double>::infinity(), "-1.#INF"},
                      NonFinite{indefinite(), "-1.#IND"}, NonFinite{std::nan(""), "1.#QNAN"},
                      NonFinite{-std::nan(""), "-1.#IND"}));

TEST(VariantText, SingleRoundsItsSeventhDigitHalfAwayFromZero) {
  EXPECT_EQ(Variant(654322.25f).toText(), "654322.3");
  EXPECT_EQ(Variant(-654322.25f).toText(), "-654322.3");
  EXPECT_EQ(Variant(0.5f).toText(), "0.5");
  EXPECT_EQ(Variant(5e-5f).toText(), "0.00005");
  EXPECT_EQ(Variant(1.0f / 30).toText(), "3.333334E-02");
  EXPECT_EQ(Variant(9999999.5f).toText(), "1E+07");
  EXPECT_EQ(Variant(std::numeric_limits<float>::max()).toText(), "3.402823E+38");
}

TEST(VariantText, UsesTheLocaleSeparatorInBothNotations) {
  WithSeparator comma(",");
  EXPECT_EQ(Variant(12.5).toText(), "12,5");
  EXPECT_EQ(Variant(1.5e16).toText(), "1,5E+16");
  EXPECT_EQ(Variant(0.25f).toText(), "0,25");
}

TEST(VariantText, SingleHasSevenSignificantDigits) {
  EXPECT_EQ(Variant(0.1f).toText(), "0.1");
  EXPECT_EQ(Variant(1.0f / 3).toText(), "0.3333333");
  EXPECT_EQ(Variant(1234567.0f).toText(), "1234567");
  EXPECT_EQ(Variant(1e7f).toText(), "1E+07");
}

TEST(VariantText, OfEveryKind) {
  EXPECT_EQ(Variant().toText(), "");
  EXPECT_EQ(Variant(true).toText(), "True");
  EXPECT_EQ(Variant(false).toText(), "False");
  EXPECT_EQ(Variant(int16_t{-7}).toText(), "-7");
  EXPECT_EQ(Variant(int32_t{70000}).toText(), "70000");
  EXPECT_EQ(Variant(uint8_t{255}).toText(), "255");
  EXPECT_EQ(Variant("abc").toText(), "abc");
  EXPECT_EQ(Variant(DateSerial{25569}).toText(), "1/1/1970");
  EXPECT_EQ(Variant(DateSerial{25569.5}).toText(), "1/1/1970 12:00:00 PM");
  EXPECT_EQ(Variant(DateSerial{0.25}).toText(), "6:00:00 AM");
}

TEST(VariantText, FailsForNullNothingAndArrays) {
  EXPECT_EQ(errorOf([] { Variant::null().toText(); }), 94);
  EXPECT_EQ(errorOf([] { Variant::nothing().toText(); }), 91);
  EXPECT_EQ(errorOf([] { Variant(VariantArray{0, {Variant(1)}}).toText(); }), 13);
}

struct TextNumber {
  const char* text;
  double value;
  friend void PrintTo(const TextNumber& row, std::ostream* out) { *out << '"' << row.text << '"'; }
};

class NumberFromText : public ::testing::TestWithParam<TextNumber> {};

TEST_P(NumberFromText, IsReadAsTheLanguageReadsIt) {
  EXPECT_DOUBLE_EQ(Variant(GetParam().text).toDouble(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NumberFromText,
    ::testing::Values(TextNumber{"12.5", 12.5}, TextNumber{"  12.5 ", 12.5},
                      TextNumber{"-.5", -0.5}, TextNumber{"+5.", 5}, TextNumber{"1e3", 1000},
                      TextNumber{"1D2", 100}, TextNumber{"2.5E-1", 0.25}, TextNumber{"&HFF", 255},
                      TextNumber{"&hff0000", 16711680}, TextNumber{"&HFFFFFFFF", -1},
                      TextNumber{"&O17", 15}, TextNumber{"1e-999", 0}, TextNumber{"007", 7},
                      // Digit groups, currency, parentheses and signs as the platform takes them.
                      TextNumber{"1,000", 1000}, TextNumber{"1,5", 15},
                      TextNumber{"1,234,567.25", 1234567.25}, TextNumber{"$11", 11},
                      TextNumber{"-$11", -11}, TextNumber{"$-11", -11},
                      TextNumber{"$1,234.5", 1234.5}, TextNumber{"11$", 11}, TextNumber{"(5)", -5},
                      TextNumber{"($5.5)", -5.5}, TextNumber{"5-", -5}, TextNumber{"5 -", -5},
                      TextNumber{"- 5", -5}, TextNumber{"+ 5", 5}, TextNumber{"1,000e2", 100000}));

TEST(VariantNumbers, TextThatIsNoNumberIsATypeMismatch) {
  for (const char* text : {"",    " ",    "abc",   "12.5.3", "1e",    "--1",   "&H",    "&HG1",
                           "NaN", ",5",   "1,",    "1,.5",   "$",     "$$5",   "-5-",   "(5",
                           "5)",  "(-5)", "((5))", "5 5",    "1.5,3", "1e5$e", "1.#INF"}) {
    EXPECT_EQ(errorOf([&] { Variant(text).toDouble(); }), 13) << text;
  }
  EXPECT_EQ(errorOf([] { Variant("1e999").toDouble(); }), 6);
  EXPECT_EQ(errorOf([] { Variant("&H100000000").toDouble(); }), 6);
}

TEST(VariantNumbers, ReadTheLocaleSymbols) {
  WithSeparator comma(",");
  EXPECT_DOUBLE_EQ(Variant("12,5").toDouble(), 12.5);
  // The period groups digits where the comma is the decimal separator.
  EXPECT_DOUBLE_EQ(Variant("12.5").toDouble(), 125);
  EXPECT_DOUBLE_EQ(Variant("1.234,5").toDouble(), 1234.5);
  setLocale(std::make_shared<FixedLocale>(",", " ", "EUR"));
  EXPECT_DOUBLE_EQ(Variant("1 234,5 EUR").toDouble(), 1234.5);
  EXPECT_DOUBLE_EQ(Variant("-EUR 3").toDouble(), -3);
  EXPECT_EQ(errorOf([] { Variant("$3").toDouble(); }), 13);
}

TEST(VariantNumbers, EmptyIsZeroNullIsInvalidBooleanIsMinusOne) {
  EXPECT_EQ(Variant().toDouble(), 0);
  EXPECT_EQ(Variant().toInt16(), 0);
  EXPECT_EQ(errorOf([] { Variant::null().toDouble(); }), 94);
  EXPECT_EQ(errorOf([] { Variant::null().toInt32(); }), 94);
  EXPECT_EQ(Variant(true).toInt32(), -1);
  EXPECT_EQ(Variant(true).toDouble(), -1);
  EXPECT_EQ(Variant(false).toInt16(), 0);
}

struct Rounding {
  double value;
  int expected;
  friend void PrintTo(const Rounding& row, std::ostream* out) { *out << row.value; }
};

class IntegerConversion : public ::testing::TestWithParam<Rounding> {};

TEST_P(IntegerConversion, RoundsHalfToEven) {
  EXPECT_EQ(Variant(GetParam().value).toInt16(), GetParam().expected);
  EXPECT_EQ(Variant(GetParam().value).toInt32(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, IntegerConversion,
                         ::testing::Values(Rounding{2.5, 2}, Rounding{3.5, 4}, Rounding{-2.5, -2},
                                           Rounding{-3.5, -4}, Rounding{0.5, 0}, Rounding{1.5, 2},
                                           Rounding{2.4999, 2}, Rounding{2.5001, 3},
                                           Rounding{-0.4, 0}));

TEST(IntegerConversion, OverflowsAtTheEndsOfEachRange) {
  EXPECT_EQ(Variant(32767.4).toInt16(), 32767);
  EXPECT_EQ(Variant(-32768.5).toInt16(), -32768);
  EXPECT_EQ(errorOf([] { Variant(32767.5).toInt16(); }), 6);
  EXPECT_EQ(errorOf([] { Variant(70000).toInt16(); }), 6);
  EXPECT_EQ(errorOf([] { Variant(2147483647.5).toInt32(); }), 6);
  EXPECT_EQ(Variant(-2147483648.0).toInt32(), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(Variant(255.4).toByte(), 255);
  EXPECT_EQ(Variant(-0.5).toByte(), 0);
  EXPECT_EQ(errorOf([] { Variant(255.5).toByte(); }), 6);
  EXPECT_EQ(errorOf([] { Variant(-1).toByte(); }), 6);
  // True is all bits set.
  EXPECT_EQ(Variant(true).toByte(), 255);
  EXPECT_EQ(Variant(false).toByte(), 0);
  EXPECT_EQ(describe(Variant(std::numeric_limits<float>::max())), "Single(3.402823E+38)");
  EXPECT_EQ(errorOf([] { Variant(std::nan("")).toInt32(); }), 6);
  EXPECT_EQ(errorOf([] { Variant(std::numeric_limits<double>::infinity()).toInt16(); }), 6);
}

// A Single holds what rounds to a finite Single; beyond the largest is an overflow, and so are
// the infinities. Not-a-number stays the same not-a-number.
struct SingleRow {
  double value;
  const char* text;  // of the Single, or nullptr for an overflow
  friend void PrintTo(const SingleRow& row, std::ostream* out) { *out << row.value; }
};

class SingleConversion : public ::testing::TestWithParam<SingleRow> {};

TEST_P(SingleConversion, OverflowsBeyondTheLargestSingle) {
  const Variant value(GetParam().value);
  if (!GetParam().text) {
    EXPECT_EQ(errorOf([&] { value.toSingle(); }), 6);
  } else {
    EXPECT_EQ(Variant(value.toSingle()).toText(), GetParam().text);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, SingleConversion,
    ::testing::Values(SingleRow{std::numeric_limits<float>::max(), "3.402823E+38"},
                      SingleRow{3.4028235e38, "3.402823E+38"},
                      SingleRow{-3.4028235e38, "-3.402823E+38"}, SingleRow{3.41e38, nullptr},
                      SingleRow{-3.41e38, nullptr}, SingleRow{1e300, nullptr},
                      SingleRow{std::numeric_limits<double>::infinity(), nullptr},
                      SingleRow{-std::numeric_limits<double>::infinity(), nullptr},
                      SingleRow{indefinite(), "-1.#IND"}, SingleRow{std::nan(""), "1.#QNAN"},
                      SingleRow{1e-50, "0"}, SingleRow{0.1, "0.1"}));

TEST(SingleConversion, OfTextAndOfASingle) {
  const float largest = std::numeric_limits<float>::max();
  EXPECT_EQ(Variant(largest).toSingle(), largest);
  EXPECT_EQ(Variant("3.4028235E+38").toSingle(), largest);
  EXPECT_EQ(errorOf([] { Variant("1e39").toSingle(); }), 6);
}

TEST(IntegerConversion, ReadsTextThroughTheNumber) {
  EXPECT_EQ(Variant("2.5").toInt16(), 2);
  EXPECT_EQ(Variant(" 3.5").toInt32(), 4);
  EXPECT_EQ(errorOf([] { Variant("12a").toInt16(); }), 13);
}

// Hexadecimal and octal text is a bit pattern: an Integer takes the 16-bit one as it stands,
// a Long the 32-bit one.
struct RadixRow {
  const char* text;
  std::optional<int16_t> integer;  // nothing for an overflow
  std::optional<int32_t> long_;
  friend void PrintTo(const RadixRow& row, std::ostream* out) { *out << '"' << row.text << '"'; }
};

class RadixText : public ::testing::TestWithParam<RadixRow> {};

TEST_P(RadixText, IsABitPatternOfTheIntegerAsked) {
  const Variant value(GetParam().text);
  if (GetParam().integer) {
    EXPECT_EQ(value.toInt16(), *GetParam().integer);
  } else {
    EXPECT_EQ(errorOf([&] { value.toInt16(); }), 6);
  }
  if (GetParam().long_) {
    EXPECT_EQ(value.toInt32(), *GetParam().long_);
  } else {
    EXPECT_EQ(errorOf([&] { value.toInt32(); }), 6);
  }
}

constexpr std::nullopt_t kOverflow = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    Table, RadixText,
    ::testing::Values(RadixRow{"&H7FFF", 32767, 32767}, RadixRow{"&HFFFF", -1, 65535},
                      RadixRow{"&H8000", -32768, 32768}, RadixRow{" &h0ffff ", -1, 65535},
                      RadixRow{"&O177777", -1, 65535}, RadixRow{"&O100000", -32768, 32768},
                      RadixRow{"&H10000", kOverflow, 65536}, RadixRow{"&HFFFFFFFF", -1, -1},
                      RadixRow{"&HFFFF8000", -32768, -32768},
                      RadixRow{"&HFFFF7FFF", kOverflow, -32769},
                      RadixRow{"&H80000000", kOverflow, std::numeric_limits<int32_t>::min()},
                      RadixRow{"&H100000000", kOverflow, kOverflow},
                      RadixRow{"65535", kOverflow, 65535}));

// The words are compared whole, without regard to case; anything else is read as a number,
// which may stand between blanks.
struct BooleanRow {
  const char* text;
  std::optional<bool> value;  // nothing for a type mismatch
  friend void PrintTo(const BooleanRow& row, std::ostream* out) { *out << '"' << row.text << '"'; }
};

class BooleanFromText : public ::testing::TestWithParam<BooleanRow> {};

TEST_P(BooleanFromText, TakesTheWordsOrANumber) {
  const Variant value(GetParam().text);
  if (GetParam().value) {
    EXPECT_EQ(value.toBool(), *GetParam().value);
  } else {
    EXPECT_EQ(errorOf([&] { value.toBool(); }), 13);
  }
}

constexpr std::nullopt_t kMismatch = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    Table, BooleanFromText,
    ::testing::Values(BooleanRow{"True", true}, BooleanRow{"true", true},
                      BooleanRow{"FALSE", false}, BooleanRow{"#TRUE#", true},
                      BooleanRow{"#false#", false}, BooleanRow{" True ", kMismatch},
                      BooleanRow{"True ", kMismatch}, BooleanRow{" #false# ", kMismatch},
                      BooleanRow{" 1 ", true}, BooleanRow{"-1", true}, BooleanRow{" 0 ", false},
                      BooleanRow{"0.5", true}, BooleanRow{"yes", kMismatch},
                      BooleanRow{"", kMismatch}));

TEST(BooleanConversion, FromNumbersEmptyAndNull) {
  EXPECT_TRUE(Variant(0.5).toBool());
  EXPECT_FALSE(Variant().toBool());
  EXPECT_EQ(errorOf([] { Variant::null().toBool(); }), 94);
}

TEST(DateConversion, FromNumbers) {
  EXPECT_EQ(Variant(25569).toDate().days, 25569);
  EXPECT_EQ(errorOf([] { Variant(1e7).toDate(); }), 6);
}

// Every serial strictly between -657435 and 2958466 is a date: the whole of 1 January 100 (whose
// times run below -657434) to the end of 31 December 9999.
TEST(DateConversion, TheCalendarRunsFromTheFirstToTheLastMomentOfItsDays) {
  for (double serial : {-657434.5, -657434.99999, 2958465.99999}) {
    const Variant date(DateSerial{serial});
    EXPECT_EQ(date.toDate().days, serial);
    EXPECT_EQ(Variant(serial).toDate().days, serial);
    EXPECT_EQ(describe(date).find("serial"), std::string::npos) << describe(date);
  }
  EXPECT_EQ(fieldsFromSerial(-657434.5), (DateTimeFields{100, 1, 1, 12, 0, 0}));
  EXPECT_EQ(calendarFromSerial(-657434.9).year, 100);
}

// A date far outside the calendar (a corrupt serial from a device) is an overflow wherever it
// is turned into a date or into text, never a cast out of range.
TEST(DateConversion, OutsideTheCalendarIsAnOverflowOnEveryPath) {
  for (double serial : {1e300, -1e300, 2958466.0, -657435.0, -657435.25, std::nan(""),
                        std::numeric_limits<double>::infinity()}) {
    const Variant date(DateSerial{serial});
    EXPECT_EQ(errorOf([&] { date.toText(); }), 6) << serial;
    EXPECT_EQ(errorOf([&] { date.toDate(); }), 6) << serial;
    EXPECT_EQ(errorOf([&] { Variant(serial).toDate(); }), 6) << serial;
    EXPECT_NE(describe(date).find("serial"), std::string::npos) << serial;
  }
}

// Format with "General Number" works on a date's serial, so that a corrupt date shows its number.
TEST(GeneralNumber, OfADateIsItsSerial) {
  EXPECT_EQ(formatGeneralNumber(Variant(DateSerial{25569})), "25569");
  EXPECT_EQ(formatGeneralNumber(Variant(DateSerial{-1.25})), "-1.25");
  EXPECT_EQ(formatGeneralNumber(Variant(DateSerial{1e300})), "1E+300");
  WithSeparator comma(",");
  EXPECT_EQ(formatGeneralNumber(Variant(DateSerial{25569.5})), "25569,5");
}

struct DateText {
  const char* text;
  double serial;
  friend void PrintTo(const DateText& row, std::ostream* out) { *out << '"' << row.text << '"'; }
};

class DateFromText : public ::testing::TestWithParam<DateText> {};

TEST_P(DateFromText, IsReadAsTheUsEnglishPlatformReadsIt) {
  EXPECT_DOUBLE_EQ(Variant(GetParam().text).toDate().days, GetParam().serial);
}

// 25570 is 2 January 1970.
INSTANTIATE_TEST_SUITE_P(
    Table, DateFromText,
    ::testing::Values(
        DateText{"1/2/1970", 25570}, DateText{"1-2-1970", 25570}, DateText{"01/02/70", 25570},
        DateText{"1970-01-02", 25570}, DateText{"1970/1/2", 25570},
        DateText{"2 January 1970", 25570}, DateText{"Jan 2, 1970", 25570},
        DateText{"January 2 1970", 25570}, DateText{"2-Jan-1970", 25570},
        DateText{"2-jan-70", 25570}, DateText{"JAN 2 1970", 25570}, DateText{"Jan 1970", 25569},
        DateText{"13/1/1970", 25581}, DateText{"1/2/29", 47120}, DateText{"1/2/30", 10960},
        DateText{"1/2/1970 6:00", 25570.25}, DateText{"1/2/1970 6:00 PM", 25570.75},
        DateText{"6:00:30 am 1/2/1970", 25570 + 21630.0 / 86400}, DateText{"12:00 AM", 0},
        DateText{"12:00:00 PM", 0.5}, DateText{"3 PM", 0.625},
        DateText{"23:59:59", 86399.0 / 86400}, DateText{"12/30/1899", 0},
        DateText{"12/29/1899 12:00", -1.5}, DateText{"1/1/100", -657434},
        DateText{"12/31/9999", 2958465}, DateText{"1/1/100 12:00 PM", -657434.5},
        DateText{"1/1/100 23:59:59", -657434 - 86399.0 / 86400},
        DateText{"12/31/9999 11:59:59 PM", 2958465 + 86399.0 / 86400}));

TEST(DateConversion, TextThatIsNoDateIsATypeMismatch) {
  for (const char* text : {"",
                           "x",
                           "2/30/2020",
                           "13/13/2000",
                           "0/1/2000",
                           "1/0/2000",
                           "1/2/3/4",
                           "Jan Feb 1970",
                           "Foo 2 1970",
                           "25:00",
                           "12:60",
                           "13:00 PM",
                           "0:30 AM",
                           "1/2/1970 junk",
                           "5",
                           "-1/2/1970",
                           "1/2/99999",
                           "1/2/10000",
                           "1/2/1970 6:",
                           "//",
                           "1e5",
                           "1234567890/1/1"}) {
    EXPECT_EQ(errorOf([&] { Variant(text).toDate(); }), 13) << text;
  }
}

TEST(DateConversion, WithoutAYearTakesTheCurrentOne) {
  const double serial = Variant("Mar 4").toDate().days;
  const double thisYear =
      Variant("Mar 4 " +
              std::to_string(calendarFromSerial(Variant(DateSerial{serial}).toDate().days).year))
          .toDate()
          .days;
  EXPECT_EQ(serial, thisYear);
  EXPECT_EQ(Variant("3/4").toDate().days, serial);
}

struct DateForm {
  double serial;
  const char* text;
  friend void PrintTo(const DateForm& row, std::ostream* out) { *out << row.serial; }
};

class DateTextForm : public ::testing::TestWithParam<DateForm> {};

TEST_P(DateTextForm, ShowsTheTimeAloneTheDateAloneOrBoth) {
  EXPECT_EQ(Variant(DateSerial{GetParam().serial}).toText(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DateTextForm,
    ::testing::Values(DateForm{0, "12:00:00 AM"}, DateForm{0.5, "12:00:00 PM"},
                      DateForm{0.999994, "11:59:59 PM"}, DateForm{0.9999999, "12/31/1899"},
                      DateForm{1, "12/31/1899"}, DateForm{25570, "1/2/1970"},
                      DateForm{25570.25, "1/2/1970 6:00:00 AM"},
                      DateForm{-1.5, "12/29/1899 12:00:00 PM"}, DateForm{-0.25, "6:00:00 AM"},
                      // Below the epoch too, the time rounds up into the
                      // next calendar day.
                      DateForm{-5.9999999, "12/26/1899"}, DateForm{-657434, "1/1/100"},
                      DateForm{-657434.5, "1/1/100 12:00:00 PM"},
                      DateForm{-657434.9999999, "1/2/100"},
                      DateForm{2958465.5, "12/31/9999 12:00:00 PM"},
                      // The last day has no next one.
                      DateForm{2958465.9999999, "12/31/9999 11:59:59 PM"}));

TEST(VariantCompare, FollowsTheLanguage) {
  EXPECT_EQ(compare(Variant(1), Variant(2.5)), -1);
  EXPECT_EQ(compare(Variant(int16_t{3}), Variant(3.0)), 0);
  EXPECT_EQ(compare(Variant(true), Variant(-1)), 0);
  EXPECT_EQ(compare(Variant("10"), Variant("9")), -1);  // texts compare as texts
  EXPECT_EQ(compare(Variant("a"), Variant("B")), 1);    // binary: lower case after upper
  EXPECT_EQ(compare(Variant(100), Variant("1")), -1);   // a number is less than a text
  EXPECT_EQ(compare(Variant("1"), Variant(100)), 1);
  EXPECT_EQ(compare(Variant(), Variant(0)), 0);
  EXPECT_EQ(compare(Variant(), Variant("")), 0);
  EXPECT_EQ(compare(Variant(), Variant()), 0);
  EXPECT_EQ(compare(Variant::null(), Variant(1)), std::nullopt);
  EXPECT_EQ(errorOf([] { compare(Variant::nothing(), Variant(1)); }), 13);
}

TEST(VariantArrays, KeepTheirLowerBound) {
  const Variant array(VariantArray{1, {Variant("a"), Variant("b")}});
  ASSERT_TRUE(array.isArray());
  EXPECT_EQ(array.toArray().upperBound(), 2);
  EXPECT_EQ(array.toArray().at(2), Variant("b"));
  EXPECT_EQ(errorOf([&] { array.toArray().at(0); }), 9);
  EXPECT_EQ(describe(array), R"(Array(1..2)[String("a"), String("b")])");
}

TEST(VariantIdentity, DistinguishesKinds) {
  EXPECT_EQ(Variant(5), Variant(5));
  EXPECT_NE(Variant(5), Variant(int16_t{5}));
  EXPECT_NE(Variant(), Variant(""));
  EXPECT_EQ(Variant(1).type(), VarType::Long);
  EXPECT_EQ(Variant::nothing().type(), VarType::Object);
}

}  // namespace
}  // namespace tessaline
