#include "tessaline/frame/property_table.h"

#include "tessaline/frame/control_frame.h"
#include "tessaline/frame/definitions.h"
#include "tessaline/values/text.h"

namespace tessaline {

void MemberTable::add(Member member) {
  for (Member& row : members_) {
    if (equalsIgnoreCaseAscii(row.name, member.name)) {
      row = std::move(member);
      return;
    }
  }
  members_.push_back(std::move(member));
}

void MemberTable::remove(std::string_view name) {
  std::erase_if(members_, [&](const Member& row) { return equalsIgnoreCaseAscii(row.name, name); });
}

const Member* MemberTable::find(std::string_view name) const {
  for (const Member& member : members_) {
    if (equalsIgnoreCaseAscii(member.name, name)) return &member;
  }
  return nullptr;
}

Variant Dispatchable::get(std::string_view name) {
  const Member* member = members().find(name);
  if (!member || !member->get) throw VbError(err::MemberNotSupported);
  return member->get(*this);
}

void Dispatchable::let(std::string_view name, const Variant& value) {
  const Member* member = members().find(name);
  if (!member || (!member->let && !member->get)) throw VbError(err::MemberNotSupported);
  if (!member->let) throw VbError(err::ReadOnlyProperty);
  member->let(*this, value);
}

Variant Dispatchable::call(std::string_view name, DispatchArgs& args) {
  const Member* member = members().find(name);
  if (!member) throw VbError(err::MemberNotSupported);
  if (member->call) return member->call(*this, args);
  if (member->get && args.empty()) return member->get(*this);
  throw VbError(err::MemberNotSupported);
}

Variant Dispatchable::call(std::string_view name, DispatchArgs&& args) { return call(name, args); }

bool Dispatchable::hasMember(std::string_view name) const {
  return members().find(name) != nullptr;
}

const Variant& argument(const DispatchArgs& args, size_t index) {
  if (index >= args.size()) throw VbError(err::ArgumentNotOptional);
  return args[index];
}

namespace {

DefaultOf constant(Variant value) {
  return [value = std::move(value)](Dispatchable&) { return value; };
}

// A default that is what the control holds at the moment of reading.
DefaultOf current(const char* member) {
  return [member](Dispatchable& control) { return control.get(member); };
}

Variant ambientFont(Dispatchable& control) {
  if (auto* frame = dynamic_cast<ControlFrame*>(&control)) {
    return Variant(frame->window().AmbientFont());
  }
  return Variant(std::make_shared<platform::StdFont>());
}

struct StandardRow {
  const char* name;
  DefaultOf value;
  // Where the reading default is the control's own state, the default it is written with.
  DefaultOf written = {};
};

// The properties of the bag with the defaults under which every control that has them reads
// and writes them.
const std::vector<StandardRow>& standardRows() {
  static const std::vector<StandardRow> rows = {
      {"IDTMDataControl_Active", constant(true)},
      {"IDtmControl_Enable", constant(true)},
      {"IDTMControl_Enable", constant(true)},
      {"IDTMDataControl_Hot", constant(false)},
      {"IDtmControl_Visible", constant(true)},
      {"IDTMDataControl_Name", constant("")},
      // The name that IDTMDataControl_Name has just brought, where the control has both.
      {"IDtmControl_Name", current("IDtmControl_Name"), constant("")},
      {"IDTMControl_Name", current("IDtmControl_Name"), constant("")},
      {"IDTMDataControl_Value", constant("")},
      {"IDTMDataControl_PreviousValue", constant("")},
      {"IDTMDataControl_Access", constant(int32_t{2})},
      {"IDtmControl_DataMode", constant(int32_t{2})},
      {"IDTMDataControl_Source", constant(int32_t{0})},
      {"IDTMDataControl_CanSubscribe", constant(true)},
      {"IDTMDataControl_Caption", constant("")},
      {"IDTMControlFormatter_EditFormat", current("IDTMControlFormatter_EditFormat"), constant("")},
      {"IDtmDataControlCaption_Text", constant("")},
      {"DTMDataGaugeControl_Unit", constant("")},
      {"DTMDataGaugeControl_LowerRange", constant("")},
      {"DTMDataGaugeControl_UpperRange", constant("")},
      {"IDTMControl_Caption", constant("")},
      {"IDTMControl_FunctionID", constant(int32_t{0})},
      {"IDtmControl_LaunchType", constant(int32_t{0})},
      {"IDtmControl_OpenPopup", constant(false)},
      {"IDTMControl_ModuleName", constant("")},
      {"IDTMControl_FunctionName", constant("")},
      {"IDTMControl_Data", constant("")},
      {"IDtmControl_DefaultText", constant("")},
      {"IDTMStatusControl_Visible", constant(true)},
      {"IDTMStatusControl_Text", constant("")},
      {"IDTMStatusControl_Mode", constant(int32_t{StatusMode::Quiet})},
      {"IDTMStatusControl_Stretch", constant(false)},
      {"TextType", constant(int32_t{1})},
      {"BackColor", constant(platform::colors::kWindow)},
      {"ForeColor", constant(platform::colors::kWindowText)},
      {"Appearance", constant(int32_t{1})},
      {"Alignment", constant(int32_t{0})},
      {"BorderStyle", constant(int32_t{1})},
      {"Font", ambientFont},
      {"MousePointer", constant(int16_t{0})},
      {"MouseIcon", constant(Variant::nothing())},
      {"ToolTipText", constant("")},
      {"OLEDropMode", constant(int16_t{0})},
      {"OLEDragMode", constant(int16_t{0})},
      {"RightToLeft", constant(false)},
      {"CausesValidation", constant(true)},
      {"DataMember", constant("")},
      {"Locked", constant(false)},
      {"Text", constant("")},
      {"LinkMode", constant(int16_t{0})},
      {"LinkItem", constant("")},
      {"LinkTopic", constant("")},
      {"LinkTimeout", constant(int16_t{50})},
      {"SelText", constant("")},
      {"SelStart", constant(int32_t{0})},
      {"SelLength", constant(int32_t{0})},
      {"PasswordChar", constant("")},
      {"Align", constant(int16_t{0})},
  };
  return rows;
}

}  // namespace

StandardDefault standardDefault(std::string_view name) {
  for (const StandardRow& row : standardRows()) {
    // With case: the table's spelling is the one the bag uses.
    if (name == row.name) return {row.value, row.written ? row.written : row.value};
  }
  throw VbError(err::InvalidPropertyValue, "no standard default for " + std::string(name));
}

}  // namespace tessaline
