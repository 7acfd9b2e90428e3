#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Label formats and text markup of the chart engine: pure functions, tested without drawing.
namespace tessaline::chart {

// A format text with "{value}" fields, each with an optional number or time format after a
// bar: "{value|2}" two decimals, "{value|2,.}" with a thousands separator and a decimal
// point, "{value|e3}" / "{value|E3}" exponent form with three decimals, "{value|P4}" four
// significant digits, "{value|hh:nn:ss}" the time of a chart time (yyyy yy mmm mm dd hh nn ss
// and their one-letter forms). Text outside the fields is kept, markup included. The
// no-value mark gives an empty field; NaN and infinities their names.
std::string formatLabel(std::string_view format, double value);

// A piece of text with the style its markup gives it. "<*bgColor=FFCCCC*>" lays a colour
// behind what follows, "<*color=RRGGBB*>" colours it, "<*size=N*>" and "<*font=name*>" change
// its font, "<*br*>" starts a new line, "<*/*>" returns to the text's own style. Unknown keys
// and malformed tags are dropped; a "<*" with no end is text.
struct MarkupRun {
  std::string text;
  std::optional<uint32_t> background;
  std::optional<uint32_t> color;
  std::optional<double> size;
  std::optional<std::string> font;
  bool lineBreak = false;  // this run starts a new line
};
std::vector<MarkupRun> parseMarkup(std::string_view text);

}  // namespace tessaline::chart
