#include "tessaline/entry/text_entry.h"

#include "tessaline/entry/edit_patterns.h"
#include "tessaline/platform/regexp.h"
#include "tessaline/values/text.h"

namespace tessaline {

namespace colors = platform::colors;

TextEntry::TextEntry(const std::string& className, bool multiLine, int32_t tabIndex,
                     int32_t tooltipVisibleTime)
    : DataControl(className, nullptr),
      tooltip_("Error in CreateTooltip of DtmTextBox ", tooltipVisibleTime) {
  window_->Width(3480);
  window_->Height(360);
  DTMStatusControl1_ = DTMStatusControl::create(window_.get());
  platform::UserControl& status = DTMStatusControl1_->window();
  status.Left(0);
  status.Top(0);
  Text1_ = window_->createTextBox("Text1", multiLine);
  Text1_->Left(480);
  Text1_->Top(0);
  Text1_->Width(3000);
  Text1_->Height(375);
  Text1_->TabIndex(tabIndex);
  TooltipLabel_ = window_->createLabel("TooltipLabel");
  TooltipLabel_->Left(480);
  TooltipLabel_->Top(0);
  TooltipLabel_->Width(3015);
  TooltipLabel_->Height(375);

  Text1_->events.Change = [this] { Text1_Change(); };
  Text1_->events.Click = [this] { Text1_Click(); };
  Text1_->events.GotFocus = [this] { Text1_GotFocus(); };
  Text1_->events.KeyDown = [this](int16_t& KeyCode, int16_t& Shift) {
    Text1_KeyDown(KeyCode, Shift);
  };
  Text1_->events.KeyPress = [this](int16_t& KeyAscii) { Text1_KeyPress(KeyAscii); };
  window_->events.Resize = [this] { UserControl_Resize(); };
  window_->events.EnterFocus = [this] { UserControl_EnterFocus(); };
  UserControl_Resize();

  // Creation defaults, in this order.
  active_ = true;
  hot_ = false;
  visible_ = true;
  name_.clear();
  value_ = Variant("");
  baselineText_.clear();
  baselineCaptured_ = false;
  textType_ = TextDataType::AlphaNumeric;
  canSubscribe_ = true;
  validationFlag_ = true;
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
  source_ = 0;
  dataMode_ = 2;
  statusMode_ = StatusMode::None;
  Text1_->Text("");
}

void TextEntry::completeCreation() {
  IDTMDataControl_Value(Variant(""));
  IDTMDataControl_Source(0);
  IDtmControl_DataMode(2);
  DTMStatusControl1_->IDTMStatusControl_Stretch(false);
}

TextEntry::~TextEntry() = default;

void TextEntry::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, window_->ClassName());
  editFormat_.clear();
  editPattern_.clear();
  DTMStatusControl1_->IDTMControl_Init(genericDtm);
}

bool TextEntry::IDtmControl_Enable() { return Text1_->Enabled(); }

void TextEntry::IDtmControl_Enable(bool value) {
  Text1_->Enabled(value);
  PropertyChanged("IDtmControl_Enable");
}

void TextEntry::IDTMDataControl_Hot(bool value) {
  hot_ = value;
  if (!value) {
    DTMStatusControl1_->IDTMStatusControl_Mode(StatusMode::None);
    Text1_->BackColor(colors::kWindow);
    baselineText_ = Text1_->Text();
  } else {
    Text1_->BackColor(colors::kYellow);
    // An invalid changed value keeps its 104 beside the yellow.
    if (DTMStatusControl1_->IDTMStatusControl_Mode() != StatusMode::InvalidValue) {
      DTMStatusControl1_->IDTMStatusControl_Mode(StatusMode::ValueChanged);
    }
  }
  PropertyChanged("IDTMDataControl_Hot");
  PropertyChanged("BackColor");
}

void TextEntry::IDTMDataControl_Access(int32_t value) {
  access_ = value;
  IDtmControl_Enable(value != static_cast<int32_t>(AccessType::ReadOnly));
  PropertyChanged("IDTMDataControl_Access");
}

