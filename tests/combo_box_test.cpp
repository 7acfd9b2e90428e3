#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/list_control.h"

namespace tessaline {
namespace {

using platform::colors::kWindow;
using platform::colors::kYellow;

constexpr const char* kModes =
    R"(<enumeration><entry name="Off" code="0"/><entry name="Auto" code="1" label="AutoLabel"/>)"
    R"(<entry name="Manual" code="2" includeIf="  expert "/></enumeration>)";

class ComboBox : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    host->translations["AutoLabel"] = "Automatic";
    combo = DTMDataComboBox::create();
    combo->InitProperties();
    combo->IDTMControl_Init(host);
    combo->IDtmControl_Name("Mode");
    combo->IDtmControl_DtmContainer(host);
    combo->IDTMEnumeration_EnumDataDef(testing::element(kModes));
    host->takeCalls();
  }
  headless::ComboBox& user() { return headless::user(combo->Combo1()); }
  int32_t status() { return combo->DTMStatusControl1().IDTMStatusControl_Mode(); }
  size_t reports() { return host->callsOf("ControlValueChanged").size(); }

  std::shared_ptr<DTMDataComboBox> combo;
};

TEST_F(ComboBox, ShowsTheEntriesTheHostIncludesInDocumentOrder) {
  ASSERT_EQ(combo->Combo1().ListCount(), 3);
  EXPECT_EQ(combo->Combo1().List(0), "Off");
  EXPECT_EQ(combo->Combo1().List(1), "Automatic");
  EXPECT_EQ(combo->Combo1().ListIndex(), -1);
  EXPECT_TRUE(combo->IDTMEnumeration_HasEnumData());

  host->evaluate = [](const std::string& expression) { return expression != "expert"; };
  combo->IDTMEnumeration_EnumDataDef(testing::element(kModes));
  EXPECT_EQ(combo->Combo1().ListCount(), 2);
  EXPECT_EQ(host->callsOf("EvaluateCondition").back().arguments[0], "expert");
}

TEST_F(ComboBox, ADeviceValueSelectsItsRowAndCountsAsClean) {
  combo->IDTMDataControl_SetDeviceValue(Variant(1));
  EXPECT_EQ(combo->Combo1().ListIndex(), 1);
  EXPECT_EQ(combo->Combo1().Text(), "Automatic");
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("1"));
  EXPECT_EQ(combo->BaselineText(), "1");
  EXPECT_FALSE(combo->IDTMDataControl_Hot());
  EXPECT_EQ(status(), 0);
  EXPECT_EQ(reports(), 1u);  // the row changed by program ran the click handling
}

TEST_F(ComboBox, APickMarksTheChangeAndPickingTheDevicesRowAgainClearsIt) {
  combo->IDTMDataControl_SetDeviceValue(Variant("0"));
  host->takeCalls();
  user().pick(2);
  EXPECT_TRUE(combo->IDTMDataControl_Hot());
  EXPECT_EQ(combo->Combo1().BackColor(), kYellow);
  EXPECT_EQ(status(), 102);
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("2"));
  user().pick(0);
  EXPECT_FALSE(combo->IDTMDataControl_Hot());
  EXPECT_EQ(combo->Combo1().BackColor(), kWindow);
  EXPECT_EQ(reports(), 2u);
}

TEST_F(ComboBox, WhileHotADeviceValueChangesNothing) {
  combo->IDTMDataControl_SetDeviceValue(Variant("0"));
  user().pick(1);
  combo->IDTMDataControl_SetDeviceValue(Variant("2"));
  EXPECT_EQ(combo->Combo1().ListIndex(), 1);
  EXPECT_EQ(combo->BaselineText(), "0");
}

TEST_F(ComboBox, AValueWithoutAnEntryKeepsTheOldRowAndTakesItsCode) {
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  combo->IDTMDataControl_SetDeviceValue(Variant("7"));
  EXPECT_EQ(combo->Combo1().ListIndex(), 1);
  EXPECT_FALSE(combo->IDTMDataControl_Hot());
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("1"));  // the device's 7 is not kept
  EXPECT_EQ(combo->BaselineText(), "1");
}

TEST_F(ComboBox, AValueWithoutAnEntryAndNoRowIsKept) {
  combo->IDTMDataControl_SetDeviceValue(Variant("7"));
  EXPECT_EQ(combo->Combo1().Text(), "");
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("7"));
  EXPECT_EQ(combo->BaselineText(), "7");
}

