#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/entry/data_text_box.h"

namespace tessaline {
namespace {

class TextBoxEntry : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    makeBox();
  }
  void makeBox() {
    box = DTMDataTextBox::create();
    box->IDTMControl_Init(host);
    box->IDtmControl_Name("Flow");
  }
  headless::TextBox& text() { return headless::user(box->Text1()); }
  void numbers(const std::string& format) {
    box->TextType(TextDataType::Numbers);
    box->IDTMControlFormatter_EditFormat(format);
  }

  std::shared_ptr<DTMDataTextBox> box;
};

// Locked reaches the child: the user can't change the text by key, paste key, cut key or the
// context menu's paste, and a cut still copies; a program still changes it.
TEST_F(TextBoxEntry, ALockedBoxTakesNoKeyNorPasteButAValueByProgram) {
  box->IDtmControl_DtmContainer(host);
  box->IDTMDataControl_SetDeviceValue(Variant("12"));
  box->let("Locked", Variant(true));
  host->takeCalls();
  text().type("34");
  headless::current().clipboard().SetText("99");
  text().paste();
  text().select(0, 2);
  text().pressCtrl('V');
  text().select(0, 1);
  text().pressCtrl('X');
  EXPECT_EQ(headless::current().clipboard().GetText(), "1");
  EXPECT_EQ(box->Text1().Text(), "12");
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  box->IDTMDataControl_SetDeviceValue(Variant("56"));
  EXPECT_EQ(box->Text1().Text(), "56");
}

TEST_F(TextBoxEntry, AFixedPointFormatStopsAtItsWidth) {
  numbers("5.2f");
  text().type("123456");
  EXPECT_EQ(box->Text1().Text(), "12345");
  EXPECT_EQ(box->Text1().SelStart(), 5);  // the caret goes back to the end
  text().type(".678");
  EXPECT_EQ(box->Text1().Text(), "12345.67");
}

TEST_F(TextBoxEntry, NumbersTakeTheLocalesSeparator) {
  headless::setDecimalSeparator(",");
  makeBox();
  numbers("5.2f");
  EXPECT_EQ(box->editPattern(), R"(^[-]{0,1}[0-9]{0,5}\,[0-9]{0,2}$)");
  text().type("1.5");
  EXPECT_EQ(box->Text1().Text(), "15");
  text().type(",25,");
  EXPECT_EQ(box->Text1().Text(), "15,25");
}

TEST_F(TextBoxEntry, AMinusStandsOnlyAtTheStartAndRestartsANegativeNumber) {
  numbers("5.2f");
  text().type("12-");
  EXPECT_EQ(box->Text1().Text(), "12");
  text().select(0, 0);
  text().type("-");
  EXPECT_EQ(box->Text1().Text(), "-12");
  text().select(0, 0);
  text().type("-");
  EXPECT_EQ(box->Text1().Text(), "-");
}

TEST_F(TextBoxEntry, DigitFormatsRefuseAMinusAndTheirLastDigit) {
  numbers("4d");
  text().type("-");
  EXPECT_EQ(box->Text1().Text(), "");
  text().type("12345");
  EXPECT_EQ(box->Text1().Text(), "1234");
  box->IDTMControlFormatter_EditFormat("4u");
  text().select(0, 4);
  text().type("98765");
  EXPECT_EQ(box->Text1().Text(), "9876");
}

TEST_F(TextBoxEntry, TextFormatsRefuseAPointInTheMiddle) {
  box->TextType(TextDataType::Latin1);
  box->IDTMControlFormatter_EditFormat("8s");
  text().type("abc");
  text().select(1, 0);
  text().type(".");
  EXPECT_EQ(box->Text1().Text(), "abc");
  EXPECT_EQ(box->Text1().SelStart(), 3);
  text().type(".");
  EXPECT_EQ(box->Text1().Text(), "abc.");
  text().type("1");
  EXPECT_EQ(box->Text1().Text(), "abc.");  // a text that holds the point must end in it
  box->IDTMControlFormatter_EditFormat("4x");
  text().select(0, 4);
  text().type("1fG");
  EXPECT_EQ(box->Text1().Text(), "1f");
}

