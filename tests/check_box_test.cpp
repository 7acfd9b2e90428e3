#include <gtest/gtest.h>

#include <cmath>

#include "support.h"
#include "tessaline/entry/data_check_box.h"

namespace tessaline {
namespace {

using platform::colors::kButtonFace;
using platform::colors::kYellow;

class CheckBox : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    box = DTMDataCheckBox::create();
    box->InitProperties();
    box->IDTMControl_Init(host);
    box->IDtmControl_DtmContainer(host);
    host->takeCalls();
  }
  headless::CheckBox& user() { return headless::user(box->Check1()); }
  int32_t status() { return box->DTMStatusControl1().IDTMStatusControl_Mode(); }
  size_t reports() { return host->callsOf("ControlValueChanged").size(); }

  std::shared_ptr<DTMDataCheckBox> box;
};

TEST_F(CheckBox, ADeviceValueIsTheCheckStateAndTheCleanBaseline) {
  for (const Variant& one : {Variant("1"), Variant(1), Variant(1.0)}) {
    box->IDTMDataControl_SetDeviceValue(Variant(0));
    box->IDTMDataControl_SetDeviceValue(one);
    EXPECT_EQ(box->Check1().Value(), 1);
    EXPECT_EQ(box->IDTMDataControl_Value(), Variant(int16_t{1}));
  }
  EXPECT_EQ(box->IDTMDataControl_PreviousValue(), Variant(1.0));
  EXPECT_EQ(box->baseline(), Variant(int16_t{1}));
  EXPECT_EQ(box->Check1().BackColor(), kButtonFace);
  EXPECT_EQ(status(), 100);
  EXPECT_EQ(reports(), 0u);
}

TEST_F(CheckBox, AToggleWithTheMouseMarksHotOnceAndBackClearsIt) {
  box->IDTMDataControl_SetDeviceValue(Variant(0));
  user().press();
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  user().release();
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  EXPECT_EQ(box->Check1().BackColor(), kYellow);
  EXPECT_EQ(status(), 102);
  EXPECT_EQ(reports(), 1u);

  user().click();
  EXPECT_EQ(box->Check1().Value(), 0);
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  EXPECT_EQ(box->Check1().BackColor(), kButtonFace);
  EXPECT_EQ(status(), 100);
  EXPECT_EQ(reports(), 2u);
}

TEST_F(CheckBox, KeyboardTogglesAndDisabledBoxesAreNotTracked) {
  user().pressSpace();
  EXPECT_EQ(box->Check1().Value(), 1);
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  EXPECT_EQ(reports(), 0u);

  // Press-time comparison of a disabled control stops before anything happens.
  box->IDTMDataControl_Access(0);
  EXPECT_FALSE(box->IDtmControl_Enable());
  user().click();
  EXPECT_EQ(box->Check1().Value(), 1);
  EXPECT_FALSE(box->IDTMDataControl_Hot());
}

TEST_F(CheckBox, WhileHotADeviceValueIsIgnoredAndHotFalseTakesTheShownState) {
  box->IDTMDataControl_SetDeviceValue(Variant(0));
  user().click();
  box->IDTMDataControl_SetDeviceValue(Variant(2));
  EXPECT_EQ(box->Check1().Value(), 1);
  EXPECT_EQ(box->baseline(), Variant(int16_t{0}));

  box->IDTMDataControl_Hot(false);
  EXPECT_EQ(box->baseline(), Variant(int16_t{1}));
  user().press();  // equal to the new baseline: nothing to report
  EXPECT_EQ(reports(), 1u);
}

TEST_F(CheckBox, AUserValueSetsTheRawFlagWithoutColours) {
  box->IDTMDataControl_SetUserValue(Variant(2));
  EXPECT_EQ(box->Check1().Value(), 2);
  EXPECT_TRUE(box->IDTMDataControl_Hot());
  EXPECT_EQ(box->Check1().BackColor(), kButtonFace);
  EXPECT_EQ(status(), 0);
}

