#include "tessaline/frame/data_control.h"

namespace tessaline {

DataControl::DataControl(const std::string& className, platform::UserControl* parent)
    : DataMembers(className, parent) {}

void DataControl::IDTMDataControl_PreviousValue(const Variant& value) {
  previousValue_ = value;
  PropertyChanged("IDTMDataControl_PreviousValue");
}

bool DataControl::storeDataItem(const Ref<Object>& node, DataItemAttributes attributes) {
  dataItemNode_ = node;
  return readDataItem(node, item_, attributes);
}

}  // namespace tessaline
