#pragma once

#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "tessaline/platform/widgets.h"
#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"

// The one table of a control class: every member that a host reaches by name (properties with
// their getter and setter, methods, properties forwarded to a child), and the properties that
// the form's property bag keeps, in the order in which they are read, with their defaults.
// Dispatch by name, InitProperties, ReadProperties, WriteProperties and the class catalogue
// all read this table, so they cannot drift apart. Names compare without case.
namespace tessaline {

// The arguments of a call by name. A member may write back into them (by-reference
// arguments).
using DispatchArgs = std::vector<Variant>;

class Dispatchable;

using Getter = std::function<Variant(Dispatchable&)>;
using Setter = std::function<void(Dispatchable&, const Variant&)>;
using Method = std::function<Variant(Dispatchable&, DispatchArgs&)>;
// A default that may depend on the control's state ("the name just read").
using DefaultOf = std::function<Variant(Dispatchable&)>;

struct Member {
  std::string name;
  Getter get;
  Setter let;
  Method call;
  // For a property forwarded to a child: the child's design name ("Text1").
  std::string child;

  bool forwarded() const { return !child.empty(); }
};

// One property of the property bag.
struct PersistedProperty {
  // Read under this name; empty for a property that is written and never read.
  std::string readAs;
  // Written under this name; empty for a property that is read and never written.
  std::string writtenAs;
  DefaultOf defaultValue;
  // The default it is written with: the same, but where the reading default is what the
  // control holds at that moment (the name just read, the format in force). Compared with the
  // value itself, that would keep such a property out of the bag for good.
  DefaultOf writtenDefault;
  // Where a value read from the bag goes: the member's setter unless the control says else.
  Setter restore;
  // What is written: the member's getter unless the control says else.
  Getter save;
  // False where a value read goes elsewhere than where the getter reads: such a property
  // doesn't come back as it was saved.
  bool restoresItsOwnMember = true;
};

class MemberTable {
 public:
  // A row of the same name (without case) replaces the earlier one in its place, so a class
  // can change a row that a shared block added.
  void add(Member member);
  void remove(std::string_view name);
  void persist(PersistedProperty property) { persisted_.push_back(std::move(property)); }

  const Member* find(std::string_view name) const;
  std::span<const Member> all() const { return members_; }
  // The bag's properties in the order of reading.
  std::span<const PersistedProperty> persisted() const { return persisted_; }

 private:
  std::vector<Member> members_;
  std::vector<PersistedProperty> persisted_;
};

// What a control offers by name. Every control is one.
class Dispatchable : public virtual Object {
 public:
  // Reads a property; 438 for a name the control doesn't have or can't read.
  Variant get(std::string_view name);
  // Writes a property; 438 for an unknown name, 383 for a property that can only be read.
  void let(std::string_view name, const Variant& value);
  // Calls a method; 438 for an unknown name, 449 for a missing argument.
  Variant call(std::string_view name, DispatchArgs& args);
  Variant call(std::string_view name, DispatchArgs&& args = {});
  bool hasMember(std::string_view name) const;

