#include "entry/data_text_box.h"

#include "frame/text.h"

namespace tessaline {

namespace colors = platform::colors;

std::shared_ptr<DTMDataTextBox> DTMDataTextBox::create() {
  return std::shared_ptr<DTMDataTextBox>(new DTMDataTextBox());
}

DTMDataTextBox::DTMDataTextBox() : DataControl("DTMDataTextBox", nullptr) {
  window_->Width(3480);
  window_->Height(360);
  DTMStatusControl1_ = DTMStatusControl::create(window_.get());
  platform::UserControl& status = DTMStatusControl1_->window();
  status.Left(0);
  status.Top(0);
  status.Width(375);
  status.Height(375);
  Text1_ = window_->createTextBox("Text1", false);
  Text1_->Left(480);
  Text1_->Top(0);
  Text1_->Width(3000);
  Text1_->Height(375);
  Text1_->TabIndex(0);
  TooltipLabel_ = window_->createLabel("TooltipLabel");
  TooltipLabel_->Left(480);
  TooltipLabel_->Top(0);
  TooltipLabel_->Width(3015);
  TooltipLabel_->Height(375);

  Text1_->events.Change = [this] { Text1_Change(); };
  Text1_->events.Click = [this] { Text1_Click(); };
  Text1_->events.GotFocus = [this] { Text1_GotFocus(); };
  Text1_->events.KeyUp = [this](int16_t& KeyCode, int16_t& Shift) { Text1_KeyUp(KeyCode, Shift); };
  window_->events.EnterFocus = [this] { UserControl_EnterFocus(); };

  // Creation defaults, in this order.
  active_ = true;
  enable_ = true;
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
  statusMode_ = 0;
  Text1_->Text("");
  IDTMDataControl_Value(Variant(""));
  IDTMDataControl_Source(0);
  IDtmControl_DataMode(2);
  DTMStatusControl1_->IDTMStatusControl_Stretch(false);
}

DTMDataTextBox::~DTMDataTextBox() = default;

void DTMDataTextBox::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DTMDataTextBox");
  editFormat_.clear();
  editPattern_.clear();
  DTMStatusControl1_->IDTMControl_Init(genericDtm);
}

bool DTMDataTextBox::IDtmControl_Enable() { return Text1_->Enabled(); }

void DTMDataTextBox::IDtmControl_Enable(bool value) {
  enable_ = value;
  Text1_->Enabled(value);
  PropertyChanged("IDtmControl_Enable");
}

void DTMDataTextBox::IDtmControl_Visible(bool value) {
  visible_ = value;
  Text1_->Visible(value);
  TooltipLabel_->Visible(value);
  DTMStatusControl1_->window().Visible(value);
  ApplyDefinition();
  PropertyChanged("IDtmControl_Visible");
}

void DTMDataTextBox::IDTMDataControl_Hot(bool value) {
  hot_ = value;
  if (!value) {
    DTMStatusControl1_->IDTMStatusControl_Mode(0);
    Text1_->BackColor(colors::kWindow);
    baselineText_ = Text1_->Text();
  } else {
    Text1_->BackColor(colors::kYellow);
    // An invalid changed value keeps its 104 beside the yellow.
    if (DTMStatusControl1_->IDTMStatusControl_Mode() != 104) {
      DTMStatusControl1_->IDTMStatusControl_Mode(102);
    }
  }
  PropertyChanged("IDTMDataControl_Hot");
  PropertyChanged("BackColor");
}

void DTMDataTextBox::IDTMDataControl_Access(int32_t value) {
  access_ = value;
  IDtmControl_Enable(value != static_cast<int32_t>(AccessType::ReadOnly));
  PropertyChanged("IDTMDataControl_Access");
}

Variant DTMDataTextBox::IDTMDataControl_Value() {
  value_ = Variant(Text1_->Text());
  return dataTypeController().MatchType(value_);
}

void DTMDataTextBox::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_Value", [&] {
    const Variant shown = IsNotANumber(value) ? Variant("NaN") : value;
    previousValue_ = shown;
    value_ = shown;
    Text1_->Text(std::string(rtrimSpaces(shown.toText())));
    PropertyChanged("IDTMDataControl_Value");
  });
}

void DTMDataTextBox::IDTMDataControl_DataItemDef(Ref<Object> node) {
  storeDataItem(node, kAllElevenAttributes);
  ApplyDefinition();
}

void DTMDataTextBox::IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) {
  statusMode_ = newValue;
  DTMStatusControl1_->IDTMStatusControl_Mode(newValue);
  if (!Msg.empty()) DTMStatusControl1_->IDTMStatusControl_Text(Msg);
}

