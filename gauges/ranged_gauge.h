#pragma once

#include "tessaline/gauges/gauge_control.h"
#include "tessaline/gauges/gauge_items.h"

namespace tessaline {

// The two gauges whose scale limits and zones are further items of the device: the gauge node,
// the item list, the filing of values, the unit texts, and the drawing steps both meters share.
class RangedGauge : public virtual IDtmDataSubscriptionControlRange,
                    public virtual IDTMEnumeration1,
                    public GaugeControl {
 public:
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;

  Ref<Object> IDtmDataSubscriptionControlRange_GaugeDataDef() override { return nullptr; }
  void IDtmDataSubscriptionControlRange_GaugeDataDef(Ref<Object> node) override;
  void ReadGaugeNode();

  Variant IDtmDataSubscriptionControl_SubscriptionItems() override;
  void IDtmDataSubscriptionControl_SubscriptionItems(const Variant&) override {}
  void IDtmDataSubscriptionControl_UpdateSubscriptionValues(const std::string& name,
                                                            const Variant& value) override;

  void IDTMEnumeration1_UpdateEnumString(const std::string& code,
                                         const std::string& Label) override;

  std::string DTMDataGaugeControl_LowerRange() { return items_.LowerRange; }
  void DTMDataGaugeControl_LowerRange(const std::string& value);
  std::string DTMDataGaugeControl_UpperRange() { return items_.UpperRange; }
  void DTMDataGaugeControl_UpperRange(const std::string& value);

  const GaugeItems& items() const { return items_; }

 protected:
  RangedGauge(const std::string& className, std::string loggerName);

  // Steps of the drawing: the meter, its dial, its frame and the first label style.
  Ref<platform::chart::Meter> startMeter(platform::chart::ChartApi& api, int32_t raisedEffect);
  // The zones after the scale: ascending for "low_limit", from the top for "high_limit".
  void addZones(platform::chart::Meter& meter);

  template <class Self>
  static void addRangedGaugeMembers(MemberTableBuilder<Self>& table) {
    table.TESSALINE_PROPERTY(std::string, DTMDataGaugeControl_LowerRange)
        .TESSALINE_PROPERTY(std::string, DTMDataGaugeControl_UpperRange);
    addGaugeMembers(table, {"DTMDataGaugeControl_LowerRange", "DTMDataGaugeControl_UpperRange"});
    table.TESSALINE_PROPERTY(Ref<Object>, IDtmDataSubscriptionControlRange_GaugeDataDef)
        .procedure("ReadGaugeNode", &Self::ReadGaugeNode)
        .procedure("IDTMEnumeration1_UpdateEnumString", &Self::IDTMEnumeration1_UpdateEnumString);
  }

  std::string& unitItem() override { return items_.Unit; }

  GaugeItems items_;
  Ref<Object> gaugeNode_;

 private:
  std::string loggerName_;
};

}  // namespace tessaline
