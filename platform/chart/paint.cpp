#include "tessaline/platform/chart/paint.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "tessaline/platform/chart/label_format.h"
#include "tessaline/platform/chart/thin_line.h"
#include "tessaline/values/text.h"

namespace tessaline::chart {

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kPixelsPerPoint = 96.0 / 72.0;

double channel(uint32_t color, int shift) { return ((color >> shift) & 0xFF) / 255.0; }

// Text as cairo takes it: valid UTF-8 without NUL, and no longer than a chart can show.
std::string drawable(const std::string& text) {
  constexpr size_t kLongest = 2048;
  std::string out;
  out.reserve(std::min(text.size(), kLongest));
  for (size_t offset = 0, length = 0; offset < text.size() && out.size() < kLongest;
       offset += length) {
    const char32_t cp = decodeAt(text, offset, length);
    if (cp == 0) continue;
    if (cp == 0xFFFD && length == 1) {
      out += encodeUtf8(0xFFFD);
    } else {
      out.append(text, offset, length);
    }
  }
  return out;
}

struct Line {
  std::vector<const MarkupRun*> runs;
  std::vector<double> widths;
  double width = 0;
  double height = 0;
};
}  // namespace

Paint resolvePaint(uint32_t color) {
  Paint paint;
  if (color == kNoColor || color == kTransparent) return paint;
  if ((color & 0xFFFF0000u) == kPaletteBase) {
    paint.kind = Paint::Kind::Solid;
    const double level = (color & 0xFFFF) == 0 ? 1.0 : 0.0;  // 0 is the background
    paint.r = paint.g = paint.b = level;
    return paint;
  }
  if ((color & 0xFFFF0000u) == kMetalBase && (color & 0xFFFF) < 360) {
    paint.kind = Paint::Kind::Metal;
    paint.angle = color & 0xFFFF;
    return paint;
  }
  paint.a = (255 - ((color >> 24) & 0xFF)) / 255.0;
  if (paint.a <= 0) return paint;
  paint.kind = Paint::Kind::Solid;
  paint.r = channel(color, 16);
  paint.g = channel(color, 8);
  paint.b = channel(color, 0);
  return paint;
}

FontFace fontFace(std::string_view name) {
  std::string stem = toLowerAscii(std::string(name));
  if (const size_t slash = stem.find_last_of("/\\"); slash != std::string::npos) {
    stem.erase(0, slash + 1);
  }
  if (const size_t dot = stem.rfind('.'); dot != std::string::npos) stem.erase(dot);
  struct Known {
    const char* stem;
    const char* family;
    bool bold, italic;
  };
  static constexpr Known kKnown[] = {
      {"", "Liberation Sans", false, false},          {"normal", "Liberation Sans", false, false},
      {"arial", "Liberation Sans", false, false},     {"arialbd", "Liberation Sans", true, false},
      {"ariali", "Liberation Sans", false, true},     {"arialbi", "Liberation Sans", true, true},
      {"bold", "Liberation Sans", true, false},       {"italic", "Liberation Sans", false, true},
      {"bold italic", "Liberation Sans", true, true}, {"times", "Liberation Serif", false, false},
      {"timesbd", "Liberation Serif", true, false},   {"timesi", "Liberation Serif", false, true},
      {"timesbi", "Liberation Serif", true, true},    {"cour", "Liberation Mono", false, false},
      {"courbd", "Liberation Mono", true, false},     {"sserife", "Liberation Sans", false, false},
      {"sserif", "Liberation Sans", false, false},    {"tahoma", "Liberation Sans", false, false},
      {"verdana", "Liberation Sans", false, false},
  };
  for (const auto& known : kKnown) {
    if (stem == known.stem) return {known.family, known.bold, known.italic};
  }
  // Fontconfig resolves any other family, and falls back to its sans font.
  FontFace face;
  face.family = stem;
  return face;
}

int32_t pixelSize(double value) {
  if (!(value >= 1) || !std::isfinite(value)) return 1;
  return static_cast<int32_t>(std::min(4096.0, std::floor(value)));
}

Canvas::Canvas(int32_t width, int32_t height)
    : width_(std::clamp(width, 1, 4096)),
      height_(std::clamp(height, 1, 4096)),
      pixels_(static_cast<size_t>(width_) * static_cast<size_t>(height_)),
      surface_(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels_.data()),
                                                   CAIRO_FORMAT_ARGB32, width_, height_,
                                                   width_ * 4)),
      cr_(cairo_create(surface_)) {
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
  cairo_set_font_options(cr_, options);
  cairo_font_options_destroy(options);
}

