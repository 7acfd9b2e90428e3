#include "tessaline/trends/dynamic_trend.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "tessaline/frame/logger.h"
#include "tessaline/values/locale.h"

namespace tessaline {

namespace {
constexpr double kNoValue = 1.7e308;
constexpr size_t kSamples = 2500;
constexpr double kWindow = 600;

// Format(value, "0.00"): two decimals with the locale's separator.
std::string twoDecimals(double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.2f", value);
  std::string text = buffer;
  const size_t point = text.find('.');
  if (point != std::string::npos) text.replace(point, 1, locale().decimalSeparator());
  return text;
}
}  // namespace

std::shared_ptr<DTMDynamicTrendControl> DTMDynamicTrendControl::create() {
  return std::shared_ptr<DTMDynamicTrendControl>(new DTMDynamicTrendControl());
}

DTMDynamicTrendControl::DTMDynamicTrendControl()
    : SingleItemTrend("DTMDynamicTrendControl", kSamples, kNoValue) {
  axisMin_ = Variant(0.0);
  axisMax_ = Variant(0.0);
  window_->Width(10620);
  window_->Height(5745);
  frame_->DataRateTimer().events.Timer = [this] { DataRateTimer_Timer(); };
  frame_->ChartUpdateTimer().events.Timer = [this] {
    frame_->viewer().updateViewPort(true, false);
  };
}

void DTMDynamicTrendControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DtmDynamicTrend");
}

void DTMDynamicTrendControl::IDTMDataControl_DataItemDef(Ref<Object> node) {
  dataItemNode_ = node;
  readDataItem(node, item_, kFirstTenAttributes);
  // Only the tooltip's building catches its own failures; the rest goes to the caller, and the
  // change is then not announced.
  tooltipText_ = LocalizeText(item_.Description);
  // One tool window per control: the one of an earlier dataItem goes first.
  tooltip_.destroy();
  const platform::WindowHandle viewer[] = {frame_->viewer().hWnd()};
  tooltip_.create(*logger_, window_->hWnd(), viewer, tooltipText_);
  PropertyChanged("IDTMDataControl_DataItemDef");
}

void DTMDynamicTrendControl::IDTMDataControl_Value(const Variant& value) {
  value_ = value;
  PropertyChanged("IDTMDataControl_Value");
}

void DTMDynamicTrendControl::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on Dynamic Trend IDTMDataControl_SetDeviceValue", [&] {
    IDTMDataControl_Value(value);
    frame_->DataRateTimer().Enabled(true);
    frame_->viewer().updateViewPort(true, false);
  });
}

Variant DTMDynamicTrendControl::IDtmDataSubscriptionControl_SubscriptionItems() {
  VariantArray list;
  list.items = {Variant(unitItem_), Variant(name_)};
  return Variant(std::move(list));
}

void DTMDynamicTrendControl::IDtmDataSubscriptionControl_UpdateSubscriptionValues(
    const std::string& name, const Variant& value) {
  guarded(*logger_,
          "Error on DynamicTrend Control IDtmDataSubscriptionControl_UpdateSubscriptionValues",
          [&] {
            if (name == unitItem_) {
              unitValue_ = value;
            } else if (name == name_) {
              IDTMDataControl_SetDeviceValue(value);
            }
          });
}

// Samples come in bursts of four, since the clock moves in whole seconds.
void DTMDynamicTrendControl::DataRateTimer_Timer() {
  const double now = chartNow(api());
  const double step = frame_->DataRateTimer().Interval() / 1000.0;
  while (nextDataTime_ < now && step > 0) {
    takeSample(nextDataTime_);
    nextDataTime_ += step;
  }
}

std::string DTMDynamicTrendControl::UnitText() {
  bool found = false;
  std::string text = unitEntryText(found);
  if (!found && !unitValue_.toText().empty()) text = "Unknown Units";
  return text;
}

void DTMDynamicTrendControl::createChart() {
  guarded(*logger_, "Error on createChart ", [&] {
    auto chart = api().XYChart(chartWidth(), chartHeight(), 0xF4F4F4, 0, 0);
    // The range reaches 15 below and above every value a drawing has seen.
    const Variant v = IDTMDataControl_Value();
    if (!IsNotANumber(v)) {
      const double value = v.toDouble();
      if (value - 15 < axisMin()) axisMin_ = Variant(value - 15);
      if (value + 15 > axisMax()) axisMax_ = Variant(value + 15);
    }
    auto [lower, upper] = frame_->visibleRange(axisMin(), axisMax());
    const float textWidth = static_cast<float>(
        std::max(this->textWidth(twoDecimals(lower)), this->textWidth(twoDecimals(upper))));
    // The margin stays in single precision, as the width it comes from.
    drawFrame(*chart, Variant(textWidth + 35.0f), textWidth, UnitText());
    auto x = chart->xAxis();
    auto y = chart->yAxis();
    y->setLabelFormat("{value|P4}");
    x->setTickDensity(75, 15);
    x->setWidth(2);
    y->setWidth(2);
    const double newest = store_.newestTime();
    view_.follow(newest, kWindow);
    if (newest != kNoValue) drawLine(*chart, "<*bgColor=FFCCCC*> {value|2} ");
    if (!takeAutomaticRange(*chart)) {
      std::tie(lower, upper) = frame_->visibleRange(axisMin(), axisMax());
      if (frame_->viewer().MouseUsage() != 0) {
        y->setLinearScale(lower, upper, 0, 0);
      } else {
        y->setLinearScale(axisMin_, axisMax_, 0, 0);
      }
      y->setRounding(true, false);
    }
    frame_->handOver(*chart);
  });
}

void DTMDynamicTrendControl::describeMembers(MemberTableBuilder<DTMDynamicTrendControl>& table) {
  addTrendMembers(table);
}

}  // namespace tessaline
