#include "tessaline/display/static_label.h"

namespace tessaline {

std::shared_ptr<DtmStaticLabel> DtmStaticLabel::create() {
  return std::shared_ptr<DtmStaticLabel>(new DtmStaticLabel());
}

DtmStaticLabel::DtmStaticLabel() : DtmControlBase("DtmStaticLabel", nullptr) {
  window_->Width(1530);
  window_->Height(480);
  Label1_ = window_->createLabel("Label1");
  Label1_->Width(1455);
  Label1_->Height(375);
  window_->events.Resize = [this] { UserControl_Resize(); };

  name_.clear();
  visible_ = true;
  Label1_->Caption("");
  Label1_->Visible(true);
  IDtmControl_Name("");
  IDtmControl_DataMode(2);
}

void DtmStaticLabel::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  host_ = genericDtm;
  logger_ = MakeLogger(genericDtm, "DtmStaticLabel");
  IDtmControl_Name(name_);
}

// A failure of the host's lookup goes to the caller, with the key already stored.
void DtmStaticLabel::IDtmControl_Name(const std::string& value) {
  name_ = value;
  Label1_->Caption(host_ ? host_->GetLocalizedString(value) : value);
  PropertyChanged("IDtmControl_Name");
}

void DtmStaticLabel::IDtmControl_Enable(bool value) {
  Label1_->Enabled(value);
  PropertyChanged("IDtmControl_Enable");
}

void DtmStaticLabel::IDtmControl_Visible(bool value) {
  visible_ = value;
  Label1_->Visible(value);
  PropertyChanged("IDtmControl_Visible");
}

void DtmStaticLabel::ToolTipText(const std::string& value) {
  Label1_->ToolTipText(value);
  PropertyChanged("ToolTipText");
}

// Lengths in twips; the numbers differ from those of the data label.
void DtmStaticLabel::UserControl_Resize() {
  if (window_->Height() == 615) {
    window_->Height(250);
    Label1_->Height(250);
  }
  if (window_->Height() <= 150) {
    window_->Height(150);
    Label1_->Height(150);
  } else {
    Label1_->Height(window_->Height());
  }
  if (window_->Width() <= 750) {
    window_->Width(750);
    Label1_->Width(750);
  } else {
    Label1_->Width(window_->Width());
  }
  Label1_->Top(0);
  Label1_->Left(0);
}

// The bag's names of a caption, a function and a popup are no members here: read and dropped,
// written empty. Enable is written under another spelling than it is read; MousePointer is
// read and never written.
void DtmStaticLabel::describeMembers(MemberTableBuilder<DtmStaticLabel>& table) {
  using Self = DtmStaticLabel;
  addDtmControlMembers(table);
  table
      .forward("Label1", &Self::Label1,
               {"Alignment",    "Appearance",      "AutoSize",       "BackColor",     "BackStyle",
                "BorderStyle",  "Container",       "DataChanged",    "DataField",     "DataMember",
                "DragMode",     "Enabled",         "Font",           "FontBold",      "FontItalic",
                "FontName",     "FontSize",        "FontStrikethru", "FontUnderline", "ForeColor",
                "Height",       "LinkItem",        "LinkMode",       "LinkTimeout",   "LinkTopic",
                "MousePointer", "OLEDropMode",     "RightToLeft",    "TabIndex",      "Tag",
                "UseMnemonic",  "WhatsThisHelpID", "Width",          "WordWrap"})
      .forward("Label1", &Self::Label1, {"name", "Index"}, Forwarding::ReadOnly)
      .forward("Label1", &Self::Label1, {"DragIcon", "MouseIcon"}, Forwarding::WriteOnly)
      .TESSALINE_PROPERTY(std::string, ToolTipText)
      .persist({"IDTMControl_Name",
                Persisted("IDtmControl_Enable").writtenUnder("IDTMControl_Enable"),
                "IDtmControl_Visible", Persisted::dropped("IDTMControl_Caption"),
                Persisted::dropped("IDTMControl_FunctionID"),
                Persisted::dropped("IDtmControl_OpenPopup"), "IDtmControl_DataMode", "BackColor",
                "Appearance", "Font", Persisted::readOnly("MousePointer"), "ToolTipText",
                "OLEDropMode", "RightToLeft", "Alignment"});
}

}  // namespace tessaline
