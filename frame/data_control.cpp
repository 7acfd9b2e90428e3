#include "frame/data_control.h"

namespace tessaline {

DataControl::DataControl(const std::string& className, platform::UserControl* parent)
    : ControlFrame(className, parent) {}

void DataControl::IDtmControl_DataMode(int32_t value) {
  dataMode_ = value;
  PropertyChanged("IDtmControl_DataMode");
}

void DataControl::IDtmControl_Name(const std::string& value) {
  name_ = value;
  PropertyChanged("IDtmControl_Name");
}

void DataControl::IDTMDataControl_Name(const std::string& value) {
  name_ = value;
  PropertyChanged("IDTMDataControl_Name");
}

void DataControl::IDTMDataControl_Source(int32_t value) {
  source_ = value;
  PropertyChanged("IDTMDataControl_Source");
}

void DataControl::IDTMDataControl_Active(bool value) {
  active_ = value;
  PropertyChanged("IDTMDataControl_Active");
}

void DataControl::IDTMDataControl_CanSubscribe(bool value) {
  canSubscribe_ = value;
  PropertyChanged("IDTMDataControl_CanSubscribe");
}

void DataControl::IDTMDataControl_PreviousValue(const Variant& value) {
  previousValue_ = value;
  PropertyChanged("IDTMDataControl_PreviousValue");
}

bool DataControl::storeDataItem(const Ref<Object>& node, DataItemAttributes attributes) {
  dataItemNode_ = node;
  return readDataItem(node, item_, attributes);
}

}  // namespace tessaline
