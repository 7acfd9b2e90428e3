#include "tessaline/entry/date_time_control.h"

#include "tessaline/values/dates.h"

namespace tessaline {

namespace colors = platform::colors;

std::shared_ptr<DTMDateTimeControl> DTMDateTimeControl::create() {
  return std::shared_ptr<DTMDateTimeControl>(new DTMDateTimeControl());
}

DTMDateTimeControl::DTMDateTimeControl()
    : DataControl("DTMDateTimeControl", nullptr),
      tooltip_("Error in CreateTooltip of DtmDataCombo ", 10000) {
  DTMStatusControl1_ = DTMStatusControl::create(window_.get());
  auto& status = DTMStatusControl1_->window();
  status.Width(375);
  status.Height(375);
  DTPicker_ = window_->createDatePicker("DTPicker");
  DTPicker_->Left(720);
  DTPicker_->Width(2175);
  DTPicker_->Height(375);
  TooltipLabel_ = window_->createLabel("TooltipLabel");
  TooltipLabel_->ToolTipText("Welcome");
  DTPicker_->events.Change = [this] { DTPicker_Change(); };
  DTPicker_->events.Click = [this] { DTPicker_Click(); };
  DTPicker_->events.KeyPress = [this](int16_t&) { DTPicker_KeyPress(); };
  window_->Width(2925);
  window_->Height(420);
  window_->events.Resize = [this] { UserControl_Resize(); };
  window_->events.EnterFocus = [this] { UpdateTooltip(); };
  UserControl_Resize();
  setDefaults();
}

DTMDateTimeControl::~DTMDateTimeControl() = default;

// What creation and InitProperties share.
void DTMDateTimeControl::setDefaults() {
  active_ = true;
  IDtmControl_Enable(true);
  visible_ = true;
  canSubscribe_ = true;
  hot_ = false;
  name_.clear();
  storedValue_ = Variant("");
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
  statusMode_ = StatusMode::None;
  dataMode_ = 2;
  DTMStatusControl1_->IDTMStatusControl_Stretch(false);
}

void DTMDateTimeControl::InitProperties() {
  setDefaults();
  formatText_.clear();
  helpText_.clear();
  IDTMDataControl_Source(0);
}

void DTMDateTimeControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DTMDateTimeControl");
  DTMStatusControl1_->IDTMControl_Init(genericDtm);
}

void DTMDateTimeControl::IDtmControl_Enable(bool value) {
  enabled_ = value;
  DTPicker_->Enabled(value);
  PropertyChanged("IDtmControl_Enable");
}

void DTMDateTimeControl::IDtmControl_Visible(bool value) {
  visible_ = value;
  DTPicker_->Visible(value);
  DTMStatusControl1_->window().Visible(value);
  TooltipLabel_->Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

void DTMDateTimeControl::IDTMDataControl_Hot(bool value) {
  hot_ = value;
  if (!value) {
    DTMStatusControl1_->IDTMStatusControl_Mode(StatusMode::None);
    picker("CalendarBackColor", Variant(colors::kWindow));
    baselineDate_ = picker("Value").toDate();
  } else {
    picker("CalendarBackColor", Variant(colors::kYellow));
    if (DTMStatusControl1_->IDTMStatusControl_Mode() != StatusMode::InvalidValue) {
      DTMStatusControl1_->IDTMStatusControl_Mode(StatusMode::ValueChanged);
    }
  }
  PropertyChanged("IDTMDataControl_Hot");
}

void DTMDateTimeControl::IDTMDataControl_Access(int32_t value) {
  access_ = value;
  PropertyChanged("IDTMDataControl_Access");
}

Variant DTMDateTimeControl::IDTMDataControl_Value() {
  storedValue_ = Variant(formatPickerDate(picker("Value").toDate(), formatText_));
  return storedValue_;
}

void DTMDateTimeControl::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_Value", [&] {
    picker("CustomFormat", Variant(formatText_));
    previousValue_ = value;
    storedValue_ = value;
    valueDate_ = value.toDate();
    picker("Value", Variant(valueDate_));
    PropertyChanged("IDTMDataControl_Value");
  });
}

