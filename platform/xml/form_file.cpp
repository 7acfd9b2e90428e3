#include "tessaline/platform/xml/form_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>
#include <system_error>

#include "tessaline/platform/font.h"
#include "tessaline/platform/picture.h"
#include "tessaline/values/text.h"

namespace tessaline::xml {

namespace {

// Larger files are refused before they are read: no form comes near this.
constexpr std::uintmax_t kLargestFile = 256u << 20;
// Arrays within arrays, as deep as a reader follows them.
constexpr int kDeepestArray = 16;

// What a reader found wrong and where; it becomes the file's error, or a line of what a lenient
// reading left out.
struct Broken {
  ptrdiff_t offset;
  std::string what;
};

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  [[noreturn]] void fail(ptrdiff_t offset, const std::string& what) const {
    throw Broken{offset, what};
  }
  [[noreturn]] void fail(const pugi::xml_node& node, const std::string& what) const {
    fail(node.offset_debug(), what);
  }
  // "line 7: ", or nothing where the offset is no place in the text.
  std::string where(ptrdiff_t offset) const {
    if (offset < 0 || static_cast<size_t>(offset) > text_.size()) return {};
    const auto line = 1 + std::count(text_.begin(), text_.begin() + offset, '\n');
    return "line " + std::to_string(line) + ": ";
  }
  VbError error(const Broken& broken) const {
    return VbError(err::FileLoadError,
                   "Error loading from file: " + where(broken.offset) + broken.what);
  }

 private:
  std::string_view text_;
};

bool isUtf8(std::string_view text) {
  size_t i = 0;
  while (i < text.size()) {
    const auto byte = static_cast<unsigned char>(text[i]);
    size_t length = byte < 0x80         ? 1
                    : (byte >> 5) == 6  ? 2
                    : (byte >> 4) == 14 ? 3
                    : (byte >> 3) == 30 ? 4
                                        : 0;
    if (length == 0 || i + length > text.size()) return false;
    char32_t code = length == 1 ? byte : byte & (0x7F >> length);
    for (size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3F);
    }
    const char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
      return false;
    }
    i += length;
  }
  return true;
}

// What an XML attribute can't hold as it is: control characters other than tab and line ends,
// and bytes that are no UTF-8.
bool needsBase64(std::string_view text) {
  for (char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 && c != '\t' && c != '\n' && c != '\r') return true;
    if (byte == 0x7F) return true;
  }
  return !isUtf8(text);
}

constexpr char kBase64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string toBase64(std::string_view bytes) {
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  for (size_t i = 0; i < bytes.size(); i += 3) {
    uint32_t chunk = static_cast<uint8_t>(bytes[i]) << 16;
    if (i + 1 < bytes.size()) chunk |= static_cast<uint8_t>(bytes[i + 1]) << 8;
    if (i + 2 < bytes.size()) chunk |= static_cast<uint8_t>(bytes[i + 2]);
    out += kBase64[(chunk >> 18) & 63];
    out += kBase64[(chunk >> 12) & 63];
    out += i + 1 < bytes.size() ? kBase64[(chunk >> 6) & 63] : '=';
    out += i + 2 < bytes.size() ? kBase64[chunk & 63] : '=';
  }
  return out;
}

bool fromBase64(std::string_view text, std::string& out) {
  out.clear();
  uint32_t chunk = 0;
  int bits = 0;
  size_t padding = 0;
  for (char c : text) {
    if (c == ' ' || c == '\n' || c == '\r' || c == '\t') continue;
    if (c == '=') {
      ++padding;
      continue;
    }
    if (padding > 0) return false;
    const char* found = std::char_traits<char>::find(kBase64, 64, c);
    if (!found) return false;
    chunk = (chunk << 6) | static_cast<uint32_t>(found - kBase64);
    bits += 6;
    if (bits >= 8) {
      bits -= 8;
      out += static_cast<char>((chunk >> bits) & 0xFF);
    }
  }
  return padding <= 2;
}

