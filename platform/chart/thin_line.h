#pragma once

#include <cstdint>

#include "tessaline/platform/chart/paint.h"

// Lines one pixel wide, anti-aliased, written straight into the canvas's premultiplied ARGB32
// pixels. Along the major direction of each segment every pixel column (or row) gets the ink of
// one pixel, split between the two pixels nearest to the line's centre and weighted by the
// segment's slope, which is how cairo's stroke of width 1 looks, at a fraction of its cost.
// Each segment covers the columns whose centres lie from its first point up to, not including,
// its last, so the joints of a polyline are inked once.
namespace tessaline::chart {

class ThinLine {
 public:
  // `clip` in whole pixels: nothing is written outside it. The paint must be solid.
  ThinLine(uint32_t* pixels, int32_t width, int32_t height, const Rect& clip, const Paint& paint);

  // A segment in pixel coordinates; one whose ends are not finite is left out.
  void segment(double x0, double y0, double x1, double y1);

 private:
  void blend(int32_t x, int32_t y, double coverage);

  uint32_t* pixels_;
  int32_t stride_;
  int32_t left_, top_, right_, bottom_;  // half-open
  uint32_t blue_, green_, red_;
  double alpha_;
};

}  // namespace tessaline::chart
