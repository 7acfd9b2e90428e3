#include "tessaline/platform/regexp.h"

#include <gtest/gtest.h>

#include "tessaline/platform/regexp/pcre2_regexp.h"

namespace tessaline {
namespace {

class RegExpTest : public ::testing::Test {
 protected:
  void SetUp() override { regexp::install(); }
  void TearDown() override { platform::setRegExpEngine(nullptr); }

  bool test(const std::string& pattern, const std::string& text) {
    Ref<platform::RegExp> expression = platform::createRegExp();
    expression->Pattern(pattern);
    EXPECT_EQ(expression->Pattern(), pattern);
    return expression->Test(text);
  }
  int refusal(const std::string& pattern) {
    try {
      test(pattern, "x");
    } catch (const VbError& e) {
      EXPECT_EQ(e.description(), "Syntax error in regular expression");
      return e.number();
    }
    return 0;
  }
};

TEST_F(RegExpTest, MatchesAnywhereWithCaseAndDollarOnlyAtTheEnd) {
  EXPECT_TRUE(test("b", "abc"));
  EXPECT_FALSE(test("B", "abc"));
  EXPECT_TRUE(test("^[0-9]{0,5}\\.[0-9]{0,2}$", "123.4"));
  EXPECT_FALSE(test("^[0-9]{0,5}\\.[0-9]{0,2}$", "123456."));
  EXPECT_FALSE(test("^abc$", "abc\n"));
  EXPECT_TRUE(test("^\\d{1,4}\\.$", "12."));
  EXPECT_FALSE(test("^\\d{1,4}\\.$", "١٢."));  // \d is ASCII digits only
}

TEST_F(RegExpTest, CountsCharactersNotBytes) {
  EXPECT_TRUE(test("^.{0,3}\\.$", "äöü."));
  EXPECT_FALSE(test("^.{0,3}\\.$", "äöüß."));
}

TEST_F(RegExpTest, RefusesWhatTheClassicSyntaxRefuses) {
  EXPECT_EQ(refusal("^[0-9]{0,abc}$"), 5017);
  EXPECT_EQ(refusal("^[0-9]{, 5}$"), 5017);
  EXPECT_EQ(refusal("^[0-9]{0,5$"), 5017);
  EXPECT_EQ(refusal("^[0-9]{0, 5}$"), 5017);
  EXPECT_EQ(refusal("^[0-9]{0,99999999}$"), 5017);
  EXPECT_EQ(refusal("^[0-9]{5,2}$"), 5017);
  EXPECT_EQ(refusal("(unclosed"), 5017);
  EXPECT_EQ(refusal("^[0-9]{0,}$"), 0);
  EXPECT_EQ(refusal("\\{0,abc}"), 0);  // an escaped brace is text
  EXPECT_EQ(refusal("[{]abc}"), 0);    // as is one in a class
}

TEST_F(RegExpTest, ARefusedPatternFailsAtEachTestNotBefore) {
  Ref<platform::RegExp> expression = platform::createRegExp();
  EXPECT_NO_THROW(expression->Pattern("{x}"));
  EXPECT_THROW(expression->Test("a"), VbError);
  EXPECT_THROW(expression->Test("b"), VbError);
}

TEST_F(RegExpTest, InvalidUtf8MatchesNothingAndLongTextsAreFine) {
  EXPECT_FALSE(test("^.$", "\xff"));
  EXPECT_TRUE(test("b", std::string("\xff", 1) + "b"));
  const std::string megabyte(1 << 20, 'a');
  EXPECT_TRUE(test("^a{0,5}", megabyte));
  EXPECT_FALSE(test("^.{0,16}\\.$", megabyte));
}

TEST_F(RegExpTest, RunawayBacktrackingGivesUpInsteadOfHanging) {
  EXPECT_FALSE(test("^(a+)+$", std::string(40, 'a') + "b"));
}

TEST(RegExpEngine, IsNeededBeforeAnObjectCanBeMade) {
  platform::setRegExpEngine(nullptr);
  EXPECT_THROW(platform::createRegExp(), VbError);
}

TEST(ClassicSyntax, SaysWhereTheBraceIs) {
  EXPECT_EQ(regexp::classicSyntaxError("ab{c"), "a brace that is no quantifier at offset 2");
  EXPECT_EQ(regexp::classicSyntaxError("a{1,2}b{3}"), std::nullopt);
}

}  // namespace
}  // namespace tessaline