template <class T>
std::string shortest(T value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

template <class T>
bool parseNumber(std::string_view text, T& value) {
  text = trimWhitespace(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// Dates as days from 30 December 1899, the time as the fraction.
constexpr int64_t kDaysFrom1970To1899 = -25569;

void civilFromDays(int64_t z, int64_t& y, unsigned& m, unsigned& d) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const auto doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  y = static_cast<int64_t>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = doy - (153 * mp + 2) / 5 + 1;
  m = mp < 10 ? mp + 3 : mp - 9;
  if (m <= 2) ++y;
}

int64_t daysFromCivil(int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const auto yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

// The serial of a date and time of day; the fraction is the time, counted away from day 0 as
// the automation date does for days before 1899.
double serialOf(int64_t y, unsigned m, unsigned d, int hh, int mm, int ss) {
  const double day = static_cast<double>(daysFromCivil(y, m, d) - kDaysFrom1970To1899);
  const double time = (hh * 3600.0 + mm * 60.0 + ss) / 86400.0;
  return day >= 0 ? day + time : day - time;
}

// "YYYY-MM-DD HH:MM:SS" where that text gives the serial back exactly; else nothing.
bool readableDate(double serial, std::string& out) {
  if (!std::isfinite(serial) || std::fabs(serial) > 2958465.999) return false;
  const double whole = std::trunc(serial);
  const double fraction = std::fabs(serial - whole);
  const auto seconds = static_cast<int>(std::lround(fraction * 86400.0));
  if (seconds >= 86400) return false;
  int64_t y;
  unsigned m, d;
  civilFromDays(static_cast<int64_t>(whole) + kDaysFrom1970To1899, y, m, d);
  if (serialOf(y, m, d, seconds / 3600, seconds / 60 % 60, seconds % 60) != serial) return false;
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, "%04lld-%02u-%02u %02d:%02d:%02d", static_cast<long long>(y),
                m, d, seconds / 3600, seconds / 60 % 60, seconds % 60);
  out = buffer;
  return true;
}

bool parseReadableDate(std::string_view text, double& serial) {
  long long y = 0;
  unsigned m = 0, d = 0;
  int hh = 0, mm = 0, ss = 0;
  char tail = 0;
  const std::string copy(text);
  const int read =
      std::sscanf(copy.c_str(), "%lld-%u-%u %d:%d:%d%c", &y, &m, &d, &hh, &mm, &ss, &tail);
  if (read != 3 && read != 6) return false;
  if (y < 100 || y > 9999 || m < 1 || m > 12 || d < 1 || d > 31) return false;
  if (hh < 0 || hh > 23 || mm < 0 || mm > 59 || ss < 0 || ss > 59) return false;
  int64_t cy;
  unsigned cm, cd;
  civilFromDays(daysFromCivil(y, m, d), cy, cm, cd);
  if (cm != m || cd != d) return false;
  serial = serialOf(y, m, d, hh, mm, ss);
  return true;
}

const char* typeName(const Variant& value) {
  switch (value.type()) {
    case VarType::Empty:
      return "Empty";
    case VarType::Null:
      return "Null";
    case VarType::Integer:
      return "Integer";
    case VarType::Long:
      return "Long";
    case VarType::Single:
      return "Single";
    case VarType::Double:
      return "Double";
    case VarType::Date:
      return "Date";
    case VarType::String:
      return "String";
    case VarType::Boolean:
      return "Boolean";
    case VarType::Byte:
      return "Byte";
    case VarType::Array:
      return "Array";
    case VarType::Object:
      break;
  }
  const auto object = value.toObject();
  if (!object) return "Nothing";
  if (dynamic_cast<const platform::StdFont*>(object.get())) return "Font";
  if (dynamic_cast<const platform::Picture*>(object.get())) return "Picture";
  return nullptr;
}

void writeValue(pugi::xml_node node, const Variant& value) {
  const char* type = typeName(value);
  if (!type) {
    // An object of no kind that a file can hold is kept as Nothing.
    node.append_attribute("type") = "Nothing";
    return;
  }
  node.append_attribute("type") = type;
  switch (value.type()) {
    case VarType::Empty:
    case VarType::Null:
      return;
    case VarType::Integer:
    case VarType::Long:
    case VarType::Byte:
      node.append_attribute("value") = std::to_string(value.toInt32()).c_str();
      return;
    case VarType::Single:
      node.append_attribute("value") = shortest(value.toSingle()).c_str();
      return;
    case VarType::Double:
      node.append_attribute("value") = shortest(value.toDouble()).c_str();
      return;
    case VarType::Boolean:
      node.append_attribute("value") = value.toBool() ? "True" : "False";
      return;
    case VarType::Date: {
      const double serial = value.toDate().days;
      std::string text;
      if (!readableDate(serial, text)) text = shortest(serial);
      node.append_attribute("value") = text.c_str();
      return;
    }
    case VarType::String: {
      const std::string text = value.toText();
      if (needsBase64(text)) {
        node.append_attribute("encoding") = "base64";
        node.append_attribute("value") = toBase64(text).c_str();
      } else {
        node.append_attribute("value") = text.c_str();
      }
      return;
    }
    case VarType::Array: {
      const VariantArray& array = value.toArray();
      node.append_attribute("lowerBound") = array.lowerBound;
      for (const Variant& item : array.items) writeValue(node.append_child("item"), item);
      return;
    }
    case VarType::Object:
      break;
  }
  const auto object = value.toObject();
  if (const auto* font = dynamic_cast<const platform::StdFont*>(object.get())) {
    node.append_attribute("fontName") = font->Name.c_str();
    node.append_attribute("size") = shortest(font->Size).c_str();
    node.append_attribute("bold") = font->Bold ? "True" : "False";
    node.append_attribute("italic") = font->Italic ? "True" : "False";
    node.append_attribute("underline") = font->Underline ? "True" : "False";
    node.append_attribute("strikethrough") = font->Strikethrough ? "True" : "False";
    node.append_attribute("charset") = font->Charset;
  } else if (const auto* picture = dynamic_cast<const platform::Picture*>(object.get())) {
    const auto& bytes = picture->encoded();
    node.append_attribute("value") =
        toBase64(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()))
            .c_str();
  }
}

class ValueReader {
 public:
  explicit ValueReader(const Reader& reader) : reader_(reader) {}

  Variant read(const pugi::xml_node& node, int depth) const {
    const std::string type = node.attribute("type").value();
    const pugi::xml_attribute valueAttribute = node.attribute("value");
    const std::string_view text = valueAttribute.value();
    const auto need = [&] {
      if (!valueAttribute) reader_.fail(node, "a " + type + " needs a value");
    };
    const auto bad = [&]() -> Variant {
      reader_.fail(node, "\"" + std::string(text.substr(0, 40)) + "\" is no " + type);
    };
    if (type == "Empty") return Variant();
    if (type == "Null") return Variant::null();
    if (type == "Nothing") return Variant::nothing();
    if (type == "Integer" || type == "Long" || type == "Byte") {
      need();
      int64_t number = 0;
      if (!parseNumber(text, number)) return bad();
      if (type == "Integer" && number >= INT16_MIN && number <= INT16_MAX) {
        return Variant(static_cast<int16_t>(number));
      }
      if (type == "Long" && number >= INT32_MIN && number <= INT32_MAX) {
        return Variant(static_cast<int32_t>(number));
      }
      if (type == "Byte" && number >= 0 && number <= 255) {
        return Variant(static_cast<uint8_t>(number));
      }
      return bad();
    }
    if (type == "Single") {
      need();
      float number = 0;
      return parseNumber(text, number) ? Variant(number) : bad();
    }
    if (type == "Double") {
      need();
      double number = 0;
      return parseNumber(text, number) ? Variant(number) : bad();
    }
    if (type == "Boolean") {
      need();
      if (equalsIgnoreCaseAscii(text, "True")) return Variant(true);
      if (equalsIgnoreCaseAscii(text, "False")) return Variant(false);
      return bad();
    }
    if (type == "Date") {
      need();
      double serial = 0;
      if (parseReadableDate(text, serial) || parseNumber(text, serial)) {
        if (std::isfinite(serial)) return Variant(DateSerial{serial});
      }
      return bad();
    }
    if (type == "String") {
      need();
      if (std::string_view(node.attribute("encoding").value()) == "base64") {
        std::string decoded;
        if (!fromBase64(text, decoded)) return bad();
        return Variant(std::move(decoded));
      }
      return Variant(std::string(text));
    }
    if (type == "Font") {
      auto font = std::make_shared<platform::StdFont>();
      if (auto name = node.attribute("fontName")) font->Name = name.value();
      if (auto size = node.attribute("size")) {
        double points = 0;
        if (!parseNumber(std::string_view(size.value()), points) || !(points > 0) ||
            points > 2048) {
          reader_.fail(node, std::string("\"") + size.value() + "\" is no font size");
        }
        font->Size = points;
      }
      font->Bold = flag(node, "bold");
      font->Italic = flag(node, "italic");
      font->Underline = flag(node, "underline");
      font->Strikethrough = flag(node, "strikethrough");
      int64_t charset = 0;
      if (auto set = node.attribute("charset")) {
        if (!parseNumber(std::string_view(set.value()), charset) || charset < 0 || charset > 255) {
          reader_.fail(node, std::string("\"") + set.value() + "\" is no character set");
        }
      }
      font->Charset = static_cast<int16_t>(charset);
      return Variant(Ref<platform::StdFont>(font));
    }
    if (type == "Picture") {
      std::string bytes;
      if (!fromBase64(text, bytes)) return bad();
      // A picture that no decoder reads comes back as Nothing, as a picture property would.
      return Variant(platform::PictureFromBytes(Variant(std::make_shared<platform::ByteArray>(
          std::vector<uint8_t>(bytes.begin(), bytes.end())))));
    }
    if (type == "Array") {
      if (depth >= kDeepestArray) reader_.fail(node, "arrays are nested too deep");
      int64_t lower = 0;
      if (auto bound = node.attribute("lowerBound")) {
        if (!parseNumber(std::string_view(bound.value()), lower) || lower < INT32_MIN / 2 ||
            lower > INT32_MAX / 2) {
          reader_.fail(node, std::string("\"") + bound.value() + "\" is no lower bound");
        }
      }
      VariantArray array;
      array.lowerBound = static_cast<int32_t>(lower);
      for (pugi::xml_node item : node.children("item"))
        array.items.push_back(read(item, depth + 1));
      return Variant(std::move(array));
    }
    reader_.fail(node, type.empty() ? "a value has no type" : "unknown type \"" + type + "\"");
  }

 private:
  bool flag(const pugi::xml_node& node, const char* name) const {
    const pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute) return false;
    const std::string_view text = attribute.value();
    if (equalsIgnoreCaseAscii(text, "True")) return true;
    if (equalsIgnoreCaseAscii(text, "False")) return false;
    reader_.fail(node, std::string(name) + " is neither True nor False");
  }

  const Reader& reader_;
};

