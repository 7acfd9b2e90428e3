#include "tessaline/gauges/ranged_gauge.h"

#include "tessaline/frame/logger.h"
#include "tessaline/values/text.h"

namespace tessaline {

namespace {
constexpr int32_t kMeterWidth = 208;
constexpr int32_t kMeterHeight = 145;
}  // namespace

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
  for (EnumData& unit : units_.usedSlots()) {
    if (unit.code == code) unit.Local = Label;
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

}  // namespace tessaline
