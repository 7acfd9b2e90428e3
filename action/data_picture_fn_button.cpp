#include "tessaline/action/data_picture_fn_button.h"

namespace tessaline {

std::shared_ptr<DTMDataPictureFnButton> DTMDataPictureFnButton::create() {
  return std::shared_ptr<DTMDataPictureFnButton>(new DTMDataPictureFnButton());
}

DTMDataPictureFnButton::DTMDataPictureFnButton()
    : PictureButtonWithEntries("DTMDataPictureFnButton") {
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