  // The table of the control's class.
  virtual const MemberTable& members() const = 0;
  // Marks the saved state stale under a property's name; controls tell their form.
  virtual void PropertyChanged([[maybe_unused]] const std::string& name) {}
};

// Conversions between a member's C++ type and the value of a call by name.
template <class T>
Variant toVariant(const T& value) {
  if constexpr (std::is_enum_v<T>) {
    return Variant(static_cast<int32_t>(value));
  } else {
    return Variant(value);
  }
}

template <class T>
struct IsRef : std::false_type {};
template <class T>
struct IsRef<Ref<T>> : std::true_type {
  using Target = T;
};

template <class T>
T fromVariant(const Variant& value) {
  if constexpr (std::is_same_v<T, Variant>) {
    return value;
  } else if constexpr (std::is_same_v<T, bool>) {
    return value.toBool();
  } else if constexpr (std::is_same_v<T, int16_t>) {
    return value.toInt16();
  } else if constexpr (std::is_same_v<T, int32_t>) {
    return value.toInt32();
  } else if constexpr (std::is_same_v<T, uint8_t>) {
    return value.toByte();
  } else if constexpr (std::is_same_v<T, double>) {
    return value.toDouble();
  } else if constexpr (std::is_same_v<T, std::string>) {
    return value.toText();
  } else if constexpr (std::is_enum_v<T>) {
    return static_cast<T>(value.toInt32());
  } else {
    static_assert(IsRef<T>::value, "no conversion from a value to this type");
    if (value.isEmpty()) return T();
    const auto object = value.toObject();
    if (!object) return T();
    T typed = refCast<typename IsRef<T>::Target>(object);
    if (!typed) throw VbError(err::TypeMismatch);
    return typed;
  }
}

// The argument at a position, 449 when it is missing.
const Variant& argument(const DispatchArgs& args, size_t index);

// The defaults of a property of the bag by its name, as every control that has the property
// reads and writes it; what a control does otherwise, its own row says. Unknown names fail.
struct StandardDefault {
  DefaultOf read;
  DefaultOf written;
};
StandardDefault standardDefault(std::string_view name);

// One entry of a control's reading order. A plain name is read and written under that name
// with the standard default, restored through the member's setter and saved from its getter.
struct Persisted {
  Persisted(const char* name) : readAs(name), writtenAs(name) {}
  // Read only: the value goes where the member's setter puts it, and the bag never gets it.
  static Persisted readOnly(const char* name) {
    Persisted row(name);
    row.writtenAs.clear();
    return row;
  }
  // Written only: the getter's value is saved, and reading leaves the member alone.
  static Persisted writtenOnly(const char* name) {
    Persisted row(name);
    row.readAs.clear();
    return row;
  }
  // Another default than the standard one.
  Persisted&& withDefault(Variant value) && {
    defaultValue = [value = std::move(value)](Dispatchable&) { return value; };
    writtenDefault = defaultValue;
    return std::move(*this);
  }
  // Read under one name and written under another.
  Persisted&& writtenUnder(const char* name) && {
    writtenAs = name;
    return std::move(*this);
  }
  // A name that no member has: read and dropped, written as Empty.
  static Persisted dropped(const char* name) {
    Persisted row(name);
    row.restore = [](Dispatchable&, const Variant&) {};
    row.save = [](Dispatchable&) { return Variant(); };
    return row;
  }
  template <class C>
  Persisted&& restoredBy(void (*apply)(C&, const Variant&)) && {
    restore = [apply](Dispatchable& d, const Variant& v) { apply(dynamic_cast<C&>(d), v); };
    return std::move(*this);
  }
  template <class C>
  Persisted&& savedFrom(Variant (*read)(C&)) && {
    save = [read](Dispatchable& d) { return read(dynamic_cast<C&>(d)); };
    return std::move(*this);
  }

  std::string readAs;
  std::string writtenAs;
  DefaultOf defaultValue;
  DefaultOf writtenDefault;
  Setter restore;
  Getter save;
};

// Which ways a forwarded property goes.
enum class Forwarding { ReadWrite, ReadOnly, WriteOnly };

// Builds the table of a control class C from its getters and setters.
template <class C>
class MemberTableBuilder {
 public:
  template <class T>
  MemberTableBuilder& property(std::string name, T (C::*getter)(), void (C::*setter)(T)) {
    table_.add({std::move(name), getterOf(getter), setterOf<T>(setter), {}, {}});
    return *this;
  }
  template <class T>
  MemberTableBuilder& property(std::string name, T (C::*getter)(), void (C::*setter)(const T&)) {
    table_.add({std::move(name), getterOf(getter), setterOf<T>(setter), {}, {}});
    return *this;
  }
  template <class T>
  MemberTableBuilder& readOnly(std::string name, T (C::*getter)()) {
    table_.add({std::move(name), getterOf(getter), {}, {}, {}});
    return *this;
  }
  template <class T>
  MemberTableBuilder& writeOnly(std::string name, void (C::*setter)(const T&)) {
    table_.add({std::move(name), {}, setterOf<T>(setter), {}, {}});
    return *this;
  }
  MemberTableBuilder& method(std::string name, std::function<Variant(C&, DispatchArgs&)> body) {
    table_.add(
        {std::move(name),
         {},
         {},
         [body = std::move(body)](Dispatchable& d, DispatchArgs& a) { return body(self(d), a); },
         {}});
    return *this;
  }
  // A method without a result, with the arguments converted to the member's types. B is C or
  // the base class that declares the member.
  template <class B, class... A>
  MemberTableBuilder& procedure(std::string name, void (B::*body)(A...)) {
    static_assert(std::is_base_of_v<B, C>);
    table_.add({std::move(name),
                {},
                {},
                [body](Dispatchable& d, DispatchArgs& a) {
                  invoke(self(d), body, a, std::index_sequence_for<A...>());
                  return Variant();
                },
                {}});
    return *this;
  }
  // A method whose result is a value, with the arguments converted to the member's types.
  template <class B, class R, class... A>
  MemberTableBuilder& function(std::string name, R (B::*body)(A...)) {
    static_assert(std::is_base_of_v<B, C>);
    table_.add({std::move(name),
                {},
                {},
                [body](Dispatchable& d, DispatchArgs& a) {
                  return toVariant(invoke(self(d), body, a, std::index_sequence_for<A...>()));
                },
                {}});
    return *this;
  }

