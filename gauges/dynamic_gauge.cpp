#include "tessaline/gauges/dynamic_gauge.h"

#include "tessaline/frame/logger.h"
#include "tessaline/values/text.h"

namespace tessaline {

std::shared_ptr<DTMDynamicGuageControl> DTMDynamicGuageControl::create() {
  return std::shared_ptr<DTMDynamicGuageControl>(new DTMDynamicGuageControl());
}

DTMDynamicGuageControl::DTMDynamicGuageControl()
    : GaugeControl("DTMDynamicGuageControl", 148,
                   "Error on DataGaugeControl IDTMDataControl_Value") {}

void DTMDynamicGuageControl::IDTMControl_Init(Ref<GenericDtm> genericDtm) {
  initFrame(genericDtm, "DTMDynamicGuageControl");
  range_.restart();
}

void DTMDynamicGuageControl::IDtmControl_Visible(bool value) {
  visible_ = value;
  ChartViewer1_->Visible(value);
  Label1_->Visible(value);
  PropertyChanged("IDtmControl_Visible");
}

Variant DTMDynamicGuageControl::IDtmDataSubscriptionControl_SubscriptionItems() {
  VariantArray list;
  list.items = {Variant(unitItem_), Variant(name_)};
  return Variant(std::move(list));
}

void DTMDynamicGuageControl::IDtmDataSubscriptionControl_UpdateSubscriptionValues(
    const std::string& name, const Variant& value) {
  guarded(*logger_,
          "Error on DataGaugeControl IDtmDataSubscriptionControl_UpdateSubscriptionValues", [&] {
            if (name == unitItem_) {
              unitValue_ = value;
            } else if (name == name_) {
              CalculateRange(value);
              IDTMDataControl_SetDeviceValue(value);
            }
          });
}

void DTMDynamicGuageControl::CalculateRange(const Variant& value) {
  guarded(*logger_, "Error on CalculateRange ",
          [&] { range_.CalculateRange(value, name_, *logger_); });
}

void DTMDynamicGuageControl::IDTMDataControl_SetDeviceValue(const Variant& value) {
  guarded(*logger_, "Error on DataGaugeControl IDTMDataControl_SetDeviceValue", [&] {
    IDTMDataControl_Value(value);
    createChart();
  });
}

bool DTMDynamicGuageControl::IsNotANumber(const Variant& value) {
  const std::string text = toLowerAscii(formatGeneralNumber(value));
  return text.find("nan") != std::string::npos || text.find('#') != std::string::npos;
}

void DTMDynamicGuageControl::createChart() {
  guarded(*logger_, "Error on createChart ", [&] {
    std::string valueText;
    auto api = platform::chart::createChartApi();
    auto meter = api->AngularMeter(208, 148, api->meterBackgroundColor(90), 0, -1);
    meter->setMeter(104, 117, 85, -90, 90);
    const Variant v = IDTMDataControl_Value();
    const bool valueIsNaN = IsNotANumber(v);
    const bool lowerIsNaN = IsNotANumber(range_.currentLower);
    const bool upperIsNaN = IsNotANumber(range_.currentUpper);
    if (valueIsNaN || lowerIsNaN || upperIsNaN) {
      valueText = "NaN";
      meter->addPointer(api->NoValue(), 0, 0);
    } else {
      const double lower = range_.currentLower.toDouble();
      const double upper = range_.currentUpper.toDouble();
      setSixtiethsScale(*meter, lower, upper);
      valueText = v.toText();
      const Variant ticks = meter->getTicks();
      meter->setLabelFormat("{value|2}");
      meter->setLabelPos(true, 10);
      meter->setLabelStyle("bold", 8, api->TextColor(), 0);
      // One position per micro tick: every tenth is an inner major tick, whose label is blanked
      // so that only the two ends keep theirs.
      for (int32_t i = 1; i <= 5; ++i) meter->addLabel(ticks.toArray().at(i * 10), " ");
      meter->addPointer(v, 0, 0);
    }
    const std::string unit = UnitText(unitValue_, false);
    meter->addText(100, 130, valueText + " " + unit, "arial.ttf", 8, api->TextColor(),
                   api->Center(), 0, false);
    showMeter(*meter);
  });
}

// No second name of the item, no limits of its own.
void DTMDynamicGuageControl::describeMembers(MemberTableBuilder<DTMDynamicGuageControl>& table) {
  addGaugeMembers(table);
  table.remove("IDTMDataControl_Name");
}

}  // namespace tessaline
