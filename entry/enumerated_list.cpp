#include "tessaline/entry/enumerated_list.h"

#include "tessaline/support/combo_rows.h"

namespace tessaline {

namespace colors = platform::colors;

EnumeratedList::EnumeratedList(const std::string& className, const std::string& loggerName,
                               ListKind kind, IncludeIf rule, int32_t cleanStatusMode,
                               std::string DeviceDataItem::*tooltipSource,
                               const std::string& tooltipLiteral)
    : DataControl(className, nullptr),
      tooltip_(tooltipLiteral, 10000),
      loggerName_(loggerName),
      rule_(rule),
      cleanStatusMode_(cleanStatusMode),
      tooltipSource_(tooltipSource) {
  APICallBack::InstallComboHook();
  DTMStatusControl1_ = DTMStatusControl::create(window_.get());
  if (kind == ListKind::Combo1) {
    list_ = window_->createComboBox("Combo1");
    list_->Left(600);
    list_->Width(2895);
    list_->Height(315);
  } else {
    list_ = window_->createListBox("List1");
    list_->Left(480);
    list_->Width(3015);
    list_->Height(1230);
  }
  TooltipLabel_ = window_->createLabel("TooltipLabel");
  TooltipLabel_->Width(kind == ListKind::Combo1 ? 3495 : 3735);
  TooltipLabel_->Height(kind == ListKind::Combo1 ? 375 : 1455);
  window_->Width(3480);
  window_->Height(345);
  window_->events.Resize = [this] { UserControl_Resize(); };
  window_->events.EnterFocus = [this] { UpdateTooltip(); };

  // Creation defaults.
  active_ = true;
  canSubscribe_ = true;
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
  dataMode_ = 2;
  DTMStatusControl1_->IDTMStatusControl_Stretch(false);
  UserControl_Resize();
}

EnumeratedList::~EnumeratedList() = default;

void EnumeratedList::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, loggerName_);
  DTMStatusControl1_->IDTMControl_Init(genericDtm);
}

bool EnumeratedList::IDtmControl_Enable() { return list_->Enabled(); }

void EnumeratedList::IDtmControl_Enable(bool value) {
  list_->Enabled(value);
  PropertyChanged("IDtmControl_Enable");
}

void EnumeratedList::IDTMDataControl_Access(int32_t value) {
  access_ = value;
  IDtmControl_Enable(value != static_cast<int32_t>(AccessType::ReadOnly));
  PropertyChanged("IDTMDataControl_Access");
}

Variant EnumeratedList::IDTMDataControl_Value() {
  GetComboValue();
  return storedValue_;
}

void EnumeratedList::IDTMDataControl_DataItemDef(Ref<Object> node) {
  storeDataItem(node, kAllElevenAttributes);
  UpdateTooltip();
}

void EnumeratedList::IDTMDataControl_SetMode(int32_t newValue, const std::string& Msg) {
  statusMode_ = newValue;
  DTMStatusControl1_->IDTMStatusControl_Mode(newValue);
  if (!Msg.empty()) DTMStatusControl1_->IDTMStatusControl_Text(Msg);
}

void EnumeratedList::IDTMEnumeration_EnumDataDef(Ref<Object> node) {
  enumNode_ = node;
  ReadEnumData();
  FillList();
}

void EnumeratedList::ToolTipText(const std::string& value) {
  tooltipText_ = value;
  PropertyChanged("ToolTipText");
}

void EnumeratedList::restoreToolTipText(EnumeratedList& list, const Variant& text) {
  list.TooltipLabel_->ToolTipText(text.toText());
}

// The access field is set without touching Enable.
void EnumeratedList::InitProperties() {
  window_->Width(3000);
  active_ = true;
  IDtmControl_Enable(true);
  visible_ = true;
  canSubscribe_ = true;
  hot_ = false;
  name_.clear();
  storedValue_ = Variant("");
  baselineText_.clear();
  access_ = static_cast<int32_t>(AccessType::ReadWrite);
  statusMode_ = StatusMode::None;
  IDTMDataControl_Source(0);
  IDtmControl_DataMode(2);
  DTMStatusControl1_->IDTMStatusControl_Stretch(false);
}

// A load that reaches the child list replaces the whole table; any other node leaves it.
void EnumeratedList::ReadEnumData() {
  if (auto table = readEnumeration(enumNode_, rule_, host_)) entries_ = std::move(*table);
}

void EnumeratedList::FillList() {
  list_->Clear();
  for (const EnumData& entry : entries_.usedSlots()) list_->AddItem(entry.Local);
}

// Selecting a row by program raises the list's click, so the click handling runs here, and a
// host's handler may load another table meanwhile: the entries are reached by position.
bool EnumeratedList::selectRowsOfValue(const std::function<void()>& onMatch) {
  if (!entries_.hasBounds() || storedValue_.isNull()) return false;
  bool found = false;
  const int32_t count = entries_.usedCount();
  for (int32_t i = 0; i < count; ++i) {
    if (storedValue_.toText() == entries_[i].code) {
      list_->ListIndex(i);
      if (onMatch) onMatch();
      APICallBack::RememberListIndex(list_->hWnd(), Variant(list_->ListIndex()).toInt16());
      found = true;
    }
  }
  return found;
}

void EnumeratedList::GetComboValue() {
  const std::string shown = list_->Text();
  for (const EnumData& entry : entries_.usedSlots()) {
    if (shown == entry.Local) storedValue_ = Variant(entry.code);
  }
}

void EnumeratedList::compareWithBaseline() {
  const Variant value = IDTMDataControl_Value();
  IDTMDataControl_Hot(value.toText() != baselineText_);
}

void EnumeratedList::notifyContainer() {
  if (container_) container_->ControlValueChanged(asControl());
}

void EnumeratedList::markHot(bool value) {
  hot_ = value;
  if (!value) {
    DTMStatusControl1_->IDTMStatusControl_Mode(cleanStatusMode_);
    paintList(colors::kWindow);
    baselineText_ = IDTMDataControl_Value().toText();
  } else {
    paintList(colors::kYellow);
    DTMStatusControl1_->IDTMStatusControl_Mode(StatusMode::ValueChanged);
  }
  PropertyChanged("IDTMDataControl_Hot");
  PropertyChanged("BackColor");
}

// A value that the user has modified isn't overwritten by the device.
void EnumeratedList::takeDeviceValue(const Variant& value) {
  if (hot_) return;
  baselineText_ = value.toText();
  deviceValueReceived_ = true;
  IDTMDataControl_Value(value);
  IDTMDataControl_Hot(false);
}

void EnumeratedList::UpdateTooltip() {
  tooltipText_ = LocalizeText(item_.*tooltipSource_);
  tooltip_.destroy();
  if (visible_) CreateTooltip();
}

void EnumeratedList::createTooltipFor(std::span<const platform::WindowHandle> windows) {
  tooltip_.create(*logger_, window_->hWnd(), windows, tooltipText_);
}

// Lengths in twips.
void EnumeratedList::UserControl_Resize() {
  window_->Height(list_->Height());
  if (window_->Width() < 500) window_->Width(500);
  const int32_t statusWidth = DTMStatusControl1_->window().Width();
  list_->Width(window_->Width() - statusWidth - 10);
  list_->Top(0);
  list_->Left(statusWidth + 10);
}

void EnumeratedList::paintList(platform::Color color) { list_->BackColor(color); }

}  // namespace tessaline
