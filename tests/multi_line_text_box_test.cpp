#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/entry/data_multi_line_text_box.h"
#include "tessaline/entry/data_text_box.h"

namespace tessaline {
namespace {

using host::HostCall;

class MultiLineTextBox : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    box = DTMDataMultiLnTextBox::create();
    box->IDTMControl_Init(host);
    box->IDtmControl_Name("Notes");
    box->IDtmControl_DtmContainer(host);
  }
  headless::TextBox& text() { return headless::user(box->Text1()); }

  // The single-line sibling with the same type and format, for comparison.
  std::shared_ptr<DTMDataTextBox> singleLineBox(TextDataType type, const std::string& format) {
    auto single = DTMDataTextBox::create();
    single->IDTMControl_Init(host);
    single->TextType(type);
    single->IDTMControlFormatter_EditFormat(format);
    return single;
  }

  std::shared_ptr<DTMDataMultiLnTextBox> box;
};

TEST_F(MultiLineTextBox, IsAMultiLineChildWithTheSecondTabIndex) {
  EXPECT_TRUE(box->Text1().MultiLine());
  EXPECT_EQ(box->Text1().TabIndex(), 1);
  box->TextType(TextDataType::Latin1);
  text().type("one");
  text().pressKey(headless::keys::kReturn, 0, 13);
  EXPECT_EQ(box->Text1().Text(), "one");  // no key class of a TextType holds the return key
  box->TextType(static_cast<TextDataType>(-1));
  text().pressKey(headless::keys::kReturn, 0, 13);
  text().type("two");
  EXPECT_EQ(box->Text1().Text(), "one\r\ntwo");
  EXPECT_EQ(box->IDTMDataControl_Value(), Variant("one\r\ntwo"));
}

TEST_F(MultiLineTextBox, DigitFormatsTakeANegativeNumberThatTheSingleLineBoxRefuses) {
  box->TextType(TextDataType::Numbers);
  box->IDTMControlFormatter_EditFormat("4d");
  text().type("-");
  EXPECT_EQ(box->Text1().Text(), "");  // the pattern wants a digit
  text().type("123");
  text().select(0, 0);
  text().type("-");
  EXPECT_EQ(box->Text1().Text(), "-123");

  auto single = singleLineBox(TextDataType::Numbers, "4d");
  headless::TextBox& singleText = headless::user(single->Text1());
  singleText.type("123");
  singleText.select(0, 0);
  singleText.type("-");
  EXPECT_EQ(single->Text1().Text(), "123");
}

TEST_F(MultiLineTextBox, TextFormatsRefuseACommaThatTheSingleLineBoxTakes) {
  box->TextType(TextDataType::Latin1);
  box->IDTMControlFormatter_EditFormat("8s");
  text().type("a, b");
  EXPECT_EQ(box->Text1().Text(), "a b");

  auto single = singleLineBox(TextDataType::Latin1, "8s");
  headless::user(single->Text1()).type("a, b");
  EXPECT_EQ(single->Text1().Text(), "a, b");
}

TEST_F(MultiLineTextBox, TheSeparatorIsAlwaysAPoint) {
  headless::setDecimalSeparator(",");
  box->TextType(TextDataType::Numbers);
  box->IDTMControlFormatter_EditFormat("5.2f");
  EXPECT_EQ(box->editPattern(), R"(^[-]{0,1}[0-9]{0,5}\.[0-9]{0,2}$)");
  text().type("1,5.25.");
  EXPECT_EQ(box->Text1().Text(), "15.25");
}

TEST_F(MultiLineTextBox, AMinusMayStandAtTheFirstTwoPlacesOnce) {
  box->TextType(TextDataType::Numbers);
  text().type("1-");
  EXPECT_EQ(box->Text1().Text(), "1-");
  text().type("-");  // a second minus is refused, and the text stays
  EXPECT_EQ(box->Text1().Text(), "1-");
  text().select(0, 2);
  text().type("12-");
  EXPECT_EQ(box->Text1().Text(), "12");
}

