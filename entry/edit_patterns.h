#pragma once

#include <cstdint>
#include <string>

#include "tessaline/frame/definitions.h"

// What the text boxes let the user type: the key classes of a TextType, and the regular
// expression that an edit format becomes. Edit formats carry no percent sign; their last
// letter gives the kind: "f" fixed-point (width "." precision), "d" or "u" digits, "x" or "X"
// hexadecimal, "s" or "S" text. Any other last letter gives no pattern.
namespace tessaline {

// Whether the class of characters of a TextType keeps a key. `separatorKey` is the key of
// the decimal separator, kept by Numbers. An unknown TextType keeps every key.
bool keptByTextType(TextDataType type, int16_t key, int16_t separatorKey);

// The pattern of the single-line box. `separator` is the locale's decimal separator, escaped
// with one backslash as it stands. A format whose last letter is "f" and that has no "."
// can't be split: 9 to the caller.
std::string textBoxEditPattern(const std::string& format, const std::string& separator);

// The pattern of the multi-line box: the separator is always ".", a minus is allowed in every
// number format, digit formats need a digit, and a text format admits letters, digits and
// white space only.
std::string multiLineEditPattern(const std::string& format);

// The key (a UTF-16 unit) of the first character of a text; 0 for the empty text.
int16_t firstCharacterKey(const std::string& text);
// The text of a key's character.
std::string keyText(int16_t key);

}  // namespace tessaline
