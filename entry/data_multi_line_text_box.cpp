#include "tessaline/entry/data_multi_line_text_box.h"

#include "tessaline/entry/edit_patterns.h"

namespace tessaline {

std::shared_ptr<DTMDataMultiLnTextBox> DTMDataMultiLnTextBox::create() {
  return std::shared_ptr<DTMDataMultiLnTextBox>(new DTMDataMultiLnTextBox());
}

DTMDataMultiLnTextBox::DTMDataMultiLnTextBox()
    : TextEntry("DTMDataMultiLnTextBox", true, 1, 10000) {
  Text1_->events.KeyUp = [this](int16_t&, int16_t&) { releaseKey(BaselineComparison::AsItStands); };
  Text1_->events.LostFocus = [this] { Text1_LostFocus(); };
  window_->events.ExitFocus = [this] { UpdateTooltip(); };
  completeCreation();
}

void DTMDataMultiLnTextBox::IDtmControl_Visible(bool value) {
  visible_ = value;
  showChildren(value);
  PropertyChanged("IDtmControl_Visible");
}

void DTMDataMultiLnTextBox::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_Value", [&] { showValue(value); });
}

void DTMDataMultiLnTextBox::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataTextBox IDTMDataControl_SetDeviceValue", [&] {
    if (hot_) {
      baselineText_ = value.toText();
      baselineCaptured_ = true;
    } else {
      IDTMDataControl_Value(value);
    }
  });
}

std::string DTMDataMultiLnTextBox::editPatternFor(const std::string& format) {
  return multiLineEditPattern(format);
}

// A minus at position 0 or 1, and only one.
void DTMDataMultiLnTextBox::applyNumbersRules(int16_t& KeyAscii) {
  const std::string text = Text1_->Text();
  if (KeyAscii == platform::keys::kPeriod && text.find('.') != std::string::npos) {
    KeyAscii = 0;
  } else if (KeyAscii == platform::keys::kMinus && Text1_->SelStart() > 1) {
    KeyAscii = 0;
  } else if (KeyAscii == platform::keys::kMinus && text.find('-') != std::string::npos) {
    KeyAscii = 0;
  }
}

// A number can't be left empty: the host warns, and the value from outside comes back.
void DTMDataMultiLnTextBox::Text1_LostFocus() {
  if (textType_ != TextDataType::Numbers || !Text1_->Text().empty()) return;
  std::string message = LocalizeText("Empty_value_not_allowed");
  message += " " + LocalizeText(item_.Label);
  host_->ShowMessage("messageExclamation", "buttonsOk", "buttonOk", "Warning", message);
  IDTMDataControl_Value(IDTMDataControl_PreviousValue());
  IDTMDataControl_Hot(false);
  if (container_) container_->ControlValueChanged(asControl());
}

}  // namespace tessaline
