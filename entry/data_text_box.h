#pragma once

#include <memory>
#include <string>

#include "display/status_control.h"
#include "frame/data_control.h"
#include "frame/data_type_controller.h"
#include "frame/events.h"

namespace tessaline {

// Edits one device parameter as text. A device value is shown and becomes the baseline; the
// user's edit is checked by the host at each key release, compared with the baseline and
// marked hot (yellow, status 102); the container hears of it and reads the value back.
class DTMDataTextBox : public virtual IDTMControlFormatter, public DataControl {
 public:
  static std::shared_ptr<DTMDataTextBox> create();
  ~DTMDataTextBox() override;

  // IDtmControl
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return host_; }
  void IDtmControl_GenericDtm(Ref<GenericDtm> value) override { host_ = value; }
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return container_; }
  void IDtmControl_DtmContainer(Ref<DtmContainer> value) override { container_ = value; }
  bool IDtmControl_Enable() override;
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // IDTMDataControl
  bool IDTMDataControl_Hot() override { return hot_; }
  void IDTMDataControl_Hot(bool value) override;
  int32_t IDTMDataControl_Access() override { return access_; }
  void IDTMDataControl_Access(int32_t value) override;
  Variant IDTMDataControl_Value() override;
  void IDTMDataControl_Value(const Variant& value) override;
  using DataControl::IDTMDataControl_DataItemDef;
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) override;
  bool IDTMDataControl_Validate() override { return validationFlag_; }
  bool IDTMDataControl_IsError() override;
  void IDTMDataControl_SetUserValue(const Variant& value) override;
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  // IDTMControlFormatter
  std::string IDTMControlFormatter_EditFormat() override { return editFormat_; }
  void IDTMControlFormatter_EditFormat(const std::string& value) override;
  // A second name of the edit format.
  std::string IDTMControlFormatter_ScaleFormat() { return IDTMControlFormatter_EditFormat(); }
  void IDTMControlFormatter_ScaleFormat(const std::string& value);

  TextDataType TextType() { return textType_; }
  void TextType(TextDataType value);
  // Text1.Text.
  std::string text();
  void text(const std::string& value);
  platform::Color BackColor();
  void BackColor(platform::Color value);
  std::string ToolTipText() { return tooltipText_; }
  void ToolTipText(const std::string& value);

  // True for a Numbers box whose value's text holds "#", "nan" or "$" (exact case).
  bool IsNotANumber(const Variant& value);

  // Where the events of the full set go.
  void Advise(std::shared_ptr<ControlEvents> sink) { events_ = std::move(sink); }

  // Children, for the platform and for tests that act as the user.
  platform::TextBox& Text1() { return *Text1_; }
  platform::Label& TooltipLabel() { return *TooltipLabel_; }
  DTMStatusControl& DTMStatusControl1() { return *DTMStatusControl1_; }
  const std::string& BaselineText() const { return baselineText_; }
  bool BaselineCaptured() const { return baselineCaptured_; }

 protected:
  const MemberTable& members() const override;

 private:
  DTMDataTextBox();

  void Text1_Change();
  void Text1_Click();
  void Text1_GotFocus();
  void Text1_KeyUp(int16_t& KeyCode, int16_t& Shift);
  void UserControl_EnterFocus();

  void CaptureBaseline();
  void CheckValueWithHost();
  void ApplyDefinition();
  void UpdateTooltip();
  DataTypeController& dataTypeController();

  // Children, declared in the order they are made; the window (in ControlFrame) outlives them.
  std::shared_ptr<DTMStatusControl> DTMStatusControl1_;
  std::unique_ptr<platform::TextBox> Text1_;
  std::unique_ptr<platform::Label> TooltipLabel_;

  std::shared_ptr<ControlEvents> events_;
  std::unique_ptr<DataTypeController> dataTypeController_;
  bool hot_ = false;
  bool visible_ = true;
  bool enable_ = true;
  bool validationFlag_ = true;
  Variant value_;
  std::string baselineText_;
  bool baselineCaptured_ = false;
  TextDataType textType_ = TextDataType::AlphaNumeric;
  std::string editFormat_;
  std::string editPattern_;
};

}  // namespace tessaline
