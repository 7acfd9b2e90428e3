#pragma once

#include <span>
#include <string_view>

#include "tessaline/frame/catalogue.h"
#include "tessaline/frame/property_table.h"
#include "tessaline/values/object.h"

// The classes that this build of the library carries, each with its identity, the factory that
// makes it and its table of members: what a host's toolbox, a form loader and the server's
// registration read.
namespace tessaline {

struct CatalogueEntry {
  const ClassIdentity* identity = nullptr;
  // Null for a class that a host can't create from outside.
  Ref<Object> (*create)() = nullptr;
  // Null for a class without a table of members.
  const MemberTable& (*members)() = nullptr;
};

std::span<const CatalogueEntry> catalogue();
// The entry of a name, a ProgID or a class identifier; null for a class this build doesn't
// carry.
const CatalogueEntry* findClass(std::string_view key);
// A new object of the class, made on this thread's backend. 429 for a class that this build
// doesn't carry or that can't be created from outside.
Ref<Object> CreateObject(std::string_view progIdOrClassId);

}  // namespace tessaline
