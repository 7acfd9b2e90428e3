#include "tessaline/entry/edit_patterns.h"

#include <gtest/gtest.h>

namespace tessaline {
namespace {

struct PatternRow {
  const char* format;
  const char* textBox;  // with "." as the separator
  const char* multiLine;
  friend void PrintTo(const PatternRow& row, std::ostream* out) {
    *out << '"' << row.format << '"';
  }
};

class EditPatterns : public ::testing::TestWithParam<PatternRow> {};

TEST_P(EditPatterns, FollowTheFormatsLastLetter) {
  EXPECT_EQ(textBoxEditPattern(GetParam().format, "."), GetParam().textBox);
  EXPECT_EQ(multiLineEditPattern(GetParam().format), GetParam().multiLine);
}

INSTANTIATE_TEST_SUITE_P(
    Table, EditPatterns,
    ::testing::Values(
        PatternRow{"5.2f", R"(^[-]{0,1}[0-9]{0,5}\.[0-9]{0,2}$)",
                   R"(^[-]{0,1}[0-9]{0,5}\.[0-9]{0,2}$)"},
        PatternRow{".f", R"(^[-]{0,1}[0-9]{0,}\.[0-9]{0,}$)", R"(^[-]{0,1}[0-9]{0,}\.[0-9]{0,}$)"},
        PatternRow{"4d", R"(^[0-9]{0,4}$)", R"(^[-]{0,1}\d{1,4}\.$)"},
        PatternRow{"4u", R"(^[0-9]{0,4}$)", R"(^[-]{0,1}\d{1,4}\.$)"},
        PatternRow{"4x", R"(^[-]{0,1}([0-9]|[a-f]|[A-F]){0,4}\.$)",
                   R"(^[-]{0,1}([0-9]|[a-f]|[A-F]){0,4}\.$)"},
        PatternRow{"4X", R"(^[-]{0,1}([0-9]|[a-f]|[A-F]){0,4}\.$)",
                   R"(^[-]{0,1}([0-9]|[a-f]|[A-F]){0,4}\.$)"},
        PatternRow{"8s", R"(^.{0,8}\.$)", R"(^[-]{0,1}([0-9]|[a-z]|[A-Z]|[\s]){0,8}\.$)"},
        PatternRow{"8S", R"(^.{0,8}\.$)", R"(^[-]{0,1}([0-9]|[a-z]|[A-Z]|[\s]){0,8}\.$)"},
        PatternRow{"5.2F", "", ""}, PatternRow{"5.2g", "", ""}, PatternRow{"", "", ""},
        PatternRow{"x.yf", R"(^[-]{0,1}[0-9]{0,x}\.[0-9]{0,y}$)",
                   R"(^[-]{0,1}[0-9]{0,x}\.[0-9]{0,y}$)"}));

TEST(EditPatterns, EscapeTheLocaleSeparatorAsItStands) {
  EXPECT_EQ(textBoxEditPattern("5.2f", ","), R"(^[-]{0,1}[0-9]{0,5}\,[0-9]{0,2}$)");
  EXPECT_EQ(textBoxEditPattern("5.2f", ", "), R"(^[-]{0,1}[0-9]{0,5}\, [0-9]{0,2}$)");
  EXPECT_EQ(textBoxEditPattern("4x", ","), R"(^[-]{0,1}([0-9]|[a-f]|[A-F]){0,4}\.$)");
}

TEST(EditPatterns, AFixedPointFormatWithoutAPointCannotBeSplit) {
  for (const char* format : {"f", "5f", "52f"}) {
    try {
      textBoxEditPattern(format, ".");
      ADD_FAILURE() << format;
    } catch (const VbError& e) {
      EXPECT_EQ(e.number(), 9);
    }
    EXPECT_THROW(multiLineEditPattern(format), VbError);
  }
}

TEST(KeyClasses, KeepTheKeysOfEachTextType) {
  struct Row {
    TextDataType type;
    std::vector<int> kept;
    std::vector<int> rejected;
  };
  const Row rows[] = {
      {TextDataType::Numbers, {8, 45, 44, 48, 57}, {32, 46, 43, 65, 97, 22}},
      {TextDataType::AlphaNumeric, {8, 32, 48, 57, 65, 90, 97, 122}, {45, 46, 64, 91, 123, 228}},
      {TextDataType::Alphabets, {8, 65, 90, 97, 122}, {32, 48, 57, 96}},
      {TextDataType::Latin1, {8, 32, 46, 126}, {31, 127, 228, 22}},
      {TextDataType::PackedAscii, {8, 32, 95, 97, 122}, {96, 123, 126}},
      {static_cast<TextDataType>(9), {0, 8, 22, 228, 0x4E2D, -1}, {}},
  };
  for (const Row& row : rows) {
    for (int key : row.kept) {
      EXPECT_TRUE(keptByTextType(row.type, static_cast<int16_t>(key), 44))
          << static_cast<int>(row.type) << " " << key;
    }
    for (int key : row.rejected) {
      EXPECT_FALSE(keptByTextType(row.type, static_cast<int16_t>(key), 44))
          << static_cast<int>(row.type) << " " << key;
    }
  }
}

TEST(KeyClasses, TheSeparatorKeyIsTheFirstCharacterOfTheSeparator) {
  EXPECT_EQ(firstCharacterKey("."), 46);
  EXPECT_EQ(firstCharacterKey(", "), 44);
  EXPECT_EQ(firstCharacterKey("٫"), 0x066B);
  EXPECT_EQ(firstCharacterKey(""), 0);
  EXPECT_EQ(keyText(0x066B), "٫");
}

}  // namespace
}  // namespace tessaline
