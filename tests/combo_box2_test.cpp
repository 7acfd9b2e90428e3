#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/entry/data_combo_box2.h"
#include "tessaline/support/combo_rows.h"

namespace tessaline {
namespace {

using platform::colors::kHighlight;
using platform::colors::kWindow;
using platform::colors::kYellow;

constexpr const char* kValves =
    R"(<enumeration><e name="Closed" code="0"/><e name="Open" code="1"/></enumeration>)";

class ComboBox2 : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    combo = DTMDataComboBox2::create();
    combo->InitProperties();
    combo->IDTMControl_Init(host);
    combo->IDtmControl_DtmContainer(host);
  }
  void load() { combo->IDTMEnumeration_EnumDataDef(testing::element(kValves)); }
  std::string label() { return combo->Label1().Caption(); }
  headless::ComboBox& user() { return headless::user(combo->Combo1()); }

  std::shared_ptr<DTMDataComboBox2> combo;
};

TEST_F(ComboBox2, ItsLabelIsMadeAtRunTimeInsideTheFrame) {
  platform::Widget* made = combo->window().Controls("Label1");
  ASSERT_EQ(made, &combo->Label1());
  EXPECT_EQ(headless::user(combo->Label1()).container(), &combo->Frame1());
  EXPECT_EQ(combo->Label1().BackColor(), kWindow);
  EXPECT_EQ(combo->Label1().ForeColor(), platform::colors::kButtonText);
  EXPECT_EQ(combo->Label1().property("BorderStyle"), Variant(1));
}

TEST_F(ComboBox2, AValueWithoutAnEntryShowsAsUndefined) {
  combo->IDTMDataControl_SetDeviceValue(Variant("5"));
  EXPECT_EQ(label(), "5 [Undefined]");  // before any enumeration too
  load();
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  EXPECT_EQ(label(), "Open");
  combo->IDTMDataControl_SetDeviceValue(Variant("5"));
  EXPECT_EQ(label(), "5 [Undefined]");
  EXPECT_EQ(combo->Combo1().ListIndex(), 1);
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("1"));  // the old row is read back
  combo->IDTMDataControl_SetDeviceValue(Variant(""));
  EXPECT_EQ(label(), "5 [Undefined]");
}

TEST_F(ComboBox2, WithNoRowTheDevicesValueIsKept) {
  load();
  combo->IDTMDataControl_SetDeviceValue(Variant("5"));
  EXPECT_EQ(combo->IDTMDataControl_Value(), Variant("5"));
  EXPECT_EQ(combo->BaselineText(), "5");
  user().pick(0);
  EXPECT_EQ(label(), "Closed");
  EXPECT_TRUE(combo->IDTMDataControl_Hot());
}

TEST_F(ComboBox2, ANullValueIsLoggedAndTheLabelKeepsItsText) {
  load();
  combo->IDTMDataControl_SetDeviceValue(Variant("1"));
  combo->IDTMDataControl_Hot(true);
  combo->IDTMDataControl_Value(Variant::null());
  EXPECT_EQ(label(), "Open");
  EXPECT_EQ(host->errorLines().back(),
            "Error on SetComboValue94 ,Description = Invalid use of Null");
}

TEST_F(ComboBox2, TheLabelTakesTheMarksColoursAndTheFocusColours) {
  load();
  combo->IDTMDataControl_SetDeviceValue(Variant("0"));
  user().pick(1);
  EXPECT_EQ(combo->Label1().BackColor(), kYellow);
  user().blur();
  EXPECT_EQ(combo->Label1().BackColor(), kYellow);  // a hot control keeps its label
  user().focus();
  EXPECT_EQ(combo->Label1().BackColor(), kHighlight);
  user().pick(0);
  EXPECT_EQ(combo->Label1().BackColor(), kWindow);
  user().blur();
  user().focus();
  EXPECT_EQ(combo->Label1().BackColor(), kHighlight);
  user().blur();
  EXPECT_EQ(combo->Label1().BackColor(), kWindow);
}

TEST_F(ComboBox2, AClickOnTheLabelOpensTheList) {
  load();
  headless::user(combo->Label1()).click();
  EXPECT_TRUE(combo->Combo1().DroppedDown());
  EXPECT_EQ(combo->Combo1().ListIndex(), -1);
}

TEST_F(ComboBox2, BothChildrenFollowEnableColoursAndTabOrder) {
  combo->IDtmControl_Enable(false);
  EXPECT_FALSE(combo->Label1().Enabled());
  combo->let("ForeColor", 255);
  EXPECT_EQ(combo->Label1().ForeColor(), 255);
  combo->let("BackColor", 0x00FF00);
  EXPECT_EQ(combo->Label1().BackColor(), 0x00FF00);
  EXPECT_EQ(combo->Combo1().BackColor(), 0x00FF00);
  combo->TabIndex(4);
  EXPECT_EQ(combo->Combo1().TabIndex(), 4);
  EXPECT_EQ(combo->Label1().TabIndex(), 5);
  EXPECT_EQ(combo->DTMStatusControl1().window().TabIndex(), 6);
  EXPECT_EQ(combo->Frame1().TabIndex(), 7);
  EXPECT_EQ(combo->TooltipLabel().TabIndex(), 8);
  combo->IDtmControl_Visible(false);
  EXPECT_FALSE(combo->Frame1().Visible());
  EXPECT_FALSE(combo->Label1().Visible());
}

TEST_F(ComboBox2, TheFrameLeavesRoomForTheArrow) {
  headless::user(combo->window()).resize(4000, 100);
  EXPECT_EQ(combo->Combo1().Width(), 4000 - 375 - 10);
  EXPECT_EQ(combo->Frame1().Width(), combo->Combo1().Width() - 277);
  EXPECT_EQ(combo->Frame1().Left(), combo->Combo1().Left());
  EXPECT_EQ(combo->Label1().Width(), combo->Frame1().Width());
}

TEST_F(ComboBox2, TheTooltipHangsOnTheFrame) {
  combo->IDTMDataControl_DataItemDef(testing::element(R"(<dataItem name="V" help="H"/>)"));
  const auto* tip = headless::current().tooltips().ownedBy(combo->window().hWnd());
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->tools.at(0).window, combo->Frame1().hWnd());
}

TEST_F(ComboBox2, ItsLabelGoesWithIt) {
  platform::UserControl* window = &combo->window();
  EXPECT_NE(window->Controls("Label1"), nullptr);
  EXPECT_THROW(window->Controls_Add("vb.label", "label1"), VbError);
  EXPECT_THROW(window->Controls_Add("vb.textbox", "Other"), VbError);
  EXPECT_THROW(window->Controls_Remove("Nothing"), VbError);
}

}  // namespace
}  // namespace tessaline
