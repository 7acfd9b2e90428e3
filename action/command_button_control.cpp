#include "tessaline/action/command_button_control.h"

namespace tessaline {

CommandButtonControl::CommandButtonControl(const std::string& className,
                                           const std::string& loggerName,
                                           const std::string& tooltipFailureLiteral)
    : DtmControlBase(className, nullptr),
      tooltip_(tooltipFailureLiteral, 10000),
      loggerName_(loggerName) {
  window_->Width(1200);
  window_->Height(375);
  Command1_ = window_->createCommandButton("Command1");
  Command1_->Width(1200);
  Command1_->Height(375);
  Command1_->events.Click = [this] { Command1_Click(); };
  window_->events.Resize = [this] { UserControl_Resize(); };
  window_->events.EnterFocus = [this] { UpdateTooltip(); };
}

CommandButtonControl::~CommandButtonControl() = default;

void CommandButtonControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, loggerName_);
  IDtmControl_Name(name_);
  IDTMControl_Caption(caption_);
}

void CommandButtonControl::IDtmControl_GenericDtm(Ref<GenericDtm> value) {
  host_ = value;
  PropertyChanged("IDtmControl_GenericDtm");
}

void CommandButtonControl::IDtmControl_DtmContainer(Ref<DtmContainer> value) {
  container_ = value;
  PropertyChanged("IDtmControl_DtmContainer");
}

void CommandButtonControl::IDtmControl_Name(const std::string& value) {
  name_ = value;
  PropertyChanged("IDtmControl_Name");
}

bool CommandButtonControl::IDtmControl_Enable() {
  enable_ = Command1_->Enabled();
  return enable_;
}

void CommandButtonControl::IDtmControl_Enable(bool value) {
  enable_ = value;
  Command1_->Enabled(value);
  PropertyChanged("IDtmControl_Enable");
}

void CommandButtonControl::IDtmControl_Visible(bool value) {
  visible_ = value;
  Command1_->Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

void CommandButtonControl::IDTMControl_Caption(const std::string& value) {
  caption_ = LocalizeText(value);
  Command1_->Caption(caption_);
  PropertyChanged("IDTMControl_Caption");
}

void CommandButtonControl::ToolTipText(const std::string& value) {
  toolTipText_ = value;
  PropertyChanged("ToolTipText");
}

bool CommandButtonControl::IDTMControl_IsError() {
  const ErrorState error = currentError();
  logger_->Error(std::to_string(error.number) + " : " + error.description);
  clearCurrentError();
  return false;
}

void CommandButtonControl::CreateTooltip() {
  const platform::WindowHandle windows[] = {Command1_->hWnd()};
  tooltip_.create(*logger_, window_->hWnd(), windows, toolTipText_);
}

// Lengths in twips: at least 150 high and 500 wide, the button filling the control.
void CommandButtonControl::UserControl_Resize() {
  if (window_->Height() <= 100) {
    window_->Height(150);
    Command1_->Height(150);
  } else {
    Command1_->Height(window_->Height());
  }
  if (window_->Width() < 500) window_->Width(500);
  Command1_->Width(window_->Width());
  Command1_->Top(0);
  Command1_->Left(0);
}

}  // namespace tessaline
