#include "tessaline/entry/data_text_box.h"

#include "tessaline/entry/edit_patterns.h"
#include "tessaline/values/locale.h"

namespace tessaline {

std::shared_ptr<DTMDataTextBox> DTMDataTextBox::create() {
  return std::shared_ptr<DTMDataTextBox>(new DTMDataTextBox());
}

DTMDataTextBox::DTMDataTextBox() : TextEntry("DTMDataTextBox", false, 0, 8000) {
  Text1_->events.KeyUp = [this](int16_t&, int16_t&) { releaseKey(BaselineComparison::Trimmed); };
  completeCreation();
}

void DTMDataTextBox::IDtmControl_Visible(bool value) {
  visible_ = value;
  showChildren(value);
  ApplyDefinition();
  PropertyChanged("IDtmControl_Visible");
}

void DTMDataTextBox::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_Value",
          [&] { showValue(IsNotANumber(value) ? Variant("NaN") : value); });
}

void DTMDataTextBox::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataTextBox IDTMDataControl_SetDeviceValue", [&] {
    // A device value during an edit moves only the baseline.
    if (!hot_) IDTMDataControl_Value(value);
    baselineText_ = value.toText();
    baselineCaptured_ = true;
  });
}

bool DTMDataTextBox::IsNotANumber(const Variant& value) {
  if (textType_ != TextDataType::Numbers) {
    logger_->Error("BuildMenu Numbers ");
    return false;
  }
  const std::string text = value.toText();
  if (text.find('#') != std::string::npos || text.find("nan") != std::string::npos ||
      text.find('$') != std::string::npos) {
    logger_->Error("BuildMenu Numbers Enter in NAN");
    return true;
  }
  return false;
}

std::string DTMDataTextBox::GetDecimalSeparator() {
  const std::string separator = locale().decimalSeparator();
  return separator.substr(0, separator.find('\0'));
}

std::string DTMDataTextBox::editPatternFor(const std::string& format) {
  return textBoxEditPattern(format, GetDecimalSeparator());
}

bool DTMDataTextBox::appendsSeparator(char formatLetter) {
  return formatLetter != 'd' && formatLetter != 'u';
}

// A minus only at the start; typing one at the start of a negative number restarts the entry.
void DTMDataTextBox::applyNumbersRules(int16_t& KeyAscii) {
  const std::string text = Text1_->Text();
  const std::string separator = GetDecimalSeparator();
  if (KeyAscii == firstCharacterKey(separator) &&
      text.find(keyText(KeyAscii)) != std::string::npos) {
    KeyAscii = 0;
  } else if (KeyAscii == platform::keys::kMinus && Text1_->SelStart() != 0) {
    KeyAscii = 0;
  } else if (KeyAscii == platform::keys::kMinus && text.find('-') != std::string::npos) {
    Text1_->Text("");
  }
}

void DTMDataTextBox::describeMembers(MemberTableBuilder<DTMDataTextBox>& table) {
  addTextEntryMembers(table);
  table.function("IsNotANumber", &DTMDataTextBox::IsNotANumber)
      .function("GetDecimalSeparator", &DTMDataTextBox::GetDecimalSeparator);
}

}  // namespace tessaline
