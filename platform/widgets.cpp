#include "tessaline/platform/widgets.h"

#include "tessaline/values/text.h"

namespace tessaline::platform {

namespace {
std::shared_ptr<Backend>& installed() {
  thread_local std::shared_ptr<Backend> toolkit;
  return toolkit;
}
}  // namespace

Backend& backend() {
  auto& toolkit = installed();
  if (!toolkit) {
    throw VbError(err::Failed, "No platform backend is installed on this thread");
  }
  return *toolkit;
}

void setBackend(std::shared_ptr<Backend> toolkit) { installed() = std::move(toolkit); }

bool hasBackend() { return static_cast<bool>(installed()); }

}  // namespace tessaline::platform

namespace tessaline::platform {

namespace {

bool is(std::string_view name, std::string_view expected) {
  return equalsIgnoreCaseAscii(name, expected);
}

// What a classic child control reads for a property that nothing has set yet.
Variant designDefault(const Widget& child, std::string_view name) {
  const bool label = dynamic_cast<const Label*>(&child) != nullptr;
  struct Row {
    std::string_view name;
    Variant value;
  };
  static const Row kDefaults[] = {
      {"Appearance", Variant(int32_t{1})},
      {"Alignment", Variant(int32_t{0})},
      {"MousePointer", Variant(int16_t{0})},
      {"OLEDropMode", Variant(int16_t{0})},
      {"OLEDragMode", Variant(int16_t{0})},
      {"RightToLeft", Variant(false)},
      {"CausesValidation", Variant(true)},
      {"DataMember", Variant("")},
      {"DataField", Variant("")},
      {"DataChanged", Variant(false)},
      {"LinkMode", Variant(int16_t{0})},
      {"LinkItem", Variant("")},
      {"LinkTopic", Variant("")},
      {"LinkTimeout", Variant(int16_t{50})},
      {"PasswordChar", Variant("")},
      {"HideSelection", Variant(true)},
      {"ScrollBars", Variant(int32_t{0})},
      {"Tag", Variant("")},
      {"HelpContextID", Variant(int32_t{0})},
      {"WhatsThisHelpID", Variant(int32_t{0})},
      {"TopIndex", Variant(int32_t{0})},
      {"NewIndex", Variant(int32_t{-1})},
      {"Sorted", Variant(false)},
      {"IntegralHeight", Variant(true)},
      {"BackStyle", Variant(int32_t{1})},
      {"UseMnemonic", Variant(true)},
      {"WordWrap", Variant(false)},
      {"DragMode", Variant(int32_t{0})},
      {"UseMaskColor", Variant(false)},
      {"MaskColor", Variant(int32_t{0xC0C0C0})},
      {"MouseIcon", Variant::nothing()},
      {"DragIcon", Variant::nothing()},
      {"Container", Variant::nothing()},
  };
  // Labels are drawn without a border; edit and list boxes with one.
  if (is(name, "BorderStyle")) return Variant(int32_t{label ? 0 : 1});
  if (is(name, "Style")) {
    if (dynamic_cast<const ComboBox*>(&child)) return Variant(int32_t{2});
    return Variant(int32_t{0});
  }
  for (const Row& row : kDefaults) {
    if (is(name, row.name)) return row.value;
  }
  return Variant();
}

struct FontField {
  std::string_view name;
  Variant (*get)(const StdFont&);
  void (*set)(StdFont&, const Variant&);
};
const FontField kFontFields[] = {
    {"FontBold", [](const StdFont& f) { return Variant(f.Bold); },
     [](StdFont& f, const Variant& v) { f.Bold = v.toBool(); }},
    {"FontItalic", [](const StdFont& f) { return Variant(f.Italic); },
     [](StdFont& f, const Variant& v) { f.Italic = v.toBool(); }},
    {"FontName", [](const StdFont& f) { return Variant(f.Name); },
     [](StdFont& f, const Variant& v) { f.Name = v.toText(); }},
    {"FontSize", [](const StdFont& f) { return Variant(f.Size); },
     [](StdFont& f, const Variant& v) { f.Size = v.toDouble(); }},
    {"FontStrikethru", [](const StdFont& f) { return Variant(f.Strikethrough); },
     [](StdFont& f, const Variant& v) { f.Strikethrough = v.toBool(); }},
    {"FontUnderline", [](const StdFont& f) { return Variant(f.Underline); },
     [](StdFont& f, const Variant& v) { f.Underline = v.toBool(); }},
};

const FontField* fontField(std::string_view name) {
  for (const FontField& field : kFontFields) {
    if (is(name, field.name)) return &field;
  }
  return nullptr;
}

Ref<StdFont> fontValue(const Variant& value) {
  auto font = refCast<StdFont>(value.toObject());
  if (!font) throw VbError(err::TypeMismatch);
  return font;
}

[[noreturn]] void readOnly() { throw VbError(err::ReadOnlyProperty); }

// A property that the backend only keeps for the form takes the kind of its design default,
// converted as the platform converts (13, 6 or 94 when it can't be), so that a wrong kind from
// a saved form fails where it is set and is never written back.
Variant ofKind(const Variant& kind, const Variant& value) {
  switch (kind.type()) {
    case VarType::Boolean:
      return Variant(value.toBool());
    case VarType::Integer:
      return Variant(value.toInt16());
    case VarType::Long:
      return Variant(value.toInt32());
    case VarType::String:
      return Variant(value.toText());
    case VarType::Object:
      return Variant(value.toObject());
    default:
      return value;
  }
}

}  // namespace

Ref<StdFont> childFont(Widget& child) {
  const Variant held = child.property("Font");
  if (held.isObject()) {
    if (auto font = refCast<StdFont>(held.toObject())) return font;
  }
  Ref<StdFont> font(std::make_shared<StdFont>());
  child.property("Font", Variant(font));
  return font;
}

Variant childProperty(Widget& child, std::string_view name) {
  if (is(name, "Name")) return Variant(child.Name());
  if (is(name, "hWnd")) return Variant(child.hWnd());
  if (is(name, "Visible")) return Variant(child.Visible());
  if (is(name, "Enabled")) return Variant(child.Enabled());
  if (is(name, "Left")) return Variant(child.Left());
  if (is(name, "Top")) return Variant(child.Top());
  if (is(name, "Width")) return Variant(child.Width());
  if (is(name, "Height")) return Variant(child.Height());
  if (is(name, "BackColor")) return Variant(child.BackColor());
  if (is(name, "ForeColor")) return Variant(child.ForeColor());
  if (is(name, "TabIndex")) return Variant(child.TabIndex());
  if (is(name, "ToolTipText")) return Variant(child.ToolTipText());
  if (is(name, "Font")) return Variant(childFont(child));
  if (const FontField* field = fontField(name)) return field->get(*childFont(child));
  if (auto* box = dynamic_cast<TextBox*>(&child)) {
    if (is(name, "Text")) return Variant(box->Text());
    if (is(name, "SelStart")) return Variant(box->SelStart());
    if (is(name, "SelLength")) return Variant(box->SelLength());
    if (is(name, "SelText")) return Variant(box->SelText());
    if (is(name, "Locked")) return Variant(box->Locked());
    if (is(name, "MultiLine")) return Variant(box->MultiLine());
  }
  if (auto* label = dynamic_cast<Label*>(&child)) {
    if (is(name, "Caption")) return Variant(label->Caption());
    if (is(name, "AutoSize")) return Variant(label->AutoSize());
  }
  if (auto* list = dynamic_cast<ListWidget*>(&child)) {
    if (is(name, "Text")) return Variant(list->Text());
    if (is(name, "ListIndex")) return Variant(list->ListIndex());
    if (is(name, "ListCount")) return Variant(list->ListCount());
  }
  if (auto* combo = dynamic_cast<ComboBox*>(&child)) {
    if (is(name, "Locked")) return Variant(combo->Locked());
  }
  if (auto* button = dynamic_cast<CommandButton*>(&child)) {
    if (is(name, "Caption")) return Variant(button->Caption());
  }
  if (auto* image = dynamic_cast<Image*>(&child)) {
    if (is(name, "Picture")) return Variant(image->Picture());
    if (is(name, "Stretch")) return Variant(image->Stretch());
  }
  if (auto* box = dynamic_cast<CheckBox*>(&child)) {
    if (is(name, "Value")) return Variant(box->Value());
    if (is(name, "Caption")) return Variant(box->Caption());
    if (is(name, "Picture")) return Variant(box->Picture());
  }
  if (auto* picker = dynamic_cast<DatePicker*>(&child)) {
    if (is(name, "Value")) return Variant(picker->Value());
    if (is(name, "CustomFormat")) return Variant(picker->CustomFormat());
    if (is(name, "CalendarBackColor")) return Variant(picker->CalendarBackColor());
    if (is(name, "MinDate")) return Variant(picker->MinDate());
    if (is(name, "MaxDate")) return Variant(picker->MaxDate());
    if (is(name, "Text")) return Variant(picker->Text());
  }
  const Variant held = child.property(name);
  return held.isEmpty() ? designDefault(child, name) : held;
}

void childProperty(Widget& child, std::string_view name, const Variant& value) {
  if (is(name, "Name") || is(name, "hWnd") || is(name, "ListCount") || is(name, "MultiLine")) {
    readOnly();
  }
  if (is(name, "Visible")) return child.Visible(value.toBool());
  if (is(name, "Enabled")) return child.Enabled(value.toBool());
  if (is(name, "Left")) return child.Left(value.toInt32());
  if (is(name, "Top")) return child.Top(value.toInt32());
  if (is(name, "Width")) return child.Width(value.toInt32());
  if (is(name, "Height")) return child.Height(value.toInt32());
  if (is(name, "BackColor")) return child.BackColor(value.toInt32());
  if (is(name, "ForeColor")) return child.ForeColor(value.toInt32());
  if (is(name, "TabIndex")) return child.TabIndex(value.toInt32());
  if (is(name, "ToolTipText")) return child.ToolTipText(value.toText());
  if (is(name, "Font")) return child.property("Font", Variant(fontValue(value)));
  if (const FontField* field = fontField(name)) {
    Ref<StdFont> font = childFont(child);
    field->set(*font, value);
    // Set again, so that a backend that draws the font takes the change.
    return child.property("Font", Variant(font));
  }
  if (auto* box = dynamic_cast<TextBox*>(&child)) {
    if (is(name, "Text")) return box->Text(value.toText());
    if (is(name, "SelStart")) return box->SelStart(value.toInt32());
    if (is(name, "SelLength")) return box->SelLength(value.toInt32());
    if (is(name, "SelText")) return box->SelText(value.toText());
    if (is(name, "Locked")) return box->Locked(value.toBool());
  }
  if (auto* label = dynamic_cast<Label*>(&child)) {
    if (is(name, "Caption")) return label->Caption(value.toText());
    if (is(name, "AutoSize")) return label->AutoSize(value.toBool());
  }
  if (auto* list = dynamic_cast<ListWidget*>(&child)) {
    if (is(name, "Text")) readOnly();
    if (is(name, "ListIndex")) return list->ListIndex(value.toInt32());
  }
  if (auto* combo = dynamic_cast<ComboBox*>(&child)) {
    if (is(name, "Locked")) return combo->Locked(value.toBool());
  }
  if (auto* button = dynamic_cast<CommandButton*>(&child)) {
    if (is(name, "Caption")) return button->Caption(value.toText());
  }
  if (auto* image = dynamic_cast<Image*>(&child)) {
    if (is(name, "Picture")) return image->Picture(value.isEmpty() ? nullptr : value.toObject());
    if (is(name, "Stretch")) return image->Stretch(value.toBool());
  }
  if (auto* box = dynamic_cast<CheckBox*>(&child)) {
    if (is(name, "Value")) return box->Value(value.toInt16());
    if (is(name, "Caption")) return box->Caption(value.toText());
    if (is(name, "Picture")) return box->Picture(value.isEmpty() ? nullptr : value.toObject());
  }
  if (auto* picker = dynamic_cast<DatePicker*>(&child)) {
    if (is(name, "Value")) return picker->Value(value.toDate());
    if (is(name, "CustomFormat")) return picker->CustomFormat(value.toText());
    if (is(name, "CalendarBackColor")) return picker->CalendarBackColor(value.toInt32());
    if (is(name, "MinDate") || is(name, "MaxDate") || is(name, "Text")) readOnly();
  }
  child.property(name, ofKind(designDefault(child, name), value));
}

}  // namespace tessaline::platform
