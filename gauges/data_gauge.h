#pragma once

#include "tessaline/gauges/ranged_gauge.h"

namespace tessaline {

// A meter with limits from the device: it waits for both limits before it draws, parks a
// value beyond the scale one small step past its end, and switches its labels to exponent form
// for large limits.
class DTMDataGuageControl : public RangedGauge {
 public:
  static std::shared_ptr<DTMDataGuageControl> create();
  static void describeMembers(MemberTableBuilder<DTMDataGuageControl>& table) {
    addRangedGaugeMembers(table);
  }
  const MemberTable& members() const override { return memberTableOf<DTMDataGuageControl>(); }

  void IDTMDataControl_SetDeviceValue(const Variant& value) override;
  void createChart() override;
  // "nan", "#" or "$" in the text of the value.
  bool IsNotANumber(const Variant& value) override;

 private:
  DTMDataGuageControl();
};

}  // namespace tessaline