int32_t twips(const Reader& reader, const pugi::xml_node& node, const char* name) {
  const pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) return 0;
  int64_t value = 0;
  if (!parseNumber(std::string_view(attribute.value()), value) || value < INT32_MIN ||
      value > INT32_MAX) {
    reader.fail(node, std::string(name) + " \"" + attribute.value() + "\" is no whole number");
  }
  return static_cast<int32_t>(value);
}

}  // namespace

namespace {

// With `skipped`, a control or a property that can't be read is left out and told there; without
// it, the first fault ends the reading.
FormDocument readForm(const Reader& reader, std::string_view text,
                      std::vector<std::string>* skipped) {
  if (trimWhitespace(text).empty()) reader.fail(-1, "the file is empty");
  if (!isUtf8(text)) reader.fail(-1, "the file is not UTF-8 text");
  pugi::xml_document document;
  const pugi::xml_parse_result parsed =
      document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
  if (!parsed) reader.fail(parsed.offset, parsed.description());
  const pugi::xml_node root = document.document_element();
  if (std::string_view(root.name()) != "form") {
    reader.fail(root.offset_debug(),
                "not a saved form (its root is <" + std::string(root.name()) + ">, not <form>)");
  }
  FormDocument form;
  form.name = root.attribute("name").value();
  form.width = twips(reader, root, "width");
  form.height = twips(reader, root, "height");
  const ValueReader values(reader);
  const auto leaveOut = [&](const Broken& broken, const std::string& what) {
    if (!skipped) throw broken;
    skipped->push_back(reader.where(broken.offset) + what + ": " + broken.what);
  };
  for (pugi::xml_node node : root.children("control")) {
    FormControl control;
    control.name = node.attribute("name").value();
    const std::string called = control.name.empty() ? "a control without a name" : control.name;
    try {
      control.progId = node.attribute("progId").value();
      if (control.progId.empty()) reader.fail(node, "a control has no progId");
      control.left = twips(reader, node, "left");
      control.top = twips(reader, node, "top");
      control.width = twips(reader, node, "width");
      control.height = twips(reader, node, "height");
      control.tabIndex = twips(reader, node, "tabIndex");
    } catch (const Broken& broken) {
      leaveOut(broken, called + " is left out");
      continue;
    }
    for (pugi::xml_node property : node.children("property")) {
      const std::string name = property.attribute("name").value();
      try {
        if (name.empty()) reader.fail(property, "a property has no name");
        control.properties.put(name, values.read(property, 0));
      } catch (const Broken& broken) {
        leaveOut(broken, called + ", property " + (name.empty() ? "without a name" : name) +
                             " is left out");
      }
    }
    form.controls.push_back(std::move(control));
  }
  return form;
}

FormDocument readText(std::string_view text, std::vector<std::string>* skipped) {
  const Reader reader(text);
  try {
    return readForm(reader, text, skipped);
  } catch (const Broken& broken) {
    throw reader.error(broken);
  }
}

std::string fileText(const std::string& path) {
  std::error_code failure;
  if (!std::filesystem::is_regular_file(path, failure)) {
    throw VbError(err::FileNotFound, "File not found: " + path);
  }
  if (std::filesystem::file_size(path, failure) > kLargestFile) {
    throw VbError(err::FileLoadError, "Error loading from file: " + path + " is too large");
  }
  std::ifstream file(path, std::ios::binary);
  std::stringstream content;
  content << file.rdbuf();
  if (!file.good() && !file.eof()) throw VbError(err::FileNotFound, "File not found: " + path);
  return content.str();
}

FormDocument readFile(const std::string& path, std::vector<std::string>* skipped) {
  const std::string text = fileText(path);
  try {
    return readText(text, skipped);
  } catch (const VbError& error) {
    throw VbError(error.number(), error.description() + " (" + path + ")");
  }
}

}  // namespace

