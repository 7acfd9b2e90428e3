#include "gauges/ranged_gauge.h"

#include "frame/logger.h"
#include "values/text.h"

namespace tessaline {

namespace {
constexpr int32_t kMeterWidth = 208;
constexpr int32_t kMeterHeight = 145;
}  // namespace

// ---- What the two ranged gauges share ---------------------------------------------------

RangedGauge::RangedGauge(const std::string& className, std::string loggerName)
    : GaugeControl(className, kMeterHeight, "Error on IDTMDataControl_SetDeviceValue"),
      loggerName_(std::move(loggerName)) {}

void RangedGauge::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  initFrame(genericDtm, loggerName_);
  items_.zoneCount = 0;
  items_.pointerColor = "&H0";
}

void RangedGauge::IDtmDataSubscriptionControlRange_GaugeDataDef(Ref<Object> node) {
  gaugeNode_ = node;
  ReadGaugeNode();
}

void RangedGauge::ReadGaugeNode() {
  guarded(*logger_, "Error on ReadGaugeNode", [&] {
    if (!gaugeNode_) return;
    auto node = refCast<platform::XmlNode>(gaugeNode_);
    if (!node) throw VbError(err::TypeMismatch);
    items_.ReadGaugeNode(node);
  });
}

Variant RangedGauge::IDtmDataSubscriptionControl_SubscriptionItems() {
  Variant list;
  guarded(*logger_, "Error on IDtmDataSubscriptionControl_SubscriptionItems",
          [&] { list = items_.SubscriptionItems(name_); });
  return list;
}

void RangedGauge::IDtmDataSubscriptionControl_UpdateSubscriptionValues(const std::string& name,
                                                                       const Variant& value) {
  guarded(*logger_, "Error on IDtmDataSubscriptionControl_UpdateSubscriptionValues", [&] {
    items_.take(name, value, name_,
                [this](const Variant& own) { IDTMDataControl_SetDeviceValue(own); });
  });
}

void RangedGauge::IDTMEnumeration1_UpdateEnumString(const std::string& code,
                                                    const std::string& Label) {
  if (!units_.hasBounds()) return;
  for (int32_t i = 0; i < units_.upperBound(); ++i) {
    if (units_[i].code == code) units_[i].Local = Label;
  }
}

void RangedGauge::DTMDataGaugeControl_LowerRange(const std::string& value) {
  items_.LowerRange = value;
  PropertyChanged("DTMDataGaugeControl_LowerRange");
}

void RangedGauge::DTMDataGaugeControl_UpperRange(const std::string& value) {
  items_.UpperRange = value;
  PropertyChanged("DTMDataGaugeControl_UpperRange");
}

Ref<platform::chart::Meter> RangedGauge::startMeter(platform::chart::ChartApi& api,
                                                    int32_t raisedEffect) {
  auto meter =
      api.AngularMeter(kMeterWidth, kMeterHeight, api.meterBackgroundColor(90), 0, raisedEffect);
  meter->setMeter(104, 117, 85, -90, 90);
  meter->setRoundedFrame(api.meterBackgroundColor(90), 4, -1, -1, -1);
  meter->setLabelStyle("arial.ttf", 8, api.TextColor(), 0);
  return meter;
}

void RangedGauge::addZones(platform::chart::Meter& meter) {
  const int32_t last = items_.zoneValues.upperBound();
  const auto zone = [&](int32_t i) {
    meter.addZone(items_.zoneStarts[i].toDouble(), items_.zoneEnds[i].toDouble(), 73, 80,
                  Variant(items_.zoneColors[i]), -1);
  };
  if (items_.zoneType == "low_limit") {
    for (int32_t i = 0; i <= last - 1; ++i) zone(i);
  } else if (items_.zoneType == "high_limit") {
    for (int32_t i = last - 1; i >= 0; --i) zone(i);
  }
}

// ---- DTMDataGuageControl ------------------------------------------------------------------

std::shared_ptr<DTMDataGuageControl> DTMDataGuageControl::create() {
  return std::shared_ptr<DTMDataGuageControl>(new DTMDataGuageControl());
}

DTMDataGuageControl::DTMDataGuageControl()
    : RangedGauge("DTMDataGuageControl", "DTMDataGuageControl") {}

void DTMDataGuageControl::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_SetDeviceValue", [&] {
    IDTMDataControl_Value(value);
    // Nothing is drawn until both limits have come.
    if (!items_.lowerValue.isEmpty() && !items_.upperValue.isEmpty()) createChart();
  });
}

bool DTMDataGuageControl::IsNotANumber(const Variant& value) {
  const std::string text = toLowerAscii(value.toText());
  return text.find("nan") != std::string::npos || text.find('#') != std::string::npos ||
         text.find('$') != std::string::npos;
}

