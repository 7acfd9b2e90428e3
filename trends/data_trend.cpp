#include "tessaline/trends/data_trend.h"

#include <cmath>

#include "tessaline/frame/logger.h"

namespace tessaline {

namespace {
constexpr double kNoValue = 1.7e308;
// Samples kept, and the width of the x window in seconds.
constexpr size_t kSamples = 1500;
constexpr double kWindow = 3600;
}  // namespace

std::shared_ptr<DTMDataTrendControl> DTMDataTrendControl::create() {
  return std::shared_ptr<DTMDataTrendControl>(new DTMDataTrendControl());
}

DTMDataTrendControl::DTMDataTrendControl() : SingleItemTrend("DTMDataTrendControl", kSamples, 0) {
  window_->Width(9855);
  window_->Height(5835);
  // Nothing starts this timer, and its handler is empty here.
  frame_->ChartUpdateTimer().events.Timer = [] {};
}

void DTMDataTrendControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  takeHost(genericDtm, "DTMDataTrendControl");
  rangeInitialized_ = false;
  previousLower_ = Variant(int16_t{0});
  previousUpper_ = Variant(int16_t{0});
}

void DTMDataTrendControl::IDTMDataControl_DataItemDef(Ref<Object> node) {
  dataItemNode_ = node;
  PropertyChanged("IDTMDataControl_DataItemDef");
}

void DTMDataTrendControl::IDTMDataControl_Value(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_Value", [&] {
    value_ = value;
    PropertyChanged("IDTMDataControl_Value");
  });
}

void DTMDataTrendControl::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on Data TrendControl IDTMDataControl_SetDeviceValue", [&] {
    IDTMDataControl_Value(value);
    frame_->DataRateTimer().Enabled(true);
  });
}

Variant DTMDataTrendControl::IDtmDataSubscriptionControl_SubscriptionItems() {
  VariantArray list;
  list.items = {Variant(unitItem_), Variant(""), Variant(""), Variant(name_)};
  return Variant(std::move(list));
}

void DTMDataTrendControl::IDtmDataSubscriptionControl_UpdateSubscriptionValues(
    const std::string& name, const Variant& value) {
  if (name == unitItem_) {
    unitValue_ = value;
  } else if (name == name_) {
    CalculateRange(value);
    IDTMDataControl_SetDeviceValue(value);
  }
  frame_->viewer().updateViewPort(true, false);
}

void DTMDataTrendControl::CalculateRange(const Variant& value) {
  const double v = value.toDouble();
  // A value that is no number or infinite goes into the store as a gap; it leaves the kept
  // limits alone, so that the range doesn't start over behind it.
  if (!std::isfinite(v)) return;
  // A limit beyond the doubles fails here, before the value is stored or drawn.
  const Variant lower = v == 0 ? Variant(-2.0) : Variant(checkedSub(v, v * 0.15));
  const Variant upper = v == 0 ? Variant(2.0) : Variant(checkedAdd(v, v * 0.15));
  if (!rangeInitialized_) {
    logger_->Error(" GAUGE Prev Value Initialized for " + name_);
    previousLower_ = axisMin_ = lower;
    previousUpper_ = axisMax_ = upper;
    rangeInitialized_ = true;
    return;
  }
  if (previousLower_.toDouble() < lower.toDouble()) {
    logger_->DebugL(" GAUGE Prev Lower value taken for " + name_ + " Prev Value= " +
                    previousLower_.toText() + " Currnet Value= " + lower.toText());
    axisMin_ = previousLower_;
  } else {
    logger_->DebugL(" GAUGE Current Lower value taken for " + name_ + " Prev Value= " +
                    previousLower_.toText() + " Currnet Value= " + lower.toText());
    axisMin_ = lower;
    previousLower_ = axisMin_;
  }
  if (previousUpper_.toDouble() > upper.toDouble()) {
    logger_->DebugL(" GAUGE Prev Upper value taken for " + name_ + "Prev Value = " +
                    previousUpper_.toText() + " Currnet Value= " + upper.toText());
    axisMax_ = previousUpper_;
  } else {
    logger_->DebugL(" GAUGE Current Upper value taken for " + name_ + "Prev Value = " +
                    previousUpper_.toText() + " Currnet Value= " + upper.toText());
    axisMax_ = upper;
    previousUpper_ = axisMax_;
  }
}

// The time since the last drawing filled with the latest value, 2.5 seconds a sample.
void DTMDataTrendControl::catchUpSamples() {
  const double now = chartNow(api());
  const double step = frame_->DataRateTimer().Interval() / 100.0;
  while (nextDataTime_ <= now && step > 0) {
    takeSample(nextDataTime_);
    nextDataTime_ += step;
  }
}

void DTMDataTrendControl::createChart() {
  guarded(*logger_, "Error on createChart ", [&] {
    auto chart = api().XYChart(chartWidth(), chartHeight(), 0xF4F4F4, 0, 0);
    const double textWidth = std::round(this->textWidth("0.00"));
    bool found = false;
    drawFrame(*chart, Variant(textWidth + 75), textWidth, unitEntryText(found));
    auto x = chart->xAxis();
    auto y = chart->yAxis();
    x->setTickDensity(75, 15);
    x->setWidth(2);
    y->setWidth(2);
    y->setLabelFormat("{value|P4}");
    catchUpSamples();
    const double newest = store_.newestTime();
    view_.follow(newest, kWindow);
    if (newest != kNoValue) drawLine(*chart, "Software: <*bgColor=FFCCCC*> {value|2} ");
    if (!takeAutomaticRange(*chart)) {
      if (frame_->viewer().MouseUsage() == 0) y->setLinearScale(axisMin_, axisMax_, 0, 0);
      y->setRounding(true, false);
    }
    frame_->handOver(*chart);
  });
}

void DTMDataTrendControl::describeMembers(MemberTableBuilder<DTMDataTrendControl>& table) {
  addTrendMembers(table);
  table.procedure("CalculateRange", &DTMDataTrendControl::CalculateRange);
}

}  // namespace tessaline
