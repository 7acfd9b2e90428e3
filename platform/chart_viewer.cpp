#include "tessaline/platform/chart_viewer.h"

#include <algorithm>
#include <cmath>

namespace tessaline::platform {

namespace {
constexpr double kSmallest = 0.001;

double clampSize(double size) {
  if (std::isnan(size)) return 1;
  return std::clamp(size, kSmallest, 1.0);
}
double clampCorner(double corner, double size) {
  if (std::isnan(corner)) return 0;
  return std::clamp(corner, 0.0, 1.0 - size);
}
bool horizontal(int32_t direction) { return direction != ChartViewer::kDirectionVertical; }
bool vertical(int32_t direction) { return direction != ChartViewer::kDirectionHorizontal; }
}  // namespace

ViewPort clampViewPort(ViewPort view) {
  view.width = clampSize(view.width);
  view.height = clampSize(view.height);
  view.left = clampCorner(view.left, view.width);
  view.top = clampCorner(view.top, view.height);
  return view;
}

ViewPort zoomAround(ViewPort view, double fx, double fy, double factor, int32_t direction) {
  view = clampViewPort(view);
  if (!(factor > 0) || !std::isfinite(factor)) return view;
  fx = std::isfinite(fx) ? std::clamp(fx, 0.0, 1.0) : 0.5;
  fy = std::isfinite(fy) ? std::clamp(fy, 0.0, 1.0) : 0.5;
  if (horizontal(direction)) {
    const double anchor = view.left + fx * view.width;
    view.width = clampSize(view.width / factor);
    view.left = anchor - fx * view.width;
  }
  if (vertical(direction)) {
    const double anchor = view.top + fy * view.height;
    view.height = clampSize(view.height / factor);
    view.top = anchor - fy * view.height;
  }
  return clampViewPort(view);
}

ViewPort scrollBy(ViewPort view, double dxPixels, double dyPixels, int32_t viewerWidth,
                  int32_t viewerHeight, int32_t direction) {
  view = clampViewPort(view);
  if (horizontal(direction) && viewerWidth > 0 && std::isfinite(dxPixels)) {
    view.left -= dxPixels / viewerWidth * view.width;
  }
  if (vertical(direction) && viewerHeight > 0 && std::isfinite(dyPixels)) {
    view.top -= dyPixels / viewerHeight * view.height;
  }
  return clampViewPort(view);
}

}  // namespace tessaline::platform
