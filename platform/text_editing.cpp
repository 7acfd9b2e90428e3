#include "tessaline/platform/text_editing.h"

#include "tessaline/values/text.h"

namespace tessaline::platform {

void replaceSelection(EditState& edit, const std::string& text) {
  const size_t begin = byteOffset(edit.text, static_cast<size_t>(edit.selStart));
  const size_t end = begin + byteOffset(std::string_view(edit.text).substr(begin),
                                        static_cast<size_t>(edit.selLength));
  edit.text = edit.text.substr(0, begin) + text + edit.text.substr(end);
  edit.selStart += static_cast<int32_t>(characterCount(text));
  edit.selLength = 0;
}

bool applyCharacter(EditState& edit, int16_t character, bool multiLine) {
  const auto unit = static_cast<char16_t>(character);
  if (unit == 8) {
    if (edit.selLength == 0 && edit.selStart > 0) {
      edit.selStart -= 1;
      edit.selLength = 1;
    }
    if (edit.selLength == 0) return false;
    replaceSelection(edit, "");
    return true;
  }
  if (unit == 13) {
    if (!multiLine) return false;
    replaceSelection(edit, "\r\n");
    return true;
  }
  if (unit < 32 || unit == 127) return false;
  if (unit >= 0xD800 && unit <= 0xDBFF) {
    edit.pendingHighSurrogate = unit;
    return false;
  }
  char32_t cp = unit;
  if (unit >= 0xDC00 && unit <= 0xDFFF) {
    cp = edit.pendingHighSurrogate
             ? 0x10000 + ((char32_t(edit.pendingHighSurrogate) - 0xD800) << 10) + (unit - 0xDC00)
             : char32_t(0xFFFD);
  }
  edit.pendingHighSurrogate = 0;
  replaceSelection(edit, encodeUtf8(cp));
  return true;
}

}  // namespace tessaline::platform