Variant TextEntry::IDTMDataControl_Value() {
  value_ = Variant(Text1_->Text());
  return dataTypeController().MatchType(value_);
}

void TextEntry::IDTMDataControl_DataItemDef(Ref<Object> node) {
  storeDataItem(node, kAllElevenAttributes);
  ApplyDefinition();
}

void TextEntry::IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) {
  statusMode_ = newValue;
  DTMStatusControl1_->IDTMStatusControl_Mode(newValue);
  if (!Msg.empty()) DTMStatusControl1_->IDTMStatusControl_Text(Msg);
}

bool TextEntry::IDTMDataControl_IsError() {
  const ErrorState error = currentError();
  logger_->Error(std::to_string(error.number) + " : " + error.description);
  clearCurrentError();
  return false;
}

void TextEntry::IDTMDataControl_SetUserValue(const Variant& value) { IDTMDataControl_Value(value); }

void TextEntry::IDTMControlFormatter_EditFormat(const std::string& value) {
  editFormat_ = value;
  if (!value.empty()) editPattern_ = editPatternFor(value);
  PropertyChanged("IDTMControlFormatter_EditFormat");
}

void TextEntry::IDTMControlFormatter_ScaleFormat(const std::string& value) {
  IDTMControlFormatter_EditFormat(value);
}

void TextEntry::TextType(TextDataType value) {
  textType_ = value;
  PropertyChanged("TextType");
}

std::string TextEntry::text() { return Text1_->Text(); }

void TextEntry::text(const std::string& value) {
  Text1_->Text(value);
  PropertyChanged("Text");
}

void TextEntry::ToolTipText(const std::string& value) {
  tooltipText_ = LocalizeText(value);
  PropertyChanged("ToolTipText");
}

void TextEntry::restoreToolTipText(TextEntry& box, const Variant& text) {
  box.TooltipLabel_->ToolTipText(text.toText());
}

int16_t TextEntry::ValidateInput(int16_t& KeyAscii) {
  if (KeyAscii == platform::keys::kBack) return KeyAscii;
  return fitsEditPattern(Text1_->Text() + keyText(KeyAscii)) ? KeyAscii : int16_t{0};
}

bool TextEntry::ValidateInputOnChange() { return fitsEditPattern(Text1_->Text()); }

// The separator is appended where the pattern expects one, so that a number typed without
// its fraction, or a text of the "x" and "s" formats, can match.
bool TextEntry::fitsEditPattern(std::string text) {
  if (editFormat_.empty()) return true;
  const std::string separator = decimalSeparator();
  if (text.find(separator) == std::string::npos && appendsSeparator(editFormat_.back())) {
    text += separator;
  }
  if (text.empty()) return true;
  return TestRegExp(editPattern_, text);
}

bool TextEntry::TestRegExp(const std::string& myPattern, const std::string& myString) {
  Ref<platform::RegExp> expression = platform::createRegExp();
  expression->Pattern(myPattern);
  return expression->Test(myString);
}

void TextEntry::showValue(const Variant& value) {
  previousValue_ = value;
  value_ = value;
  Text1_->Text(std::string(rtrimSpaces(value.toText())));
  PropertyChanged("IDTMDataControl_Value");
}

void TextEntry::showChildren(bool visible) {
  Text1_->Visible(visible);
  TooltipLabel_->Visible(visible);
  DTMStatusControl1_->window().Visible(visible);
}

void TextEntry::releaseKey(BaselineComparison comparison) {
  CheckValueWithHost();
  if (baselineCaptured_) {
    if (comparison == BaselineComparison::Trimmed) {
      baselineText_ = std::string(trimSpaces(baselineText_));
    }
    const std::string shown = Text1_->Text();
    if (shown != baselineText_) {
      IDTMDataControl_Hot(true);
    } else if (!shown.empty()) {
      IDTMDataControl_Hot(false);
    }
  }
  if (container_) container_->ControlValueChanged(asControl());
}

