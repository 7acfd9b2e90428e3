#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/control_frame.h"
#include "tessaline/frame/definitions.h"
#include "tessaline/support/tooltip.h"

namespace tessaline {

// The small icon beside an entry control that tells by picture and tooltip what state the
// neighbouring value is in. Modes: 0 nothing (text emptied), 1 to 100 nothing (text kept),
// 101 to 106 an icon and its text; a mode above 106 has no resource and fails to the caller.
class DTMStatusControl : public DtmControlBase, public virtual IDTMStatusControl {
 public:
  // A control on a form, or the status child of another control (with its window).
  static std::shared_ptr<DTMStatusControl> create(platform::UserControl* parent = nullptr);
  static void describeMembers(MemberTableBuilder<DTMStatusControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMStatusControl>(); }
  // The tooltip window goes with the control.
  ~DTMStatusControl() override;

  // The frame members are accepted and ignored: setters keep nothing, getters answer empty or
  // false. Only the data mode is kept.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return nullptr; }
  void IDtmControl_DtmContainer(Ref<DtmContainer>) override {}
  std::string IDtmControl_Name() override { return {}; }
  void IDtmControl_Name(const std::string&) override {}
  bool IDtmControl_Enable() override { return false; }
  void IDtmControl_Enable(bool) override {}
  bool IDtmControl_Visible() override { return false; }
  void IDtmControl_Visible(bool) override {}

  std::string IDTMStatusControl_Text() override { return text_; }
  void IDTMStatusControl_Text(const std::string& value) override;
  int32_t IDTMStatusControl_Mode() override { return mode_; }
  void IDTMStatusControl_Mode(int32_t value) override;
  bool IDTMStatusControl_Visible() override { return visible_; }
  void IDTMStatusControl_Visible(bool value) override;
  bool IDTMStatusControl_Stretch() { return Image1_->Stretch(); }
  void IDTMStatusControl_Stretch(bool value);

  // The child, for the platform and for tests.
  platform::Image& Image1() { return *Image1_; }
  // The tooltip, once made.
  const Ref<cTooltip>& tooltip() const { return tooltip_; }

 private:
  explicit DTMStatusControl(platform::UserControl* parent);

  void RebuildTooltip();

  std::unique_ptr<platform::Image> Image1_;
  Ref<cTooltip> tooltip_ = std::make_shared<cTooltip>();
  bool tooltipCreated_ = false;
  int32_t mode_ = 0;
  std::string text_;
  bool visible_ = true;
};

}  // namespace tessaline
