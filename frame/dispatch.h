#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "values/object.h"
#include "values/variant.h"

// Reaching a control's members by name, as a host reaches the members that are no slot of
// an interface (and as the demo's dialog files set properties). Names compare without case.
namespace tessaline {

// The arguments of a call by name. A member may write back into them (by-reference
// arguments).
using DispatchArgs = std::vector<Variant>;

class Dispatchable;

struct Member {
  std::string name;
  std::function<Variant(Dispatchable&)> get;
  std::function<void(Dispatchable&, const Variant&)> let;
  std::function<Variant(Dispatchable&, DispatchArgs&)> call;
};

class MemberTable {
 public:
  void add(Member member) { members_.push_back(std::move(member)); }
  const Member* find(std::string_view name) const;
  std::span<const Member> all() const { return members_; }

 private:
  std::vector<Member> members_;
};

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

 protected:
  virtual const MemberTable& members() const = 0;
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

// Builds the member table of a control class C from its getters and setters.
template <class C>
class MemberTableBuilder {
 public:
  template <class T>
  MemberTableBuilder& property(std::string name, T (C::*getter)(), void (C::*setter)(T)) {
    table_.add(
        {std::move(name),
         getterOf(getter),
         [setter](Dispatchable& d, const Variant& v) { (self(d).*setter)(fromVariant<T>(v)); },
         {}});
    return *this;
  }
  template <class T>
  MemberTableBuilder& property(std::string name, T (C::*getter)(), void (C::*setter)(const T&)) {
    table_.add(
        {std::move(name),
         getterOf(getter),
         [setter](Dispatchable& d, const Variant& v) { (self(d).*setter)(fromVariant<T>(v)); },
         {}});
    return *this;
  }
  template <class T>
  MemberTableBuilder& readOnly(std::string name, T (C::*getter)()) {
    table_.add({std::move(name), getterOf(getter), {}, {}});
    return *this;
  }
  MemberTableBuilder& method(std::string name, std::function<Variant(C&, DispatchArgs&)> body) {
    table_.add(
        {std::move(name), {}, {}, [body = std::move(body)](Dispatchable& d, DispatchArgs& a) {
           return body(self(d), a);
         }});
    return *this;
  }
  MemberTable build() { return std::move(table_); }

 private:
  static C& self(Dispatchable& d) { return dynamic_cast<C&>(d); }
  template <class T>
  static std::function<Variant(Dispatchable&)> getterOf(T (C::*getter)()) {
    return [getter](Dispatchable& d) { return toVariant((self(d).*getter)()); };
  }

  MemberTable table_;
};

}  // namespace tessaline

// One row of a member table: the property of that name with its getter and setter.
#define TESSALINE_PROPERTY(Type, Member) \
  template property<Type>(#Member, &Self::Member, &Self::Member)
#define TESSALINE_READONLY(Type, Member) template readOnly<Type>(#Member, &Self::Member)
