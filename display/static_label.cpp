#include "display/static_label.h"

namespace tessaline {

std::shared_ptr<DtmStaticLabel> DtmStaticLabel::create() {
  return std::shared_ptr<DtmStaticLabel>(new DtmStaticLabel());
}

DtmStaticLabel::DtmStaticLabel() : ControlFrame("DtmStaticLabel", nullptr) {
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

void DtmStaticLabel::IDtmControl_DataMode(int32_t value) {
  dataMode_ = value;
  PropertyChanged("IDtmControl_DataMode");
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

const MemberTable& DtmStaticLabel::members() const {
  using Self = DtmStaticLabel;
  static const MemberTable table = [] {
    MemberTableBuilder<Self> t;
    t.method("IDTMControl_Init",
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
        .TESSALINE_PROPERTY(std::string, ToolTipText);
    return t.build();
  }();
  return table;
}

}  // namespace tessaline
