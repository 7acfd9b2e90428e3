#pragma once

#include <memory>
#include <string>

#include "action/picture_button_control.h"
#include "frame/definitions.h"
#include "values/vb_array.h"

namespace tessaline {

// A device value shown as a picture that launches a numbered function: each entry of the
// enumeration gives a picture and a function number ("functionId", "0" when absent), and a
// click launches the number of the last match by the launch type, when it is above 0.
class DTMDataPictureButton : public PictureButtonControl {
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

  const VbArray<EnumData>& entries() const { return entries_; }

 private:
  DTMDataPictureButton();

  void makeEntries(int32_t children) override { entries_.redim(children); }
  void readEntry(const Ref<platform::XmlNode>& child, int32_t index) override;
  int32_t usedEntries() const override { return entries_.hasBounds() ? entries_.upperBound() : -1; }
  const EnumData& entryAt(int32_t index) const override { return entries_[index]; }
  // A number that isn't one fails after the picture changed.
  void takeFunctionOf(int32_t index) override;
  void ImgIcon_Click();

  VbArray<EnumData> entries_;
  int32_t functionId_ = 0;
  int32_t launchType_ = 0;
  bool openPopup_ = false;
};

// An enumeration entry of the function-name picture button: FunctionId stays empty.
struct EnumDataPicFnBtn : EnumData {
  std::string FunctionName;
  std::string ModuleName;
};

// A device value shown as a picture that calls a function by name: each entry gives a
// picture, a module name and a function name, and a click calls what the last complete entry
// set. An entry that lacks either name changes the picture only.
class DTMDataPictureFnButton : public PictureButtonControl {
 public:
  static std::shared_ptr<DTMDataPictureFnButton> create();
  static void describeMembers(MemberTableBuilder<DTMDataPictureFnButton>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataPictureFnButton>(); }

  std::string IDTMControl_ModuleName() { return moduleName_; }
  void IDTMControl_ModuleName(const std::string& value);
  std::string IDTMControl_FunctionName() { return functionName_; }
  void IDTMControl_FunctionName(const std::string& value);

  const VbArray<EnumDataPicFnBtn>& entries() const { return entries_; }

 private:
  DTMDataPictureFnButton();

  void makeEntries(int32_t children) override { entries_.redim(children); }
  void readEntry(const Ref<platform::XmlNode>& child, int32_t index) override;
  int32_t usedEntries() const override { return entries_.hasBounds() ? entries_.upperBound() : -1; }
  const EnumData& entryAt(int32_t index) const override { return entries_[index]; }
  void takeFunctionOf(int32_t index) override;
  void ImgIcon_Click();

  VbArray<EnumDataPicFnBtn> entries_;
  std::string moduleName_;
  std::string functionName_;
};

}  // namespace tessaline
