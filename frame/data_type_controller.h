#pragma once

#include <optional>
#include <string>

#include "tessaline/frame/definitions.h"
#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"

namespace tessaline {

// Turns a device value into a value of an item's type by the type's name, and an access
// word into an AccessType. Holds nothing but DataType, which plays no part in MatchType.
class DataTypeController : public Object {
 public:
  // The stored value; a stored value equal to the number 1 reads as "String".
  Variant DataType();
  void DataType(const Variant& vData);

  // newValue converted by the type name, compared without case: "int16", "int32", "float",
  // "bool"/"boolean", "byte", and text for anything else. No type name gives text. A value
  // that can't be converted raises 13 or 6 to the caller.
  Variant MatchType(const Variant& newValue, const std::optional<std::string>& strType = {});

  // "Read", "Write" and "ReadWrite", compared with case; anything else is ReadOnly.
  AccessType GetAccessType(const std::string& strAccessType);

 private:
  Variant dataType_;
};

}  // namespace tessaline
