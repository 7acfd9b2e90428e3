#include "tessaline/display/enum_label.h"

namespace tessaline {

EnumLabel::EnumLabel(const std::string& className, const std::string& loggerName)
    : DataControl(className, nullptr), loggerName_(loggerName) {
  Label1_ = window_->createLabel("Label1");
  window_->events.EnterFocus = [this] { UpdateTooltip(); };
}

EnumLabel::~EnumLabel() = default;

void EnumLabel::IDTMControl_Init(Ref<GenericDtm> genericDtm) { takeHost(genericDtm, loggerName_); }

bool EnumLabel::IDtmControl_Enable() {
  enable_ = Label1_->Enabled();
  return enable_;
}

void EnumLabel::IDtmControl_Enable(bool value) {
  enable_ = value;
  Label1_->Enabled(true);
  PropertyChanged("IDtmControl_Enable");
}

void EnumLabel::IDtmControl_Visible(bool value) {
  visible_ = value;
  Label1_->Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

void EnumLabel::IDTMDataControl_Access(int32_t value) {
  access_ = value;
  IDtmControl_Enable(value != static_cast<int32_t>(AccessType::ReadOnly));
  PropertyChanged("IDTMDataControl_Access");
}

Variant EnumLabel::IDTMDataControl_Value() {
  previousValue_ = Variant();
  GetLabelValue();
  return storedValue_;
}

void EnumLabel::IDTMDataControl_Value(const Variant& value) {
  previousValue_ = value;
  storedValue_ = value;
  UpdateCaption();
  PropertyChanged("IDTMDataControl_Value");
}

void EnumLabel::IDTMDataControl_DataItemDef(Ref<Object> node) {
  storeDataItem(node, kFirstTenAttributes);
  UpdateTooltip();
  PropertyChanged("IDTMDataControl_DataItemDef");
}

void EnumLabel::IDTMDataControl_SetMode(int32_t newValue, const std::string&) {
  statusMode_ = newValue;
}

void EnumLabel::IDTMEnumeration_EnumDataDef(Ref<Object> node) {
  enumNode_ = node;
  if (auto table = readEnumeration(node, IncludeIf::Ignored, host_)) entries_ = std::move(*table);
}

void EnumLabel::IDTMEnumeration1_UpdateEnumString(const std::string& code,
                                                  const std::string& Label) {
  for (EnumData& entry : entries_.usedSlots()) {
    if (entry.code == code) entry.Local = Label;
  }
}

Variant EnumLabel::childMouseIcon(EnumLabel& label) {
  return platform::childProperty(*label.Label1_, "MouseIcon");
}

void EnumLabel::restoreToolTipText(EnumLabel& label, const Variant& text) {
  label.Label1_->ToolTipText(text.toText());
}

void EnumLabel::ToolTipText(const std::string& value) {
  tooltipText_ = value;
  PropertyChanged("ToolTipText");
}

// Only a caption that equals one entry's text finds its code; the last match wins.
void EnumLabel::GetLabelValue() {
  const std::string caption = Label1_->Caption();
  for (const EnumData& entry : entries_.usedSlots()) {
    if (caption == entry.Local) storedValue_ = Variant(entry.code);
  }
}

// Unlike the entry controls a label builds its tooltip also while it is invisible.
void EnumLabel::UpdateTooltip() {
  tooltipText_ = LocalizeText(item_.Description);
  tooltip_.destroy();
  CreateTooltip();
}

// Label1 has no window of its own: the tool is the control's window.
void EnumLabel::CreateTooltip() {
  const platform::WindowHandle windows[] = {window_->hWnd()};
  tooltip_.create(*logger_, window_->hWnd(), windows, tooltipText_);
}

}  // namespace tessaline
