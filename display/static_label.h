#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/control_frame.h"

namespace tessaline {

// A fixed text of a dialog in the user's language: the control's name is a localization key,
// and the caption is what this control's own host gives for it. It keeps its own host and
// never touches the thread's shared one, and it asks the host with any key, also an empty one.
class DtmStaticLabel : public DtmControlBase {
 public:
  static std::shared_ptr<DtmStaticLabel> create();
  static void describeMembers(MemberTableBuilder<DtmStaticLabel>& table);
  const MemberTable& members() const override { return memberTableOf<DtmStaticLabel>(); }

  // Keeps the host in this control's own reference and localizes the name it holds.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return nullptr; }
  void IDtmControl_DtmContainer(Ref<DtmContainer>) override {}
  // The key as given, never the caption.
  std::string IDtmControl_Name() override { return name_; }
  void IDtmControl_Name(const std::string& value) override;
  // Label1.Enabled; no flag is kept.
  bool IDtmControl_Enable() override { return Label1_->Enabled(); }
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // Label1's own tooltip, not localized.
  std::string ToolTipText() { return Label1_->ToolTipText(); }
  void ToolTipText(const std::string& value);

  platform::Label& Label1() { return *Label1_; }

 private:
  DtmStaticLabel();

  void UserControl_Resize();

  std::unique_ptr<platform::Label> Label1_;
  std::string name_;
  bool visible_ = true;
};

}  // namespace tessaline
