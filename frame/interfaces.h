#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tessaline/frame/host.h"
#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"

// The twelve interfaces that the controls implement, members in slot order. A property is a
// getter/setter overload pair, getter first. Booleans are bool here and -1 as a number.
namespace tessaline {

class IDtmControl : public virtual Object {
 public:
  static constexpr std::string_view kIid = "b346922b-82cf-4de1-87f4-c641b5d7965e";

  virtual void IDTMControl_Init(Ref<GenericDtm> genericDtm) = 0;
  virtual Ref<GenericDtm> IDtmControl_GenericDtm() = 0;
  virtual void IDtmControl_GenericDtm(Ref<GenericDtm> value) = 0;
  virtual Ref<DtmContainer> IDtmControl_DtmContainer() = 0;
  virtual void IDtmControl_DtmContainer(Ref<DtmContainer> value) = 0;
  virtual int32_t IDtmControl_DataMode() = 0;
  virtual void IDtmControl_DataMode(int32_t value) = 0;
  virtual std::string IDtmControl_Name() = 0;
  virtual void IDtmControl_Name(const std::string& value) = 0;
  virtual bool IDtmControl_Enable() = 0;
  virtual void IDtmControl_Enable(bool value) = 0;
  virtual bool IDtmControl_Visible() = 0;
  virtual void IDtmControl_Visible(bool value) = 0;
};

class IDTMDataControl : public virtual Object {
 public:
  static constexpr std::string_view kIid = "d82402a0-f558-483f-afbc-8be377e68346";

  virtual bool IDTMDataControl_Hot() = 0;
  virtual void IDTMDataControl_Hot(bool value) = 0;
  virtual int32_t IDTMDataControl_Source() = 0;
  virtual void IDTMDataControl_Source(int32_t value) = 0;
  virtual int32_t IDTMDataControl_Access() = 0;
  virtual void IDTMDataControl_Access(int32_t value) = 0;
  virtual Variant IDTMDataControl_Value() = 0;
  virtual void IDTMDataControl_Value(const Variant& value) = 0;
  virtual Variant IDTMDataControl_PreviousValue() = 0;
  virtual void IDTMDataControl_PreviousValue(const Variant& value) = 0;
  virtual bool IDTMDataControl_Active() = 0;
  virtual void IDTMDataControl_Active(bool value) = 0;
  virtual bool IDTMDataControl_CanSubscribe() = 0;
  virtual void IDTMDataControl_CanSubscribe(bool value) = 0;
  virtual Ref<Object> IDTMDataControl_DataItemDef() = 0;
  virtual void IDTMDataControl_DataItemDef(Ref<Object> node) = 0;
  virtual Ref<Object> IDTMDataControl_DeviceDataDef() = 0;
  virtual void IDTMDataControl_DeviceDataDef(Ref<Object> node) = 0;
  virtual void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) = 0;
  virtual bool IDTMDataControl_Validate() = 0;
  virtual bool IDTMDataControl_CanWrite() = 0;
  virtual bool IDTMDataControl_IsError() = 0;
  virtual std::string IDTMDataControl_ErrorString() = 0;
  virtual void IDTMDataControl_SetUserValue(const Variant& value) = 0;
  virtual void IDTMDataControl_SetDeviceValue(const Variant& value) = 0;
};

class IDTMEnumeration : public virtual Object {
 public:
  static constexpr std::string_view kIid = "7c4dab8f-98eb-4bf2-b6d4-27d5a4e2fa91";

  virtual Ref<Object> IDTMEnumeration_EnumDataDef() = 0;
  virtual void IDTMEnumeration_EnumDataDef(Ref<Object> node) = 0;
};

class IDTMEnumeration1 : public virtual Object {
 public:
  static constexpr std::string_view kIid = "cd166156-c02f-4f82-9ed1-b703a28a86ee";

  virtual void IDTMEnumeration1_UpdateEnumString(const std::string& code,
                                                 const std::string& Label) = 0;
};

class IDTMControlFormatter : public virtual Object {
 public:
  static constexpr std::string_view kIid = "54e133b8-c703-43b4-96a4-fc560eab8e5a";

  virtual std::string IDTMControlFormatter_EditFormat() = 0;
  virtual void IDTMControlFormatter_EditFormat(const std::string& value) = 0;
};

class IDtmDataControlCaption : public virtual Object {
 public:
  static constexpr std::string_view kIid = "3dc1abb1-ab3f-4f7b-b44e-29fc874314b8";

  virtual std::string IDtmDataControlCaption_Text() = 0;
  virtual void IDtmDataControlCaption_Text(const std::string& value) = 0;
};

class IDTMStatusControl : public virtual Object {
 public:
  static constexpr std::string_view kIid = "923d947b-3a45-4ae3-bee5-57d48d4f858b";

  virtual std::string IDTMStatusControl_Text() = 0;
  virtual void IDTMStatusControl_Text(const std::string& value) = 0;
  virtual int32_t IDTMStatusControl_Mode() = 0;
  virtual void IDTMStatusControl_Mode(int32_t value) = 0;
  virtual bool IDTMStatusControl_Visible() = 0;
  virtual void IDTMStatusControl_Visible(bool value) = 0;
};

