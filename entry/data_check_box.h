#pragma once

#include <memory>
#include <string>

#include "tessaline/display/status_control.h"
#include "tessaline/frame/data_control.h"
#include "tessaline/support/tooltip.h"

namespace tessaline {

// Shows a device parameter as the state of a check box (0 unchecked, 1 checked, 2 grayed) and
// lets the user toggle it. The state itself is the value: there is no mapping and no use of the
// item's type. A toggle with the mouse is compared with the device's state and marks the control
// hot (its own yellow, status 102); a toggle by keyboard isn't tracked. The caption is the
// item's label, and the background colours are the control's own, fixed at creation.
class DTMDataCheckBox : public virtual IDtmDataControlCaption, public DataControl {
 public:
  static std::shared_ptr<DTMDataCheckBox> create();
  static void describeMembers(MemberTableBuilder<DTMDataCheckBox>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataCheckBox>(); }
  ~DTMDataCheckBox() override;

  // IDtmControl. The host comes from IDTMControl_Init alone.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return container_; }
  void IDtmControl_DtmContainer(Ref<DtmContainer> value) override { container_ = value; }
  // Reads the child.
  bool IDtmControl_Enable() override;
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // IDTMDataControl
  bool IDTMDataControl_Hot() override { return hot_; }
  // Clean: the normal colour, status 100, and the box's state as the baseline. Changed: the hot
  // colour and 102, whatever the status showed.
  void IDTMDataControl_Hot(bool value) override;
  int32_t IDTMDataControl_Access() override { return access_; }
  void IDTMDataControl_Access(int32_t value) override;
  // The box's state, kept as the value, as a 16-bit integer.
  Variant IDTMDataControl_Value() override;
  // A value that is no check state stays the value while the box keeps its state.
  void IDTMDataControl_Value(const Variant& value) override;
  using DataControl::IDTMDataControl_DataItemDef;
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  void IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) override;
  bool IDTMDataControl_Validate() override { return false; }
  bool IDTMDataControl_IsError() override { return false; }
  // The value, then the hot flag set directly, without colours or status.
  void IDTMDataControl_SetUserValue(const Variant& value) override;
  // Ignored while hot; else value, baseline and a clean mark.
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;

  // IDtmDataControlCaption: stored as given, shown localized; a blank text is ignored.
  std::string IDtmDataControlCaption_Text() override { return caption_; }
  void IDtmDataControlCaption_Text(const std::string& value) override;

  // Check1.Value itself: neither the value nor hot moves.
  int16_t value();
  void value(int16_t state);
  // Stored as given; it reaches the screen at the next rebuild of the tooltip.
  std::string ToolTipText() { return tooltipText_; }
  void ToolTipText(const std::string& text);
  void Picture(const Ref<Object>& picture);
  // Reads Nothing; writing places the child.
  Ref<Object> Container() { return nullptr; }
  void Container(const Ref<Object>& container);

  // Children and state, for the platform and for tests.
  platform::CheckBox& Check1() { return *Check1_; }
  platform::Label& TooltipLabel() { return *TooltipLabel_; }
  DTMStatusControl& DTMStatusControl1() { return *DTMStatusControl1_; }
  const Variant& baseline() const { return baseline_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

  // A control new on its form: the defaults once more, at its design size.
  void InitProperties() override;

 private:
  DTMDataCheckBox();

  void TrackHotState();
  void NotifyContainer();
  void UpdateTooltip();
  void CreateTooltip();
  void UserControl_Resize();
  // MouseIcon has no getter: the bag takes Check1's.
  static Variant childMouseIcon(DTMDataCheckBox& box);

  std::shared_ptr<DTMStatusControl> DTMStatusControl1_;
  std::unique_ptr<platform::CheckBox> Check1_;
  std::unique_ptr<platform::Label> TooltipLabel_;
  Variant storedValue_ = Variant("0");
  Variant baseline_ = Variant("0");
  std::string caption_;
  platform::Color hotColor_ = platform::colors::kYellow;
  platform::Color normalColor_ = platform::colors::kButtonFace;
  bool hot_ = false;
  bool visible_ = true;
  ControlTooltip tooltip_;
};

}  // namespace tessaline
