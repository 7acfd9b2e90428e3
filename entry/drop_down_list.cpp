#include "tessaline/entry/drop_down_list.h"

#include "tessaline/support/combo_rows.h"

namespace tessaline {

DropDownList::DropDownList(const std::string& className, const std::string& loggerName)
    : EnumeratedList(className, loggerName, ListKind::Combo1, IncludeIf::Honoured, StatusMode::None,
                     &DeviceDataItem::Help, "Error in CreateTooltip of DtmDataCombo ") {
  Combo1().events.Click = [this] { Combo1_Click(); };
  TooltipLabel_->ToolTipText("Welcome");
}

void DropDownList::InitProperties() {
  EnumeratedList::InitProperties();
  IDTMDataControl_Value(Variant(Combo1().Text()));
  APICallBack::attachRowPainter(Combo1());
}

void DropDownList::IDTMDataControl_Hot(bool value) { markHot(value); }

void DropDownList::IDTMDataControl_Value(const Variant& value) {
  previousValue_ = value;
  storedValue_ = value;
  SetComboValue();
  PropertyChanged("IDTMDataControl_Value");
}

void DropDownList::IDTMDataControl_SetUserValue(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_SetUserValue", [&] {
    IDTMDataControl_Value(value);
    hot_ = true;
  });
}

void DropDownList::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataCombo IDTMDataControl_SetDeviceValue",
          [&] { takeDeviceValue(value); });
}

// A value without an entry leaves the row as it was: nothing marks the mismatch.
void DropDownList::SetComboValue() {
  guarded(*logger_, "Error on SetComboValue", [&] { selectRowsOfValue(); });
}

void DropDownList::Combo1_Click() {
  compareWithBaseline();
  notifyContainer();
}

void DropDownList::CreateTooltip() {
  const platform::WindowHandle windows[] = {Combo1().hWnd(), window_->hWnd()};
  createTooltipFor(windows);
}

}  // namespace tessaline
