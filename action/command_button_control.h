#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/control_frame.h"
#include "tessaline/frame/events.h"
#include "tessaline/support/tooltip.h"

namespace tessaline {

// What the launch button and the function button share: one command button, Command1, that
// fills the control; a caption kept localized; Enable and Visible reaching Command1; the
// properties forwarded to it; the tooltip over it; the layout; and the Click event, declared
// for the host and never raised. What a click starts, and when the tooltip is rebuilt, each
// button says itself.
class CommandButtonControl : public DtmControlBase {
 public:
  ~CommandButtonControl() override;

  // Takes the host, then writes the name and the caption to themselves, so that a key read
  // from the property bag is localized now that a host exists.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return host_; }
  void IDtmControl_GenericDtm(Ref<GenericDtm> value) override;
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return container_; }
  void IDtmControl_DtmContainer(Ref<DtmContainer> value) override;
  std::string IDtmControl_Name() override { return name_; }
  void IDtmControl_Name(const std::string& value) override;
  // Reads Command1.Enabled and keeps the answer.
  bool IDtmControl_Enable() override;
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // After a write it holds the localized text, not the key.
  std::string IDTMControl_Caption() { return caption_; }
  void IDTMControl_Caption(const std::string& value);
  // Takes effect with the next rebuilding of the tooltip.
  std::string ToolTipText() { return toolTipText_; }
  void ToolTipText(const std::string& value);
  std::string IDTMControl_ErrorString() { return {}; }
  // Logs the pending error as its number, " : " and its description, clears it, answers false.
  bool IDTMControl_IsError();

  // The host's sink for Click(); the buttons declare the event and never raise it.
  void Advise(std::shared_ptr<ControlEvents> sink) { events_ = std::move(sink); }

  platform::CommandButton& Command1() { return *Command1_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

 protected:
  CommandButtonControl(const std::string& className, const std::string& loggerName,
                       const std::string& tooltipFailureLiteral);

  // The rebuilding of the tooltip, from Visible, on EnterFocus and, for the launch button, from
  // IDTMControl_Init.
  virtual void UpdateTooltip() = 0;
  virtual void Command1_Click() = 0;
  void CreateTooltip();

  // The members of both buttons, and their reading order with `own` behind the caption.
  // Enable is read under one spelling and written under another; Text, Command1's caption, is
  // written and never read.
  template <class Self>
  static void addCommandButtonMembers(MemberTableBuilder<Self>& table,
                                      std::initializer_list<Persisted> own) {
    addDtmControlMembers(table);
    table
        .forward("Command1", &CommandButtonControl::Command1,
                 {"BackColor", "Appearance", "Font", "MousePointer", "MouseIcon",
                  "CausesValidation", "OLEDropMode", "RightToLeft"})
        .TESSALINE_PROPERTY(std::string, IDTMControl_Caption)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .function("IDTMControl_ErrorString", &Self::IDTMControl_ErrorString)
        .function("IDTMControl_IsError", &Self::IDTMControl_IsError)
        .persist({"IDTMControl_Name",
                  Persisted("IDtmControl_Enable").writtenUnder("IDTMControl_Enable"),
                  "IDtmControl_Visible", "IDTMControl_Caption"})
        .persist(own)
        .persist({"BackColor", "Appearance", "Font", "MousePointer", "MouseIcon", "ToolTipText",
                  "CausesValidation", "OLEDropMode", "RightToLeft",
                  Persisted::writtenOnly("Text").savedFrom(&CommandButtonControl::savedText)});
  }
  static Variant savedText(CommandButtonControl& button) {
    return Variant(button.Command1_->Caption());
  }

  std::unique_ptr<platform::CommandButton> Command1_;
  ControlTooltip tooltip_;
  std::string name_;
  std::string caption_;
  std::string toolTipText_;
  bool visible_ = true;
  bool enable_ = true;
  std::shared_ptr<ControlEvents> events_;

 private:
  void UserControl_Resize();

  std::string loggerName_;
};

}  // namespace tessaline
