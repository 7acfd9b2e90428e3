#include "tessaline/display/launch_label.h"

namespace tessaline {

std::shared_ptr<DTMDataLaunchLabel> DTMDataLaunchLabel::create() {
  return std::shared_ptr<DTMDataLaunchLabel>(new DTMDataLaunchLabel());
}

DTMDataLaunchLabel::DTMDataLaunchLabel() : EnumLabel("DTMDataLaunchLabel", "DTMDataLaunchLabel") {
  window_->Width(1620);
  window_->Height(405);
  Label1_->AutoSize(true);
  Label1_->events.Click = [this] { Label1_Click(); };
  window_->events.Resize = [this] {
    Label1_->Top(0);
    Label1_->Left(0);
    FitToCaption();
  };

  active_ = true;
  enable_ = true;
  visible_ = true;
  canSubscribe_ = true;
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
  name_.clear();
  storedValue_ = Variant("");
  Label1_->Caption("");
  Label1_->Visible(true);
  statusMode_ = StatusMode::None;
  IDTMDataControl_Value(Variant(Label1_->Caption()));
  IDTMDataControl_Source(0);
  IDtmControl_DataMode(2);
  launchType_ = 1;
  IDtmControl_DefaultText("");
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
}

void DTMDataLaunchLabel::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  EnumLabel::IDTMControl_Init(genericDtm);
  IDtmControl_DefaultText(defaultText_);
}

void DTMDataLaunchLabel::IDtmControl_GenericDtm(Ref<GenericDtm> value) {
  host_ = value;
  PropertyChanged("IDtmControl_GenericDtm");
}

// The value is stored, shown, and set once more through the let, which shows it again.
void DTMDataLaunchLabel::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataLabel IDTMDataControl_SetDeviceValue", [&] {
    storedValue_ = value;
    UpdateCaption();
    IDTMDataControl_Value(value);
  });
}

void DTMDataLaunchLabel::IDtmControl_DefaultText(const std::string& value) {
  defaultText_ = LocalizeText(value);
  Label1_->Caption(defaultText_);
  FitToCaption();
  PropertyChanged("IDtmControl_DefaultText");
}

void DTMDataLaunchLabel::IDtmControl_LaunchType(int32_t value) {
  launchType_ = value;
  PropertyChanged("IDtmControl_LaunchType");
}

void DTMDataLaunchLabel::IDTMControl_FunctionID(int32_t value) {
  functionId_ = value;
  PropertyChanged("IDTMControl_FunctionID");
}

// An entry is on when all bits of its code are set in the value, so a code of 0 is always on.
// A code that is no number fails to the caller and the caption keeps its text.
void DTMDataLaunchLabel::UpdateCaption() {
  static const std::string kNone(1, '0');
  flagText_ = kNone;
  if (!entries_.hasBounds() || storedValue_.isNull()) return;
  for (const EnumData& entry : entries_.usedSlots()) {
    const int32_t mask = Variant(entry.code).toInt32();
    if ((storedValue_.toInt32() & mask) == mask) {
      flagText_ = flagText_ == kNone ? entry.Local : flagText_ + " | " + entry.Local;
    }
  }
  Label1_->Caption(defaultText_ + flagText_);
  FitToCaption();
}

// Lengths in twips: the control follows its self-sizing label, with no minimum.
void DTMDataLaunchLabel::FitToCaption() {
  window_->Width(Label1_->Width() + 100);
  window_->Height(Label1_->Height() + 100);
}

void DTMDataLaunchLabel::Label1_Click() {
  guarded(*logger_, "Error on Label1_Click", [&] {
    switch (launchType_) {
      case 0:
        host_->LaunchFunctionPrimary(functionId_);
        break;
      case 1:
        host_->LaunchFunctionSecondary(functionId_);
        break;
      case 2:
        IDtmControl_DtmContainer()->LaunchFunctionInContainer(functionId_);
        break;
      default:
        break;
    }
  });
}

// The launch's three properties are read behind IDTMDataControl_CanSubscribe, so the leading
// text's let overwrites the caption that the value's let may have left.
void DTMDataLaunchLabel::describeMembers(MemberTableBuilder<DTMDataLaunchLabel>& table) {
  using Self = DTMDataLaunchLabel;
  table.TESSALINE_PROPERTY(std::string, IDtmControl_DefaultText)
      .TESSALINE_PROPERTY(int32_t, IDtmControl_LaunchType)
      .TESSALINE_PROPERTY(int32_t, IDTMControl_FunctionID);
  addEnumLabelMembers(
      table, {"IDTMControl_FunctionID", "IDtmControl_LaunchType", "IDtmControl_DefaultText"});
}

}  // namespace tessaline
