#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tessaline/values/variant.h"

namespace tessaline::platform {

// The store in which a host's form keeps a control's properties between sessions: named
// values, each with the kind it was written with. Names compare without case, so a property
// written as "IDTMControl_Enable" is found again as "IDtmControl_Enable".
class PropertyBag {
 public:
  virtual ~PropertyBag() = default;
  // The value stored under the name; the default where none is.
  virtual Variant ReadProperty(const std::string& name, const Variant& defaultValue) = 0;
  // Stores the value under the name. A value equal to its default is not kept: the bag drops
  // what it held under that name, so that reading gives the default again.
  virtual void WriteProperty(const std::string& name, const Variant& value,
                             const Variant& defaultValue) = 0;
};

// Whether a value equals its default as a bag sees it: the language's comparison for plain
// values, the same font for font objects, the same object for other objects, never for Null
// or arrays.
bool equalsDefault(const Variant& value, const Variant& defaultValue);

// A bag in memory: what tests use, and what a form file holds for each control. The names
// keep the spelling and the order of their first writing.
class MemoryPropertyBag : public PropertyBag {
 public:
  using Entry = std::pair<std::string, Variant>;

  Variant ReadProperty(const std::string& name, const Variant& defaultValue) override;
  void WriteProperty(const std::string& name, const Variant& value,
                     const Variant& defaultValue) override;

  // Stores a value as it stands, default or not (for readers of saved files, and for tests
  // that hand a control a value of the wrong kind).
  void put(const std::string& name, Variant value);
  const Variant* find(std::string_view name) const;
  bool remove(std::string_view name);
  const std::vector<Entry>& entries() const { return entries_; }
  bool empty() const { return entries_.empty(); }

 private:
  std::vector<Entry> entries_;
};

}  // namespace tessaline::platform
