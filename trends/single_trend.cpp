#include "tessaline/trends/single_trend.h"

#include <cmath>

#include "tessaline/frame/data_type_controller.h"
#include "tessaline/frame/logger.h"

namespace tessaline {

namespace {
constexpr double kNoValue = 1.7e308;

Variant asValues(const std::vector<double>& numbers) {
  VariantArray array;
  array.items.assign(numbers.begin(), numbers.end());
  return Variant(std::move(array));
}
}  // namespace

SingleItemTrend::SingleItemTrend(const std::string& className, size_t samples, double unset)
    : DataMembers(className, nullptr), store_(samples, 1), view_{unset, unset, unset} {
  nextDataTime_ = chartNow(api());
  active_ = true;
  canSubscribe_ = true;
  frame_ = std::make_unique<ChartFrame>(*window_, kSingleTrendLayout, "ChartViewer1");
  ChartFrame& f = *frame_;
  f.HandScroll().events.Click = [&f] { f.HandScroll_Click(); };
  f.zoomIn().events.Click = [&f] { f.zoomIn_Click(); };
  f.ZoomOut().events.Click = [&f] { f.ZoomOut_Click(); };
  f.Home().events.Click = [&f] { f.Home_Click(); };
  f.HScrollbar().events.Scroll = [&f] { f.HScrollbar_Scroll(); };
  f.HScrollbar().events.Change = [&f] { f.HScrollbar_Scroll(); };
  f.VScrollbar().events.Scroll = [&f] { f.VScrollbar_Scroll(); };
  f.VScrollbar().events.Change = [&f] { f.VScrollbar_Scroll(); };
  f.viewer().viewerEvents.ViewPortChanged = [this](bool, bool) { createChart(); };
  window_->events.Resize = [this] { Resize(); };
}

SingleItemTrend::~SingleItemTrend() { frame_->viewer().Picture(nullptr); }

// The control keeps at least 6630 by 3610 twips, each dimension on its own; no child moves.
void SingleItemTrend::Resize() {
  if (window_->Height() < 3610) window_->Height(3610);
  if (window_->Width() < 6630) window_->Width(6630);
}

void SingleItemTrend::IDtmControl_Enable(bool value) {
  enable_ = value;
  PropertyChanged("IDtmControl_Enable");
}

void SingleItemTrend::IDtmControl_Visible(bool value) {
  visible_ = value;
  frame_->showChildren(value);
  PropertyChanged("IDtmControl_Visible");
}

void SingleItemTrend::IDTMDataControl_DeviceDataDef(Ref<Object> node) {
  deviceDataNode_ = node;
  PropertyChanged("IDTMDataControl_DeviceDataDef");
}

Variant SingleItemTrend::IDTMDataControl_Value() {
  return DataTypeController().MatchType(value_, std::string());
}

void SingleItemTrend::IDTMDataControl_Caption(const std::string& value) {
  caption_ = value;
  PropertyChanged("IDTMDataControl_Caption");
}

void SingleItemTrend::IDTMEnumeration_EnumDataDef(Ref<Object> node) {
  enumNode_ = node;
  if (auto table = readEnumeration(node, IncludeIf::Ignored, host_)) units_ = std::move(*table);
}

void SingleItemTrend::IDTMEnumeration1_UpdateEnumString(const std::string& code,
                                                        const std::string& Label) {
  for (EnumData& unit : units_.usedSlots()) {
    if (unit.code == code) unit.Local = Label;
  }
}

void SingleItemTrend::DTMDataGaugeControl_Unit(const std::string& value) {
  unitItem_ = value;
  PropertyChanged("DTMDataGaugeControl_Unit");
}

double SingleItemTrend::yMajorTick() {
  if (majorTick_ == 0) majorTick_ = (axisMax() - axisMin()) / 10;
  return majorTick_;
}

void SingleItemTrend::restoreName(SingleItemTrend& trend, const Variant& name) {
  trend.IDTMDataControl_Name(name.toText());
}

platform::chart::ChartApi& SingleItemTrend::api() {
  if (!api_) api_ = platform::chart::createChartApi();
  return *api_;
}

double SingleItemTrend::textWidth(const std::string& text) {
  int32_t width = 0, height = 0;
  platform::backend().textMeasure().measure(text, window_->AmbientFont()->face(), width, height);
  return width;
}

std::string SingleItemTrend::unitEntryText(bool& found) {
  found = false;
  std::string result = unitValue_.toText();
  if (!unitValue_.isNull()) {
    for (const EnumData& unit : units_.usedSlots()) {
      if (unitValue_.toText() == unit.code) {
        result = unit.Local;
        found = true;
      }
    }
  }
  return result;
}

void SingleItemTrend::drawFrame(platform::chart::XYPlot& chart, const Variant& left,
                                double textWidth, const std::string& unitText) {
  const double w = window_->Width(), h = window_->Height();
  chart.setPlotArea(left, h / 94, w / 17 - textWidth, h / 24, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
  chart.setClipping(0);
  chart.addTitle(LocalizeText(caption_), "", 13, 0xFFFFFF, 0x033166,
                 static_cast<int32_t>(0xFF000000));
  chart.yAxis()->setTitle(unitText, "arialbd.ttf", 10, -65534);
}

void SingleItemTrend::drawLine(platform::chart::XYPlot& chart, const std::string& nameFormat) {
  auto x = chart.xAxis();
  x->setDateScale(view_.viewStart, view_.viewEnd, (view_.viewEnd - view_.viewStart) / 10, 0);
  x->setLabelFormat("{value|hh:nn:ss}");
  auto layer = chart.addLineLayer2(0, 0);
  layer->setXData(asValues(store_.times()));
  x->setLabelStyle("SSERIFE.FON", 8, 0, 20);
  layer->addDataSet(asValues(store_.series(0)), 0xFF0000,
                    chart.formatValue(newestSample_, nameFormat));
}

// The store keeps numbers: a sample whose text reads as no number is a gap, as the chart would
// draw it, and the line is named after the gap too. The empty text before the first value is
// such a sample: the drawing goes on to the chart's own scale instead of failing on the name.
void SingleItemTrend::takeSample(double at) {
  const Variant v = IDTMDataControl_Value();
  double sample = kNoValue;
  if (!IsNotANumber(v)) {
    try {
      sample = v.toDouble();
    } catch (const VbError&) {
    }
  }
  newestSample_ = sample == kNoValue ? Variant(kNoValue) : v;
  const double values[] = {sample};
  store_.shiftData(at, values);
}

bool SingleItemTrend::takeAutomaticRange(platform::chart::XYPlot& chart) {
  if (axisMin() != axisMax() && frame_->viewer().ZoomDirection() != 0) return false;
  chart.layout();
  axisMin_ = chart.yAxis()->getMinValue();
  axisMax_ = chart.yAxis()->getMaxValue();
  return true;
}

}  // namespace tessaline
