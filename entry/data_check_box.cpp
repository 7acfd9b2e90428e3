#include "tessaline/entry/data_check_box.h"

#include "tessaline/values/text.h"

namespace tessaline {

std::shared_ptr<DTMDataCheckBox> DTMDataCheckBox::create() {
  return std::shared_ptr<DTMDataCheckBox>(new DTMDataCheckBox());
}

// Creation sets only the two colours; everything else comes from InitProperties or the bag.
DTMDataCheckBox::DTMDataCheckBox()
    : DataControl("DTMDataCheckBox", nullptr),
      tooltip_("Error in CreateTooltip of DtmCheckBox ", 10000) {
  DTMStatusControl1_ = DTMStatusControl::create(window_.get());
  auto& status = DTMStatusControl1_->window();
  status.Left(0);
  status.Top(120);
  status.Width(375);
  status.Height(315);
  Check1_ = window_->createCheckBox("Check1");
  Check1_->Left(480);
  Check1_->Width(3180);
  Check1_->Height(435);
  TooltipLabel_ = window_->createLabel("TooltipLabel");
  TooltipLabel_->Width(3735);
  TooltipLabel_->Height(375);
  // Toggles that don't come through the mouse leave the edit's state alone.
  Check1_->events.Click = [] {};
  Check1_->events.MouseDown = [this] { TrackHotState(); };
  Check1_->events.MouseUp = [this] { TrackHotState(); };
  window_->Width(3735);
  window_->Height(435);
  window_->events.Resize = [this] { UserControl_Resize(); };
  window_->events.EnterFocus = [this] { UpdateTooltip(); };
  UserControl_Resize();
}

DTMDataCheckBox::~DTMDataCheckBox() = default;

void DTMDataCheckBox::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DTMDataCheckBox");
  DTMStatusControl1_->IDTMControl_Init(genericDtm);
  Check1_->BackColor(normalColor_);
}

bool DTMDataCheckBox::IDtmControl_Enable() { return Check1_->Enabled(); }

void DTMDataCheckBox::IDtmControl_Enable(bool value) {
  Check1_->Enabled(value);
  PropertyChanged("IDtmControl_Enable");
}

void DTMDataCheckBox::IDtmControl_Visible(bool value) {
  visible_ = value;
  Check1_->Visible(value);
  TooltipLabel_->Visible(value);
  DTMStatusControl1_->window().Visible(value);
  UpdateTooltip();
  PropertyChanged("IDtmControl_Visible");
}

void DTMDataCheckBox::IDTMDataControl_Hot(bool value) {
  hot_ = value;
  if (!value) {
    Check1_->BackColor(normalColor_);
    DTMStatusControl1_->IDTMStatusControl_Mode(StatusMode::Quiet);
    baseline_ = IDTMDataControl_Value();
  } else {
    Check1_->BackColor(hotColor_);
    DTMStatusControl1_->IDTMStatusControl_Mode(StatusMode::ValueChanged);
  }
  PropertyChanged("IDTMDataControl_Hot");
  PropertyChanged("BackColor");
}

void DTMDataCheckBox::IDTMDataControl_Access(int32_t value) {
  access_ = value;
  IDtmControl_Enable(value != static_cast<int32_t>(AccessType::ReadOnly));
  PropertyChanged("IDTMDataControl_Access");
}

Variant DTMDataCheckBox::IDTMDataControl_Value() {
  storedValue_ = Variant(Check1_->Value());
  return storedValue_;
}

// The box refuses anything but 0, 1 and 2 (a Boolean true is -1): the line is written after the
// value was stored, and no notification follows.
void DTMDataCheckBox::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_Value", [&] {
    previousValue_ = value;
    storedValue_ = value;
    Check1_->Value(value.toInt16());
    PropertyChanged("IDTMDataControl_Value");
  });
}

void DTMDataCheckBox::IDTMDataControl_DataItemDef(Ref<Object> node) {
  PropertyChanged("IDTMDataControl_DataItemDef");
  storeDataItem(node, kAllElevenAttributes);
  UpdateTooltip();
}

void DTMDataCheckBox::IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) {
  statusMode_ = newValue;
  DTMStatusControl1_->IDTMStatusControl_Mode(newValue);
  if (!Msg.empty()) DTMStatusControl1_->IDTMStatusControl_Text(Msg);
}

void DTMDataCheckBox::IDTMDataControl_SetUserValue(const Variant& value) {
  IDTMDataControl_Value(value);
  hot_ = true;
}

// A state that the user has changed isn't overwritten by the device. A value the box refuses
// still reaches the baseline for a moment; the clean mark then makes the box's own state the
// baseline.
void DTMDataCheckBox::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataCheckbox IDTMDataControl_SetDeviceValue", [&] {
    if (hot_) return;
    IDTMDataControl_Value(value);
    baseline_ = value;
    IDTMDataControl_Hot(false);
  });
}

void DTMDataCheckBox::IDtmDataControlCaption_Text(const std::string& value) {
  if (trimSpaces(value).empty()) return;
  caption_ = value;
  Check1_->Caption(LocalizeText(value));
  PropertyChanged("IDtmDataControlCaption_Text");
}

int16_t DTMDataCheckBox::value() { return Check1_->Value(); }

void DTMDataCheckBox::value(int16_t state) {
  Check1_->Value(state);
  PropertyChanged("Value");
}

void DTMDataCheckBox::ToolTipText(const std::string& text) {
  tooltipText_ = text;
  PropertyChanged("ToolTipText");
}

