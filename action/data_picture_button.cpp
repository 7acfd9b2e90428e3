#include "tessaline/action/data_picture_button.h"

namespace tessaline {

std::shared_ptr<DTMDataPictureButton> DTMDataPictureButton::create() {
  return std::shared_ptr<DTMDataPictureButton>(new DTMDataPictureButton());
}

DTMDataPictureButton::DTMDataPictureButton() : PictureButtonWithEntries("DTMDataPictureButton") {
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

}  // namespace tessaline
