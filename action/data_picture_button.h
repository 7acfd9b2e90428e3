#pragma once

#include <memory>
#include <string>

#include "tessaline/action/picture_button_control.h"
#include "tessaline/frame/definitions.h"

namespace tessaline {

// A device value shown as a picture that launches a numbered function: each entry of the
// enumeration gives a picture and a function number ("functionId", "0" when absent), and a
// click launches the number of the last match by the launch type, when it is above 0.
class DTMDataPictureButton : public PictureButtonWithEntries<EnumData> {
 public:
  static std::shared_ptr<DTMDataPictureButton> create();
  static void describeMembers(MemberTableBuilder<DTMDataPictureButton>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataPictureButton>(); }

  int32_t IDTMControl_FunctionID() { return functionId_; }
  void IDTMControl_FunctionID(int32_t value);
  // 0 primary, 1 secondary, 2 in the container; anything else launches nothing.
  int32_t IDtmControl_LaunchType() { return launchType_; }
  void IDtmControl_LaunchType(int32_t value);
  // Stored, with no other effect.
  bool IDtmControl_OpenPopup() { return openPopup_; }
  void IDtmControl_OpenPopup(bool value);

 private:
  DTMDataPictureButton();

  void readEntry(const Ref<platform::XmlNode>& child, int32_t index) override;
  // A number that isn't one fails after the picture changed.
  void takeFunctionOf(int32_t index) override;
  void ImgIcon_Click();

  int32_t functionId_ = 0;
  int32_t launchType_ = 0;
  bool openPopup_ = false;
};

}  // namespace tessaline