bool DTMDataTextBox::IDTMDataControl_IsError() {
  const ErrorState error = currentError();
  logger_->Error(std::to_string(error.number) + " : " + error.description);
  clearCurrentError();
  return false;
}

void DTMDataTextBox::IDTMDataControl_SetUserValue(const Variant& value) {
  IDTMDataControl_Value(value);
}

void DTMDataTextBox::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataTextBox IDTMDataControl_SetDeviceValue", [&] {
    // A device value during an edit moves only the baseline.
    if (!hot_) IDTMDataControl_Value(value);
    baselineText_ = value.toText();
    baselineCaptured_ = true;
  });
}

void DTMDataTextBox::IDTMControlFormatter_EditFormat(const std::string& value) {
  editFormat_ = value;
  PropertyChanged("IDTMControlFormatter_EditFormat");
}

void DTMDataTextBox::IDTMControlFormatter_ScaleFormat(const std::string& value) {
  IDTMControlFormatter_EditFormat(value);
}

void DTMDataTextBox::TextType(TextDataType value) {
  textType_ = value;
  PropertyChanged("TextType");
}

std::string DTMDataTextBox::text() { return Text1_->Text(); }

void DTMDataTextBox::text(const std::string& value) {
  Text1_->Text(value);
  PropertyChanged("Text");
}

platform::Color DTMDataTextBox::BackColor() { return Text1_->BackColor(); }

void DTMDataTextBox::BackColor(platform::Color value) {
  Text1_->BackColor(value);
  PropertyChanged("BackColor");
}

void DTMDataTextBox::ToolTipText(const std::string& value) {
  tooltipText_ = LocalizeText(value);
  PropertyChanged("ToolTipText");
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

void DTMDataTextBox::Text1_Change() {
  if (events_) events_->Change();
}

void DTMDataTextBox::Text1_Click() { CaptureBaseline(); }

void DTMDataTextBox::Text1_GotFocus() { CaptureBaseline(); }

void DTMDataTextBox::Text1_KeyUp(int16_t&, int16_t&) {
  CheckValueWithHost();
  if (baselineCaptured_) {
    baselineText_ = std::string(trimSpaces(baselineText_));
    const std::string shown = Text1_->Text();
    if (shown != baselineText_) {
      IDTMDataControl_Hot(true);
    } else if (!shown.empty()) {
      IDTMDataControl_Hot(false);
    }
  }
  if (container_) container_->ControlValueChanged(asControl());
}

void DTMDataTextBox::UserControl_EnterFocus() { UpdateTooltip(); }

// A control that never received a device value compares against what it showed when the
// user came to it.
void DTMDataTextBox::CaptureBaseline() {
  if (baselineCaptured_) return;
  baselineText_ = Text1_->Text();
  baselineCaptured_ = true;
}

// The host is asked at every key release, with no test for a host: a box takes input only
// after IDTMControl_Init.
void DTMDataTextBox::CheckValueWithHost() {
  std::string errorText;
  bool valid = false;
  const std::string itemName = IDtmControl_Name();
  const Variant value = IDTMDataControl_Value();
  host_->ValidateItemValue(itemName, value, errorText, valid);
  IDTMDataControl_SetMode(valid ? 0 : 104, errorText);
}

void DTMDataTextBox::ApplyDefinition() {
  dataTypeController().DataType(Variant(item_.Type));
  tooltipText_ = LocalizeText(item_.Help);
  UpdateTooltip();
}

void DTMDataTextBox::UpdateTooltip() {}

DataTypeController& DTMDataTextBox::dataTypeController() {
  if (!dataTypeController_) dataTypeController_ = std::make_unique<DataTypeController>();
  return *dataTypeController_;
}

const MemberTable& DTMDataTextBox::members() const {
  using Self = DTMDataTextBox;
  static const MemberTable table = [] {
    MemberTableBuilder<Self> t;
    addDataControlMembers(t);
    t.TESSALINE_PROPERTY(std::string, IDTMControlFormatter_EditFormat)
        .TESSALINE_PROPERTY(std::string, IDTMControlFormatter_ScaleFormat)
        .TESSALINE_PROPERTY(TextDataType, TextType)
        .TESSALINE_PROPERTY(std::string, text)
        .TESSALINE_PROPERTY(platform::Color, BackColor)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .method("IsNotANumber",
                [](Self& s, DispatchArgs& a) { return Variant(s.IsNotANumber(argument(a, 0))); });
    return t.build();
  }();
  return table;
}

}  // namespace tessaline
