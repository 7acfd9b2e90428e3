#pragma once

#include "tessaline/trends/single_trend.h"

namespace tessaline {

// The history of one value over the last hour. It never samples by itself: each drawing fills
// the time since the last one with samples of the latest value, 2.5 seconds apart, so a value
// that stops coming goes on as a flat line for as long as drawings come. The y range is worked
// out as values arrive, and only grows.
//
// What bad input does:
// - NaN or an infinity is taken: the kept range stays, and its samples are gaps.
// - A value whose 15 % limits leave the doubles (1.7E+308, -1.7E+308) fails with 6 (overflow),
//   Null with 94 and text that is no number with 13, all to the host: nothing is stored or drawn.
// - A Null unit fails every drawing with 94 ("Error on createChart 94 ...") until a unit comes;
//   those drawings take no sample, and the next good one catches up.
// - A burst of values draws once a value; the samples stay 2.5 s apart on the clock.
// - A clock set back takes no sample until it passes the last one again; a clock a day on
//   fills the store at the next drawing, and the window walks on by a tenth a drawing.
// - The viewport never reaches this chart; a control smaller than 6630 by 3610 twips grows.
class DTMDataTrendControl : public SingleItemTrend {
 public:
  static std::shared_ptr<DTMDataTrendControl> create();
  static void describeMembers(MemberTableBuilder<DTMDataTrendControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMDataTrendControl>(); }

  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;
  // The node is kept, not read.
  void IDTMDataControl_DataItemDef(Ref<Object> node) override;
  void IDTMDataControl_Value(const Variant& value) override;
  void IDTMDataControl_SetDeviceValue(const Variant& value) override;
  using SingleItemTrend::IDTMDataControl_DataItemDef;
  using SingleItemTrend::IDTMDataControl_Value;

  // Unit, two empty slots, the value.
  Variant IDtmDataSubscriptionControl_SubscriptionItems() override;
  using SingleItemTrend::IDtmDataSubscriptionControl_SubscriptionItems;
  // Takes a value of the unit or of the item, then redraws whatever the name was.
  void IDtmDataSubscriptionControl_UpdateSubscriptionValues(const std::string& name,
                                                            const Variant& value) override;
  // Widens the kept range to 15 % around a value; a value that takes no part in arithmetic
  // fails to the caller.
  void CalculateRange(const Variant& value);
  void createChart() override;

  bool rangeInitialized() const { return rangeInitialized_; }

 private:
  DTMDataTrendControl();
  void catchUpSamples();

  Variant previousLower_;
  Variant previousUpper_;
  bool rangeInitialized_ = false;
};

}  // namespace tessaline
