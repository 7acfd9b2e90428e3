#include "frame/dispatch.h"

#include "values/text.h"

namespace tessaline {

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

}  // namespace tessaline
