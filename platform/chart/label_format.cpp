#include "tessaline/platform/chart/label_format.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tessaline/platform/chart/scale.h"
#include "tessaline/values/text.h"
#include "tessaline/values/variant.h"

namespace tessaline::chart {

namespace {

std::string printfNumber(const char* pattern, int digits, double value) {
  const int length = std::snprintf(nullptr, 0, pattern, digits, value);
  if (length <= 0) return {};
  std::string out(static_cast<size_t>(length) + 1, '\0');
  std::snprintf(out.data(), out.size(), pattern, digits, value);
  out.resize(static_cast<size_t>(length));
  return out;
}

// Splits "1234567.89" into groups of three with the separator, and sets the decimal point.
std::string localize(const std::string& fixed, std::string_view thousands, std::string_view point) {
  const size_t dot = fixed.find('.');
  std::string whole = fixed.substr(0, dot);
  std::string fraction = dot == std::string::npos ? "" : fixed.substr(dot + 1);
  const bool negative = !whole.empty() && whole[0] == '-';
  if (negative) whole.erase(0, 1);
  std::string out = negative ? "-" : "";
  for (size_t i = 0; i < whole.size(); ++i) {
    if (i > 0 && (whole.size() - i) % 3 == 0) out.append(thousands);
    out.push_back(whole[i]);
  }
  if (dot != std::string::npos) out += std::string(point) + fraction;
  return out;
}

int clampDigits(long digits) { return static_cast<int>(std::min(20L, std::max(0L, digits))); }

bool isTimeFormat(std::string_view field) {
  for (char c : field) {
    switch (std::tolower(static_cast<unsigned char>(c))) {
      case 'y':
      case 'm':
      case 'd':
      case 'h':
      case 'n':
      case 's':
        return true;
      default:
        break;
    }
  }
  return false;
}

std::string twoDigits(int64_t v) {
  std::string s = std::to_string(v);
  return s.size() < 2 ? "0" + s : s;
}

std::string formatTime(std::string_view field, double value) {
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  CivilTime t;
  if (!civilFromChartTime(value, t)) return {};
  std::string out;
  size_t i = 0;
  while (i < field.size()) {
    const char c = field[i];
    size_t run = 1;
    while (i + run < field.size() && field[i + run] == c) ++run;
    const auto second = static_cast<int64_t>(std::floor(t.second));
    switch (c) {
      case 'y':
        out += run >= 4 ? std::to_string(t.year) : twoDigits(t.year % 100);
        break;
      case 'm':
        out += run >= 3 ? std::string(kMonths[t.month - 1])
                        : (run == 2 ? twoDigits(t.month) : std::to_string(t.month));
        break;
      case 'd':
        out += run >= 2 ? twoDigits(t.day) : std::to_string(t.day);
        break;
      case 'h':
        out += run >= 2 ? twoDigits(t.hour) : std::to_string(t.hour);
        break;
      case 'n':
        out += run >= 2 ? twoDigits(t.minute) : std::to_string(t.minute);
        break;
      case 's':
        out += run >= 2 ? twoDigits(second) : std::to_string(second);
        break;
      default:
        out.append(run, c);
        break;
    }
    i += run;
  }
  return out;
}

std::string formatField(std::string_view field, double value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value > 0 ? "Infinity" : "-Infinity";
  if (!isPlottable(value)) return {};
  if (field.empty()) return formatDouble(value, ".");
  const char kind = field[0];
  if (kind == 'e' || kind == 'E') {
    const int digits = clampDigits(std::strtol(std::string(field.substr(1)).c_str(), nullptr, 10));
    return printfNumber(kind == 'e' ? "%.*e" : "%.*E", digits, value);
  }
  if (kind == 'P' || kind == 'p') {
    const int significant =
        std::max(1, clampDigits(std::strtol(std::string(field.substr(1)).c_str(), nullptr, 10)));
    const double magnitude = value == 0 ? 0 : std::floor(std::log10(std::abs(value)));
    return printfNumber("%.*f", clampDigits(significant - 1 - static_cast<long>(magnitude)), value);
  }
  if (std::isdigit(static_cast<unsigned char>(kind))) {
    size_t end = 0;
    while (end < field.size() && std::isdigit(static_cast<unsigned char>(field[end]))) ++end;
    const int digits =
        clampDigits(std::strtol(std::string(field.substr(0, end)).c_str(), nullptr, 10));
    std::string_view separators = field.substr(end);
    std::string fixed = printfNumber("%.*f", digits, value);
    // A value that rounds to zero shows no sign.
    if (fixed[0] == '-' && fixed.find_first_not_of("0.", 1) == std::string::npos) fixed.erase(0, 1);
    if (separators.empty()) return fixed;
    return localize(fixed, separators.substr(0, 1),
                    separators.size() > 1 ? separators.substr(1, 1) : ".");
  }
  if (isTimeFormat(field)) return formatTime(field, value);
  return formatDouble(value, ".");
}

std::optional<uint32_t> hexColor(std::string_view text) {
  if (text.empty() || text.size() > 8) return std::nullopt;
  uint32_t v = 0;
  for (char c : text) {
    const int digit = std::isdigit(static_cast<unsigned char>(c))
                          ? c - '0'
                          : (std::isxdigit(static_cast<unsigned char>(c))
                                 ? std::tolower(static_cast<unsigned char>(c)) - 'a' + 10
                                 : -1);
    if (digit < 0) return std::nullopt;
    v = v * 16 + static_cast<uint32_t>(digit);
  }
  return v;
}

}  // namespace

std::string formatLabel(std::string_view format, double value) {
  std::string out;
  size_t i = 0;
  while (i < format.size()) {
    const size_t open = format.find("{value", i);
    if (open == std::string_view::npos) break;
    const size_t close = format.find('}', open);
    if (close == std::string_view::npos) break;
    std::string_view inner = format.substr(open + 6, close - open - 6);
    if (!inner.empty() && inner[0] != '|') {
      // "{valueX}" is no field: keep it as text.
      out.append(format.substr(i, close + 1 - i));
      i = close + 1;
      continue;
    }
    out.append(format.substr(i, open - i));
    out += formatField(inner.empty() ? inner : inner.substr(1), value);
    i = close + 1;
  }
  out.append(format.substr(std::min(i, format.size())));
  return out;
}

std::vector<MarkupRun> parseMarkup(std::string_view text) {
  std::vector<MarkupRun> runs(1);
  MarkupRun style;  // the style that text from here on carries
  size_t i = 0;
  while (i < text.size()) {
    const size_t open = text.find("<*", i);
    const size_t close = open == std::string_view::npos ? open : text.find("*>", open + 2);
    if (close == std::string_view::npos) {
      runs.back().text.append(text.substr(i));
      break;
    }
    runs.back().text.append(text.substr(i, open - i));
    MarkupRun next = style;
    next.text.clear();
    next.lineBreak = false;
    std::string_view tag = text.substr(open + 2, close - open - 2);
    if (tag == "/") {
      next = MarkupRun{};
    } else if (tag == "br") {
      next.lineBreak = true;
    } else {
      size_t start = 0;
      while (start <= tag.size()) {
        size_t end = tag.find(',', start);
        if (end == std::string_view::npos) end = tag.size();
        std::string_view item = tag.substr(start, end - start);
        const size_t eq = item.find('=');
        if (eq != std::string_view::npos) {
          const std::string key = toLowerAscii(std::string(item.substr(0, eq)));
          std::string_view value = item.substr(eq + 1);
          if (key == "bgcolor") {
            next.background = hexColor(value);
          } else if (key == "color") {
            next.color = hexColor(value);
          } else if (key == "size") {
            const double size = std::strtod(std::string(value).c_str(), nullptr);
            if (size > 0 && size < 1000) next.size = size;
          } else if (key == "font") {
            next.font = std::string(value);
          }
        }
        start = end + 1;
      }
    }
    style = next;
    runs.push_back(next);
    i = close + 2;
  }
  std::vector<MarkupRun> kept;
  for (auto& run : runs) {
    if (!run.text.empty() || run.lineBreak) kept.push_back(std::move(run));
  }
  return kept;
}

}  // namespace tessaline::chart
