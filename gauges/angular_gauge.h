#pragma once

#include "tessaline/gauges/ranged_gauge.h"

namespace tessaline {

// The same meter without the guards: it draws at every value, leaves a value beyond the scale
// where the chart puts it, and always labels with two decimals.
class DTMDataAngularGuage : public RangedGauge {
 public:
  static std::shared_ptr<DTMDataAngularGuage> create();
  static void describeMembers(MemberTableBuilder<DTMDataAngularGuage>& table) {
    addRangedGaugeMembers(table);
  }
  const MemberTable& members() const override { return memberTableOf<DTMDataAngularGuage>(); }

  void IDTMDataControl_SetDeviceValue(const Variant& value) override;
  void createChart() override;
  // "nan" or "#" in the General Number text of the value.
  bool IsNotANumber(const Variant& value) override;

 private:
  DTMDataAngularGuage();

  // Kept for the control's life.
  Ref<platform::chart::ChartApi> api_;
};

}  // namespace tessaline
