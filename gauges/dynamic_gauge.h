#pragma once

#include "tessaline/gauges/gauge_control.h"
#include "tessaline/gauges/gauge_items.h"

namespace tessaline {

// A meter for a value without configured limits: the scale follows the value, and only its
// two end labels are shown, since the numbers between would change with every value.
class DTMDynamicGuageControl : public GaugeControl {
 public:
  static std::shared_ptr<DTMDynamicGuageControl> create();
  static void describeMembers(MemberTableBuilder<DTMDynamicGuageControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDynamicGuageControl>(); }

  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  // Only this gauge passes Visible on to its chart and caption.
  using GaugeControl::IDtmControl_Visible;
  void IDtmControl_Visible(bool value) override;

  Variant IDtmDataSubscriptionControl_SubscriptionItems() override;
  void IDtmDataSubscriptionControl_SubscriptionItems(const Variant&) override {}
  void IDtmDataSubscriptionControl_UpdateSubscriptionValues(const std::string& name,
                                                            const Variant& value) override;
  void CalculateRange(const Variant& value);

  void IDTMDataControl_SetDeviceValue(const Variant& value) override;
  void createChart() override;
  // "nan" or "#" in the General Number text of the value.
  bool IsNotANumber(const Variant& value) override;

  const DynamicRange& range() const { return range_; }
  const Variant& unitValue() const { return unitValue_; }

 private:
  DTMDynamicGuageControl();

  std::string& unitItem() override { return unitItem_; }

  DynamicRange range_;
  std::string unitItem_;
  Variant unitValue_;
};

}  // namespace tessaline
