#include "tessaline/trends/waveform.h"

#include "tessaline/frame/logger.h"
#include "tessaline/values/vb_error.h"

namespace tessaline {

namespace {
// The greatest or the smallest element, the scan starting with the element at index 0 and
// comparing the values as the language does.
Variant extreme(const VariantArray& values, int wanted) {
  if (values.items.empty()) throw VbError(err::SubscriptOutOfRange);
  const Variant* best = &values.items.front();
  for (const Variant& value : values.items) {
    const double *number = value.ifDouble(), *bestNumber = best->ifDouble();
    const bool beyond = number && bestNumber
                            ? (wanted > 0 ? *number > *bestNumber : *number < *bestNumber)
                            : compare(value, *best) == wanted;
    if (beyond) best = &value;
  }
  return *best;
}
}  // namespace

std::shared_ptr<DTMWaveFormControl> DTMWaveFormControl::create() {
  return std::shared_ptr<DTMWaveFormControl>(new DTMWaveFormControl());
}

DTMWaveFormControl::DTMWaveFormControl()
    : HostFedChart("DTMWaveFormControl", "ChartViewer1", 11130, 7305) {
  ChartFrame& f = *frame_;
  f.HandScroll().events.Click = [&f] { f.HandScroll_Click(); };
  f.zoomIn().events.Click = [&f] { f.zoomIn_Click(); };
  f.ZoomOut().events.Click = [&f] { f.ZoomOut_Click(); };
  f.Home().events.Click = [this] { Home_Click(); };
  f.HScrollbar().events.Scroll = [&f] { f.HScrollbar_Scroll(); };
  f.HScrollbar().events.Change = [&f] { f.HScrollbar_Scroll(); };
  f.VScrollbar().events.Scroll = [&f] { f.VScrollbar_Scroll(); };
  f.viewer().viewerEvents.ViewPortChanged = [this](bool, bool) { IDtmWaveFormControl_DrawChart(); };
}

DTMWaveFormControl::~DTMWaveFormControl() { frame_->viewer().Picture(nullptr); }

void DTMWaveFormControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeChartHost(genericDtm, "DTMWaveFormControl");
}

void DTMWaveFormControl::IDtmWaveFormControl_TrendDataDef(Ref<Object> node) {
  definition_ = asNode(node);
  ReadTrendNode();
}

// All four attributes are required, read in this order; the legend flag is kept, though no
// legend is drawn.
void DTMWaveFormControl::ReadTrendNode() {
  if (!definition_) {
    logger_->Error("TrendNode is null for trend" + name_);
    return;
  }
  guarded(*logger_, "Error on Trend ReadTrendNode", [&] {
    lowerRange_ = required(definition_, "lowerRange");
    upperRange_ = required(definition_, "upperRange");
    lineColor_ = colourText(required(definition_, "lineColor"));
    showLegend_ = required(definition_, "isLegend") == "true";
  });
}

void DTMWaveFormControl::IDtmWaveFormControl_XLabel(const std::string& value) {
  xLabel_ = value;
  PropertyChanged("IDtmWaveFormControl_XLabel");
}

void DTMWaveFormControl::IDtmWaveFormControl_YLabel(const std::string& value) {
  yLabel_ = value;
  PropertyChanged("IDtmWaveFormControl_YLabel");
}

void DTMWaveFormControl::IDtmWaveFormControl_title(const std::string& value) {
  title_ = value;
  PropertyChanged("IDtmWaveFormControl_title");
}

// The arrays are values that nobody changes: the copy shares them.
void DTMWaveFormControl::IDtmWaveFormControl_SetXAxisValues(const Variant& values) {
  values.toArray();
  xValues_ = values;
}

void DTMWaveFormControl::IDtmWaveFormControl_SetYAxisValues(const Variant& values) {
  values.toArray();
  yValues_ = values;
}

void DTMWaveFormControl::IDtmWaveFormControl_DrawChart() {
  guarded(*logger_, "Error on Trend IDtmWaveFormControl_DrawChart", [&] {
    const Variant ys = yValues_, xs = xValues_;
    const double w = window_->Width(), h = window_->Height();
    auto chart = api().XYChart(w / 15, h / 15, 0xF4F4F4, 0, 0);
    chart->setPlotArea(90, h / 94, w / 20, h / 24, 0xFFFFFF, -1, -1, 0xCCCCCC,
                       static_cast<int32_t>(0xFF000000));
    chart->setClipping(0);
    chart
        ->addTitle(title_, "timesbi.ttf", 15, -65534, static_cast<int32_t>(0xFF000000),
                   static_cast<int32_t>(0xFF000000))
        ->setBackground(0xDDDDDD, 0, api().glassEffect(3, 8, 5));
    chart->addLineLayer(ys, lineColor_, "", 0)->setXData(xs);
    yMax_ = extreme(ys.toArray(), 1).toDouble();
    yMin_ = extreme(ys.toArray(), -1).toDouble();
    chart->yAxis()->setTitle(yLabel_, "arialbd.ttf", 10, -65534);
    chart->xAxis()->setTitle(xLabel_, "arialbd.ttf", 10, -65534);
    scaleAxes(*chart);
    frame_->handOver(*chart);
  });
}