class IDtmDataSubscriptionControl : public virtual Object {
 public:
  static constexpr std::string_view kIid = "4a509f9d-20f7-4535-8d9d-d78607803013";

  // An array of strings.
  virtual Variant IDtmDataSubscriptionControl_SubscriptionItems() = 0;
  virtual void IDtmDataSubscriptionControl_SubscriptionItems(const Variant& items) = 0;
  virtual void IDtmDataSubscriptionControl_UpdateSubscriptionValues(const std::string& name,
                                                                    const Variant& value) = 0;
};

class IDtmDataSubscriptionControlRange : public virtual Object {
 public:
  static constexpr std::string_view kIid = "569c900a-badc-4035-8d38-80c4d49f8b3a";

  virtual Ref<Object> IDtmDataSubscriptionControlRange_GaugeDataDef() = 0;
  virtual void IDtmDataSubscriptionControlRange_GaugeDataDef(Ref<Object> node) = 0;
};

class IDtmNavigation : public virtual Object {
 public:
  static constexpr std::string_view kIid = "140a5d97-9673-4203-be3d-83212e027046";

  virtual std::string IDtmNavigation_Name() = 0;
  virtual void IDtmNavigation_Name(const std::string& value) = 0;
  virtual void IDtmNavigation_Init(Ref<GenericDtm> genericDtm,
                                   Ref<DtmContainer> dtmContainerCntrl) = 0;
  virtual void IDtmNavigation_Load(Ref<Object> navigationNode) = 0;
  virtual bool IDtmNavigation_ActivateMenu(const std::string& tabname) = 0;
  virtual void IDtmNavigation_Uninitialize() = 0;
};

class IDtmTrendControl : public virtual Object {
 public:
  static constexpr std::string_view kIid = "1d6b6149-35a0-4daf-a605-6451f9be4bf4";

  virtual Ref<Object> IDtmTrendControl_TrendDataDef() = 0;
  virtual void IDtmTrendControl_TrendDataDef(Ref<Object> node) = 0;
  virtual Variant IDtmTrendControl_ItemValue() = 0;
  virtual void IDtmTrendControl_ItemValue(const Variant& value) = 0;
  virtual Variant IDtmTrendControl_RangeHighValue() = 0;
  virtual void IDtmTrendControl_RangeHighValue(const Variant& value) = 0;
  virtual Variant IDtmTrendControl_RangeLowValue() = 0;
  virtual void IDtmTrendControl_RangeLowValue(const Variant& value) = 0;
  virtual Variant IDtmTrendControl_AlertHighValue() = 0;
  virtual void IDtmTrendControl_AlertHighValue(const Variant& value) = 0;
  virtual Variant IDtmTrendControl_AlertLowValue() = 0;
  virtual void IDtmTrendControl_AlertLowValue(const Variant& value) = 0;
  virtual Variant IDtmTrendControl_LimitHighValue() = 0;
  virtual void IDtmTrendControl_LimitHighValue(const Variant& value) = 0;
  virtual Variant IDtmTrendControl_LimitLowValue() = 0;
  virtual void IDtmTrendControl_LimitLowValue(const Variant& value) = 0;
  virtual std::string IDtmTrendControl_XLabel() = 0;
  virtual void IDtmTrendControl_XLabel(const std::string& value) = 0;
  virtual std::string IDtmTrendControl_YLabel() = 0;
  virtual void IDtmTrendControl_YLabel(const std::string& value) = 0;
};

class IDtmWaveFormControl : public virtual Object {
 public:
  static constexpr std::string_view kIid = "e2c8925b-889b-4818-a7f3-a4b2ad658c00";

  virtual std::string IDtmWaveFormControl_XLabel() = 0;
  virtual void IDtmWaveFormControl_XLabel(const std::string& value) = 0;
  virtual std::string IDtmWaveFormControl_YLabel() = 0;
  virtual void IDtmWaveFormControl_YLabel(const std::string& value) = 0;
  virtual void IDtmWaveFormControl_SetXUnit(const Variant& value) = 0;
  virtual void IDtmWaveFormControl_SetYUnit(const Variant& value) = 0;
  virtual void IDtmWaveFormControl_SetXUpperValue(const Variant& value) = 0;
  virtual void IDtmWaveFormControl_SetXLowerValue(const Variant& value) = 0;
  virtual void IDtmWaveFormControl_SetXAxisValues(const Variant& values) = 0;
  virtual void IDtmWaveFormControl_SetYAxisValues(const Variant& values) = 0;
  virtual void IDtmWaveFormControl_DrawChart() = 0;
  virtual Ref<Object> IDtmWaveFormControl_TrendDataDef() = 0;
  virtual void IDtmWaveFormControl_TrendDataDef(Ref<Object> node) = 0;
  virtual std::string IDtmWaveFormControl_title() = 0;
  virtual void IDtmWaveFormControl_title(const std::string& value) = 0;
};

// The object itself when it implements the interface of that identifier (braces and case
// don't matter), else Nothing. Covers the twelve interfaces and the two host interfaces.
Ref<Object> queryInterface(const Ref<Object>& object, std::string_view iid);

template <class Interface>
Ref<Interface> queryInterface(const Ref<Object>& object) {
  return refCast<Interface>(queryInterface(object, Interface::kIid));
}

}  // namespace tessaline