FormDocument parseForm(std::string_view text) { return readText(text, nullptr); }

FormDocument parseForm(std::string_view text, std::vector<std::string>& skipped) {
  return readText(text, &skipped);
}

std::string formText(const FormDocument& form) {
  pugi::xml_document document;
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  pugi::xml_node root = document.append_child("form");
  root.append_attribute("name") = form.name.c_str();
  root.append_attribute("width") = form.width;
  root.append_attribute("height") = form.height;
  for (const FormControl& control : form.controls) {
    pugi::xml_node node = root.append_child("control");
    node.append_attribute("progId") = control.progId.c_str();
    node.append_attribute("name") = control.name.c_str();
    node.append_attribute("left") = control.left;
    node.append_attribute("top") = control.top;
    node.append_attribute("width") = control.width;
    node.append_attribute("height") = control.height;
    node.append_attribute("tabIndex") = control.tabIndex;
    for (const auto& [name, value] : control.properties.entries()) {
      pugi::xml_node property = node.append_child("property");
      property.append_attribute("name") = name.c_str();
      writeValue(property, value);
    }
  }
  std::ostringstream out;
  document.save(out, "  ", pugi::format_indent, pugi::encoding_utf8);
  return out.str();
}

FormDocument loadForm(const std::string& path) { return readFile(path, nullptr); }

