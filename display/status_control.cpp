#include "tessaline/display/status_control.h"

#include "tessaline/support/resources.h"

namespace tessaline {

std::shared_ptr<DTMStatusControl> DTMStatusControl::create(platform::UserControl* parent) {
  return std::shared_ptr<DTMStatusControl>(new DTMStatusControl(parent));
}

DTMStatusControl::DTMStatusControl(platform::UserControl* parent)
    : DtmControlBase("DTMStatusControl", parent) {
  window_->Width(375);
  window_->Height(375);
  Image1_ = window_->createImage("Image1");
  Image1_->Width(375);
  Image1_->Height(375);
  IDTMStatusControl_Visible(true);
  text_.clear();
  IDTMStatusControl_Stretch(false);
  IDTMStatusControl_Mode(StatusMode::None);
  IDtmControl_DataMode(2);
}

DTMStatusControl::~DTMStatusControl() { tooltip_->Destroy(); }

void DTMStatusControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DTMStatusControl");
}

// A mode above 106 has no resource: it fails to the caller with the mode already stored.
void DTMStatusControl::IDTMStatusControl_Mode(int32_t value) {
  mode_ = value;
  Image1_->Picture(nullptr);
  if (value == StatusMode::None) IDTMStatusControl_Text("");
  if (value > StatusMode::Quiet) {
    Image1_->Picture(LoadResPicture(value));
    IDTMStatusControl_Text(LoadResString(value));
  }
  RebuildTooltip();
  PropertyChanged("IDTMStatusControl_Mode");
}

// The text is a localization key: the host's language shows where the host has it.
void DTMStatusControl::IDTMStatusControl_Text(const std::string& value) {
  text_ = value.empty() ? std::string() : LocalizeText(value);
  RebuildTooltip();
}

void DTMStatusControl::IDTMStatusControl_Visible(bool value) {
  visible_ = value;
  Image1_->Visible(value);
}

void DTMStatusControl::IDTMStatusControl_Stretch(bool value) { Image1_->Stretch(value); }

// Unlike the other controls the status icon has no tooltip at all while its text is empty.
void DTMStatusControl::RebuildTooltip() {
  guarded(
      *logger_, "Error in CreateTooltip of DtmStatusControl ",
      [&] {
        if (tooltipCreated_) tooltip_->Destroy();
        if (!text_.empty()) {
          tooltip_->Create(window_->hWnd());
          tooltipCreated_ = true;
          tooltip_->MaxWidth(400);
          tooltip_->VisibleTime(15000);
          tooltip_->DelayTime(500);
          tooltip_->AddControl(window_->hWnd(), text_);
        } else {
          tooltip_->VisibleTime(0);
        }
      },
      ErrorLineStyle::Tooltip);
}

void DTMStatusControl::describeMembers(MemberTableBuilder<DTMStatusControl>& table) {
  using Self = DTMStatusControl;
  addDtmControlMembers(table);
  table.TESSALINE_PROPERTY(std::string, IDTMStatusControl_Text)
      .TESSALINE_PROPERTY(int32_t, IDTMStatusControl_Mode)
      .TESSALINE_PROPERTY(bool, IDTMStatusControl_Visible)
      .TESSALINE_PROPERTY(bool, IDTMStatusControl_Stretch)
      .persist({"IDTMStatusControl_Visible", "IDTMStatusControl_Text", "IDTMStatusControl_Mode",
                "IDTMStatusControl_Stretch", "IDtmControl_DataMode"});
}

}  // namespace tessaline
