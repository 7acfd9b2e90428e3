#include "tessaline/action/function_button.h"

namespace tessaline {

std::shared_ptr<DTMFunctionButton> DTMFunctionButton::create() {
  return std::shared_ptr<DTMFunctionButton>(new DTMFunctionButton());
}

// The tooltip's failure literal names another control, as it always has.
DTMFunctionButton::DTMFunctionButton()
    : CommandButtonControl("DTMFunctionButton", "DTMFunctionButton",
                           "Error in CreateTooltip of DynamicTrend ") {}

void DTMFunctionButton::IDTMControl_ModuleName(const std::string& value) {
  moduleName_ = value;
  PropertyChanged("IDTMControl_ModuleName");
}

void DTMFunctionButton::IDTMControl_FunctionName(const std::string& value) {
  functionName_ = value;
  PropertyChanged("IDTMControl_FunctionName");
}

void DTMFunctionButton::IDTMControl_Data(const std::string& value) {
  data_ = value;
  PropertyChanged("IDTMControl_Data");
}

void DTMFunctionButton::Caption(const std::string& value) {
  Command1_->Caption(value);
  PropertyChanged("Text");
}

// Each run used to add a tool window beside the old one; one per control is all it needs, so
// the old one goes first here too.
void DTMFunctionButton::UpdateTooltip() {
  toolTipText_ = LocalizeText(toolTipText_);
  tooltip_.destroy();
  CreateTooltip();
}

// The data text of the call is empty: IDTMControl_Data is kept for the host, not sent.
void DTMFunctionButton::Command1_Click() {
  guarded(*logger_, "Error on Command1_Click",
          [&] { host_->CallModuleFunction(moduleName_, functionName_, std::string()); });
}

void DTMFunctionButton::describeMembers(MemberTableBuilder<DTMFunctionButton>& table) {
  using Self = DTMFunctionButton;
  table.TESSALINE_PROPERTY(std::string, IDTMControl_ModuleName)
      .TESSALINE_PROPERTY(std::string, IDTMControl_FunctionName)
      .TESSALINE_PROPERTY(std::string, IDTMControl_Data)
      .TESSALINE_PROPERTY(std::string, Caption);
  addCommandButtonMembers(table, {"IDTMControl_ModuleName", "IDTMControl_FunctionName",
                                  "IDtmControl_DataMode", "IDTMControl_Data"});
}

}  // namespace tessaline
