#include "tessaline/entry/list_control.h"

namespace tessaline {

std::shared_ptr<DTMListControl> DTMListControl::create() {
  return std::shared_ptr<DTMListControl>(new DTMListControl());
}

DTMListControl::DTMListControl()
    : EnumeratedList("DTMListControl", "DTMDataComboBox", ListKind::List1, IncludeIf::Ignored,
                     StatusMode::Quiet, &DeviceDataItem::Description,
                     "Error in CreateTooltip of ListControl ") {
  List1().events.Click = [this] { List1_Click(); };
}

void DTMListControl::IDtmControl_Visible(bool value) {
  visible_ = value;
  list_->Visible(value);
  DTMStatusControl1().window().Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

void DTMListControl::IDTMDataControl_Hot(bool value) { markHot(value); }

void DTMListControl::IDTMDataControl_Value(const Variant& value) {
  previousValue_ = storedValue_;
  storedValue_ = value;
  SetComboValue();
  PropertyChanged("IDTMDataControl_Value");
}

void DTMListControl::IDTMDataControl_SetUserValue(const Variant& value) {
  IDTMDataControl_Value(value);
  hot_ = true;
}

void DTMListControl::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on dtm list control IDTMDataControl_SetDeviceValue",
          [&] { takeDeviceValue(value); });
}

void DTMListControl::Locked(bool) { PropertyChanged("Locked"); }

void DTMListControl::SetComboValue() { selectRowsOfValue(); }

// Before the first device value a pick moves the row and reaches the container, unmarked.
void DTMListControl::List1_Click() {
  if (deviceValueReceived_) compareWithBaseline();
  notifyContainer();
}

// One tool: the list's window while the control is enabled, else the control's own.
void DTMListControl::CreateTooltip() {
  const platform::WindowHandle window = list_->Enabled() ? list_->hWnd() : window_->hWnd();
  const platform::WindowHandle windows[] = {window};
  createTooltipFor(windows);
}

// The previous value is read and never written; a stored tooltip text is the control's own.
void DTMListControl::describeMembers(MemberTableBuilder<DTMListControl>& table) {
  using Self = DTMListControl;
  addEnumeratedListMembers(table, "List1", Persisted("IDTMDataControl_Value").withDefault("List1"),
                           Persisted::readOnly("IDTMDataControl_PreviousValue"), "ToolTipText");
  table.TESSALINE_PROPERTY(bool, Locked);
}

}  // namespace tessaline