void DTMDataGuageControl::createChart() {
  guarded(*logger_, "Error on createChart ", [&] {
    std::string valueText;
    auto api = platform::chart::createChartApi();
    auto meter = startMeter(*api, 0);
    const Variant v = IDTMDataControl_Value();
    const bool valueIsNaN = IsNotANumber(v);
    const bool lowerIsNaN = IsNotANumber(items_.lowerValue);
    const bool upperIsNaN = IsNotANumber(items_.upperValue);
    if (valueIsNaN || lowerIsNaN || upperIsNaN) {
      // The meter gets no scale; the text still tells a good value.
      valueText = valueIsNaN ? "NaN" : Variant(v.toDouble()).toText();
      meter->addPointer(api->NoValue(), Variant(items_.pointerColor), 0);
    } else {
      valueText = Variant(v.toDouble()).toText();
      const double lower = items_.lowerValue.toDouble();
      const double upper = items_.upperValue.toDouble();
      setSixtiethsScale(*meter, lower, upper);
      meter->setLabelStyle("arial.ttf", 8, api->TextColor(), 0);
      items_.BuildZoneLimits();
      addZones(*meter);
      if (upper > 9999 || upper < -9999 || lower > 9999 || lower < -9999) {
        meter->setLabelFormat("{value|e3}");
        logger_->Error("entered =" + Variant(upper).toText());
      } else {
        meter->setLabelFormat("{value|2}");
      }
      // A value beyond the scale parks one micro tick past its end; the text keeps the truth.
      // The sums are taken from the texts of the limit and of the step, as they always were.
      const double step = (upper - lower) / 60;
      const auto throughText = [](double x) { return Variant(Variant(x).toText()).toDouble(); };
      const double parkHigh = throughText(upper) + throughText(step);
      const double parkLow = throughText(lower) - throughText(step);
      const double shown = v.toDouble();
      if (upper > lower) {
        if (shown > upper) {
          IDTMDataControl_Value(parkHigh);
        } else if (shown < lower) {
          IDTMDataControl_Value(parkLow);
        }
      } else if (shown < upper) {
        IDTMDataControl_Value(parkHigh);
      } else if (shown > lower) {
        IDTMDataControl_Value(parkLow);
      }
      meter->addPointer(Variant(IDTMDataControl_Value().toText()).toDouble(),
                        Variant(items_.pointerColor), 0);
    }
    const std::string unit = UnitText(items_.unitValue, true);
    meter->addText(100, 130, valueText + " " + unit, "arialbd.ttf", 8, api->TextColor(),
                   api->Center(), 0, false);
    showMeter(*meter);
  });
}

const MemberTable& DTMDataGuageControl::members() const {
  return rangedGaugeTable<DTMDataGuageControl>();
}

// ---- DTMDataAngularGuage ------------------------------------------------------------------

std::shared_ptr<DTMDataAngularGuage> DTMDataAngularGuage::create() {
  return std::shared_ptr<DTMDataAngularGuage>(new DTMDataAngularGuage());
}

DTMDataAngularGuage::DTMDataAngularGuage()
    : RangedGauge("DTMDataAngularGuage", "DTMDataAngularGuage") {}

void DTMDataAngularGuage::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on IDTMDataControl_SetDeviceValue", [&] {
    IDTMDataControl_Value(value);
    createChart();
  });
}

bool DTMDataAngularGuage::IsNotANumber(const Variant& value) {
  const std::string text = toLowerAscii(formatGeneralNumber(value));
  return text.find("nan") != std::string::npos || text.find('#') != std::string::npos;
}

void DTMDataAngularGuage::createChart() {
  guarded(*logger_, "Error on createChart ", [&] {
    std::string valueText;
    if (!api_) api_ = platform::chart::createChartApi();
    auto meter = startMeter(*api_, -1);
    const Variant v = IDTMDataControl_Value();
    const bool valueIsNaN = IsNotANumber(v);
    const bool lowerIsNaN = IsNotANumber(items_.lowerValue);
    const bool upperIsNaN = IsNotANumber(items_.upperValue);
    if (valueIsNaN || lowerIsNaN || upperIsNaN) {
      valueText = "NaN";
      meter->addPointer(api_->NoValue(), Variant(items_.pointerColor), 0);
    } else {
      const double lower = items_.lowerValue.toDouble();
      const double upper = items_.upperValue.toDouble();
      setSixtiethsScale(*meter, lower, upper);
      items_.BuildZoneLimits();
      addZones(*meter);
      meter->setLabelFormat("{value|2}");
      valueText = v.toText();
      meter->addPointer(Variant(v.toText()).toDouble(), Variant(items_.pointerColor), 0);
    }
    const std::string unit = UnitText(items_.unitValue, false);
    meter->addText(100, 130, valueText + " " + unit, "arial.ttf", 8, api_->TextColor(),
                   api_->Center(), 0, false);
    showMeter(*meter);
  });
}

const MemberTable& DTMDataAngularGuage::members() const {
  return rangedGaugeTable<DTMDataAngularGuage>();
}

}  // namespace tessaline