// The plain pointer shows all: x between the host's limits, y between the data's ends. In a
// zoom or scroll mode the chart's own first scale becomes the full range, and then the
// viewport picks the part shown on both axes.
void DTMWaveFormControl::scaleAxes(platform::chart::XYPlot& chart) {
  platform::ChartViewer& viewer = frame_->viewer();
  auto x = chart.xAxis();
  auto y = chart.yAxis();
  const bool takeRange = xMin_ == xMax_ || viewer.ZoomDirection() == 0;
  if (viewer.MouseUsage() == 0) {
    x->setLinearScale(xLower_, xUpper_, xUpper_.toDouble() / 10, 0);
    y->setLinearScale(yMin_, yMax_, yMax_ / 10, 0);
    zoomedOutFlag_ = false;
  } else if (takeRange) {
    chart.layout();
    yMin_ = y->getMinValue();
    yMax_ = y->getMaxValue();
    xMin_ = x->getMinValue();
    xMax_ = x->getMaxValue();
  } else {
    const auto [lower, upper] = frame_->visibleRange(yMin_, yMax_);
    const double left = viewer.ViewPortLeft(), width = viewer.ViewPortWidth();
    const double xSpan = checkedSub(xMax_, xMin_);
    const double xLower = checkedAdd(xMin_, checkedMul(left, xSpan));
    const double xUpper = checkedAdd(xMin_, checkedMul(checkedAdd(left, width), xSpan));
    // Zoomed out all the way: the next drawing shows all.
    if (zoomedOutFlag_ && viewer.ViewPortTop() == 0) viewer.MouseUsage(0);
    y->setLinearScale(lower, upper, 0, 0);
    y->setRounding(false, false);
    x->setLinearScale(xLower, xUpper, 0, 0);
    x->setRounding(false, false);
    if (viewer.MouseUsage() == platform::ChartViewer::kMouseZoomOut) zoomedOutFlag_ = true;
  }
}

void DTMWaveFormControl::Home_Click() {
  guarded(*logger_, "Error on Home_Click", [&] {
    platform::ChartViewer& viewer = frame_->viewer();
    viewer.MouseUsage(platform::ChartViewer::kMouseDefault);
    viewer.MousePointer(1);
    if (!xValues_.isEmpty() && !yValues_.isEmpty()) viewer.updateViewPort(true, false);
  });
}

void DTMWaveFormControl::describeMembers(MemberTableBuilder<DTMWaveFormControl>& table) {
  addChartMembers(table);
  using Self = DTMWaveFormControl;
  table.TESSALINE_PROPERTY(Ref<Object>, IDtmWaveFormControl_TrendDataDef)
      .TESSALINE_PROPERTY(std::string, IDtmWaveFormControl_XLabel)
      .TESSALINE_PROPERTY(std::string, IDtmWaveFormControl_YLabel)
      .TESSALINE_PROPERTY(std::string, IDtmWaveFormControl_title)
      .writeOnly("IDtmWaveFormControl_SetXAxisValues", &Self::IDtmWaveFormControl_SetXAxisValues)
      .writeOnly("IDtmWaveFormControl_SetYAxisValues", &Self::IDtmWaveFormControl_SetYAxisValues)
      .writeOnly("IDtmWaveFormControl_SetXLowerValue", &Self::IDtmWaveFormControl_SetXLowerValue)
      .writeOnly("IDtmWaveFormControl_SetXUpperValue", &Self::IDtmWaveFormControl_SetXUpperValue)
      .writeOnly("IDtmWaveFormControl_SetXUnit", &Self::IDtmWaveFormControl_SetXUnit)
      .writeOnly("IDtmWaveFormControl_SetYUnit", &Self::IDtmWaveFormControl_SetYUnit)
      .procedure("IDtmWaveFormControl_DrawChart", &Self::IDtmWaveFormControl_DrawChart);
}

}  // namespace tessaline