void DTMDataCheckBox::Picture(const Ref<Object>& picture) {
  Check1_->Picture(nullptr);
  Check1_->Picture(picture);
  PropertyChanged("Picture");
}

void DTMDataCheckBox::Container(const Ref<Object>& container) {
  platform::childProperty(*Check1_, "Container", Variant(container));
  PropertyChanged("Container");
}

void DTMDataCheckBox::InitProperties() {
  window_->Height(250);
  window_->Width(3000);
  active_ = true;
  IDtmControl_Enable(true);
  visible_ = true;
  canSubscribe_ = true;
  hot_ = false;
  name_.clear();
  storedValue_ = Variant("0");
  baseline_ = Variant("0");
  Check1_->Caption("");
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
  statusMode_ = StatusMode::None;
  Check1_->BackColor(normalColor_);
  IDTMDataControl_Source(0);
  DTMStatusControl1_->IDTMStatusControl_Stretch(false);
  IDtmControl_DataMode(2);
}

// Runs at every press and every release of the mouse on the box; the container hears only when
// hot changes.
void DTMDataCheckBox::TrackHotState() {
  if (!IDtmControl_Enable()) return;
  const int16_t state = IDTMDataControl_Value().toInt16();
  if (state == baseline_.toInt16()) {
    if (hot_) {
      IDTMDataControl_Hot(false);
      NotifyContainer();
    }
  } else if (!hot_) {
    IDTMDataControl_Hot(true);
    NotifyContainer();
  }
}

void DTMDataCheckBox::NotifyContainer() {
  if (container_) container_->ControlValueChanged(asControl());
}

// The caption comes from the item's label on every occasion: one that the host set gives way to
// a non-blank label at the next gain of focus.
void DTMDataCheckBox::UpdateTooltip() {
  IDtmDataControlCaption_Text(item_.Label);
  tooltipText_ = LocalizeText(item_.Help);
  tooltip_.destroy();
  if (visible_) CreateTooltip();
}

void DTMDataCheckBox::CreateTooltip() {
  const platform::WindowHandle windows[] = {Check1_->hWnd(), window_->hWnd()};
  tooltip_.create(*logger_, window_->hWnd(), windows, tooltipText_);
}

// Lengths in twips. The status child stands centred beside a taller box.
void DTMDataCheckBox::UserControl_Resize() {
  if (window_->Height() <= 100) {
    window_->Height(150);
    Check1_->Height(150);
  } else {
    Check1_->Height(window_->Height());
  }
  if (window_->Width() < 500) window_->Width(500);
  auto& status = DTMStatusControl1_->window();
  Check1_->Width(window_->Width() - status.Width() - 10);
  Check1_->Top(0);
  Check1_->Left(status.Width() + 10);
  if (status.Height() >= Check1_->Height()) {
    status.Top(Check1_->Top());
  } else {
    status.Top(Check1_->Top() + (Check1_->Height() - status.Height()) / 2);
  }
  status.Height(Check1_->Height());
}

Variant DTMDataCheckBox::childMouseIcon(DTMDataCheckBox& box) {
  return platform::childProperty(*box.Check1_, "MouseIcon");
}

void DTMDataCheckBox::describeMembers(MemberTableBuilder<DTMDataCheckBox>& table) {
  using Self = DTMDataCheckBox;
  addDataControlMembers(table);
  table.TESSALINE_PROPERTY(std::string, IDtmDataControlCaption_Text)
      .TESSALINE_PROPERTY(int16_t, value)
      .TESSALINE_PROPERTY(std::string, ToolTipText)
      .TESSALINE_PROPERTY(Ref<Object>, Container)
      .template writeOnly<Ref<Object>>("Picture", &Self::Picture)
      .forward("Check1", &Self::Check1,
               {"Alignment",    "Appearance",      "BackColor",     "CausesValidation",
                "DataChanged",  "DataField",       "DataMember",    "DragMode",
                "Font",         "FontBold",        "FontItalic",    "FontName",
                "FontSize",     "FontStrikethru",  "FontUnderline", "ForeColor",
                "Height",       "HelpContextID",   "MaskColor",     "MousePointer",
                "OLEDropMode",  "RightToLeft",     "TabIndex",      "Tag",
                "UseMaskColor", "WhatsThisHelpID", "Width"})
      .forward("Check1", &Self::Check1, {"hwnd", "Index", "Style"}, Forwarding::ReadOnly)
      .forward("Check1", &Self::Check1, {"DisabledPicture", "DownPicture", "DragIcon", "MouseIcon"},
               Forwarding::WriteOnly)
      .persist({"IDTMDataControl_Active",
                "IDtmControl_Enable",
                "IDTMDataControl_Hot",
                "IDtmControl_Visible",
                "IDTMDataControl_Name",
                "IDtmControl_Name",
                Persisted("IDTMDataControl_Value").withDefault("Check1"),
                "IDTMDataControl_PreviousValue",
                "IDTMDataControl_Access",
                "IDtmControl_DataMode",
                "IDTMDataControl_Source",
                "IDTMDataControl_CanSubscribe",
                "IDtmDataControlCaption_Text",
                Persisted("BackColor").withDefault(Variant(platform::colors::kButtonFace)),
                "Appearance",
                "Alignment",
                "ForeColor",
                "Font",
                "MousePointer",
                Persisted("MouseIcon").savedFrom(&Self::childMouseIcon),
                "ToolTipText",
                "OLEDropMode",
                "RightToLeft"});
}

}  // namespace tessaline