TEST_F(TextBoxEntry, TheEmptyFormatTakesWhatTheTextTypeLetsThrough) {
  box->IDTMControlFormatter_EditFormat("2d");
  box->IDTMControlFormatter_EditFormat("");
  EXPECT_EQ(box->editPattern(), "^[0-9]{0,2}$");  // kept, but unused
  text().type("Hello World 42!");
  EXPECT_EQ(box->Text1().Text(), "Hello World 42");
  box->TextType(TextDataType::Alphabets);
  text().type(" x9");
  EXPECT_EQ(box->Text1().Text(), "Hello World 42x");
}

TEST_F(TextBoxEntry, ChangesThatComeFromNoKeyAreNotGuarded) {
  numbers("2d");
  box->IDTMDataControl_SetDeviceValue(Variant(12345));
  EXPECT_EQ(box->Text1().Text(), "12345");
  host->takeCalls();
  headless::current().clipboard().SetText("99999");
  text().select(5, 0);
  text().paste();
  EXPECT_EQ(box->Text1().Text(), "1234599999");
  EXPECT_TRUE(host->calls().empty());  // no key, no release, no report
}

TEST_F(TextBoxEntry, APasteByKeyIsNotGuardedByTheFormat) {
  numbers("2d");
  headless::current().clipboard().SetText("345678");
  text().pressCtrl('V');
  EXPECT_EQ(box->Text1().Text(), "345678");
  EXPECT_TRUE(box->IDTMDataControl_Hot());
}

TEST_F(TextBoxEntry, ClipboardKeysCopyAndCut) {
  numbers("2d");
  text().type("12");
  text().select(0, 1);
  text().pressCtrl('C');
  EXPECT_EQ(headless::current().clipboard().GetText(), "1");
  text().select(1, 1);
  text().pressCtrl('X');
  EXPECT_EQ(headless::current().clipboard().GetText(), "2");
  EXPECT_EQ(box->Text1().Text(), "1");
  text().select(0, 1);
  text().pressKey(67, platform::shift::kCtrl | platform::shift::kAlt, 3);
  EXPECT_EQ(headless::current().clipboard().GetText(), "2");  // Ctrl+Alt is no copy
}

TEST_F(TextBoxEntry, AKeyThatChangedNothingLeavesTheNextPasteGuarded) {
  numbers("2d");
  text().type("1x");  // "x" is refused: its key stays pending
  headless::current().clipboard().SetText("345678");
  text().pressCtrl('V');
  EXPECT_EQ(box->Text1().Text(), "1");
}

TEST_F(TextBoxEntry, APasteOfAMegabyteGoesThrough) {
  headless::current().clipboard().SetText(std::string(1 << 20, '7'));
  text().pressCtrl('V');
  EXPECT_EQ(box->Text1().Text().size(), 1u << 20);
  EXPECT_EQ(box->IDTMDataControl_Value().toText().size(), 1u << 20);
}

TEST_F(TextBoxEntry, TheHostSeesKeysInTheirOrderAndMayChangeThem) {
  struct Recorder : ControlEvents {
    std::vector<std::string> seen;
    void Change() override { seen.push_back("Change"); }
    void KeyDown(int16_t& code, int16_t&) override {
      seen.push_back("KeyDown " + std::to_string(code));
    }
    void KeyPress(int16_t& key) override {
      seen.push_back("KeyPress " + std::to_string(key));
      if (key == 'a') key = 'A';
    }
  };
  auto recorder = std::make_shared<Recorder>();
  box->Advise(recorder);
  box->TextType(TextDataType::Numbers);
  text().type("x");
  box->TextType(TextDataType::Alphabets);
  text().type("a");
  EXPECT_EQ(box->Text1().Text(), "A");
  EXPECT_EQ(recorder->seen, (std::vector<std::string>{"KeyDown 88", "KeyPress 0", "KeyDown 65",
                                                      "KeyPress 97", "Change"}));
}

TEST_F(TextBoxEntry, ValidateInputTestsTheTextWithTheKey) {
  numbers("3d");
  text().type("12");
  int16_t key = '3';
  EXPECT_EQ(box->ValidateInput(key), '3');
  text().type("3");
  key = '4';
  EXPECT_EQ(box->ValidateInput(key), 0);
  key = 8;
  EXPECT_EQ(box->ValidateInput(key), 8);
  EXPECT_EQ(box->call("ValidateInput", {Variant(int16_t{'4'})}), Variant(int16_t{0}));
  EXPECT_TRUE(box->ValidateInputOnChange());
  EXPECT_TRUE(box->TestRegExp("^a", "abc"));
}