  // A row made by hand, for what no other builder call says.
  MemberTableBuilder& row(Member member) {
    table_.add(std::move(member));
    return *this;
  }

  // Properties of a child under the same names: the getter reads the child, the setter writes
  // it and then marks the property changed under its own name. `child` is the child's design
  // name, `accessor` the member of C that gives it.
  template <class Accessor>
  MemberTableBuilder& forward(const std::string& child, Accessor accessor,
                              std::initializer_list<const char*> names,
                              Forwarding access = Forwarding::ReadWrite) {
    for (const char* name : names) {
      Member row{name, {}, {}, {}, child};
      const std::string property = name;
      if (access != Forwarding::WriteOnly) {
        row.get = [accessor, property](Dispatchable& d) {
          return platform::childProperty(std::invoke(accessor, self(d)), property);
        };
      }
      if (access != Forwarding::ReadOnly) {
        row.let = [accessor, property](Dispatchable& d, const Variant& v) {
          platform::childProperty(std::invoke(accessor, self(d)), property, v);
          d.PropertyChanged(property);
        };
      }
      table_.add(std::move(row));
    }
    return *this;
  }

  // The properties of the bag, in the order of reading.
  MemberTableBuilder& persist(std::initializer_list<Persisted> rows) {
    for (const Persisted& row : rows) {
      const std::string& name = row.readAs.empty() ? row.writtenAs : row.readAs;
      const Member* member = table_.find(name);
      PersistedProperty property{row.readAs,  row.writtenAs, row.defaultValue, row.writtenDefault,
                                 row.restore, row.save,      !row.restore};
      if (!property.defaultValue) {
        StandardDefault standard = standardDefault(name);
        property.defaultValue = std::move(standard.read);
        property.writtenDefault = std::move(standard.written);
      }
      if (!property.restore && !property.readAs.empty()) property.restore = setterFor(member, name);
      if (!property.save && !property.writtenAs.empty()) property.save = getterFor(member, name);
      table_.persist(std::move(property));
    }
    return *this;
  }

  // Takes out a row that a shared block added and that this class doesn't have.
  MemberTableBuilder& remove(std::string_view name) {
    table_.remove(name);
    return *this;
  }

  MemberTable build() { return std::move(table_); }

 private:
  static C& self(Dispatchable& d) { return dynamic_cast<C&>(d); }
  template <class T>
  static Getter getterOf(T (C::*getter)()) {
    return [getter](Dispatchable& d) { return toVariant((self(d).*getter)()); };
  }
  template <class T, class S>
  static Setter setterOf(S setter) {
    return [setter](Dispatchable& d, const Variant& v) { (self(d).*setter)(fromVariant<T>(v)); };
  }
  template <class B, class R, class... A, size_t... I>
  static R invoke(C& c, R (B::*body)(A...), DispatchArgs& a, std::index_sequence<I...>) {
    return (c.*body)(fromVariant<std::decay_t<A>>(argument(a, I))...);
  }
  static Setter setterFor(const Member* member, const std::string& name) {
    if (!member || !member->let) throw VbError(err::MemberNotSupported, "no setter: " + name);
    return member->let;
  }
  static Getter getterFor(const Member* member, const std::string& name) {
    if (!member || !member->get) throw VbError(err::MemberNotSupported, "no getter: " + name);
    return member->get;
  }

  MemberTable table_;
};

// The table of a class, built once from its static describeMembers(MemberTableBuilder&).
template <class C>
const MemberTable& memberTableOf() {
  static const MemberTable table = [] {
    MemberTableBuilder<C> builder;
    C::describeMembers(builder);
    return builder.build();
  }();
  return table;
}

}  // namespace tessaline

// One row of a member table: the property of that name with its getter and setter.
#define TESSALINE_PROPERTY(Type, Member) \
  template property<Type>(#Member, &Self::Member, &Self::Member)
#define TESSALINE_READONLY(Type, Member) template readOnly<Type>(#Member, &Self::Member)
