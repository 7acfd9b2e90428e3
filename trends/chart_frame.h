#pragma once

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tessaline/platform/chart.h"
#include "tessaline/platform/chart_viewer.h"
#include "tessaline/platform/widgets.h"
#include "tessaline/values/arithmetic.h"
#include "tessaline/values/variant.h"

// The frame of the four chart controls: the viewer, four pointer-mode buttons over its corner,
// two scroll bars and two timers in their fixed geometry; the pointer modes, the scroll bars,
// the clock of chart time, the sample store, the sliding time window and the hand-over of a
// drawn chart to the viewer. Each control owns one and says what it draws.
namespace tessaline {

// The geometry of a frame in twips: the two families of controls lay it out differently.
struct FrameLayout {
  int32_t buttonHeight;
  int32_t hScrollTop, hScrollWidth;
  int32_t vScrollLeft, vScrollHeight;
  int32_t viewerWidth, viewerHeight;
};
// DTMDataTrendControl and DTMDynamicTrendControl.
inline constexpr FrameLayout kSingleTrendLayout{375, 5520, 10575, 10320, 5535, 10575, 5775};
// DTMMultiTrendControl and DTMWaveFormControl.
inline constexpr FrameLayout kMultiTrendLayout{495, 6960, 11055, 10800, 6975, 11055, 7215};

// The picture numbers of the buttons' bitmaps.
inline constexpr int32_t kZoomInBitmap = 104;
inline constexpr int32_t kZoomOutBitmap = 105;
inline constexpr int32_t kHomeBitmap = 107;
inline constexpr int32_t kHandBitmap = 108;

class ChartFrame {
 public:
  // The children made on the control's window; the viewer is called `viewerName`.
  ChartFrame(platform::UserControl& window, const FrameLayout& layout,
             const std::string& viewerName);

  platform::ChartViewer& viewer() { return *viewer_; }
  platform::OptionButton& HandScroll() { return *HandScroll_; }
  platform::OptionButton& zoomIn() { return *zoomIn_; }
  platform::OptionButton& ZoomOut() { return *ZoomOut_; }
  platform::OptionButton& Home() { return *Home_; }
  platform::ScrollBar& HScrollbar() { return *HScrollbar_; }
  platform::ScrollBar& VScrollbar() { return *VScrollbar_; }
  platform::Timer& ChartUpdateTimer() { return *ChartUpdateTimer_; }
  platform::Timer& DataRateTimer() { return *DataRateTimer_; }

  // The pointer modes of the single-item trends and the waveform: each button's click sets the
  // viewer's mouse as it says; none touches the viewport.
  void HandScroll_Click();
  void zoomIn_Click();
  void ZoomOut_Click();
  void Home_Click();
  // The scroll bars move the viewport's corner and redraw.
  void HScrollbar_Scroll();
  void VScrollbar_Scroll();

  // Visible of the viewer, HandScroll, Home, zoomIn and ZoomOut, in this order; the scroll bars
  // are left alone.
  void showChildren(bool visible);

  // The visible part of the full y range from axisMin to axisMax, lower and upper end: the
  // vertical fractions count down from the top.
  std::pair<double, double> visibleRange(double axisMin, double axisMax);

  // The end of every drawing: the viewer's picture dropped, the chart's JPEG made and shown.
  void handOver(platform::chart::XYPlot& chart);

 private:
  std::unique_ptr<platform::ChartViewer> viewer_;
  std::unique_ptr<platform::OptionButton> HandScroll_, zoomIn_, ZoomOut_, Home_;
  std::unique_ptr<platform::ScrollBar> HScrollbar_, VScrollbar_;
  std::unique_ptr<platform::Timer> ChartUpdateTimer_, DataRateTimer_;
};

// chartNow: the platform clock's local time, to the second, as the API object's chartTime, plus
// its seconds in millionths (a few microseconds at most).
double chartNow(platform::chart::ChartApi& api);

// One array of samples, fixed in length: read in order, index 0 is the oldest and the last
// index the newest; shiftData pushes the oldest out. It is held as a ring, so that a sample costs
// one write instead of one copy per slot, and nothing is allocated after creation. Every slot
// starts as NoValue.
class SampleRing {
 public:
  explicit SampleRing(size_t slots);
  void shiftData(double value) {
    slots_[head_] = value;
    head_ = head_ + 1 == slots_.size() ? 0 : head_ + 1;
  }
  size_t size() const { return slots_.size(); }
  // Element i, 0 the oldest.
  double operator[](size_t i) const { return slots_[(head_ + i) % slots_.size()]; }
  double newest() const { return (*this)[slots_.size() - 1]; }
  // The array in order, oldest first.
  std::vector<double> ordered() const;

 private:
  std::vector<double> slots_;
  size_t head_ = 0;  // the oldest
};

// The store of samples of a single-item trend: the time stamps and every series, moving
// together.
class SampleStore {
 public:
  SampleStore(size_t slots, size_t series);

  // shiftData of the time stamps and of each series, with one value per series.
  void shiftData(double time, std::span<const double> values);
  size_t slotCount() const { return times_.size(); }
  double time(size_t i) const { return times_[i]; }
  double value(size_t series, size_t i) const { return series_[series][i]; }
  double newestTime() const { return times_.newest(); }
  double newest(size_t series) const { return series_[series].newest(); }
  std::vector<double> times() const { return times_.ordered(); }
  std::vector<double> series(size_t index) const { return series_[index].ordered(); }

 private:
  SampleRing times_;
  std::vector<SampleRing> series_;
};

// IsNotANumber of the trends: "nan" or "#" in the General Number text of the value, so that
// the platform's text of a not-a-number or infinite double counts.
bool IsNotANumberAsGeneralNumber(const Variant& value);

// The x window of the trends: the newest sample enters at the left edge, walks to the right
// edge, and then the window jumps on by a tenth of its width at each drawing that finds the
// newest sample beyond it. `unset` is the start that means "not yet set".
struct TimeWindow {
  double viewStart;
  double viewEnd;
  double unset;

  void follow(double newest, double width);
  bool isSet() const { return viewStart != unset; }
};

}  // namespace tessaline
