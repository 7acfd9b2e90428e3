#include "entry/data_combo_box.h"

#include "support/combo_rows.h"

namespace tessaline {

std::shared_ptr<DTMDataComboBox> DTMDataComboBox::create() {
  return std::shared_ptr<DTMDataComboBox>(
      new DTMDataComboBox("DTMDataComboBox", "DTMDataComboBox"));
}

DTMDataComboBox::DTMDataComboBox(const std::string& className, const std::string& loggerName)
    : EnumeratedList(className, loggerName, ListKind::Combo1, IncludeIf::Honoured, 0,
                     &DeviceDataItem::Help, "Error in CreateTooltip of DtmDataCombo ") {
  Combo1().events.Click = [this] { Combo1_Click(); };
  TooltipLabel_->ToolTipText("Welcome");
}

void DTMDataComboBox::InitProperties() {
  window_->Width(3000);
  active_ = true;
  IDtmControl_Enable(true);
  visible_ = true;
  canSubscribe_ = true;
  hot_ = false;
  name_.clear();
  baselineText_.clear();
  IDTMDataControl_Value(Variant(Combo1().Text()));
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
  statusMode_ = 0;
  IDTMDataControl_Source(0);
  IDtmControl_DataMode(2);
  DTMStatusControl1().IDTMStatusControl_Stretch(false);
  APICallBack::attachRowPainter(Combo1());
}

void DTMDataComboBox::IDtmControl_Visible(bool value) {
  visible_ = value;
  list_->Visible(value);
  DTMStatusControl1().window().Visible(value);
  TooltipLabel_->Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

void DTMDataComboBox::IDTMDataControl_Hot(bool value) { markHot(value); }

void DTMDataComboBox::IDTMDataControl_Value(const Variant& value) {
  previousValue_ = value;
  storedValue_ = value;
  SetComboValue();
  PropertyChanged("IDTMDataControl_Value");
}

void DTMDataComboBox::IDTMDataControl_SetUserValue(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_SetUserValue", [&] {
    IDTMDataControl_Value(value);
    hot_ = true;
  });
}

void DTMDataComboBox::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataCombo IDTMDataControl_SetDeviceValue",
          [&] { takeDeviceValue(value); });
}

bool DTMDataComboBox::Locked() { return Combo1().property("Locked").toBool(); }

void DTMDataComboBox::Locked(bool value) {
  Combo1().property("Locked", Variant(value));
  PropertyChanged("Locked");
}

// A value without an entry leaves the row as it was: nothing marks the mismatch.
void DTMDataComboBox::SetComboValue() {
  guarded(*logger_, "Error on SetComboValue", [&] { selectRowsOfValue(); });
}

void DTMDataComboBox::Combo1_Click() {
  compareWithBaseline();
  notifyContainer();
}

void DTMDataComboBox::CreateTooltip() {
  const platform::WindowHandle windows[] = {Combo1().hWnd(), window_->hWnd()};
  createTooltipFor(windows);
}

const MemberTable& DTMDataComboBox::members() const {
  using Self = DTMDataComboBox;
  static const MemberTable table = [] {
    MemberTableBuilder<Self> t;
    addEnumeratedListMembers(t);
    return t.build();
  }();
  return table;
}

}  // namespace tessaline
