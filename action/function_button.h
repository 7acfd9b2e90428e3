#pragma once

#include <memory>
#include <string>

#include "tessaline/action/command_button_control.h"

namespace tessaline {

// The named twin of the launch button: a click asks the host to call a function by module
// name and function name. Empty names go to the host like any others.
class DTMFunctionButton : public CommandButtonControl {
 public:
  static std::shared_ptr<DTMFunctionButton> create();
  static void describeMembers(MemberTableBuilder<DTMFunctionButton>& table);
  const MemberTable& members() const override { return memberTableOf<DTMFunctionButton>(); }

  std::string IDTMControl_ModuleName() { return moduleName_; }
  void IDTMControl_ModuleName(const std::string& value);
  std::string IDTMControl_FunctionName() { return functionName_; }
  void IDTMControl_FunctionName(const std::string& value);
  // Stored and persisted; the click doesn't read it.
  std::string IDTMControl_Data() { return data_; }
  void IDTMControl_Data(const std::string& value);
  // Command1's caption itself, with no localization; the notification says "Text".
  std::string Caption() { return Command1_->Caption(); }
  void Caption(const std::string& value);

 private:
  DTMFunctionButton();

  // Not run from IDTMControl_Init; builds the tool window whether the button is visible or not.
  void UpdateTooltip() override;
  void Command1_Click() override;

  std::string moduleName_;
  std::string functionName_;
  std::string data_;
};

}  // namespace tessaline
