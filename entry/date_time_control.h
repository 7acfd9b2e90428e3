#pragma once

#include <memory>
#include <string>

#include "tessaline/display/status_control.h"
#include "tessaline/frame/data_control.h"
#include "tessaline/support/tooltip.h"

namespace tessaline {

// Shows and edits a date or time parameter in a date and time picker. The value travels as text
// in the item's format: a device value is turned into a date for the picker (a date stays, a
// number counts days, a text is read as the locale reads dates), and what the host reads is the
// picker's date written by the item's format, the same tokens that the picker shows. The user's
// changes mark the control hot against the date of the last clean mark (a change of the value)
// or against the last date set (a click, a key). Access stores only; Enable reaches the picker.
class DTMDateTimeControl : public DataControl {
 public:
  static std::shared_ptr<DTMDateTimeControl> create();
  static void describeMembers(MemberTableBuilder<DTMDateTimeControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDateTimeControl>(); }
  ~DTMDateTimeControl() override;

  // IDtmControl
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return host_; }
  void IDtmControl_GenericDtm(Ref<GenericDtm> value) override { host_ = value; }
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return container_; }
  void IDtmControl_DtmContainer(Ref<DtmContainer> value) override { container_ = value; }
  // The stored flag; the picker follows it.
  bool IDtmControl_Enable() override { return enabled_; }
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // IDTMDataControl
  bool IDTMDataControl_Hot() override { return hot_; }
  // Clean: status 0, the window colour on the calendar, and the picker's date as the baseline.
  // Changed: yellow, and 102 unless the status shows 104. No BackColor notification.
  void IDTMDataControl_Hot(bool value) override;
  int32_t IDTMDataControl_Access() override { return access_; }
  // Stored, and nothing else: the picker stays enabled.
  void IDTMDataControl_Access(int32_t value) override;
  // The picker's date written by the item's format; kept as the value.
  Variant IDTMDataControl_Value() override;
  // A value that is no date, or a date the picker can't show, stays the value while the picker
  // keeps its date.
  void IDTMDataControl_Value(const Variant& value) override;
  using DataControl::IDTMDataControl_DataItemDef;
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) override;
  bool IDTMDataControl_Validate() override { return false; }
  bool IDTMDataControl_IsError() override { return false; }
  void IDTMDataControl_SetUserValue(const Variant&) override {}
  // Sets the value unless hot; no baseline, no mark.
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  // Stored as given; it reaches the screen at the next rebuild of the tooltip.
  std::string ToolTipText() { return tooltipText_; }
  void ToolTipText(const std::string& text);

  // Children and state, for the platform and for tests.
  platform::DatePicker& DTPicker() { return *DTPicker_; }
  platform::Label& TooltipLabel() { return *TooltipLabel_; }
  DTMStatusControl& DTMStatusControl1() { return *DTMStatusControl1_; }
  DateSerial BaselineDate() const { return baselineDate_; }
  DateSerial ValueDate() const { return valueDate_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

  // A control new on its form: the defaults once more, and no format or help.
  void InitProperties() override;

 private:
  DTMDateTimeControl();

  void setDefaults();
  // The picker is reached by its members' names, as any late-bound child would be.
  Variant picker(const char* member);
  void picker(const char* member, const Variant& value);
  // The user's edits: hot by comparing the picker's date with a reference, then the container.
  void compareAndNotify(DateSerial reference);
  void DTPicker_Change();
  void DTPicker_Click();
  void DTPicker_KeyPress();
  void UpdateTooltip();
  void CreateTooltip();
  void UserControl_Resize();
  static void restoreToolTipText(DTMDateTimeControl& control, const Variant& text);

  std::shared_ptr<DTMStatusControl> DTMStatusControl1_;
  std::unique_ptr<platform::DatePicker> DTPicker_;
  std::unique_ptr<platform::Label> TooltipLabel_;
  DateSerial baselineDate_{0};
  DateSerial valueDate_{0};
  Variant storedValue_ = Variant("");
  std::string formatText_;
  std::string helpText_;
  bool hot_ = false;
  bool enabled_ = true;
  bool visible_ = true;
  ControlTooltip tooltip_;
};

}  // namespace tessaline