FormDocument loadForm(const std::string& path, std::vector<std::string>& skipped) {
  return readFile(path, &skipped);
}

namespace {

// A file of its own for each save, beside the form so that the rename stays on one file
// system: two saves of one form at once don't write into each other's text.
int openTemporary(const std::string& path, std::string& temporary) {
  static std::atomic<uint32_t> counter{0};
  for (int attempt = 0; attempt < 100; ++attempt) {
    temporary = path + ".saving-" + std::to_string(::getpid()) + "-" + std::to_string(++counter);
    const int descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor >= 0 || errno != EEXIST) return descriptor;
  }
  return -1;
}

bool writeAll(int descriptor, const std::string& text) {
  size_t written = 0;
  while (written < text.size()) {
    const ssize_t n = ::write(descriptor, text.data() + written, text.size() - written);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    written += static_cast<size_t>(n);
  }
  return true;
}

}  // namespace

// The earlier file stays whole until the new text is on the disk: written to a file of its own,
// synced and closed without an error, and only then renamed over the form.
void saveForm(const std::string& path, const FormDocument& form) {
  const std::string text = formText(form);
  std::string temporary;
  const int descriptor = openTemporary(path, temporary);
  if (descriptor < 0) {
    throw VbError(err::PathFileAccess,
                  "Path/File access error: can't write " + temporary + ": " + std::strerror(errno));
  }
  const bool written = writeAll(descriptor, text) && ::fsync(descriptor) == 0;
  const int writeError = errno;
  const bool closed = ::close(descriptor) == 0;
  std::error_code ignored;
  if (!written || !closed) {
    std::filesystem::remove(temporary, ignored);
    throw VbError(err::PathFileAccess, "Path/File access error: can't write " + temporary + ": " +
                                           std::strerror(written ? errno : writeError));
  }
  std::error_code failure;
  std::filesystem::rename(temporary, path, failure);
  if (failure) {
    std::filesystem::remove(temporary, ignored);
    throw VbError(err::PathFileAccess,
                  "Path/File access error: can't replace " + path + ": " + failure.message());
  }
  // The rename itself reaches the disk with the folder.
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  const int directory = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
  if (directory >= 0) {
    ::fsync(directory);
    ::close(directory);
  }
}

}  // namespace tessaline::xml
