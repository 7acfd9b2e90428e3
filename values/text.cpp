#include "tessaline/values/text.h"

namespace tessaline {

std::string_view trimSpaces(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  return rtrimSpaces(text);
}

std::string_view rtrimSpaces(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::string_view trimWhitespace(std::string_view text) {
  auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::string toLowerAscii(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return text;
}

std::string toUpperAscii(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
  }
  return text;
}

bool equalsIgnoreCaseAscii(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x >= 'A' && x <= 'Z') x = static_cast<char>(x + 32);
    if (y >= 'A' && y <= 'Z') y = static_cast<char>(y + 32);
    if (x != y) return false;
  }
  return true;
}

char32_t decodeAt(std::string_view text, size_t offset, size_t& length) {
  const auto lead = static_cast<unsigned char>(text[offset]);
  length = 1;
  if (lead < 0x80) return lead;
  size_t need = 0;
  char32_t cp = 0, smallest = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    need = 1, cp = lead & 0x1F, smallest = 0x80;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    need = 2, cp = lead & 0x0F, smallest = 0x800;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    need = 3, cp = lead & 0x07, smallest = 0x10000;
  } else {
    return 0xFFFD;
  }
  if (offset + need >= text.size()) return 0xFFFD;
  for (size_t k = 1; k <= need; ++k) {
    const auto next = static_cast<unsigned char>(text[offset + k]);
    if ((next & 0xC0) != 0x80) return 0xFFFD;
    cp = (cp << 6) | (next & 0x3F);
  }
  if (cp < smallest || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0xFFFD;
  length = need + 1;
  return cp;
}

size_t characterCount(std::string_view text) {
  size_t count = 0;
  for (size_t offset = 0, length = 0; offset < text.size(); offset += length) {
    decodeAt(text, offset, length);
    ++count;
  }
  return count;
}

size_t byteOffset(std::string_view text, size_t index) {
  size_t offset = 0;
  for (size_t length = 0; index > 0 && offset < text.size(); --index) {
    decodeAt(text, offset, length);
    offset += length;
  }
  return offset;
}

std::string_view characterSlice(std::string_view text, size_t first, size_t count) {
  const size_t begin = byteOffset(text, first);
  const size_t end = begin + byteOffset(text.substr(begin), count);
  return text.substr(begin, end - begin);
}

std::string encodeUtf8(char32_t cp) {
  std::string out;
  if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) cp = 0xFFFD;
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
  return out;
}

}  // namespace tessaline
