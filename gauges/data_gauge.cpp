#include "tessaline/gauges/data_gauge.h"

#include "tessaline/frame/logger.h"
#include "tessaline/values/text.h"

namespace tessaline {

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

}  // namespace tessaline
