#include "tessaline/trends/chart_frame.h"

#include <algorithm>
#include <cmath>

#include "tessaline/platform/picture.h"
#include "tessaline/support/resources.h"
#include "tessaline/values/text.h"
#include "tessaline/values/vb_error.h"

namespace tessaline {

namespace {

void place(platform::Widget& child, int32_t left, int32_t top, int32_t width, int32_t height) {
  child.Left(left);
  child.Top(top);
  child.Width(width);
  child.Height(height);
}

std::unique_ptr<platform::OptionButton> button(platform::UserControl& window,
                                               const std::string& name, int32_t left,
                                               int32_t height, int32_t bitmap) {
  auto made = window.createOptionButton(name);
  place(*made, left, 0, 495, height);
  made->Picture(nullptr);
  made->Picture(LoadResPicture(bitmap, ResourceType::Bitmap));
  return made;
}

}  // namespace

ChartFrame::ChartFrame(platform::UserControl& window, const FrameLayout& layout,
                       const std::string& viewerName) {
  viewer_ = window.createChartViewer(viewerName);
  place(*viewer_, 0, 0, layout.viewerWidth, layout.viewerHeight);
  HandScroll_ = button(window, "HandScroll", 0, layout.buttonHeight, kHandBitmap);
  zoomIn_ = button(window, "zoomIn", 480, layout.buttonHeight, kZoomInBitmap);
  ZoomOut_ = button(window, "ZoomOut", 960, layout.buttonHeight, kZoomOutBitmap);
  Home_ = button(window, "Home", 1440, layout.buttonHeight, kHomeBitmap);
  HScrollbar_ = window.createScrollBar("HScrollbar", true);
  place(*HScrollbar_, 0, layout.hScrollTop, layout.hScrollWidth, 255);
  VScrollbar_ = window.createScrollBar("VScrollbar", false);
  place(*VScrollbar_, layout.vScrollLeft, 0, 255, layout.vScrollHeight);
  ChartUpdateTimer_ = window.createTimer("ChartUpdateTimer");
  ChartUpdateTimer_->Interval(250);
  DataRateTimer_ = window.createTimer("DataRateTimer");
  DataRateTimer_->Interval(250);
  viewer_->ZoomDirection(platform::ChartViewer::kDirectionBoth);
  viewer_->ScrollDirection(platform::ChartViewer::kDirectionBoth);
  viewer_->MouseUsage(platform::ChartViewer::kMouseDefault);
}

void ChartFrame::HandScroll_Click() {
  viewer_->MousePointer(50);
  viewer_->MouseUsage(platform::ChartViewer::kMouseScroll);
  viewer_->ScrollDirection(platform::ChartViewer::kDirectionBoth);
  viewer_->ZoomDirection(platform::ChartViewer::kDirectionBoth);
}

void ChartFrame::zoomIn_Click() { viewer_->MouseUsage(platform::ChartViewer::kMouseZoomIn); }

void ChartFrame::ZoomOut_Click() { viewer_->MouseUsage(platform::ChartViewer::kMouseZoomOut); }

void ChartFrame::Home_Click() {
  viewer_->MouseUsage(platform::ChartViewer::kMouseDefault);
  viewer_->MousePointer(1);
}

// The differences are taken as 16-bit integers, as the bars' own numbers are.
void ChartFrame::HScrollbar_Scroll() {
  const platform::ScrollBar& bar = *HScrollbar_;
  const double span = Variant(bar.Max() - bar.Min()).toInt16();
  viewer_->ViewPortLeft(Variant(bar.Value() - bar.Min()).toInt16() / span *
                        (1 - viewer_->ViewPortWidth()));
  viewer_->updateViewPort(true, false);
}

void ChartFrame::VScrollbar_Scroll() {
  const platform::ScrollBar& bar = *VScrollbar_;
  const double span = Variant(bar.Max() - bar.Min()).toInt16();
  viewer_->ViewPortTop(Variant(bar.Value() - bar.Min()).toInt16() / span *
                       (1 - viewer_->ViewPortHeight()));
  viewer_->updateViewPort(true, false);
}

void ChartFrame::showChildren(bool visible) {
  viewer_->Visible(visible);
  HandScroll_->Visible(visible);
  Home_->Visible(visible);
  zoomIn_->Visible(visible);
  ZoomOut_->Visible(visible);
}

std::pair<double, double> ChartFrame::visibleRange(double axisMin, double axisMax) {
  const double span = checkedSub(axisMax, axisMin);
  const double top = viewer_->ViewPortTop(), height = viewer_->ViewPortHeight();
  return {checkedSub(axisMax, checkedMul(checkedAdd(top, height), span)),
          checkedSub(axisMax, checkedMul(top, span))};
}

void ChartFrame::handOver(platform::chart::XYPlot& chart) {
  viewer_->Picture(nullptr);
  viewer_->Picture(platform::PictureFromBytes(chart.makeChart2(2)));
}

double chartNow(platform::chart::ChartApi& api) {
  const platform::LocalTime now = platform::backend().clock().now();
  const auto part = [](int32_t value) { return Variant(static_cast<int16_t>(value)); };
  const auto second = static_cast<int32_t>(std::floor(now.second));
  return api.chartTime(part(now.year), part(now.month), part(now.day), part(now.hour),
                       part(now.minute), part(second))
             .toDouble() +
         second / 1000.0 / 1000.0;
}

SampleRing::SampleRing(size_t slots) : slots_(std::max<size_t>(slots, 1), 1.7e308) {}

std::vector<double> SampleRing::ordered() const {
  std::vector<double> out;
  out.reserve(slots_.size());
  out.insert(out.end(), slots_.begin() + static_cast<std::ptrdiff_t>(head_), slots_.end());
  out.insert(out.end(), slots_.begin(), slots_.begin() + static_cast<std::ptrdiff_t>(head_));
  return out;
}

SampleStore::SampleStore(size_t slots, size_t series)
    : times_(slots), series_(series, SampleRing(slots)) {}

void SampleStore::shiftData(double time, std::span<const double> values) {
  times_.shiftData(time);
  for (size_t s = 0; s < series_.size(); ++s) {
    series_[s].shiftData(s < values.size() ? values[s] : 1.7e308);
  }
}

bool IsNotANumberAsGeneralNumber(const Variant& value) {
  const std::string text = toLowerAscii(formatGeneralNumber(value));
  return text.find("nan") != std::string::npos || text.find('#') != std::string::npos;
}

void TimeWindow::follow(double newest, double width) {
  constexpr double kNoValue = 1.7e308;
  if (!isSet() && newest != kNoValue) {
    viewStart = newest;
    viewEnd = newest + width;
  }
  if (newest > viewEnd) {
    viewStart = viewStart + (viewEnd - viewStart) / 10;
    viewEnd = viewStart + width;
  }
}

}  // namespace tessaline
