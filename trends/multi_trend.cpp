#include "tessaline/trends/multi_trend.h"

#include <optional>

#include "tessaline/frame/logger.h"
#include "tessaline/values/text.h"

namespace tessaline {

namespace {
constexpr double kNoValue = 1.7e308;
constexpr size_t kSamples = 1500;
constexpr double kWindow = 3600;

Variant asValues(const std::vector<double>& numbers) {
  VariantArray array;
  array.items.assign(numbers.begin(), numbers.end());
  return Variant(std::move(array));
}

bool beyondPlainLabels(double value) { return value > 99999 || value < -99999; }
}  // namespace

std::shared_ptr<DTMMultiTrendControl> DTMMultiTrendControl::create() {
  return std::shared_ptr<DTMMultiTrendControl>(new DTMMultiTrendControl());
}

DTMMultiTrendControl::DTMMultiTrendControl()
    : HostFedChart("DTMMultiTrendControl", "MultiChartViewer", 11070, 7260),
      times_(kSamples),
      series_(kLines, SampleRing(kSamples)),
      nextDataTime_(chartNow(api())) {
  ChartFrame& f = *frame_;
  f.HandScroll().events.Click = [this] { HandScroll_Click(); };
  f.zoomIn().events.Click = [this] { zoomIn_Click(); };
  f.ZoomOut().events.Click = [this] { ZoomOut_Click(); };
  f.Home().events.Click = [this] { Home_Click(); };
  f.HScrollbar().events.Scroll = [&f] { f.HScrollbar_Scroll(); };
  f.HScrollbar().events.Change = [&f] { f.HScrollbar_Scroll(); };
  f.VScrollbar().events.Scroll = [&f] { f.VScrollbar_Scroll(); };
  f.viewer().viewerEvents.ViewPortChanged = [this](bool, bool) { createChart(); };
  f.viewer().viewerEvents.MouseDown = [this](int32_t, int32_t, float, float) {
    MultiChartViewer_MouseDown();
  };
  window_->events.Resize = [this] { Resize(); };
}

void DTMMultiTrendControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeChartHost(genericDtm, "DtmDynamicTrend");
}

void DTMMultiTrendControl::Resize() {
  logger_->Error("UserControl_Resize called");
  if (window_->Height() < 3610) window_->Height(3610);
  if (window_->Width() < 6630) window_->Width(6630);
  logger_->Error("UserControl_Resize end" + std::to_string(window_->Width()) + " " +
                 std::to_string(window_->Height()));
}

// ---- The definition --------------------------------------------------------------------

void DTMMultiTrendControl::IDtmTrendControl_TrendDataDef(Ref<Object> node) {
  definition_ = asNode(node);
  ReadTrendNode();
}

void DTMMultiTrendControl::ReadTrendNode() {
  if (!definition_) {
    logger_->Error("TrendNode is null for trend" + name_);
    return;
  }
  guarded(*logger_, "Error on Trend ReadTrendNode", [&] {
    lowerRangeItem_ = required(definition_, "lowerRange");
    upperRangeItem_ = required(definition_, "upperRange");
    showLegend_ = required(definition_, "isLegend") == "true";
    if (const Ref<platform::XmlNode> trend = definition_->selectSingleNode("trendSource")) {
      trendSource_.Color = colourText(required(trend, "color"));
      trendSource_.Label = required(trend, "label");
      trendSource_.ItemValue = Variant(required(trend, "itemName"));
    }
    readBand(definition_, "rangeSource", bands_[0]);
    readBand(definition_, "limitSource", bands_[1]);
    readBand(definition_, "alertSource", bands_[2]);
  });
}

// A line is dropped when its condition is a text that the host finds false; an empty condition
// is still put to the host, and its answer not heeded.
void DTMMultiTrendControl::readBand(const Ref<platform::XmlNode>& node, const char* child,
                                    RangeSource& band) {
  const Ref<platform::XmlNode> source = node->selectSingleNode(child);
  if (!source) return;
  const auto kept = [&](const char* attribute) {
    const Ref<platform::XmlNode> condition = source->attributes()->getNamedItem(attribute);
    if (!condition) return true;
    const std::string text(trimSpaces(condition->nodeValue().toText()));
    const bool holds = host_->EvaluateCondition(text);
    return text.empty() || holds;
  };
  const bool high = kept("itemHiincludeIf");
  const bool low = kept("itemLowincludeIf");
  if (!high && !low) return;
  band.Color = colourText(required(source, "color"));
  band.Label = required(source, "label");
  if (high) band.ItemNameHigh = required(source, "itemNameHi");
  if (low) band.ItemNameLow = required(source, "itemNameLow");
}

