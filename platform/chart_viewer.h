#pragma once

#include <cstdint>
#include <functional>

#include "tessaline/platform/widgets.h"
#include "tessaline/values/object.h"

namespace tessaline::platform {

// The visible part of a chart's full range, as fractions of it; top counts down from the top.
struct ViewPort {
  double left = 0, top = 0, width = 1, height = 1;
  bool operator==(const ViewPort&) const = default;
};
// Brought into range: a size to 1/1000 .. 1 (NaN gives 1), then the corner moved so that the
// visible part lies inside 0 .. 1 (NaN gives 0).
ViewPort clampViewPort(ViewPort view);
// One zoom step around a point given as fractions of the viewer (fx from the left, fy from
// the top): the point under the mouse stays under it. A factor of 2 halves the visible part,
// 0.5 doubles it. Direction as ZoomDirection.
ViewPort zoomAround(ViewPort view, double fx, double fy, double factor, int32_t direction);
// Dragging the picture by pixels moves the content with the mouse. Direction as
// ScrollDirection.
ViewPort scrollBy(ViewPort view, double dxPixels, double dyPixels, int32_t viewerWidth,
                  int32_t viewerHeight, int32_t direction);

// The chart viewer: shows a chart's picture and turns mouse actions into a viewport, the
// visible part of the chart's full range as four fractions.
// - The viewport starts on the whole range: left 0, top 0, width 1, height 1. Top counts down
//   from the top of the full range.
// - A viewport written out of range is brought back into it when it is next used (by
//   updateViewPort or a mouse action): a width or height is clamped to the range from
//   1/1000 to 1 (NaN gives 1), then left and top are moved so that the visible part lies in
//   0 to 1 (NaN gives 0).
// - MouseUsage 0 does nothing with the mouse; 1: dragging scrolls; 3: a click zooms in, 4: a
//   click zooms out, around the point clicked, by kZoomStep either way. These change the
//   viewport, then raise ViewPortChanged(true, false) by themselves. ZoomDirection and
//   ScrollDirection say which fractions move: 0 horizontal only, 1 vertical only, 2 both.
//   Only the left button clicks and drags; any button raises MouseDown.
// - The mouse is measured in the chart's pixels, 15 twips each (96 dpi), as the controls draw
//   their pictures: a viewer shown on a screen of another resolution scales the picture to its
//   size and maps the mouse back, so that MouseDown, a click and a drag see the same
//   coordinates on every screen.
// - updateViewPort brings the viewport into range and raises ViewPortChanged.
class ChartViewer : public Widget {
 public:
  using ViewPortHandler = std::function<void(bool needUpdateChart, bool needUpdateImageMap)>;
  // button (1 left, 2 right, 4 middle), shift state, x and y in the chart's pixels.
  using MouseHandler = std::function<void(int32_t button, int32_t shift, float x, float y)>;
  struct ViewerEvents {
    ViewPortHandler ViewPortChanged;
    // A button went down on the viewer; raised before the viewer acts on the click or the drag
    // that follows, so that a handler can still choose what the mouse does.
    MouseHandler MouseDown;
  };
  ViewerEvents viewerEvents;

  static constexpr int32_t kMouseDefault = 0;
  static constexpr int32_t kMouseScroll = 1;
  static constexpr int32_t kMouseZoomIn = 3;
  static constexpr int32_t kMouseZoomOut = 4;
  static constexpr int32_t kDirectionHorizontal = 0;
  static constexpr int32_t kDirectionVertical = 1;
  static constexpr int32_t kDirectionBoth = 2;
  // One click halves the visible part or doubles it, so that zooming out undoes zooming in.
  static constexpr double kZoomStep = 2;

  // The picture on show, or Nothing.
  virtual Ref<Object> Picture() const = 0;
  virtual void Picture(const Ref<Object>& picture) = 0;

  virtual double ViewPortLeft() const = 0;
  virtual void ViewPortLeft(double value) = 0;
  virtual double ViewPortTop() const = 0;
  virtual void ViewPortTop(double value) = 0;
  virtual double ViewPortWidth() const = 0;
  virtual void ViewPortWidth(double value) = 0;
  virtual double ViewPortHeight() const = 0;
  virtual void ViewPortHeight(double value) = 0;

  virtual int32_t MouseUsage() const = 0;
  virtual void MouseUsage(int32_t value) = 0;
  virtual int32_t ZoomDirection() const = 0;
  virtual void ZoomDirection(int32_t value) = 0;
  virtual int32_t ScrollDirection() const = 0;
  virtual void ScrollDirection(int32_t value) = 0;
  // The pointer shape: 1 arrow, 50 hand, 51 zoom in, 52 and 53 zoom out; 0 the default.
  virtual int32_t MousePointer() const = 0;
  virtual void MousePointer(int32_t value) = 0;

  virtual void updateViewPort(bool needUpdateChart, bool needUpdateImageMap) = 0;
};

}  // namespace tessaline::platform