void DTMDateTimeControl::IDTMDataControl_DataItemDef(Ref<Object> node) {
  storeDataItem(node, kHelpAndFormatString);
  helpText_ = item_.Help;
  formatText_ = item_.FormatString;
  UpdateTooltip();
  PropertyChanged("IDTMDataControl_DataItemDef");
}

void DTMDateTimeControl::IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) {
  statusMode_ = newValue;
  DTMStatusControl1_->IDTMStatusControl_Mode(newValue);
  if (!Msg.empty()) DTMStatusControl1_->IDTMStatusControl_Text(Msg);
}

// A device value during an edit is dropped: nothing brings it back later.
void DTMDateTimeControl::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DateTime Control IDTMDataControl_SetDeviceValue", [&] {
    if (!hot_) IDTMDataControl_Value(value);
  });
}

void DTMDateTimeControl::ToolTipText(const std::string& text) {
  tooltipText_ = text;
  PropertyChanged("ToolTipText");
}

Variant DTMDateTimeControl::picker(const char* member) {
  return platform::childProperty(*DTPicker_, member);
}

void DTMDateTimeControl::picker(const char* member, const Variant& value) {
  platform::childProperty(*DTPicker_, member, value);
}

void DTMDateTimeControl::compareAndNotify(DateSerial reference) {
  IDTMDataControl_Hot(picker("Value").toDate() != reference);
  if (container_) container_->ControlValueChanged(asControl());
}

// A change of the value compares with the date of the last clean mark, a click and a key with
// the date last set: until the host marks the control clean they may disagree.
void DTMDateTimeControl::DTPicker_Change() { compareAndNotify(baselineDate_); }

void DTMDateTimeControl::DTPicker_Click() {
  guarded(*logger_, "Error on DTPicker_Click", [&] { compareAndNotify(valueDate_); });
}

void DTMDateTimeControl::DTPicker_KeyPress() { compareAndNotify(valueDate_); }

void DTMDateTimeControl::UpdateTooltip() {
  tooltipText_ = LocalizeText(helpText_);
  tooltip_.destroy();
  if (visible_) CreateTooltip();
}

void DTMDateTimeControl::CreateTooltip() {
  const platform::WindowHandle windows[] = {DTPicker_->hWnd(), window_->hWnd()};
  tooltip_.create(*logger_, window_->hWnd(), windows, tooltipText_);
}

// Lengths in twips.
void DTMDateTimeControl::UserControl_Resize() {
  if (window_->Height() <= 100) window_->Height(150);
  DTPicker_->Height(window_->Height());
  if (window_->Width() < 500) window_->Width(500);
  const int32_t statusWidth = DTMStatusControl1_->window().Width();
  DTPicker_->Width(window_->Width() - statusWidth - 10);
  DTPicker_->Top(0);
  DTPicker_->Left(statusWidth + 10);
}

void DTMDateTimeControl::restoreToolTipText(DTMDateTimeControl& control, const Variant& text) {
  control.TooltipLabel_->ToolTipText(text.toText());
}

void DTMDateTimeControl::describeMembers(MemberTableBuilder<DTMDateTimeControl>& table) {
  using Self = DTMDateTimeControl;
  addDataControlMembers(table);
  table.TESSALINE_PROPERTY(std::string, ToolTipText)
      .persist({"IDTMDataControl_Name", "IDtmControl_Name", "IDTMDataControl_Active",
                "IDtmControl_Enable", "IDTMDataControl_Hot", "IDtmControl_Visible",
                "IDTMDataControl_CanSubscribe",
                Persisted("IDTMDataControl_Value").withDefault("test"),
                "IDTMDataControl_PreviousValue", "IDTMDataControl_Access", "IDtmControl_DataMode",
                "IDTMDataControl_Source",
                Persisted("ToolTipText").restoredBy(&Self::restoreToolTipText)});
}

}  // namespace tessaline
