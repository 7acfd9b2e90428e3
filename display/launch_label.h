#pragma once

#include <memory>
#include <string>

#include "tessaline/display/enum_label.h"

namespace tessaline {

// A data label that treats its value as a set of bits and that the user can click. It shows
// a leading text and every entry whose bits are all set in the value, joined with " | " ("0"
// when none is), sizes itself to that text, and launches a function of the host or of the
// container on a click.
class DTMDataLaunchLabel : public EnumLabel {
 public:
  static std::shared_ptr<DTMDataLaunchLabel> create();
  static void describeMembers(MemberTableBuilder<DTMDataLaunchLabel>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataLaunchLabel>(); }

  // Also localizes a leading text that was set before the host was known.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  // Stored as the control's host reference.
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return host_; }
  void IDtmControl_GenericDtm(Ref<GenericDtm> value) override;
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  // The leading text, kept localized.
  std::string IDtmControl_DefaultText() { return defaultText_; }
  void IDtmControl_DefaultText(const std::string& value);
  // 0 primary, 1 secondary, 2 in the container; anything else launches nothing.
  int32_t IDtmControl_LaunchType() { return launchType_; }
  void IDtmControl_LaunchType(int32_t value);
  int32_t IDTMControl_FunctionID() { return functionId_; }
  void IDTMControl_FunctionID(int32_t value);

  const std::string& flagText() const { return flagText_; }

 protected:
  void UpdateCaption() override;

 private:
  DTMDataLaunchLabel();

  void FitToCaption();
  void Label1_Click();

  std::string defaultText_;
  std::string flagText_;
  int32_t launchType_ = 1;
  int32_t functionId_ = 0;
};

}  // namespace tessaline