TEST_F(TextBoxEntry, AFormatThatCantBeSplitFailsAndKeepsTheOldPattern) {
  numbers("5.2f");
  EXPECT_THROW(box->IDTMControlFormatter_EditFormat("5f"), VbError);
  EXPECT_EQ(box->editPattern(), R"(^[-]{0,1}[0-9]{0,5}\.[0-9]{0,2}$)");
  EXPECT_THROW(box->IDTMControlFormatter_ScaleFormat("f"), VbError);
}

TEST_F(TextBoxEntry, APatternTheEngineRefusesFailsEachKeyOutsideTheControl) {
  numbers("x.2f");
  text().type("1");
  const auto errors = unhandled();
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0].number(), 5017);
  EXPECT_THROW(box->TestRegExp(box->editPattern(), "1."), VbError);
}

TEST_F(TextBoxEntry, CharactersBeyondAsciiFollowTheTextType) {
  box->TextType(TextDataType::Latin1);
  text().type("Grüße");
  EXPECT_EQ(box->Text1().Text(), "Gre");
  box->TextType(static_cast<TextDataType>(42));
  text().type("中文 😀");
  EXPECT_EQ(box->Text1().Text(), "Gre中文 😀");
  box->IDTMControlFormatter_EditFormat("6s");
  text().select(0, 100);
  text().type("ÄÖÜäöüß");
  EXPECT_EQ(box->Text1().Text(), "ÄÖÜäöü");  // the width counts characters
}

TEST_F(TextBoxEntry, ASeparatorOfTwoCharactersKeysOnItsFirst) {
  headless::setDecimalSeparator(", ");
  makeBox();
  numbers("5.2f");
  text().type("1,");
  // The key makes "1," which lacks the separator's blank: the blank-less text gets the whole
  // separator appended ("1,, ") and fails, so a two-character separator can't be typed.
  EXPECT_EQ(box->Text1().Text(), "1");
  EXPECT_EQ(box->GetDecimalSeparator(), ", ");
}

TEST_F(TextBoxEntry, ResizingKeepsTheLimitsAndPlacesTheEditChild) {
  auto& window = headless::user(box->window());
  window.resize(2000, 100);
  EXPECT_EQ(box->window().Height(), 150);
  EXPECT_EQ(box->Text1().Height(), 150);
  window.resize(499, 101);
  EXPECT_EQ(box->window().Height(), 101);
  EXPECT_EQ(box->window().Width(), 500);
  EXPECT_EQ(box->Text1().Width(), 500 - 375 - 10);
  EXPECT_EQ(box->Text1().Left(), 385);
  window.resize(500, 400);
  EXPECT_EQ(box->window().Width(), 500);
  EXPECT_EQ(box->Text1().Height(), 400);
}

TEST_F(TextBoxEntry, TheTooltipShowsTheHelpOnBothWindowsForEightSeconds) {
  host->translations["FlowHelp"] = "Volume flow";
  box->IDTMDataControl_DataItemDef(testing::element(R"(<dataItem name="F" help="FlowHelp"/>)"));
  const headless::TooltipWindow* tip = headless::current().tooltips().ownedBy(box->window().hWnd());
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->visibleTime, 8000);
  EXPECT_EQ(tip->initialTime, 500);
  EXPECT_EQ(tip->maxWidth, 400);
  ASSERT_EQ(tip->tools.size(), 2u);
  EXPECT_EQ(tip->tools[0].window, box->Text1().hWnd());
  EXPECT_EQ(tip->tools[1].window, box->window().hWnd());
  EXPECT_EQ(tip->tools[1].text, "Volume flow");
  EXPECT_EQ(tip->tools[0].flags, 0x11);
  EXPECT_EQ(headless::current().tooltips().liveCount(), 1u);
}

TEST_F(TextBoxEntry, AToolTipTextShowsAtTheNextFocusAndNotWhileInvisible) {
  box->ToolTipText("Custom");
  EXPECT_EQ(headless::current().tooltips().ownedBy(box->window().hWnd()), nullptr);
  text().focus();
  auto tip = headless::current().tooltips().ownedBy(box->window().hWnd());
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->tools[0].text, "Custom");
  text().blur();
  box->IDtmControl_Visible(false);
  EXPECT_EQ(headless::current().tooltips().ownedBy(box->window().hWnd()), nullptr);
}

}  // namespace
}  // namespace tessaline
