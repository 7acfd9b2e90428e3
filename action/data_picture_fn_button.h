#pragma once

#include <memory>
#include <string>

#include "tessaline/action/picture_button_control.h"
#include "tessaline/frame/definitions.h"

namespace tessaline {

// An enumeration entry of the function-name picture button: FunctionId stays empty.
struct EnumDataPicFnBtn : EnumData {
  std::string FunctionName;
  std::string ModuleName;
};

// A device value shown as a picture that calls a function by name: each entry gives a
// picture, a module name and a function name, and a click calls what the last complete entry
// set. An entry that lacks either name changes the picture only.
class DTMDataPictureFnButton : public PictureButtonWithEntries<EnumDataPicFnBtn> {
 public:
  static std::shared_ptr<DTMDataPictureFnButton> create();
  static void describeMembers(MemberTableBuilder<DTMDataPictureFnButton>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataPictureFnButton>(); }

  std::string IDTMControl_ModuleName() { return moduleName_; }
  void IDTMControl_ModuleName(const std::string& value);
  std::string IDTMControl_FunctionName() { return functionName_; }
  void IDTMControl_FunctionName(const std::string& value);

 private:
  DTMDataPictureFnButton();

  void readEntry(const Ref<platform::XmlNode>& child, int32_t index) override;
  void takeFunctionOf(int32_t index) override;
  void ImgIcon_Click();

  std::string moduleName_;
  std::string functionName_;
};

}  // namespace tessaline