// What isn't a check state is stored and logged; the box keeps its state, and a device value
// still ends clean on the box's own state.
TEST_F(CheckBox, ValuesThatAreNoCheckStateLeaveTheBoxAsItWas) {
  box->IDTMDataControl_SetDeviceValue(Variant(1));
  host->takeCalls();
  auto& window = headless::user(box->window());
  window.takePropertyChanges();
  box->IDTMDataControl_Value(Variant(true));
  EXPECT_EQ(box->IDTMDataControl_PreviousValue(), Variant(true));
  EXPECT_TRUE(window.takePropertyChanges().empty());
  for (const Variant& bad : {Variant("Check1"), Variant(3), Variant::null(), Variant(std::nan("")),
                             Variant(1e308), Variant()}) {
    box->IDTMDataControl_SetDeviceValue(bad);
  }
  EXPECT_EQ(host->errorLines(),
            (std::vector<std::string>{
                "Error on IDTMDataControl_Value380 ,Description = Invalid property value",
                "Error on IDTMDataControl_Value13 ,Description = Type mismatch",
                "Error on IDTMDataControl_Value380 ,Description = Invalid property value",
                "Error on IDTMDataControl_Value94 ,Description = Invalid use of Null",
                "Error on IDTMDataControl_Value6 ,Description = Overflow",
                "Error on IDTMDataControl_Value6 ,Description = Overflow"}));
  // Empty is 0, a valid state.
  EXPECT_EQ(box->Check1().Value(), 0);
  EXPECT_EQ(box->baseline(), Variant(int16_t{0}));
  EXPECT_FALSE(box->IDTMDataControl_Hot());
}

TEST_F(CheckBox, TheCaptionIsTheItemsLabelUnlessBlank) {
  host->translations["Pump on"] = "Pumpe an";
  box->IDtmDataControlCaption_Text("Pump on");
  EXPECT_EQ(box->IDtmDataControlCaption_Text(), "Pump on");
  EXPECT_EQ(box->Check1().Caption(), "Pumpe an");
  box->IDTMDataControl_DataItemDef(testing::element("<dataItem name='p' help='Runs'/>"));
  box->IDTMDataControl_DataItemDef(testing::element("<dataItem name='p' label='  '/>"));
  EXPECT_EQ(box->Check1().Caption(), "Pumpe an");

  box->IDtmDataControlCaption_Text("Set by host");
  box->IDTMDataControl_DataItemDef(testing::element("<dataItem name='p' label='Run'/>"));
  box->IDtmDataControlCaption_Text("Set by host");
  box->IDtmControl_Visible(true);  // a rebuild brings the label back
  EXPECT_EQ(box->IDtmDataControlCaption_Text(), "Run");
}

TEST_F(CheckBox, ARestoredBoxShowsItsDesignCaptionAndKeepsItsState) {
  auto restored = DTMDataCheckBox::create();
  platform::MemoryPropertyBag empty;
  restored->ReadProperties(empty);
  EXPECT_EQ(restored->Check1().Caption(), "Check1");
  EXPECT_EQ(restored->Check1().Value(), 0);
  EXPECT_EQ(restored->IDTMDataControl_PreviousValue(), Variant(""));
  EXPECT_EQ(restored->Check1().BackColor(), kButtonFace);
}

TEST_F(CheckBox, PlainValueAndBackColorLeaveTheEditAlone) {
  auto& window = headless::user(box->window());
  window.takePropertyChanges();
  box->let("value", Variant(1));
  EXPECT_EQ(window.takePropertyChanges(), std::vector<std::string>{"Value"});
  EXPECT_FALSE(box->IDTMDataControl_Hot());
  box->let("BackColor", Variant(255));
  box->IDTMDataControl_Hot(true);
  EXPECT_EQ(box->Check1().BackColor(), kYellow);
  EXPECT_TRUE(box->get("Container").toObject() == nullptr);
}

TEST_F(CheckBox, KeepsItsMinimumSizeAndCentresTheStatus) {
  auto& window = headless::user(box->window());
  window.resize(499, 100);
  EXPECT_EQ(window.Width(), 500);
  EXPECT_EQ(window.Height(), 150);
  EXPECT_EQ(box->Check1().Height(), 150);
  window.resize(500, 101);
  EXPECT_EQ(window.Width(), 500);
  EXPECT_EQ(box->Check1().Height(), 101);
  EXPECT_EQ(box->Check1().Left(), 385);
  EXPECT_EQ(box->Check1().Width(), 500 - 375 - 10);

  auto fresh = DTMDataCheckBox::create();
  auto& status = fresh->DTMStatusControl1().window();
  EXPECT_EQ(status.Top(), (435 - 315) / 2);
  EXPECT_EQ(status.Height(), 435);
}

}  // namespace
}  // namespace tessaline