Canvas::~Canvas() {
  cairo_destroy(cr_);
  cairo_surface_destroy(surface_);
}

void Canvas::setSource(const Paint& paint, const Rect& span) {
  if (paint.kind == Paint::Kind::Metal) {
    // Brushed metal: bands of light across the span, lit from the paint's angle.
    const double rad = paint.angle * kPi / 180.0;
    const double cx = span.x + span.w / 2, cy = span.y + span.h / 2;
    const double reach = std::max(span.w, span.h) / 2;
    const double dx = std::sin(rad) * reach, dy = -std::cos(rad) * reach;
    cairo_pattern_t* pattern = cairo_pattern_create_linear(cx - dx, cy - dy, cx + dx, cy + dy);
    static constexpr double kStops[][2] = {{0.0, 0.80},  {0.22, 0.93}, {0.45, 0.78},
                                           {0.62, 0.90}, {0.85, 0.74}, {1.0, 0.86}};
    for (const auto& stop : kStops) {
      cairo_pattern_add_color_stop_rgb(pattern, stop[0], stop[1], stop[1], stop[1] + 0.03);
    }
    cairo_set_source(cr_, pattern);
    cairo_pattern_destroy(pattern);
    return;
  }
  cairo_set_source_rgba(cr_, paint.r, paint.g, paint.b, paint.a);
}

void Canvas::fillPath(const Paint& paint, const Rect& span) {
  if (!paint.visible()) {
    cairo_new_path(cr_);
    return;
  }
  setSource(paint, span);
  cairo_fill(cr_);
}

void Canvas::strokePath(const Paint& paint, double width) {
  if (!paint.visible() || !(width > 0)) {
    cairo_new_path(cr_);
    return;
  }
  setSource(paint, Rect{0, 0, static_cast<double>(width_), static_cast<double>(height_)});
  cairo_set_line_width(cr_, width);
  cairo_stroke(cr_);
}

void Canvas::fillAndOutline(const Paint& fill, const Rect& span, const Paint& edge) {
  cairo_path_t* path = cairo_copy_path(cr_);
  fillPath(fill, span);
  cairo_append_path(cr_, path);
  cairo_path_destroy(path);
  strokePath(edge, 1);
}

void Canvas::bevel(const Rect& rect, int32_t effect) {
  if (effect == 0) return;
  const int32_t depth = std::min(std::abs(effect), 20);
  const double light = effect > 0 ? 1.0 : 0.0;
  for (int32_t i = 0; i < depth; ++i) {
    const double x0 = rect.x + i + 0.5, y0 = rect.y + i + 0.5;
    const double x1 = rect.x + rect.w - i - 0.5, y1 = rect.y + rect.h - i - 0.5;
    cairo_set_line_width(cr_, 1);
    cairo_set_source_rgba(cr_, light, light, light, 0.55);
    cairo_move_to(cr_, x0, y1);
    cairo_line_to(cr_, x0, y0);
    cairo_line_to(cr_, x1, y0);
    cairo_stroke(cr_);
    cairo_set_source_rgba(cr_, 1 - light, 1 - light, 1 - light, 0.35);
    cairo_move_to(cr_, x1, y0);
    cairo_line_to(cr_, x1, y1);
    cairo_line_to(cr_, x0, y1);
    cairo_stroke(cr_);
  }
}

