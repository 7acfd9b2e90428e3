#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Text helpers for UTF-8 strings. Positions that the user sees (caret, selection) count
// characters, that is code points; an invalid byte counts as one character.
namespace tessaline {

// Trim, LTrim and RTrim of the language: only the blank (32) is cut.
std::string_view trimSpaces(std::string_view text);
std::string_view rtrimSpaces(std::string_view text);
// Blanks, tabs and line ends cut, as around a number.
std::string_view trimWhitespace(std::string_view text);

std::string toLowerAscii(std::string text);
std::string toUpperAscii(std::string text);
bool equalsIgnoreCaseAscii(std::string_view a, std::string_view b);

// Number of characters.
size_t characterCount(std::string_view text);
// Byte offset of the character at `index`; the length of the text past the end.
size_t byteOffset(std::string_view text, size_t index);
// The characters [first, first + count), clamped to the text.
std::string_view characterSlice(std::string_view text, size_t first, size_t count);
// The code point at byte offset `offset` and the number of bytes it takes.
char32_t decodeAt(std::string_view text, size_t offset, size_t& length);
std::string encodeUtf8(char32_t codePoint);

}  // namespace tessaline
