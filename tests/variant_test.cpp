#include "values/variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support.h"
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
    ::testing::Values(DoubleText{12.5, "12.5"}, DoubleText{0.1 + 0.2, "0.3"},
                      DoubleText{1.0 / 3, "0.333333333333333"},
                      DoubleText{2.0 / 3, "0.666666666666667"}, DoubleText{-0.5, "-0.5"},
                      DoubleText{0.0, "0"}, DoubleText{-0.0, "0"}, DoubleText{100, "100"},
                      DoubleText{123456789.123456789, "123456789.123457"},
                      DoubleText{999999999999999, "999999999999999"}, DoubleText{1e15, "1E+15"},
                      DoubleText{1e16, "1E+16"}, DoubleText{-1.5e16, "-1.5E+16"},
                      DoubleText{1e100, "1E+100"}, DoubleText{0.0001, "0.0001"},
                      DoubleText{0.000123, "0.000123"}, DoubleText{0.00001, "1E-05"},
                      DoubleText{1.5e-7, "1.5E-07"}, DoubleText{1.7e308, "1.7E+308"},
                      DoubleText{4.94065645841247e-324, "4.94065645841247E-324"}));

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
  EXPECT_EQ(Variant(std::numeric_limits<double>::quiet_NaN()).toText(), "NaN");
  EXPECT_EQ(Variant(-std::numeric_limits<double>::infinity()).toText(), "-Infinity");
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

INSTANTIATE_TEST_SUITE_P(Table, NumberFromText,
                         ::testing::Values(TextNumber{"12.5", 12.5}, TextNumber{"  12.5 ", 12.5},
                                           TextNumber{"-.5", -0.5}, TextNumber{"+5.", 5},
                                           TextNumber{"1e3", 1000}, TextNumber{"1D2", 100},
                                           TextNumber{"2.5E-1", 0.25}, TextNumber{"&HFF", 255},
                                           TextNumber{"&hff0000", 16711680},
                                           TextNumber{"&HFFFFFFFF", -1}, TextNumber{"&O17", 15},
                                           TextNumber{"1e-999", 0}, TextNumber{"007", 7}));

TEST(VariantNumbers, TextThatIsNoNumberIsATypeMismatch) {
  for (const char* text : {"", " ", "abc", "12.5.3", "1e", "--1", "&H", "&HG1", "1,5", "NaN"}) {
    EXPECT_EQ(errorOf([&] { Variant(text).toDouble(); }), 13) << text;
  }
  EXPECT_EQ(errorOf([] { Variant("1e999").toDouble(); }), 6);
  EXPECT_EQ(errorOf([] { Variant("&H100000000").toDouble(); }), 6);
}

TEST(VariantNumbers, ReadTheLocaleSeparator) {
  WithSeparator comma(",");
  EXPECT_DOUBLE_EQ(Variant("12,5").toDouble(), 12.5);
  EXPECT_EQ(errorOf([] { Variant("12.5").toDouble(); }), 13);
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
  EXPECT_EQ(errorOf([] { Variant(std::nan("")).toInt32(); }), 6);
  EXPECT_EQ(errorOf([] { Variant(std::numeric_limits<double>::infinity()).toInt16(); }), 6);
}

TEST(IntegerConversion, ReadsTextThroughTheNumber) {
  EXPECT_EQ(Variant("2.5").toInt16(), 2);
  EXPECT_EQ(Variant(" 3.5").toInt32(), 4);
  EXPECT_EQ(Variant("&H7FFF").toInt16(), 32767);
  EXPECT_EQ(errorOf([] { Variant("12a").toInt16(); }), 13);
}

TEST(BooleanConversion, FromWordsNumbersAndText) {
  EXPECT_TRUE(Variant("True").toBool());
  EXPECT_TRUE(Variant("true").toBool());
  EXPECT_FALSE(Variant("FALSE").toBool());
  EXPECT_TRUE(Variant("-1").toBool());
  EXPECT_FALSE(Variant("0").toBool());
  EXPECT_TRUE(Variant(0.5).toBool());
  EXPECT_FALSE(Variant().toBool());
  EXPECT_EQ(errorOf([] { Variant("yes").toBool(); }), 13);
  EXPECT_EQ(errorOf([] { Variant::null().toBool(); }), 94);
}

TEST(DateConversion, FromNumbersAndText) {
  EXPECT_EQ(Variant(25569).toDate().days, 25569);
  EXPECT_EQ(Variant("1/1/1970").toDate().days, 25569);
  EXPECT_EQ(Variant("1970-01-01 12:00").toDate().days, 25569.5);
  EXPECT_EQ(errorOf([] { Variant("2/30/2020").toDate(); }), 13);
  EXPECT_EQ(errorOf([] { Variant(1e7).toDate(); }), 6);
}

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