void Canvas::selectFont(const std::string& font, double size) {
  const FontFace face = fontFace(font);
  cairo_select_font_face(cr_, face.family.c_str(),
                         face.italic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                         face.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  const double pixels = std::clamp(size, 1.0, 200.0) * kPixelsPerPoint;
  cairo_set_font_size(cr_, std::isfinite(pixels) ? pixels : 8 * kPixelsPerPoint);
}

Rect Canvas::measureText(std::string_view text, const TextStyle& style) {
  return drawText(0, 0, 7, text, TextStyle{style.font, style.size, style.color, 0}, false);
}

Rect Canvas::drawText(double x, double y, int32_t alignment, std::string_view text,
                      const TextStyle& style, bool draw) {
  if (text.empty()) return Rect{x, y, 0, 0};
  std::vector<MarkupRun> runs;
  if (text.find("<*") == std::string_view::npos) {
    runs.emplace_back().text = std::string(text);
  } else {
    runs = parseMarkup(text);
  }
  for (auto& run : runs) run.text = drawable(run.text);
  const double baseSize = std::isfinite(style.size) && style.size > 0 ? style.size : 8;

  // Lines and their widths.
  std::vector<Line> lines(1);
  for (const auto& run : runs) {
    if (run.lineBreak && !lines.back().runs.empty()) lines.emplace_back();
    const double size = run.size.value_or(baseSize);
    selectFont(run.font.value_or(style.font), size);
    cairo_text_extents_t extents;
    cairo_text_extents(cr_, run.text.c_str(), &extents);
    Line& line = lines.back();
    line.runs.push_back(&run);
    line.widths.push_back(extents.x_advance);
    line.width += extents.x_advance;
    line.height = std::max(line.height, std::clamp(size, 1.0, 200.0) * kPixelsPerPoint * 1.2);
  }
  double boxW = 0, boxH = 0;
  for (auto& line : lines) {
    if (line.height == 0) line.height = baseSize * kPixelsPerPoint * 1.2;
    boxW = std::max(boxW, line.width);
    boxH += line.height;
  }
  if (alignment < 1 || alignment > 9) alignment = 7;
  const int column = (alignment - 1) % 3;  // 0 left, 1 centre, 2 right
  const int row = (alignment - 1) / 3;     // 0 bottom, 1 middle, 2 top
  const double ax = column * boxW / 2;
  const double ay = row == 2 ? 0 : (row == 1 ? boxH / 2 : boxH);
  const double angle = std::isfinite(style.angle) ? style.angle * kPi / 180.0 : 0;

  // The axis-aligned box of the rotated text box.
  const double c = std::cos(angle), s = std::sin(angle);
  double minX = 1e300, minY = 1e300, maxX = -1e300, maxY = -1e300;
  for (auto [px, py] :
       {std::pair{-ax, -ay}, {boxW - ax, -ay}, {-ax, boxH - ay}, std::pair{boxW - ax, boxH - ay}}) {
    const double rx = x + px * c + py * s, ry = y - px * s + py * c;
    minX = std::min(minX, rx);
    maxX = std::max(maxX, rx);
    minY = std::min(minY, ry);
    maxY = std::max(maxY, ry);
  }
  const Rect covered{minX, minY, maxX - minX, maxY - minY};
  if (!draw) return covered;

  cairo_save(cr_);
  cairo_translate(cr_, x, y);
  cairo_rotate(cr_, -angle);
  double top = -ay;
  for (const auto& line : lines) {
    double left = -ax + column * (boxW - line.width) / 2;
    for (size_t i = 0; i < line.runs.size(); ++i) {
      const MarkupRun& run = *line.runs[i];
      const double size = run.size.value_or(baseSize);
      if (run.background) {
        const Paint back = resolvePaint(*run.background);
        cairo_rectangle(cr_, left, top, line.widths[i], line.height);
        fillPath(back, Rect{left, top, line.widths[i], line.height});
      }
      selectFont(run.font.value_or(style.font), size);
      const Paint ink = resolvePaint(run.color.value_or(style.color));
      if (ink.visible()) {
        setSource(ink, Rect{left, top, line.widths[i], line.height});
        const double pixels = std::clamp(size, 1.0, 200.0) * kPixelsPerPoint;
        cairo_move_to(cr_, left, top + (line.height - pixels * 1.2) / 2 + pixels * 0.95);
        cairo_show_text(cr_, run.text.c_str());
      }
      left += line.widths[i];
    }
    top += line.height;
  }
  cairo_restore(cr_);
  return covered;
}

void Canvas::drawThinLines(const std::vector<LinePoint>& points, const Rect& clip,
                           const Paint& paint) {
  cairo_surface_flush(surface_);
  ThinLine line(pixels_.data(), width_, height_, clip, paint);
  for (size_t i = 1; i < points.size(); ++i) {
    const LinePoint& a = points[i - 1];
    const LinePoint& b = points[i];
    if (!a.gap && !b.gap) line.segment(a.x, a.y, b.x, b.y);
  }
  cairo_surface_mark_dirty(surface_);
}

platform::PixelImage Canvas::takeImage() {
  cairo_surface_flush(surface_);
  platform::PixelImage image;
  image.width = width_;
  image.height = height_;
  image.pixels = std::move(pixels_);
  return image;
}

}  // namespace tessaline::chart