// ---- Values -------------------------------------------------------------------------------

void DTMMultiTrendControl::IDtmTrendControl_ItemValue(const Variant& value) {
  values_[kItem] = value;
  frame_->DataRateTimer().Enabled(true);
  frame_->viewer().updateViewPort(true, false);
}

// A band value is a sample in waiting, not a setting of the form: nothing is marked changed.
void DTMMultiTrendControl::IDtmTrendControl_RangeHighValue(const Variant& value) {
  values_[kRangeHigh] = value;
}
void DTMMultiTrendControl::IDtmTrendControl_RangeLowValue(const Variant& value) {
  values_[kRangeLow] = value;
}
void DTMMultiTrendControl::IDtmTrendControl_AlertHighValue(const Variant& value) {
  values_[kAlertHigh] = value;
}
void DTMMultiTrendControl::IDtmTrendControl_AlertLowValue(const Variant& value) {
  values_[kAlertLow] = value;
}
void DTMMultiTrendControl::IDtmTrendControl_LimitHighValue(const Variant& value) {
  values_[kLimitHigh] = value;
}
void DTMMultiTrendControl::IDtmTrendControl_LimitLowValue(const Variant& value) {
  values_[kLimitLow] = value;
}

void DTMMultiTrendControl::IDtmTrendControl_XLabel(const std::string& value) {
  xLabel_ = value;
  PropertyChanged("IDtmTrendControl_XLabel");
}

void DTMMultiTrendControl::IDtmTrendControl_YLabel(const std::string& value) {
  yLabel_ = value;
  PropertyChanged("IDtmTrendControl_YLabel");
}

Variant DTMMultiTrendControl::IDtmDataSubscriptionControl_SubscriptionItems() {
  Variant items;
  guarded(*logger_, "Error on MultiTrend IDtmDataSubscriptionControl_SubscriptionItems", [&] {
    VariantArray list;
    list.items = {Variant(lowerRangeItem_), Variant(upperRangeItem_), Variant(std::string())};
    items = Variant(std::move(list));
  });
  return items;
}

void DTMMultiTrendControl::IDtmDataSubscriptionControl_UpdateSubscriptionValues(
    const std::string& name, const Variant& value) {
  guarded(*logger_, "Error on MultiTrend IDtmDataSubscriptionControl_UpdateSubscriptionValues",
          [&] {
            if (name == lowerRangeItem_) {
              lowerRangeValue_ = value.toDouble();
            } else if (name == upperRangeItem_) {
              upperRangeValue_ = value.toDouble();
            }
          });
}

// ---- Samples ------------------------------------------------------------------------------

// A band's series starts to move with the first value the host gives it; the item's moves with
// every sample, an empty value as 0. Every value is read as a number before anything moves, so
// that one that is none fails the drawing without leaving the series a moment apart.
void DTMMultiTrendControl::appendSample() {
  std::array<std::optional<double>, kLines> numbers;
  for (Line line : {kAlertHigh, kAlertLow, kLimitHigh, kLimitLow, kRangeHigh, kRangeLow}) {
    if (!values_[line].isEmpty()) numbers[line] = values_[line].toDouble();
  }
  numbers[kItem] = values_[kItem].toDouble();
  times_.shiftData(nextDataTime_);
  for (size_t line = 0; line < kLines; ++line) {
    if (numbers[line]) series_[line].shiftData(*numbers[line]);
  }
}

void DTMMultiTrendControl::catchUp() {
  const double now = chartNow(api());
  const double step = frame_->DataRateTimer().Interval() / 100.0;
  while (nextDataTime_ <= now && step > 0) {
    appendSample();
    nextDataTime_ += step;
  }
}

// ---- Drawing ------------------------------------------------------------------------------

