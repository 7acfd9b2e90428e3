#include "tessaline/platform/property_bag.h"

#include "tessaline/platform/font.h"
#include "tessaline/values/text.h"

namespace tessaline::platform {

bool equalsDefault(const Variant& value, const Variant& defaultValue) {
  if (value.isObject() || defaultValue.isObject()) {
    if (!value.isObject() || !defaultValue.isObject()) return false;
    const auto a = value.toObject();
    const auto b = defaultValue.toObject();
    if (a == b) return true;
    const auto* fontA = dynamic_cast<const StdFont*>(a.get());
    const auto* fontB = dynamic_cast<const StdFont*>(b.get());
    return fontA && fontB && fontA->sameAs(*fontB);
  }
  if (value.isArray() || defaultValue.isArray()) return false;
  try {
    const auto order = compare(value, defaultValue);
    return order.has_value() && *order == 0;
  } catch (const VbError&) {
    return false;
  }
}

Variant MemoryPropertyBag::ReadProperty(const std::string& name, const Variant& defaultValue) {
  const Variant* stored = find(name);
  return stored ? *stored : defaultValue;
}

void MemoryPropertyBag::WriteProperty(const std::string& name, const Variant& value,
                                      const Variant& defaultValue) {
  if (equalsDefault(value, defaultValue)) {
    remove(name);
  } else {
    put(name, value);
  }
}

void MemoryPropertyBag::put(const std::string& name, Variant value) {
  for (Entry& entry : entries_) {
    if (equalsIgnoreCaseAscii(entry.first, name)) {
      entry.second = std::move(value);
      return;
    }
  }
  entries_.emplace_back(name, std::move(value));
}

const Variant* MemoryPropertyBag::find(std::string_view name) const {
  for (const Entry& entry : entries_) {
    if (equalsIgnoreCaseAscii(entry.first, name)) return &entry.second;
  }
  return nullptr;
}

bool MemoryPropertyBag::remove(std::string_view name) {
  for (auto it = entries_.begin(); it != entries_.end(); ++it) {
    if (equalsIgnoreCaseAscii(it->first, name)) {
      entries_.erase(it);
      return true;
    }
  }
  return false;
}

}  // namespace tessaline::platform
