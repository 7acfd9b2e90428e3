#include "tessaline/entry/date_time_control.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support.h"
#include "tessaline/values/dates.h"

namespace tessaline {
namespace {

using platform::colors::kWindow;
using platform::colors::kYellow;

class DateTime : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    control = DTMDateTimeControl::create();
    control->InitProperties();
    control->IDTMControl_Init(host);
    control->IDtmControl_DtmContainer(host);
    control->IDTMDataControl_DataItemDef(
        testing::element("<dataItem name='d' formatString='yyyy-MM-dd HH:mm' help='Service'/>"));
    host->takeCalls();
  }
  headless::DatePicker& user() { return headless::user(control->DTPicker()); }
  int32_t status() { return control->DTMStatusControl1().IDTMStatusControl_Mode(); }
  size_t reports() { return host->callsOf("ControlValueChanged").size(); }

  std::shared_ptr<DTMDateTimeControl> control;
};

TEST(PickerFormat, WritesThePickersTokens) {
  const DateSerial date{serialFromFields({2026, 3, 5, 14, 7, 9})};
  struct Row {
    const char* format;
    const char* text;
  } rows[] = {
      {"MM-dd-yy hh:mm:ss tt", "03-05-26 02:07:09 PM"},
      {"d.M.yyyy H:m:s t", "5.3.2026 14:7:9 P"},
      {"dddd, MMMM d", "Thursday, March 5"},
      {"ddd MMM yyy", "Thu Mar 2026"},
      {"'Day' dd 'o''clock' h", "Day 05 o'clock 2"},
      {"", "3/5/2026 2:07:09 PM"},
  };
  for (const Row& row : rows) EXPECT_EQ(formatPickerDate(date, row.format), row.text) << row.format;
  EXPECT_EQ(fieldsFromSerial(serialFromFields({1601, 1, 1, 6, 0, 0})),
            (DateTimeFields{1601, 1, 1, 6, 0, 0}));
}

TEST_F(DateTime, BeforeAnyValueItShowsTheDesignDate) {
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("1970-01-01 00:00"));
  auto fresh = DTMDateTimeControl::create();
  EXPECT_EQ(fresh->IDTMDataControl_Value(), Variant("1/1/1970"));
  EXPECT_EQ(fresh->TooltipLabel().ToolTipText(), "Welcome");
}

TEST_F(DateTime, ADeviceValueIsReadBackInTheItemsFormat) {
  control->IDTMDataControl_SetDeviceValue(Variant("3/5/2026 2:07 PM"));
  EXPECT_EQ(control->DTPicker().CustomFormat(), "yyyy-MM-dd HH:mm");
  EXPECT_EQ(control->IDTMDataControl_PreviousValue(), Variant("3/5/2026 2:07 PM"));
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("2026-03-05 14:07"));
  // A number counts days, a date stays.
  control->IDTMDataControl_SetDeviceValue(Variant(25569.5));
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("1970-01-01 12:00"));
  control->IDTMDataControl_SetDeviceValue(Variant(DateSerial{2.25}));
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("1900-01-01 06:00"));
  EXPECT_FALSE(control->IDTMDataControl_Hot());
  EXPECT_EQ(reports(), 0u);
}

// Each failure keeps the picker's date and leaves the bad value as the value until the next read.
TEST_F(DateTime, ValuesThatAreNoDateOrOutOfRangeKeepThePickersDate) {
  control->IDTMDataControl_SetDeviceValue(Variant("1/2/2000"));
  for (const Variant& bad : {Variant("test"), Variant::null(), Variant(std::nan("")),
                             Variant(1e308), Variant("1/1/1500")}) {
    control->IDTMDataControl_SetDeviceValue(bad);
    EXPECT_EQ(control->DTPicker().Text(), "2000-01-02 00:00");
  }
  EXPECT_EQ(control->IDTMDataControl_PreviousValue(), Variant("1/1/1500"));
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("2000-01-02 00:00"));
  EXPECT_EQ(host->errorLines(),
            (std::vector<std::string>{
                "Error on IDTMDataControl_Value13 ,Description = Type mismatch",
                "Error on IDTMDataControl_Value94 ,Description = Invalid use of Null",
                "Error on IDTMDataControl_Value6 ,Description = Overflow",
                "Error on IDTMDataControl_Value6 ,Description = Overflow",
                "Error on IDTMDataControl_Value380 ,Description = Invalid property value"}));
  // The date that the picker refused is the last date set.
  EXPECT_EQ(formatDate(control->ValueDate()), "1/1/1500");
}

