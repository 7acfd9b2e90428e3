#include "tessaline/display/data_label.h"

namespace tessaline {

std::shared_ptr<DTMDataLabel> DTMDataLabel::create() {
  return std::shared_ptr<DTMDataLabel>(new DTMDataLabel());
}

DTMDataLabel::DTMDataLabel() : EnumLabel("DTMDataLabel", "DTMDataLabel") {
  window_->Width(1530);
  window_->Height(480);
  Label1_->Width(1455);
  Label1_->Height(375);
  window_->events.Resize = [this] { UserControl_Resize(); };

  active_ = false;
  enable_ = true;
  visible_ = true;
  canSubscribe_ = false;
  access_ = 0;
  name_.clear();
  storedValue_ = Variant("");
  Label1_->Caption("");
  Label1_->Visible(true);
  statusMode_ = StatusMode::None;
  IDTMDataControl_Value(Variant(Label1_->Caption()));
  IDTMDataControl_Source(0);
  IDtmControl_DataMode(2);
}

void DTMDataLabel::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataLabel IDTMDataControl_SetDeviceValue", [&] {
    storedValue_ = Variant();
    UpdateCaption();
    IDTMDataControl_Value(value);
  });
}

// Compared as text, so the number 3 finds the code "3"; the last matching entry wins.
void DTMDataLabel::UpdateCaption() {
  bool found = false;
  if (!storedValue_.isNull()) {
    for (const EnumData& entry : entries_.usedSlots()) {
      if (storedValue_.toText() == entry.code) {
        Label1_->Caption(entry.Local);
        found = true;
      }
    }
  }
  if (!found && !storedValue_.toText().empty()) Label1_->Caption("Unknown Units");
}

// Lengths in twips.
void DTMDataLabel::UserControl_Resize() {
  if (window_->Height() <= 100) {
    window_->Height(150);
    Label1_->Height(150);
  } else {
    Label1_->Height(window_->Height());
  }
  if (window_->Width() <= 100) {
    window_->Width(150);
    Label1_->Width(150);
  } else {
    Label1_->Width(window_->Width());
  }
  Label1_->Top(0);
  Label1_->Left(0);
}

}  // namespace tessaline
