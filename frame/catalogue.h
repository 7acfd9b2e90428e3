#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Who the library's classes are to a host that looks for them: class identifiers, default and
// event interfaces, ProgIDs, toolbox bitmaps, and the type library they belong to. The logic of
// the controls depends on none of it.
namespace tessaline {

struct ClassIdentity {
  std::string_view name;
  std::string_view classId;
  std::string_view defaultInterface;
  // Empty for the automation classes, which raise no events.
  std::string_view eventInterface;
  // The toolbox bitmap resource of a control; 0 for the automation classes.
  int32_t toolboxBitmap = 0;

  bool isControl() const { return toolboxBitmap != 0; }
  // Controls, and cTooltip among the automation classes; the other automation classes reach a
  // host only from the library itself.
  bool creatable() const { return isControl() || name == "cTooltip"; }
  std::string progId() const { return "Tessaline." + std::string(name); }
};

// The miscellaneous status that every control registers: recompose on resize, can't link
// inside, inside-out, activate when visible, set client site first.
inline constexpr int32_t kControlMiscStatus = 0x20191;

struct TypeLibraryIdentity {
  std::string_view name = "Tessaline";
  std::string_view id = "d734cb07-46be-4b64-8da6-5dca53099446";
  int16_t major = 1;
  int16_t minor = 1;
  int32_t locale = 1033;
  std::string_view helpString = "Tessaline";
};
inline constexpr TypeLibraryIdentity kTypeLibrary{};

// Every class of the library, automation classes first, then the controls.
std::span<const ClassIdentity> classIdentities();
// The class of a name, a ProgID or a class identifier (with or without braces, any case).
const ClassIdentity* findClassIdentity(std::string_view nameProgIdOrClassId);

}  // namespace tessaline