TEST_F(DateTime, TheUsersChangeMarksHotAgainstTheBaselineAndTheContainerHears) {
  control->IDTMDataControl_SetDeviceValue(Variant("1/2/2000"));
  control->IDTMDataControl_Hot(false);
  host->takeCalls();
  user().pickFromCalendar(2000, 1, 9);
  EXPECT_TRUE(control->IDTMDataControl_Hot());
  EXPECT_EQ(control->DTPicker().CalendarBackColor(), kYellow);
  EXPECT_EQ(status(), 102);
  EXPECT_EQ(reports(), 2u);  // the click that opened the calendar, then the change
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("2000-01-09 00:00"));

  user().typeField(headless::DateField::Day, 2);
  EXPECT_FALSE(control->IDTMDataControl_Hot());
  EXPECT_EQ(control->DTPicker().CalendarBackColor(), kWindow);
  EXPECT_EQ(status(), 0);
}

// A key compares with the date last set and marks clean on the way, so the change that follows
// compares with the device's newer date; a device value during the edit is dropped.
TEST_F(DateTime, AKeyAfterADeviceValueComparesWithTheNewerDate) {
  control->IDTMDataControl_SetDeviceValue(Variant("1/2/2000"));
  control->IDTMDataControl_Hot(false);
  control->IDTMDataControl_SetDeviceValue(Variant("1/5/2000"));
  EXPECT_EQ(control->BaselineDate(), DateSerial{serialFromCalendar(2000, 1, 2)});
  user().typeField(headless::DateField::Day, 2);
  EXPECT_TRUE(control->IDTMDataControl_Hot());
  EXPECT_EQ(control->BaselineDate(), DateSerial{serialFromCalendar(2000, 1, 5)});

  control->IDTMDataControl_SetDeviceValue(Variant("1/1/2020"));
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("2000-01-02 00:00"));
}

TEST_F(DateTime, HotKeepsAnInvalidStatusAndAccessLeavesThePickerEnabled) {
  control->IDTMDataControl_SetMode(104, "");
  control->IDTMDataControl_Hot(true);
  EXPECT_EQ(status(), 104);
  control->IDTMDataControl_Access(0);
  EXPECT_TRUE(control->DTPicker().Enabled());
  control->IDtmControl_Enable(false);
  EXPECT_FALSE(control->DTPicker().Enabled());
  user().typeField(headless::DateField::Year, 1999);
  EXPECT_EQ(reports(), 0u);
  control->IDTMDataControl_SetUserValue(Variant("1/1/2001"));
  EXPECT_EQ(control->IDTMDataControl_Value(), Variant("1970-01-01 00:00"));
}

TEST_F(DateTime, FieldsTheyCantHoldAndTheRangeRefuseTheUser) {
  control->IDTMDataControl_SetDeviceValue(Variant("1/1/1970"));
  user().typeField(headless::DateField::Month, 13);
  user().typeField(headless::DateField::Year, 1600);
  user().pickFromCalendar(1970, 2, 30);
  EXPECT_EQ(control->DTPicker().Text(), "1970-01-01 00:00");
  EXPECT_FALSE(control->IDTMDataControl_Hot());
}

TEST_F(DateTime, AStoredValueThatIsNoDateLeavesThePickerUntouched) {
  auto restored = DTMDateTimeControl::create();
  platform::MemoryPropertyBag bag;
  bag.put("ToolTipText", Variant("Saved"));
  restored->ReadProperties(bag);
  EXPECT_EQ(restored->TooltipLabel().ToolTipText(), "Saved");
  EXPECT_EQ(restored->ToolTipText(), "");
  EXPECT_EQ(restored->DTPicker().Value(), DateSerial{25569});
}

TEST_F(DateTime, KeepsItsMinimumSize) {
  auto& window = headless::user(control->window());
  window.resize(499, 100);
  EXPECT_EQ(window.Width(), 500);
  EXPECT_EQ(window.Height(), 150);
  EXPECT_EQ(control->DTPicker().Height(), 150);
  EXPECT_EQ(control->DTPicker().Width(), 500 - 375 - 10);
  EXPECT_EQ(control->DTPicker().Left(), 385);
}

}  // namespace
}  // namespace tessaline
