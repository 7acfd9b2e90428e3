#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tessaline/platform/picture.h"

// The drawing side of the chart engine: colours, fonts and text on a cairo image.
namespace tessaline::chart {

// Colour values as the charts pass them (see platform/chart.h), and the engine's own.
inline constexpr uint32_t kTransparent = 0xFF000000u;
inline constexpr uint32_t kNoColor = 0xFFFFFFFFu;
inline constexpr uint32_t kPaletteBase = 0xFFFF0000u;  // background, line, text colour
inline constexpr uint32_t kTextColor = 0xFFFF0002u;
inline constexpr uint32_t kMetalBase = 0xFFFE0000u;  // plus the angle of the light, 0 to 359

// A colour resolved for drawing.
struct Paint {
  enum class Kind { None, Solid, Metal };
  Kind kind = Kind::None;
  double r = 0, g = 0, b = 0, a = 1;
  double angle = 0;  // of a metallic gradient
  bool visible() const { return kind != Kind::None; }
};
// The top byte is transparency (0 opaque, 0xFF clear); the palette and metal ranges are the
// engine's named colours.
Paint resolvePaint(uint32_t color);

// Fonts by the names the charts use ("arial.ttf", "arialbd.ttf", "timesbi.ttf",
// "SSERIFE.FON", "bold", ""): a family that fontconfig resolves to an installed font, with
// the sans family as the fallback for names it doesn't know.
struct FontFace {
  std::string family = "Liberation Sans";
  bool bold = false;
  bool italic = false;
};
FontFace fontFace(std::string_view name);

// Where the reference point of a text lies on its box, numbered as the charts number it:
// 1 bottom left, 2 bottom centre, 3 bottom right, 4 left, 5 centre, 6 right, 7 top left,
// 8 top centre, 9 top right.
inline constexpr int32_t kAlignCenter = 5;

struct TextStyle {
  std::string font;
  double size = 8;  // points
  uint32_t color = kTextColor;
  double angle = 0;  // degrees, counterclockwise
};

struct Rect {
  double x = 0, y = 0, w = 0, h = 0;
  bool intersects(const Rect& o, double gap = 0) const {
    return x < o.x + o.w + gap && o.x < x + w + gap && y < o.y + o.h + gap && o.y < y + h + gap;
  }
};

// A point of a line in pixels; `gap` breaks the line there.
struct LinePoint {
  double x = 0, y = 0;
  bool gap = false;
};

// An ARGB32 image and a cairo context on it.
class Canvas {
 public:
  Canvas(int32_t width, int32_t height);
  ~Canvas();
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  cairo_t* cr() const { return cr_; }
  int32_t width() const { return width_; }
  int32_t height() const { return height_; }

  // Makes the paint the source; a metallic paint spans the rectangle given.
  void setSource(const Paint& paint, const Rect& span);
  // Fills the current path, or strokes it with the width given; nothing for no paint.
  void fillPath(const Paint& paint, const Rect& span);
  void strokePath(const Paint& paint, double width);
  // Lines one pixel wide through the points, straight into the pixels (see ThinLine); the
  // current path is left alone.
  void drawThinLines(const std::vector<LinePoint>& points, const Rect& clip, const Paint& paint);
  // Fills the current path, then outlines the same path with a line of 1 pixel.
  void fillAndOutline(const Paint& fill, const Rect& span, const Paint& edge);
  // A raised (positive) or sunken (negative) border of that many pixels inside the rectangle.
  void bevel(const Rect& rect, int32_t effect);

  // The box that a text with markup takes, before rotation.
  Rect measureText(std::string_view text, const TextStyle& style);
  // Draws the text so that the point given sits where `alignment` says on its box; returns
  // the axis-aligned box it covers. Nothing is drawn for an empty text.
  Rect drawText(double x, double y, int32_t alignment, std::string_view text,
                const TextStyle& style, bool draw = true);

  // The finished pixels, without a copy; nothing may be drawn afterwards.
  platform::PixelImage takeImage();

 private:
  void selectFont(const std::string& font, double size);

  int32_t width_;
  int32_t height_;
  std::vector<uint32_t> pixels_;  // the surface draws straight into these
  cairo_surface_t* surface_;
  cairo_t* cr_;
};

// Pixel size of a chart: whole pixels from 1 to 4096; NaN, infinities and what can't be a
// size give 1.
int32_t pixelSize(double value);

}  // namespace tessaline::chart
