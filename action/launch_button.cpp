#include "tessaline/action/launch_button.h"

namespace tessaline {

std::shared_ptr<DTMLaunchButton> DTMLaunchButton::create() {
  return std::shared_ptr<DTMLaunchButton>(new DTMLaunchButton());
}

DTMLaunchButton::DTMLaunchButton()
    : CommandButtonControl("DTMLaunchButton", "DTMLaunchButton",
                           "Error in CreateTooltip of LaunchButton ") {}

void DTMLaunchButton::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  CommandButtonControl::IDTMControl_Init(genericDtm);
  UpdateTooltip();
}

void DTMLaunchButton::IDTMControl_FunctionID(int32_t value) {
  functionId_ = value;
  PropertyChanged("IDTMControl_FunctionID");
}

void DTMLaunchButton::IDtmControl_LaunchType(int32_t value) {
  launchType_ = value;
  PropertyChanged("IDtmControl_LaunchType");
}

void DTMLaunchButton::UpdateTooltip() {
  toolTipText_ = LocalizeText(toolTipText_);
  tooltip_.destroy();
  if (visible_) CreateTooltip();
}

void DTMLaunchButton::Command1_Click() {
  guarded(*logger_, "Error on Command1_Click", [&] {
    switch (launchType_) {
      case 0:
        host_->LaunchFunctionPrimary(functionId_);
        break;
      case 1:
        host_->LaunchFunctionSecondary(functionId_);
        break;
      case 2:
        container_->LaunchFunctionInContainer(functionId_);
        break;
      default:
        break;
    }
  });
}

void DTMLaunchButton::describeMembers(MemberTableBuilder<DTMLaunchButton>& table) {
  using Self = DTMLaunchButton;
  table.TESSALINE_PROPERTY(int32_t, IDTMControl_FunctionID)
      .TESSALINE_PROPERTY(int32_t, IDtmControl_LaunchType);
  addCommandButtonMembers(
      table, {"IDTMControl_FunctionID", "IDtmControl_LaunchType", "IDtmControl_DataMode"});
}

}  // namespace tessaline
