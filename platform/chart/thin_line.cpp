#include "tessaline/platform/chart/thin_line.h"

#include <algorithm>
#include <cmath>

namespace tessaline::chart {

namespace {
uint32_t channel(double value) {
  return static_cast<uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

// The first and past-the-last index of the pixels, within [low, high), whose centres lie on the
// way from `from` to `to`: the start counts, the end doesn't, whichever way the segment runs.
std::pair<int32_t, int32_t> centresOnTheWay(double from, double to, int32_t low, int32_t high) {
  double first, last;
  if (from <= to) {
    first = std::ceil(from - 0.5);
    last = std::ceil(to - 0.5);
  } else {
    first = std::floor(to - 0.5) + 1;
    last = std::floor(from - 0.5) + 1;
  }
  return {static_cast<int32_t>(std::clamp(first, double(low), double(high))),
          static_cast<int32_t>(std::clamp(last, double(low), double(high)))};
}
}  // namespace

ThinLine::ThinLine(uint32_t* pixels, int32_t width, int32_t height, const Rect& clip,
                   const Paint& paint)
    : pixels_(pixels),
      stride_(width),
      left_(std::max(0, static_cast<int32_t>(std::floor(clip.x)))),
      top_(std::max(0, static_cast<int32_t>(std::floor(clip.y)))),
      right_(std::min(width, static_cast<int32_t>(std::ceil(clip.x + clip.w)))),
      bottom_(std::min(height, static_cast<int32_t>(std::ceil(clip.y + clip.h)))),
      blue_(channel(paint.b)),
      green_(channel(paint.g)),
      red_(channel(paint.r)),
      alpha_(std::clamp(paint.a, 0.0, 1.0)) {}

void ThinLine::blend(int32_t x, int32_t y, double coverage) {
  if (y < top_ || y >= bottom_ || x < left_ || x >= right_) return;
  const auto a = static_cast<uint32_t>(std::min(coverage, 1.0) * alpha_ * 256 + 0.5);
  if (a == 0) return;
  uint32_t& pixel =
      pixels_[static_cast<size_t>(y) * static_cast<size_t>(stride_) + static_cast<size_t>(x)];
  const uint32_t keep = 256 - a;
  const auto mix = [&](uint32_t source, int shift) {
    return ((source * a + ((pixel >> shift) & 0xFF) * keep) >> 8) << shift;
  };
  pixel = mix(255, 24) | mix(red_, 16) | mix(green_, 8) | mix(blue_, 0);
}

void ThinLine::segment(double x0, double y0, double x1, double y1) {
  if (!std::isfinite(x0) || !std::isfinite(y0) || !std::isfinite(x1) || !std::isfinite(y1)) {
    return;
  }
  const double dx = x1 - x0, dy = y1 - y0;
  if (std::abs(dx) >= std::abs(dy)) {
    if (dx == 0) return;
    const double slope = dy / dx;
    const double weight = std::sqrt(1 + slope * slope);
    const auto [first, last] = centresOnTheWay(x0, x1, left_, right_);
    for (int32_t x = first; x < last; ++x) {
      const double y = y0 + (x + 0.5 - x0) * slope - 0.5;
      const double row = std::floor(y);
      if (row < top_ - 1 || row >= bottom_) continue;
      const double t = y - row;
      blend(x, static_cast<int32_t>(row), (1 - t) * weight);
      blend(x, static_cast<int32_t>(row) + 1, t * weight);
    }
  } else {
    const double slope = dx / dy;
    const double weight = std::sqrt(1 + slope * slope);
    const auto [first, last] = centresOnTheWay(y0, y1, top_, bottom_);
    for (int32_t y = first; y < last; ++y) {
      const double x = x0 + (y + 0.5 - y0) * slope - 0.5;
      const double column = std::floor(x);
      if (column < left_ - 1 || column >= right_) continue;
      const double t = x - column;
      blend(static_cast<int32_t>(column), y, (1 - t) * weight);
      blend(static_cast<int32_t>(column) + 1, y, t * weight);
    }
  }
}

}  // namespace tessaline::chart