TEST_F(ComboBox, AnEntryWithAnEmptyTextMatchesAnEmptyChild) {
  combo->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><e name="Blank" code="9" label=""/><e name="A" code="1"/></enumeration>)"));
  combo->IDTMDataControl_SetDeviceValue(Variant("5"));
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("9"));
}

TEST_F(ComboBox, ANewEnumerationClearsTheRowUntilTheNextValue) {
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  combo->IDTMEnumeration_EnumDataDef(testing::element(kModes));
  EXPECT_EQ(combo->Combo1().ListIndex(), -1);
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("1"));
  combo->IDTMEnumeration_EnumDataDef(testing::element("<other/>"));
  EXPECT_EQ(combo->Combo1().ListCount(), 3);  // the table stays, the list is filled again
}

TEST_F(ComboBox, TheLastOfTwoEqualCodesOrTextsWins) {
  combo->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><e name="A" code="1"/><e name="B" code="1"/><e name="C" code="3"/>)"
      R"(</enumeration>)"));
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  EXPECT_EQ(combo->Combo1().ListIndex(), 1);

  combo->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><e name="X" code="1"/><e name="Y" code="2"/><e name="X" code="3"/>)"
      R"(</enumeration>)"));
  user().pick(0);
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("3"));
}

TEST_F(ComboBox, SelectingARowReadsTheValueBackInTheMiddleOfTheSearch) {
  // The first match's click reads the row's text back; its last entry ("3") then decides.
  combo->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><e name="A" code="1"/><e name="B" code="1"/><e name="A" code="3"/>)"
      R"(</enumeration>)"));
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  EXPECT_EQ(combo->Combo1().ListIndex(), 2);
}

TEST_F(ComboBox, AUserValueSetsTheRawMarkWithoutColours) {
  combo->IDTMDataControl_SetUserValue(Variant(7));
  EXPECT_TRUE(combo->IDTMDataControl_Hot());
  EXPECT_EQ(combo->Combo1().BackColor(), kWindow);
  EXPECT_EQ(combo->IDTMDataControl_PreviousValue(), Variant(7));
  combo->IDTMDataControl_SetUserValue(Variant(2));  // a row: its click has coloured already
  EXPECT_EQ(combo->Combo1().BackColor(), kYellow);
}

TEST_F(ComboBox, FailuresInSelectingAreCaughtAndLogged) {
  combo->IDTMDataControl_Value(Variant::null());  // a Null selects nothing, silently
  combo->IDTMDataControl_SetDeviceValue(Variant::null());
  combo->IDTMDataControl_SetUserValue(Variant(VariantArray{0, {Variant(1)}}));
  EXPECT_EQ(host->errorLines(),
            (std::vector<std::string>{
                "Error on DataCombo IDTMDataControl_SetDeviceValue94 ,Description = Invalid use "
                "of Null",
                "Error on SetComboValue13 ,Description = Type mismatch"}));
}

TEST_F(ComboBox, TheTooltipShowsTheHelpOnTheComboAndTheControl) {
  host->translations["H"] = "Operating mode";
  combo->IDTMDataControl_DataItemDef(
      testing::element(R"(<dataItem name="M" help="H" description="D"/>)"));
  const auto* tip = headless::current().tooltips().ownedBy(combo->window().hWnd());
  ASSERT_NE(tip, nullptr);
  ASSERT_EQ(tip->tools.size(), 2u);
  EXPECT_EQ(tip->tools[0].window, combo->Combo1().hWnd());
  EXPECT_EQ(tip->tools[0].text, "Operating mode");
  EXPECT_EQ(tip->visibleTime, 10000);
}

TEST_F(ComboBox, TheFrameMembersOfAnEnumeratedControl) {
  combo->IDtmControl_GenericDtm(host);
  EXPECT_FALSE(combo->IDtmControl_GenericDtm());
  combo->IDTMDataControl_Access(0);
  EXPECT_FALSE(combo->Combo1().Enabled());
  EXPECT_FALSE(combo->IDTMDataControl_Validate());
  EXPECT_FALSE(combo->IDTMDataControl_IsError());
  combo->SelStart(5);
  EXPECT_EQ(combo->SelStart(), 0);
  combo->IDtmControl_Visible(false);
  EXPECT_FALSE(combo->TooltipLabel().Visible());
  EXPECT_EQ(combo->TooltipLabel().ToolTipText(), "Welcome");
  headless::user(combo->window()).resize(400, 999);
  EXPECT_EQ(combo->window().Width(), 500);
  EXPECT_EQ(combo->window().Height(), 315);
  EXPECT_EQ(combo->Combo1().Width(), 500 - 375 - 10);
}