void TextEntry::ApplyDefinition() {
  dataTypeController().DataType(Variant(item_.Type));
  tooltipText_ = LocalizeText(item_.Help);
  UpdateTooltip();
}

void TextEntry::UpdateTooltip() {
  tooltip_.destroy();
  if (visible_) CreateTooltip();
}

void TextEntry::CreateTooltip() {
  const platform::WindowHandle windows[] = {Text1_->hWnd(), window_->hWnd()};
  tooltip_.create(*logger_, window_->hWnd(), windows, tooltipText_);
}

void TextEntry::Text1_Change() {
  if (events_) events_->Change();
  if (keyPending_) {
    if (!ValidateInputOnChange()) {
      Text1_->Text(savedText_);
      Text1_->SelStart(static_cast<int32_t>(characterCount(savedText_)));
    }
    keyPending_ = false;
  }
}

void TextEntry::Text1_Click() { CaptureBaseline(); }

void TextEntry::Text1_GotFocus() { CaptureBaseline(); }

// The host sees KeyDown before the clipboard keys are handled, and may change them. The keys
// write the text by program, which a Locked child would take: a locked box copies only.
void TextEntry::Text1_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (events_) events_->KeyDown(KeyCode, Shift);
  if ((Shift & 7) != platform::shift::kCtrl) return;
  platform::Clipboard& clipboard = platform::backend().clipboard();
  const bool locked = Text1_->Locked();
  switch (KeyCode) {
    case platform::keys::kC:
      clipboard.Clear();
      clipboard.SetText(Text1_->SelText());
      break;
    case platform::keys::kV:
      if (!locked) Text1_->SelText(clipboard.GetText());
      break;
    case platform::keys::kX:
      clipboard.Clear();
      clipboard.SetText(Text1_->SelText());
      if (!locked) Text1_->SelText("");
      break;
    default:
      break;
  }
}

// The host sees KeyPress after the filter, so a rejected key reaches it as 0.
void TextEntry::Text1_KeyPress(int16_t& KeyAscii) {
  keyPending_ = true;
  savedText_ = Text1_->Text();
  const int16_t separatorKey = firstCharacterKey(decimalSeparator());
  if (!keptByTextType(textType_, KeyAscii, separatorKey)) KeyAscii = 0;
  if (textType_ == TextDataType::Numbers && KeyAscii != 0) applyNumbersRules(KeyAscii);
  if (events_) events_->KeyPress(KeyAscii);
}

// Lengths in twips.
void TextEntry::UserControl_Resize() {
  if (window_->Height() <= 100) {
    window_->Height(150);
    Text1_->Height(150);
  } else {
    Text1_->Height(window_->Height());
  }
  if (window_->Width() < 500) window_->Width(500);
  const int32_t statusWidth = DTMStatusControl1_->window().Width();
  Text1_->Width(window_->Width() - statusWidth - 10);
  Text1_->Top(0);
  Text1_->Left(statusWidth + 10);
}

void TextEntry::UserControl_EnterFocus() { UpdateTooltip(); }

// A control that never received a device value compares against what it showed when the
// user came to it.
void TextEntry::CaptureBaseline() {
  if (baselineCaptured_) return;
  baselineText_ = Text1_->Text();
  baselineCaptured_ = true;
}

// The host is asked at every key release, with no test for a host: a box takes input only
// after IDTMControl_Init.
void TextEntry::CheckValueWithHost() {
  std::string errorText;
  bool valid = false;
  const std::string itemName = IDtmControl_Name();
  const Variant value = IDTMDataControl_Value();
  host_->ValidateItemValue(itemName, value, errorText, valid);
  IDTMDataControl_SetMode(valid ? StatusMode::None : StatusMode::InvalidValue, errorText);
}

DataTypeController& TextEntry::dataTypeController() {
  if (!dataTypeController_) dataTypeController_ = std::make_unique<DataTypeController>();
  return *dataTypeController_;
}

}  // namespace tessaline
