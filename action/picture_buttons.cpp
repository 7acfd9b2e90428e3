#include "action/picture_buttons.h"

namespace tessaline {

namespace {

// The name and code of a child when it has both; the slot stays empty of them otherwise.
void readNameAndCode(const Ref<platform::XmlNode>& child, EnumData& entry) {
  const auto name = platform::attributeValue(child, "name");
  const auto code = platform::attributeValue(child, "code");
  if (name && code) {
    entry.name = *name;
    entry.code = *code;
  }
}

}  // namespace

// ---- DTMDataPictureButton ----

std::shared_ptr<DTMDataPictureButton> DTMDataPictureButton::create() {
  return std::shared_ptr<DTMDataPictureButton>(new DTMDataPictureButton());
}

DTMDataPictureButton::DTMDataPictureButton() : PictureButtonControl("DTMDataPictureButton") {
  ImgIcon_->events.Click = [this] { ImgIcon_Click(); };
}

void DTMDataPictureButton::IDTMControl_FunctionID(int32_t value) {
  functionId_ = value;
  PropertyChanged("IDTMControl_FunctionID");
}

void DTMDataPictureButton::IDtmControl_LaunchType(int32_t value) {
  launchType_ = value;
  PropertyChanged("IDtmControl_LaunchType");
}

void DTMDataPictureButton::IDtmControl_OpenPopup(bool value) {
  openPopup_ = value;
  PropertyChanged("IDtmControl_OpenPopup");
}

void DTMDataPictureButton::readEntry(const Ref<platform::XmlNode>& child, int32_t index) {
  EnumData& entry = entries_[index];
  readNameAndCode(child, entry);
  entry.FunctionId = platform::attributeValue(child, "functionId").value_or("0");
  entry.Image = platform::attributeValue(child, "image").value_or("");
}

void DTMDataPictureButton::takeFunctionOf(int32_t index) {
  IDTMControl_FunctionID(Variant(entries_[index].FunctionId).toInt32());
}

// Unlike the launch button, a number of 0 or less launches nothing.
void DTMDataPictureButton::ImgIcon_Click() {
  guarded(*logger_, "Error on Command1_Click", [&] {
    if (functionId_ <= 0) return;
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

void DTMDataPictureButton::describeMembers(MemberTableBuilder<DTMDataPictureButton>& table) {
  using Self = DTMDataPictureButton;
  addPictureButtonMembers(table);
  table.TESSALINE_PROPERTY(int32_t, IDTMControl_FunctionID)
      .TESSALINE_PROPERTY(int32_t, IDtmControl_LaunchType)
      .TESSALINE_PROPERTY(bool, IDtmControl_OpenPopup)
      .persist({"IDTMControl_FunctionID", "IDtmControl_OpenPopup", "IDtmControl_LaunchType",
                "IDTMDataControl_Active", "IDtmControl_Enable", "IDTMDataControl_Hot",
                "IDtmControl_Visible", "IDTMDataControl_Name", "IDtmControl_Name",
                Persisted("IDTMDataControl_Value").withDefault("101"),
                "IDTMDataControl_PreviousValue", "IDTMDataControl_Access", "IDtmControl_DataMode",
                "IDTMDataControl_Source", "IDTMDataControl_CanSubscribe"});
}

// ---- DTMDataPictureFnButton ----

std::shared_ptr<DTMDataPictureFnButton> DTMDataPictureFnButton::create() {
  return std::shared_ptr<DTMDataPictureFnButton>(new DTMDataPictureFnButton());
}

DTMDataPictureFnButton::DTMDataPictureFnButton() : PictureButtonControl("DTMDataPictureFnButton") {
  ImgIcon_->events.Click = [this] { ImgIcon_Click(); };
}

void DTMDataPictureFnButton::IDTMControl_ModuleName(const std::string& value) {
  moduleName_ = value;
  PropertyChanged("IDTMControl_ModuleName");
}

void DTMDataPictureFnButton::IDTMControl_FunctionName(const std::string& value) {
  functionName_ = value;
  PropertyChanged("IDTMControl_FunctionName");
}

void DTMDataPictureFnButton::readEntry(const Ref<platform::XmlNode>& child, int32_t index) {
  EnumDataPicFnBtn& entry = entries_[index];
  readNameAndCode(child, entry);
  entry.FunctionName = platform::attributeValue(child, "functionName").value_or("");
  entry.ModuleName = platform::attributeValue(child, "moduleName").value_or("");
  entry.Image = platform::attributeValue(child, "image").value_or("");
}

// Only a complete entry changes what a click calls: the function first, then the module.
void DTMDataPictureFnButton::takeFunctionOf(int32_t index) {
  const EnumDataPicFnBtn& entry = entries_[index];
  if (entry.FunctionName.empty() || entry.ModuleName.empty()) return;
  IDTMControl_FunctionName(entry.FunctionName);
  IDTMControl_ModuleName(entry.ModuleName);
}

// No check of the names: with nothing set, the host is called with empty texts.
void DTMDataPictureFnButton::ImgIcon_Click() {
  guarded(*logger_, "Error on Image_Click",
          [&] { host_->CallModuleFunction(moduleName_, functionName_, std::string()); });
}

void DTMDataPictureFnButton::describeMembers(MemberTableBuilder<DTMDataPictureFnButton>& table) {
  using Self = DTMDataPictureFnButton;
  addPictureButtonMembers(table);
  table.TESSALINE_PROPERTY(std::string, IDTMControl_ModuleName)
      .TESSALINE_PROPERTY(std::string, IDTMControl_FunctionName)
      .persist({"IDTMDataControl_Active", "IDtmControl_Enable", "IDTMDataControl_Hot",
                "IDtmControl_Visible", "IDTMDataControl_Name", "IDtmControl_Name",
                Persisted("IDTMDataControl_Value").withDefault("101"),
                "IDTMDataControl_PreviousValue", "IDTMDataControl_Access", "IDtmControl_DataMode",
                "IDTMDataControl_Source", "IDTMDataControl_CanSubscribe", "IDTMControl_ModuleName",
                "IDTMControl_FunctionName"});
}

}  // namespace tessaline
