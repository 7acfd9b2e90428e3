#pragma once

#include "support/tooltip.h"
#include "trends/single_trend.h"

namespace tessaline {

// The fast sibling of DTMDataTrendControl: the last ten minutes, sampled four times a second by
// its own timer whether values come or not. Each drawing stretches the y range 15 around the
// latest value, and the vertical viewport reaches the y axis, so zooming works.
class DTMDynamicTrendControl : public SingleItemTrend {
 public:
  static std::shared_ptr<DTMDynamicTrendControl> create();
  static void describeMembers(MemberTableBuilder<DTMDynamicTrendControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDynamicTrendControl>(); }

  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  // Reads the dataItem and builds the tooltip from its description.
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  // No catch block here.
  void IDTMDataControl_Value(const Variant& value) override;
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;
  using SingleItemTrend::IDTMDataControl_DataItemDef;
  using SingleItemTrend::IDTMDataControl_Value;

  // Unit, value.
  Variant IDtmDataSubscriptionControl_SubscriptionItems() override;
  using SingleItemTrend::IDtmDataSubscriptionControl_SubscriptionItems;
  void IDtmDataSubscriptionControl_UpdateSubscriptionValues(const std::string& name,
                                                            const Variant& value) override;
  // Four samples a second of the latest value, as far as the clock has gone.
  void DataRateTimer_Timer();
  void createChart() override;

  const DeviceDataItem& dataItem() const { return item_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

 private:
  DTMDynamicTrendControl();
  // The unit through the unit table; a code without an entry reads "Unknown Units".
  std::string UnitText();

  DeviceDataItem item_;
  std::string tooltipText_;
  ControlTooltip tooltip_{"Error in CreateTooltip of DtmDataGaugeControl ", 10000};
};

}  // namespace tessaline