TEST_F(MultiLineTextBox, LeavingAnEmptyNumberIsRefusedWithAWarning) {
  host->translations = {{"Empty_value_not_allowed", "No empty value for"}, {"NotesLabel", "Notes"}};
  box->IDTMDataControl_DataItemDef(testing::element(R"(<dataItem name="N" label="NotesLabel"/>)"));
  box->TextType(TextDataType::Numbers);
  box->IDTMDataControl_SetDeviceValue(Variant("42"));
  text().select(0, 2);
  text().backspace();
  ASSERT_TRUE(box->IDTMDataControl_Hot());
  host->takeCalls();

  text().blur();
  const auto lookups = host->callsOf("GetLocalizedString");
  ASSERT_GE(lookups.size(), 2u);
  EXPECT_EQ(lookups[0].arguments[0], "Empty_value_not_allowed");
  EXPECT_EQ(lookups[1].arguments[0], "NotesLabel");
  EXPECT_EQ(host->callsOf("ShowMessage"),
            (std::vector<HostCall>{{"ShowMessage",
                                    {"messageExclamation", "buttonsOk", "buttonOk", "Warning",
                                     "No empty value for Notes"}}}));
  EXPECT_EQ(box->Text1().Text(), "42");
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  EXPECT_EQ(host->callsOf("ControlValueChanged").size(), 1u);
}

TEST_F(MultiLineTextBox, LeavingAnEmptyTextIsFine) {
  text().type("a");
  text().backspace();
  host->takeCalls();
  text().blur();
  EXPECT_TRUE(host->callsOf("ShowMessage").empty());
  EXPECT_TRUE(box->IDTMDataControl_Hot());
}

TEST_F(MultiLineTextBox, ADeviceValueMovesTheBaselineOnlyWhileHot) {
  text().focus();  // baseline "" from the focus
  box->IDTMDataControl_SetDeviceValue(Variant("a"));
  box->IDTMDataControl_SetDeviceValue(Variant("b"));
  EXPECT_EQ(box->Text1().Text(), "b");
  EXPECT_EQ(box->BaselineText(), "");  // two values in a row leave it where it was
  text().select(1, 0);
  text().type("c");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  box->IDTMDataControl_SetDeviceValue(Variant("bc"));
  EXPECT_EQ(box->BaselineText(), "bc");
  text().backspace();
  text().type("c");
  EXPECT_FALSE(box->IDTMDataControl_Hot());
}

TEST_F(MultiLineTextBox, TheBaselineIsComparedAsItStands) {
  box->IDTMDataControl_SetDeviceValue(Variant("7 "));
  text().focus();
  box->IDTMDataControl_Hot(false);
  box->IDTMDataControl_SetDeviceValue(Variant("7 "));  // not hot: the baseline stays
  EXPECT_EQ(box->Text1().Text(), "7");
  EXPECT_EQ(box->BaselineText(), "7");
  box->IDTMDataControl_Hot(true);
  box->IDTMDataControl_SetDeviceValue(Variant("7 "));
  text().pressKey(headless::keys::kShift, platform::shift::kShift);
  EXPECT_TRUE(box->IDTMDataControl_Hot());  // "7" differs from "7 "
}

TEST_F(MultiLineTextBox, KeepsValuesThatTheSingleLineBoxWouldShowAsNaN) {
  box->TextType(TextDataType::Numbers);
  box->IDTMDataControl_Value(Variant("nan"));
  EXPECT_EQ(box->Text1().Text(), "nan");
  EXPECT_TRUE(host->errorLines().empty());
}

TEST_F(MultiLineTextBox, VisibleDoesntRereadTheDefinition) {
  box->IDTMDataControl_DataItemDef(testing::element(R"(<dataItem name="N" help="H"/>)"));
  host->takeCalls();
  box->IDtmControl_Visible(false);
  box->IDtmControl_Visible(true);
  EXPECT_TRUE(host->callsOf("GetLocalizedString").empty());
  EXPECT_FALSE(box->TooltipLabel().Visible() && !box->Text1().Visible());
}

TEST_F(MultiLineTextBox, TheTooltipStaysTenSecondsAndIsRebuiltOnLeaving) {
  box->ToolTipText("Tip");
  text().focus();
  auto& tooltips = headless::current().tooltips();
  ASSERT_NE(tooltips.ownedBy(box->window().hWnd()), nullptr);
  EXPECT_EQ(tooltips.ownedBy(box->window().hWnd())->visibleTime, 10000);
  const int32_t before = tooltips.created();
  text().blur();
  EXPECT_EQ(tooltips.created(), before + 1);
  EXPECT_EQ(tooltips.liveCount(), 1u);
}

}  // namespace
}  // namespace tessaline
