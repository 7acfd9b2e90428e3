#pragma once

#include <string>

#include "tessaline/frame/control_frame.h"
#include "tessaline/frame/definitions.h"
#include "tessaline/frame/interfaces.h"

namespace tessaline {

// What every data control shares: the members stored for the host, the previous value, the
// definition nodes and record, and the member rows of IDTMDataControl. What differs between
// the controls (Hot, the value, Enable, Visible, Access, SetMode, the definition's reading)
// stays in each control.
class DataControl : public DataMembers<IDTMDataControl> {
 public:
  Variant IDTMDataControl_PreviousValue() override { return previousValue_; }
  void IDTMDataControl_PreviousValue(const Variant& value) override;
  Ref<Object> IDTMDataControl_DataItemDef() override { return dataItemNode_; }
  // Stored and given back; nothing reads it.
  Ref<Object> IDTMDataControl_DeviceDataDef() override { return deviceDataNode_; }
  void IDTMDataControl_DeviceDataDef(Ref<Object> node) override { deviceDataNode_ = node; }
  bool IDTMDataControl_CanWrite() override { return false; }

  const DeviceDataItem& dataItem() const { return item_; }

 protected:
  DataControl(const std::string& className, platform::UserControl* parent);

  // Stores the node and reads the attributes that this control reads. False when the node
  // was no dataItem.
  bool storeDataItem(const Ref<Object>& node, DataItemAttributes attributes);

  // The member rows of IDtmControl and IDTMDataControl, with IDTMDataControl_Name.
  template <class Self>
  static void addDataControlMembers(MemberTableBuilder<Self>& table) {
    addDataMembers(table);
    table.TESSALINE_PROPERTY(bool, IDTMDataControl_Hot)
        .TESSALINE_PROPERTY(int32_t, IDTMDataControl_Access)
        .TESSALINE_PROPERTY(Variant, IDTMDataControl_Value)
        .TESSALINE_PROPERTY(Variant, IDTMDataControl_PreviousValue)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DataItemDef)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DeviceDataDef)
        .method("IDTMDataControl_SetMode",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMDataControl_SetMode(argument(a, 0).toInt32(),
                                            a.size() > 1 ? a[1].toText() : std::string());
                  return Variant();
                })
        .function("IDTMDataControl_Validate", &Self::IDTMDataControl_Validate)
        .function("IDTMDataControl_CanWrite", &Self::IDTMDataControl_CanWrite)
        .function("IDTMDataControl_IsError", &Self::IDTMDataControl_IsError)
        .procedure("IDTMDataControl_SetUserValue", &Self::IDTMDataControl_SetUserValue)
        .procedure("IDTMDataControl_SetDeviceValue", &Self::IDTMDataControl_SetDeviceValue);
  }

  // The control itself as the container's ControlValueChanged wants it.
  Ref<IDtmControl> asControl() { return selfRef<IDtmControl>(this); }

  int32_t access_ = 0;
  int32_t statusMode_ = 0;
  Variant previousValue_;
  Ref<Object> dataItemNode_;
  Ref<Object> deviceDataNode_;
  DeviceDataItem item_;
  std::string tooltipText_;
};

}  // namespace tessaline