class ListControl : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    list = DTMListControl::create();
    list->InitProperties();
    list->IDTMControl_Init(host);
    list->IDtmControl_DtmContainer(host);
    list->IDTMEnumeration_EnumDataDef(testing::element(kModes));
    host->takeCalls();
  }
  headless::ListBox& user() { return headless::user(list->List1()); }

  std::shared_ptr<DTMListControl> list;
};

TEST_F(ListControl, IgnoresConditionsAndLeavesBlankRowsForSkippedChildren) {
  EXPECT_EQ(list->List1().ListCount(), 3);
  EXPECT_TRUE(host->callsOf("EvaluateCondition").empty());
  list->IDTMEnumeration_EnumDataDef(
      testing::element(R"(<enumeration><e name="A" code="1"/><e name="NoCode"/></enumeration>)"));
  ASSERT_EQ(list->List1().ListCount(), 2);
  EXPECT_EQ(list->List1().List(1), "");
}

TEST_F(ListControl, MarksAPickOnlyAfterADeviceValue) {
  user().pick(1);
  EXPECT_EQ(list->List1().ListIndex(), 1);
  EXPECT_FALSE(list->IDTMDataControl_Hot());
  EXPECT_EQ(host->callsOf("ControlValueChanged").size(), 1u);
  list->IDTMDataControl_SetDeviceValue(Variant("0"));
  EXPECT_TRUE(list->deviceValueReceived());
  user().pick(2);
  EXPECT_TRUE(list->IDTMDataControl_Hot());
}

TEST_F(ListControl, CleanShowsStatusOneHundred) {
  list->IDTMDataControl_SetDeviceValue(Variant("0"));
  EXPECT_EQ(list->DTMStatusControl1().IDTMStatusControl_Mode(), 100);
  list->IDTMDataControl_Hot(true);
  EXPECT_EQ(list->DTMStatusControl1().IDTMStatusControl_Mode(), 102);
}

TEST_F(ListControl, ThePreviousValueIsTheValueHeldUntilNow) {
  list->IDTMDataControl_Value(Variant("1"));
  list->IDTMDataControl_Value(Variant("2"));
  EXPECT_EQ(list->IDTMDataControl_PreviousValue(), Variant("1"));
}

TEST_F(ListControl, FailuresInSelectingGoToTheCaller) {
  EXPECT_THROW(list->IDTMDataControl_Value(Variant(VariantArray{0, {}})), VbError);
  EXPECT_THROW(list->IDTMDataControl_SetUserValue(Variant::nothing()), VbError);
  EXPECT_NO_THROW(list->IDTMDataControl_SetDeviceValue(Variant::null()));
  EXPECT_EQ(host->errorLines().back(),
            "Error on dtm list control IDTMDataControl_SetDeviceValue94 ,Description = Invalid "
            "use of Null");
}

TEST_F(ListControl, HasOneToolThatFollowsTheEnabledState) {
  host->translations["D"] = "Described";
  list->IDTMDataControl_DataItemDef(
      testing::element(R"(<dataItem name="M" help="H" description="D"/>)"));
  auto tip = headless::current().tooltips().ownedBy(list->window().hWnd());
  ASSERT_EQ(tip->tools.size(), 1u);
  EXPECT_EQ(tip->tools[0].window, list->List1().hWnd());
  EXPECT_EQ(tip->tools[0].text, "Described");
  list->IDTMDataControl_Access(0);
  list->IDtmControl_Visible(true);
  tip = headless::current().tooltips().ownedBy(list->window().hWnd());
  EXPECT_EQ(tip->tools[0].window, list->window().hWnd());
  EXPECT_TRUE(list->TooltipLabel().Visible());
  list->IDtmControl_Visible(false);
  EXPECT_TRUE(list->TooltipLabel().Visible());  // the list leaves its label alone
}

TEST_F(ListControl, IsNeverLocked) {
  list->Locked(true);
  EXPECT_FALSE(list->Locked());
}

}  // namespace
}  // namespace tessaline
