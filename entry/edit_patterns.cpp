#include "tessaline/entry/edit_patterns.h"

#include "tessaline/platform/widgets.h"
#include "tessaline/values/text.h"
#include "tessaline/values/vb_error.h"

namespace tessaline {

namespace {

bool between(int16_t key, int low, int high) { return key >= low && key <= high; }

struct Format {
  char letter = 0;
  std::string rest;
};

Format split(const std::string& format) {
  if (format.empty()) return {};
  return {format.back(), format.substr(0, format.size() - 1)};
}

// Width and precision of a fixed-point format: the text before the first "." and after it.
void widthAndPrecision(const std::string& rest, std::string& width, std::string& precision) {
  const size_t dot = rest.find('.');
  if (dot == std::string::npos) throw VbError(err::SubscriptOutOfRange);
  width = rest.substr(0, dot);
  precision = rest.substr(dot + 1);
}

}  // namespace

// Character codes, both ends of a range included.
bool keptByTextType(TextDataType type, int16_t key, int16_t separatorKey) {
  using platform::keys::kBack;
  using platform::keys::kMinus;
  switch (type) {
    case TextDataType::Numbers:
      return key == kBack || key == kMinus || key == separatorKey || between(key, 48, 57);
    case TextDataType::AlphaNumeric:
      return key == kBack || key == 32 || between(key, 48, 57) || between(key, 65, 90) ||
             between(key, 97, 122);
    case TextDataType::Alphabets:
      return key == kBack || between(key, 65, 90) || between(key, 97, 122);
    case TextDataType::Latin1:
      return key == kBack || between(key, 32, 126);
    case TextDataType::PackedAscii:
      return key == kBack || between(key, 32, 95) || between(key, 97, 122);
  }
  return true;
}

std::string textBoxEditPattern(const std::string& format, const std::string& separator) {
  const Format f = split(format);
  switch (f.letter) {
    case 'f': {
      std::string width, precision;
      widthAndPrecision(f.rest, width, precision);
      return "^[-]{0,1}[0-9]{0," + width + "}\\" + separator + "[0-9]{0," + precision + "}$";
    }
    case 'd':
    case 'u':
      return "^[0-9]{0," + f.rest + "}$";
    case 'x':
    case 'X':
      return "^[-]{0,1}([0-9]|[a-f]|[A-F]){0," + f.rest + "}\\.$";
    case 's':
    case 'S':
      return "^.{0," + f.rest + "}\\.$";
    default:
      return {};
  }
}

std::string multiLineEditPattern(const std::string& format) {
  const Format f = split(format);
  switch (f.letter) {
    case 'f': {
      std::string width, precision;
      widthAndPrecision(f.rest, width, precision);
      return "^[-]{0,1}[0-9]{0," + width + "}\\.[0-9]{0," + precision + "}$";
    }
    case 'd':
    case 'u':
      return "^[-]{0,1}\\d{1," + f.rest + "}\\.$";
    case 'x':
    case 'X':
      return "^[-]{0,1}([0-9]|[a-f]|[A-F]){0," + f.rest + "}\\.$";
    case 's':
    case 'S':
      return "^[-]{0,1}([0-9]|[a-z]|[A-Z]|[\\s]){0," + f.rest + "}\\.$";
    default:
      return {};
  }
}

int16_t firstCharacterKey(const std::string& text) {
  if (text.empty()) return 0;
  size_t length = 0;
  const char32_t cp = decodeAt(text, 0, length);
  return static_cast<int16_t>(static_cast<uint16_t>(cp > 0xFFFF ? 0xFFFD : cp));
}

std::string keyText(int16_t key) { return encodeUtf8(static_cast<uint16_t>(key)); }

}  // namespace tessaline