void DTMMultiTrendControl::createChart(platform::ChartViewer& viewer) {
  guarded(*logger_, "Error on createChart ", [&] {
    const double w = window_->Width(), h = window_->Height();
    auto chart = api().XYChart(w / 15, h / 15, 0xF4F4F4, 0, 0);
    chart->setPlotArea(95, 80, w / 15 * 0.73, h / 15 * 0.59, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
    chart->setClipping(0);
    chart
        ->addTitle(xLabel_, "timesbi.ttf", 15, -65534, static_cast<int32_t>(0xFF000000),
                   static_cast<int32_t>(0xFF000000))
        ->setBackground(0xDDDDDD, 0, api().glassEffect(3, 8, 5));
    if (showLegend_) {
      auto legend = chart->addLegend2(100, 26, 4, "arialbd.ttf", 9);
      legend->setBackground(api().Transparent(), api().Transparent(), 0);
      legend->setWidth(540);
    }
    auto x = chart->xAxis();
    auto y = chart->yAxis();
    y->setTitle(yLabel_, "arialbd.ttf", 10, -65534);
    x->setTickDensity(75, 15);
    x->setWidth(0);
    y->setWidth(0);
    catchUp();
    const double newest = times_.newest();
    view_.follow(newest, kWindow);
    if (newest != kNoValue) {
      x->setDateScale(view_.viewStart, view_.viewEnd, (view_.viewEnd - view_.viewStart) / 10, 0);
      x->setLabelFormat("{value|hh:nn:ss}");
      auto layer = chart->addLineLayer2(0, 0);
      layer->setLineWidth(3);
      layer->addDataSet(asValues(series_[kItem].ordered()), trendSource_.Color, trendSource_.Label);
      layer->setXData(asValues(times_.ordered()));
      x->setLabelStyle("SSERIFE.FON", 8, 0, 20);
      addBand(*layer, bands_[0], kRangeHigh, kRangeLow);
      addBand(*layer, bands_[1], kLimitHigh, kLimitLow);
      addBand(*layer, bands_[2], kAlertHigh, kAlertLow);
    }
    scaleYAxis(*chart, viewer);
    // Both ends are always read, also when the first is beyond already.
    const bool maxBeyond = beyondPlainLabels(y->getMaxValue());
    const bool minBeyond = beyondPlainLabels(y->getMinValue());
    if (maxBeyond || minBeyond) y->setLabelFormat("{value|e5}");
    frame_->handOver(*chart);
  });
}

// Both lines of a band share its colour and one legend entry, under the low line's name.
void DTMMultiTrendControl::addBand(platform::chart::Layer& layer, const RangeSource& band,
                                   Line high, Line low) {
  const bool hasHigh = !band.ItemNameHigh.empty(), hasLow = !band.ItemNameLow.empty();
  if (hasHigh && hasLow) {
    layer.addDataSet(asValues(series_[high].ordered()), band.Color, "");
    layer.addDataSet(asValues(series_[low].ordered()), band.Color, band.Label);
  } else if (hasHigh) {
    layer.addDataSet(asValues(series_[high].ordered()), band.Color, band.Label);
  } else if (hasLow) {
    layer.addDataSet(asValues(series_[low].ordered()), band.Color, band.Label);
  }
}

// The plain pointer shows ten divisions between the two device limits; in a zoom or scroll
// mode the first usable scale is the full range, and the viewport picks a part of it.
void DTMMultiTrendControl::scaleYAxis(platform::chart::XYPlot& chart,
                                      platform::ChartViewer& viewer) {
  auto y = chart.yAxis();
  const bool takeRange = axisMin_ == axisMax_ || viewer.ZoomDirection() == 0;
  if (viewer.MouseUsage() == 0) {
    y->setLinearScale(lowerRangeValue_, upperRangeValue_,
                      checkedSub(upperRangeValue_, lowerRangeValue_) / 10, 0);
    if (takeRange) {
      axisMin_ = y->getMinValue();
      axisMax_ = y->getMaxValue();
    }
  } else if (takeRange) {
    chart.layout();
    axisMin_ = y->getMinValue();
    axisMax_ = y->getMaxValue();
  } else {
    const auto [lower, upper] = frame_->visibleRange(axisMin_, axisMax_);
    y->setLinearScale(lower, upper, 0, 0);
    y->setRounding(false, false);
    if (beyondPlainLabels(upper) || beyondPlainLabels(lower)) y->setLabelFormat("{value|e5}");
  }
}

// ---- Pointer modes ----------------------------------------------------------------------

void DTMMultiTrendControl::HandScroll_Click() {
  handArmed_ = true;
  zoomOutArmed_ = false;
  zoomInArmed_ = false;
  frame_->viewer().MousePointer(50);
}

void DTMMultiTrendControl::zoomIn_Click() {
  zoomOutArmed_ = false;
  zoomInArmed_ = true;
  handArmed_ = false;
  frame_->viewer().MousePointer(51);
}

// Zooming out is only reachable after a zoom in; before it, only the pointer changes.
void DTMMultiTrendControl::ZoomOut_Click() {
  zoomOutArmed_ = true;
  zoomInArmed_ = false;
  handArmed_ = false;
  platform::ChartViewer& viewer = frame_->viewer();
  viewer.MousePointer(53);
  if (hasZoomedIn_) {
    viewer.MousePointer(52);
    viewer.MouseUsage(platform::ChartViewer::kMouseZoomOut);
  }
}

void DTMMultiTrendControl::Home_Click() {
  handArmed_ = false;
  platform::ChartViewer& viewer = frame_->viewer();
  viewer.MousePointer(1);
  viewer.MouseUsage(platform::ChartViewer::kMouseDefault);
  zoomOutArmed_ = false;
  hasZoomedIn_ = false;
  zoomInArmed_ = false;
  recentreVerticalView();
}

void DTMMultiTrendControl::MultiChartViewer_MouseDown() {
  platform::ChartViewer& viewer = frame_->viewer();
  if (zoomInArmed_) {
    viewer.MouseUsage(platform::ChartViewer::kMouseZoomIn);
    hasZoomedIn_ = true;
  } else if (zoomOutArmed_) {
    if (hasZoomedIn_) viewer.MouseUsage(platform::ChartViewer::kMouseZoomOut);
  } else if (handArmed_) {
    viewer.MouseUsage(platform::ChartViewer::kMouseScroll);
    viewer.ScrollDirection(platform::ChartViewer::kDirectionBoth);
    viewer.ZoomDirection(platform::ChartViewer::kDirectionBoth);
    zoomOutArmed_ = false;
    zoomInArmed_ = false;
  }
  createChart(viewer);
}

// The vertical zoom undone around the middle of the visible part: the height made as large as
// the width's zoom allows, at most the whole range.
void DTMMultiTrendControl::recentreVerticalView() {
  platform::ChartViewer& viewer = frame_->viewer();
  const double middle = viewer.ViewPortHeight() / 2 + viewer.ViewPortTop();
  const double ratio = viewer.ViewPortWidth() / viewer.ViewPortHeight();
  viewer.ViewPortHeight(ratio > 1 ? 1 : 1 / ratio);
  viewer.ViewPortTop(middle - viewer.ViewPortHeight() / 2);
  viewer.updateViewPort(true, false);
}

void DTMMultiTrendControl::describeMembers(MemberTableBuilder<DTMMultiTrendControl>& table) {
  addChartMembers(table);
  using Self = DTMMultiTrendControl;
  table.TESSALINE_PROPERTY(Ref<Object>, IDtmTrendControl_TrendDataDef)
      .TESSALINE_PROPERTY(Variant, IDtmTrendControl_ItemValue)
      .TESSALINE_PROPERTY(Variant, IDtmTrendControl_RangeHighValue)
      .TESSALINE_PROPERTY(Variant, IDtmTrendControl_RangeLowValue)
      .TESSALINE_PROPERTY(Variant, IDtmTrendControl_AlertHighValue)
      .TESSALINE_PROPERTY(Variant, IDtmTrendControl_AlertLowValue)
      .TESSALINE_PROPERTY(Variant, IDtmTrendControl_LimitHighValue)
      .TESSALINE_PROPERTY(Variant, IDtmTrendControl_LimitLowValue)
      .TESSALINE_PROPERTY(std::string, IDtmTrendControl_XLabel)
      .TESSALINE_PROPERTY(std::string, IDtmTrendControl_YLabel)
      .TESSALINE_PROPERTY(std::string, IDtmTrendControl_LowerRange)
      .TESSALINE_PROPERTY(std::string, IDtmTrendControl_UpperRange)
      .TESSALINE_PROPERTY(Variant, IDtmDataSubscriptionControl_SubscriptionItems)
      .procedure("IDtmDataSubscriptionControl_UpdateSubscriptionValues",
                 &Self::IDtmDataSubscriptionControl_UpdateSubscriptionValues);
}

}  // namespace tessaline
