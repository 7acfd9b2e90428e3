#include "tessaline/gauges/angular_gauge.h"

#include "tessaline/frame/logger.h"
#include "tessaline/values/text.h"

namespace tessaline {

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

}  // namespace tessaline
