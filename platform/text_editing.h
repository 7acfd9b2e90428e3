#pragma once

#include <cstdint>
#include <string>

// The classic edit control's rules for a typed character, written once for every backend: the
// text as UTF-8 (a multi-line box ends its lines with "\r\n"), the caret and the selection in
// characters.
namespace tessaline::platform {

struct EditState {
  std::string text;
  int32_t selStart = 0;
  int32_t selLength = 0;
  // The first half of a character above U+FFFF, typed as two keys.
  char16_t pendingHighSurrogate = 0;
};

// The selection replaced by a text; the caret goes behind it.
void replaceSelection(EditState& edit, const std::string& text);
// A character that a KeyPress handler let through: backspace (8) deletes the selection or the
// character before the caret, carriage return (13) starts a line in a multi-line box, other
// control characters do nothing (the composite control handles the clipboard keys), and any
// other character replaces the selection. False when nothing changed.
bool applyCharacter(EditState& edit, int16_t character, bool multiLine);

}  // namespace tessaline::platform
