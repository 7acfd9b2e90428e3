#include "tessaline/support/combo_rows.h"

#include <gtest/gtest.h>

#include "support.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/list_control.h"

namespace tessaline {
namespace {

using platform::colors::kWhite;
using platform::colors::kYellow;

TEST(ComboIndexTable, GrowsByOneRecordAndReusesAHandle) {
  const int32_t before =
      APICallBack::ComboIndexTable().hasBounds() ? APICallBack::ComboIndexTable().upperBound() : 0;
  APICallBack::RememberListIndex(900001, 3);
  APICallBack::RememberListIndex(900002, 5);
  EXPECT_EQ(APICallBack::ComboIndexTable().upperBound(), before + 2);
  APICallBack::RememberListIndex(900001, 4);
  EXPECT_EQ(APICallBack::ComboIndexTable().upperBound(), before + 2);
  EXPECT_EQ(APICallBack::GetRememberedIndex(900001), 4);
  EXPECT_EQ(APICallBack::GetRememberedIndex(900002), 5);
  EXPECT_EQ(APICallBack::FindComboHandle(900002), before + 1);
  EXPECT_EQ(APICallBack::GetRememberedIndex(999999), -1);
  EXPECT_EQ(APICallBack::FindComboHandle(999999), -1);
}

TEST(ComboRows, TheDevicesRowIsWhiteAndEveryOtherYellow) {
  APICallBack::RememberListIndex(900010, 1);
  const auto device = APICallBack::paintComboRow(900010, 1, 0, "Open");
  const auto other = APICallBack::paintComboRow(900010, 0, platform::kRowFocus, "Closed");
  EXPECT_EQ(device.background, kWhite);
  EXPECT_FALSE(device.focusRectangle);
  EXPECT_EQ(device.text, "Open");
  EXPECT_EQ(device.textLeft, 1);
  EXPECT_EQ(device.textTop, 1);
  EXPECT_EQ(other.background, kYellow);
  EXPECT_TRUE(other.focusRectangle);
  EXPECT_EQ(APICallBack::paintComboRow(900011, 0, 0, "x").background, kYellow);
}

TEST(ComboRows, ARowsTextIsCutAtItsBufferAndAtANul) {
  const auto paint = APICallBack::paintComboRow(900012, 0, 0, std::string(300, 'x'));
  EXPECT_EQ(paint.text.size(), 255u);
  EXPECT_EQ(APICallBack::paintComboRow(900012, 0, 0, std::string("ab\0cd", 5)).text, "ab");
}

class DropDownRows : public testing::HeadlessTest {};

TEST_F(DropDownRows, ANewComboPaintsTheDevicesRowWhiteAndTheMouseFocus) {
  auto first = DTMDataComboBox::create();
  first->InitProperties();
  first->IDTMControl_Init(host);
  first->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><e name="A" code="1"/><e name="B" code="2"/><e name="C" code="3"/>)"
      R"(</enumeration>)"));
  auto second = DTMDataComboBox::create();
  second->InitProperties();
  second->IDTMControl_Init(host);
  second->IDTMEnumeration_EnumDataDef(first->IDTMEnumeration_EnumDataDef());

  first->IDTMDataControl_SetDeviceValue(Variant(2));
  second->IDTMDataControl_SetDeviceValue(Variant(3));
  headless::ComboBox& rows = headless::user(first->Combo1());
  rows.open();
  rows.hover(0);
  const auto painted = rows.paintedRows();
  ASSERT_EQ(painted.size(), 3u);
  EXPECT_EQ(painted[0]->background, kYellow);
  EXPECT_TRUE(painted[0]->focusRectangle);
  EXPECT_EQ(painted[1]->background, kWhite);
  EXPECT_EQ(painted[2]->background, kYellow);
  EXPECT_EQ(headless::user(second->Combo1()).paintedRows()[2]->background, kWhite);

  // A value without an entry records nothing: the earlier row stays white.
  first->IDTMDataControl_SetDeviceValue(Variant(9));
  EXPECT_EQ(rows.paintedRows()[1]->background, kWhite);
}

TEST_F(DropDownRows, AComboNotMadeNewOnItsFormLeavesItsRowsToThePlatform) {
  auto restored = DTMDataComboBox::create();
  restored->IDTMControl_Init(host);
  restored->IDTMEnumeration_EnumDataDef(
      testing::element(R"(<enumeration><e name="A" code="1"/></enumeration>)"));
  EXPECT_FALSE(headless::user(restored->Combo1()).paintedRows()[0].has_value());
}

TEST_F(DropDownRows, TheListControlRemembersItsRowButItsRowsStayUndrawn) {
  auto list = DTMListControl::create();
  list->InitProperties();
  list->IDTMControl_Init(host);
  list->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><e name="A" code="1"/><e name="B" code="2"/></enumeration>)"));
  list->IDTMDataControl_SetDeviceValue(Variant(2));
  EXPECT_EQ(APICallBack::GetRememberedIndex(list->List1().hWnd()), 1);
}

}  // namespace
}  // namespace tessaline
