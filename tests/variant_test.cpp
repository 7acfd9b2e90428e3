#include "tessaline/values/variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <optional>

#include "support.h"
#include "tessaline/values/dates.h"
#include "tessaline/values/locale.h"

namespace tessaline {
namespace {

using testing::errorOf;
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr std::nullopt_t kOverflow = std::nullopt, kMismatch = std::nullopt;

class WithSeparator {
 public:
  explicit WithSeparator(const char* separator) {
    setLocale(std::make_shared<FixedLocale>(separator));
  }
  ~WithSeparator() { setLocale(nullptr); }
};

double indefinite() {
  volatile double zero = 0;
  return zero / zero;
}

TEST(VariantText, DoubleHasFifteenSignificantDigitsAndTheGeneralNotation) {
  using R = std::pair<double, const char*>;
  for (auto [value, text] :
       {R{12.5, "12.5"}, R{0.1 + 0.2, "0.3"}, R{1.0 / 3, "0.333333333333333"},
        R{2.0 / 3, "0.666666666666667"}, R{-0.5, "-0.5"}, R{0.0, "0"}, R{-0.0, "0"}, R{100, "100"},
        R{123456789.123456789, "123456789.123457"}, R{999999999999999, "999999999999999"},
        R{0.5, "0.5"}, R{0.0123, "0.0123"}, R{9.9999999999999995, "10"},
        R{0.12345678901234549, "0.123456789012345"},
        // The exponent beyond fifteen digits, and below where fifteen digits show no more.
        R{1e15, "1E+15"}, R{1e16, "1E+16"}, R{-1.5e16, "-1.5E+16"}, R{1e100, "1E+100"},
        R{0.0001, "0.0001"}, R{0.000123, "0.000123"}, R{0.00001, "0.00001"},
        R{5.6789e-5, "0.000056789"}, R{1.5e-7, "0.00000015"}, R{1e-15, "0.000000000000001"},
        R{1.5e-15, "1.5E-15"}, R{5.6789e-12, "5.6789E-12"}, R{1.7e308, "1.7E+308"},
        R{1.0 / 30, "3.33333333333333E-02"}, R{-1.0 / 30, "-3.33333333333333E-02"},
        R{4.94065645841247e-324, "4.94065645841247E-324"}}) {
    EXPECT_EQ(Variant(value).toText(), text);
  }
}

// A test for "#" in the text is how the controls tell a value that is no number: every
// conversion to text has to give the platform's forms.
TEST(VariantText, NonFiniteIsThePlatformsFormInEveryConversionToText) {
  using R = std::pair<double, const char*>;
  for (auto [value, text] : {R{kInf, "1.#INF"}, R{-kInf, "-1.#INF"}, R{indefinite(), "-1.#IND"},
                             R{std::nan(""), "1.#QNAN"}, R{-std::nan(""), "-1.#IND"}}) {
    EXPECT_EQ(Variant(value).toText(), text);
    EXPECT_EQ(formatGeneralNumber(Variant(value)), text);
    EXPECT_EQ(Variant(static_cast<float>(value)).toText(), text);
    EXPECT_EQ(errorOf([&] { Variant(text).toDouble(); }), 13) << text;
  }
}

TEST(VariantText, SingleHasSevenSignificantDigitsTheSeventhRoundedHalfAwayFromZero) {
  using R = std::pair<float, const char*>;
  for (auto [value, text] :
       {R{654322.25f, "654322.3"}, R{-654322.25f, "-654322.3"}, R{0.5f, "0.5"}, R{5e-5f, "0.00005"},
        R{1.0f / 30, "3.333334E-02"}, R{9999999.5f, "1E+07"}, R{0.1f, "0.1"},
        R{1.0f / 3, "0.3333333"}, R{1234567.0f, "1234567"}, R{1e7f, "1E+07"},
        R{std::numeric_limits<float>::max(), "3.402823E+38"}}) {
    EXPECT_EQ(Variant(value).toText(), text);
  }
}

TEST(VariantText, UsesTheLocaleSeparatorInBothNotations) {
  WithSeparator comma(",");
  EXPECT_EQ(Variant(12.5).toText(), "12,5");
  EXPECT_EQ(Variant(1.5e16).toText(), "1,5E+16");
  EXPECT_EQ(Variant(0.25f).toText(), "0,25");
}

TEST(VariantText, OfEveryKind) {
  using R = std::pair<Variant, const char*>;
  for (const auto& [value, text] :
       {R{Variant(), ""}, R{Variant(true), "True"}, R{Variant(false), "False"},
        R{Variant(int16_t{-7}), "-7"}, R{Variant(int32_t{70000}), "70000"},
        R{Variant(uint8_t{255}), "255"}, R{Variant("abc"), "abc"},
        // A date shows the time only where it has one, and the time alone on day zero.
        R{Variant(DateSerial{25569}), "1/1/1970"},
        R{Variant(DateSerial{25569.5}), "1/1/1970 12:00:00 PM"},
        R{Variant(DateSerial{0.25}), "6:00:00 AM"}}) {
    EXPECT_EQ(value.toText(), text) << describe(value);
  }
}

TEST(VariantText, FailsForNullNothingAndArrays) {
  EXPECT_EQ(errorOf([] { Variant::null().toText(); }), 94);
  EXPECT_EQ(errorOf([] { Variant::nothing().toText(); }), 91);
  EXPECT_EQ(errorOf([] { Variant(VariantArray{0, {Variant(1)}}).toText(); }), 13);
}

TEST(VariantNumbers, TextIsReadAsTheLanguageReadsIt) {
  using R = std::pair<const char*, double>;
  for (auto [text, value] :
       {R{"12.5", 12.5}, R{"  12.5 ", 12.5}, R{"-.5", -0.5}, R{"+5.", 5}, R{"1e3", 1000},
        R{"1D2", 100}, R{"2.5E-1", 0.25}, R{"&HFF", 255}, R{"&hff0000", 16711680},
        R{"&HFFFFFFFF", -1}, R{"&O17", 15}, R{"1e-999", 0}, R{"007", 7},
        // Digit groups, currency, parentheses and signs as the platform takes them.
        R{"1,000", 1000}, R{"1,5", 15}, R{"1,234,567.25", 1234567.25}, R{"$11", 11}, R{"-$11", -11},
        R{"$-11", -11}, R{"$1,234.5", 1234.5}, R{"11$", 11}, R{"(5)", -5}, R{"($5.5)", -5.5},
        R{"5-", -5}, R{"5 -", -5}, R{"- 5", -5}, R{"+ 5", 5}, R{"1,000e2", 100000}}) {
    EXPECT_DOUBLE_EQ(Variant(text).toDouble(), value) << '"' << text << '"';
  }
}

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

TEST(IntegerConversion, RoundsHalfToEven) {
  using R = std::pair<double, int>;
  for (auto [value, expected] : {R{2.5, 2}, R{3.5, 4}, R{-2.5, -2}, R{-3.5, -4}, R{0.5, 0},
                                 R{1.5, 2}, R{2.4999, 2}, R{2.5001, 3}, R{-0.4, 0}}) {
    EXPECT_EQ(Variant(value).toInt16(), expected) << value;
    EXPECT_EQ(Variant(value).toInt32(), expected) << value;
  }
  EXPECT_EQ(Variant("2.5").toInt16(), 2);  // text too, through the number
  EXPECT_EQ(Variant(" 3.5").toInt32(), 4);
  EXPECT_EQ(errorOf([] { Variant("12a").toInt16(); }), 13);
}

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
  EXPECT_EQ(errorOf([] { Variant(kInf).toInt16(); }), 6);
}

// A Single holds what rounds to a finite Single; beyond the largest is an overflow, and so are
// the infinities. Not-a-number stays the same not-a-number.
TEST(SingleConversion, OverflowsBeyondTheLargestSingle) {
  using R = std::pair<double, const char*>;  // the Single's text, or nullptr for an overflow
  for (auto [value, text] :
       {R{std::numeric_limits<float>::max(), "3.402823E+38"}, R{3.4028235e38, "3.402823E+38"},
        R{-3.4028235e38, "-3.402823E+38"}, R{3.41e38, nullptr}, R{-3.41e38, nullptr},
        R{1e300, nullptr}, R{kInf, nullptr}, R{-kInf, nullptr}, R{indefinite(), "-1.#IND"},
        R{std::nan(""), "1.#QNAN"}, R{1e-50, "0"}, R{0.1, "0.1"}}) {
    if (!text) {
      EXPECT_EQ(errorOf([&] { Variant(value).toSingle(); }), 6) << value;
    } else {
      EXPECT_EQ(Variant(Variant(value).toSingle()).toText(), text) << value;
    }
  }
  const float largest = std::numeric_limits<float>::max();
  EXPECT_EQ(Variant(largest).toSingle(), largest);
  EXPECT_EQ(Variant("3.4028235E+38").toSingle(), largest);
  EXPECT_EQ(errorOf([] { Variant("1e39").toSingle(); }), 6);
}

// Hexadecimal and octal text is a bit pattern: an Integer takes the 16-bit one as it stands,
// a Long the 32-bit one.
TEST(IntegerConversion, RadixTextIsABitPatternOfTheIntegerAsked) {
  struct R {
    const char* text;
    std::optional<int16_t> integer;  // nothing for an overflow
    std::optional<int32_t> long_;
  };
  for (const R& row :
       {R{"&H7FFF", 32767, 32767}, R{"&HFFFF", -1, 65535}, R{"&H8000", -32768, 32768},
        R{" &h0ffff ", -1, 65535}, R{"&O177777", -1, 65535}, R{"&O100000", -32768, 32768},
        R{"&H10000", kOverflow, 65536}, R{"&HFFFFFFFF", -1, -1}, R{"&HFFFF8000", -32768, -32768},
        R{"&HFFFF7FFF", kOverflow, -32769},
        R{"&H80000000", kOverflow, std::numeric_limits<int32_t>::min()},
        R{"&H100000000", kOverflow, kOverflow}, R{"65535", kOverflow, 65535}}) {
    const Variant value(row.text);
    if (row.integer) {
      EXPECT_EQ(value.toInt16(), *row.integer) << row.text;
    } else {
      EXPECT_EQ(errorOf([&] { value.toInt16(); }), 6) << row.text;
    }
    if (row.long_) {
      EXPECT_EQ(value.toInt32(), *row.long_) << row.text;
    } else {
      EXPECT_EQ(errorOf([&] { value.toInt32(); }), 6) << row.text;
    }
  }
}

// The words are compared whole, without regard to case; anything else is read as a number,
// which may stand between blanks.
TEST(BooleanConversion, TextTakesTheWordsOrANumber) {
  using R = std::pair<const char*, std::optional<bool>>;  // nothing for a type mismatch
  for (auto [text, value] :
       {R{"True", true}, R{"true", true}, R{"FALSE", false}, R{"#TRUE#", true}, R{"#false#", false},
        R{" True ", kMismatch}, R{"True ", kMismatch}, R{" #false# ", kMismatch}, R{" 1 ", true},
        R{"-1", true}, R{" 0 ", false}, R{"0.5", true}, R{"yes", kMismatch}, R{"", kMismatch}}) {
    if (value) {
      EXPECT_EQ(Variant(text).toBool(), *value) << '"' << text << '"';
    } else {
      EXPECT_EQ(errorOf([&] { Variant(text).toBool(); }), 13) << '"' << text << '"';
    }
  }
  EXPECT_TRUE(Variant(0.5).toBool());
  EXPECT_FALSE(Variant().toBool());
  EXPECT_EQ(errorOf([] { Variant::null().toBool(); }), 94);
}

// Every serial strictly between -657435 and 2958466 is a date: the whole of 1 January 100 (whose
// times run below -657434) to the end of 31 December 9999.
TEST(DateConversion, TheCalendarRunsFromTheFirstToTheLastMomentOfItsDays) {
  EXPECT_EQ(Variant(25569).toDate().days, 25569);
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
  EXPECT_EQ(errorOf([] { Variant(1e7).toDate(); }), 6);
  for (double serial : {1e300, -1e300, 2958466.0, -657435.0, -657435.25, std::nan(""), kInf}) {
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

// Text is read as the US English platform reads it.
TEST(DateConversion, FromText) {
  using R = std::pair<const char*, double>;
  for (auto [text, serial] : {// 25570 is 2 January 1970.
                              R{"1/2/1970", 25570},
                              R{"1-2-1970", 25570},
                              R{"01/02/70", 25570},
                              R{"1970-01-02", 25570},
                              R{"1970/1/2", 25570},
                              R{"2 January 1970", 25570},
                              R{"Jan 2, 1970", 25570},
                              R{"January 2 1970", 25570},
                              R{"2-Jan-1970", 25570},
                              R{"2-jan-70", 25570},
                              R{"JAN 2 1970", 25570},
                              R{"Jan 1970", 25569},
                              R{"13/1/1970", 25581},
                              R{"1/2/29", 47120},
                              R{"1/2/30", 10960},
                              R{"1/2/1970 6:00", 25570.25},
                              R{"1/2/1970 6:00 PM", 25570.75},
                              R{"6:00:30 am 1/2/1970", 25570 + 21630.0 / 86400},
                              R{"12:00 AM", 0},
                              R{"12:00:00 PM", 0.5},
                              R{"3 PM", 0.625},
                              R{"23:59:59", 86399.0 / 86400},
                              R{"12/30/1899", 0},
                              R{"12/29/1899 12:00", -1.5},
                              R{"1/1/100", -657434},
                              R{"12/31/9999", 2958465},
                              R{"1/1/100 12:00 PM", -657434.5},
                              R{"1/1/100 23:59:59", -657434 - 86399.0 / 86400},
                              R{"12/31/9999 11:59:59 PM", 2958465 + 86399.0 / 86400}}) {
    EXPECT_DOUBLE_EQ(Variant(text).toDate().days, serial) << '"' << text << '"';
  }
}

TEST(DateConversion, TextThatIsNoDateIsATypeMismatch) {
  for (const char* text : {"", "x", "2/30/2020", "13/13/2000", "0/1/2000", "1/0/2000", "1/2/3/4",
                           "Jan Feb 1970", "Foo 2 1970", "1/2/1970 junk", "5", "-1/2/1970",
                           "1/2/99999", "1/2/10000", "//", "1e5", "1234567890/1/1",
                           // Times out of their range or cut short.
                           "25:00", "12:60", "13:00 PM", "0:30 AM", "1/2/1970 6:"}) {
    EXPECT_EQ(errorOf([&] { Variant(text).toDate(); }), 13) << text;
  }
}

TEST(DateConversion, WithoutAYearTakesTheCurrentOne) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const int32_t year = local.tm_year + 1900;
  const double serial = Variant("Mar 4").toDate().days;
  EXPECT_EQ(serial, Variant("Mar 4 " + std::to_string(year)).toDate().days);
  EXPECT_EQ(calendarFromSerial(serial).year, year);
  EXPECT_EQ(Variant("3/4").toDate().days, serial);
}

TEST(DateConversion, TextShowsTheTimeAloneTheDateAloneOrBoth) {
  using R = std::pair<double, const char*>;
  for (auto [serial, text] :
       {R{0, "12:00:00 AM"}, R{0.5, "12:00:00 PM"}, R{0.999994, "11:59:59 PM"},
        R{0.9999999, "12/31/1899"}, R{1, "12/31/1899"}, R{25570, "1/2/1970"},
        R{25570.25, "1/2/1970 6:00:00 AM"}, R{-1.5, "12/29/1899 12:00:00 PM"},
        R{-0.25, "6:00:00 AM"}, R{-657434, "1/1/100"}, R{-657434.5, "1/1/100 12:00:00 PM"},
        R{2958465.5, "12/31/9999 12:00:00 PM"},
        // Below the epoch too, the time rounds up into the next calendar day.
        R{-5.9999999, "12/26/1899"}, R{-657434.9999999, "1/2/100"},
        // The last day has no next one.
        R{2958465.9999999, "12/31/9999 11:59:59 PM"}}) {
    EXPECT_EQ(Variant(DateSerial{serial}).toText(), text) << serial;
  }
}

TEST(VariantCompare, FollowsTheLanguage) {
  struct R {
    Variant left, right;
    std::optional<int> order;
  };
  for (const R& row :
       {R{Variant(1), Variant(2.5), -1}, R{Variant(int16_t{3}), Variant(3.0), 0},
        R{Variant(true), Variant(-1), 0}, R{Variant(), Variant(0), 0}, R{Variant(), Variant(""), 0},
        R{Variant(), Variant(), 0}, R{Variant::null(), Variant(1), std::nullopt},
        // Texts compare as texts, in binary: lower case after upper.
        R{Variant("10"), Variant("9"), -1}, R{Variant("a"), Variant("B"), 1},
        // A number is less than a text.
        R{Variant(100), Variant("1"), -1}, R{Variant("1"), Variant(100), 1}}) {
    EXPECT_EQ(compare(row.left, row.right), row.order)
        << describe(row.left) << " with " << describe(row.right);
  }
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
