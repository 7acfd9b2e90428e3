#pragma once

#include <memory>

#include "tessaline/action/command_button_control.h"

namespace tessaline {

// A push button that starts one numbered function: a click passes the function number to the
// host's or the container's launch operation that the launch type selects. The number isn't
// checked, so 0 goes to the host like any other.
class DTMLaunchButton : public CommandButtonControl {
 public:
  static std::shared_ptr<DTMLaunchButton> create();
  static void describeMembers(MemberTableBuilder<DTMLaunchButton>& table);
  const MemberTable& members() const override { return memberTableOf<DTMLaunchButton>(); }

  // Also rebuilds the tooltip, with the localized text.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;

  int32_t IDTMControl_FunctionID() { return functionId_; }
  void IDTMControl_FunctionID(int32_t value);
  // 0 primary, 1 secondary, 2 in the container; anything else launches nothing.
  int32_t IDtmControl_LaunchType() { return launchType_; }
  void IDtmControl_LaunchType(int32_t value);

 private:
  DTMLaunchButton();

  // The old tool window goes first; a hidden button gets none.
  void UpdateTooltip() override;
  void Command1_Click() override;

  int32_t functionId_ = 0;
  int32_t launchType_ = 0;
};

}  // namespace tessaline
