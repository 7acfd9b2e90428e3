#pragma once

#include <string>

#include "frame/control_frame.h"
#include "frame/definitions.h"
#include "frame/dispatch.h"
#include "frame/interfaces.h"

namespace tessaline {

// What every data control shares: the members that are stored for the host and read for no
// decision, each setter ending with its property-changed notification, and the definition
// record. Defaults are set by each control at its creation, in its own order; what differs
// between the controls (Hot, the value, Enable, Visible, Access, SetMode, the definition's
// reading) stays in each control.
class DataControl : public virtual IDtmControl,
                    public virtual IDTMDataControl,
                    public Dispatchable,
                    public ControlFrame {
 public:
  int32_t IDtmControl_DataMode() override { return dataMode_; }
  void IDtmControl_DataMode(int32_t value) override;
  // IDtmControl_Name and IDTMDataControl_Name share one field.
  std::string IDtmControl_Name() override { return name_; }
  void IDtmControl_Name(const std::string& value) override;
  std::string IDTMDataControl_Name() { return name_; }
  void IDTMDataControl_Name(const std::string& value);
  int32_t IDTMDataControl_Source() override { return source_; }
  void IDTMDataControl_Source(int32_t value) override;
  bool IDTMDataControl_Active() override { return active_; }
  void IDTMDataControl_Active(bool value) override;
  bool IDTMDataControl_CanSubscribe() override { return canSubscribe_; }
  void IDTMDataControl_CanSubscribe(bool value) override;
  Variant IDTMDataControl_PreviousValue() override { return previousValue_; }
  void IDTMDataControl_PreviousValue(const Variant& value) override;
  Ref<Object> IDTMDataControl_DataItemDef() override { return dataItemNode_; }
  // Stored and given back; nothing reads it.
  Ref<Object> IDTMDataControl_DeviceDataDef() override { return deviceDataNode_; }
  void IDTMDataControl_DeviceDataDef(Ref<Object> node) override { deviceDataNode_ = node; }
  bool IDTMDataControl_CanWrite() override { return false; }
  std::string IDTMDataControl_ErrorString() override { return {}; }

  const DeviceDataItem& dataItem() const { return item_; }

 protected:
  DataControl(const std::string& className, platform::UserControl* parent);

  // Stores the node and reads the attributes that this control reads. False when the node
  // was no dataItem.
  bool storeDataItem(const Ref<Object>& node, DataItemAttributes attributes);

  // The member-table rows of the two interfaces and of IDTMDataControl_Name, for a control
  // class that implements them.
  template <class Self>
  static void addDataControlMembers(MemberTableBuilder<Self>& table) {
    table
        .method("IDTMControl_Init",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMControl_Init(fromVariant<Ref<GenericDtm>>(argument(a, 0)));
                  return Variant();
                })
        .TESSALINE_PROPERTY(Ref<GenericDtm>, IDtmControl_GenericDtm)
        .TESSALINE_PROPERTY(Ref<DtmContainer>, IDtmControl_DtmContainer)
        .TESSALINE_PROPERTY(int32_t, IDtmControl_DataMode)
        .TESSALINE_PROPERTY(std::string, IDtmControl_Name)
        .TESSALINE_PROPERTY(bool, IDtmControl_Enable)
        .TESSALINE_PROPERTY(bool, IDtmControl_Visible)
        .TESSALINE_PROPERTY(bool, IDTMDataControl_Hot)
        .TESSALINE_PROPERTY(int32_t, IDTMDataControl_Source)
        .TESSALINE_PROPERTY(int32_t, IDTMDataControl_Access)
        .TESSALINE_PROPERTY(Variant, IDTMDataControl_Value)
        .TESSALINE_PROPERTY(Variant, IDTMDataControl_PreviousValue)
        .TESSALINE_PROPERTY(bool, IDTMDataControl_Active)
        .TESSALINE_PROPERTY(bool, IDTMDataControl_CanSubscribe)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DataItemDef)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DeviceDataDef)
        .method("IDTMDataControl_SetMode",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMDataControl_SetMode(argument(a, 0).toInt32(),
                                            a.size() > 1 ? a[1].toText() : std::string());
                  return Variant();
                })
        .method("IDTMDataControl_Validate",
                [](Self& s, DispatchArgs&) { return Variant(s.IDTMDataControl_Validate()); })
        .method("IDTMDataControl_CanWrite",
                [](Self& s, DispatchArgs&) { return Variant(s.IDTMDataControl_CanWrite()); })
        .method("IDTMDataControl_IsError",
                [](Self& s, DispatchArgs&) { return Variant(s.IDTMDataControl_IsError()); })
        .method("IDTMDataControl_ErrorString",
                [](Self& s, DispatchArgs&) { return Variant(s.IDTMDataControl_ErrorString()); })
        .method("IDTMDataControl_SetUserValue",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMDataControl_SetUserValue(argument(a, 0));
                  return Variant();
                })
        .method("IDTMDataControl_SetDeviceValue",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMDataControl_SetDeviceValue(argument(a, 0));
                  return Variant();
                })
        .TESSALINE_PROPERTY(std::string, IDTMDataControl_Name);
  }

  // The control itself as the container's ControlValueChanged wants it.
  Ref<IDtmControl> asControl() { return selfRef<IDtmControl>(this); }

  bool active_ = false;
  bool canSubscribe_ = false;
  int32_t source_ = 0;
  int32_t dataMode_ = 0;
  int32_t access_ = 0;
  int32_t statusMode_ = 0;
  std::string name_;
  Variant previousValue_;
  Ref<Object> dataItemNode_;
  Ref<Object> deviceDataNode_;
  DeviceDataItem item_;
  std::string tooltipText_;
};

}  // namespace tessaline
