#pragma once

#include "tessaline/support/tooltip.h"
#include "tessaline/trends/single_trend.h"

namespace tessaline {

// The fast sibling of DTMDataTrendControl: the last ten minutes, sampled four times a second by
// its own timer whether values come or not. Each drawing stretches the y range 15 around the
// latest value, and the vertical viewport reaches the y axis, so zooming works.
//
// What bad input does:
// - NaN or an infinity leaves the range alone; the timer's samples of it are gaps.
// - 1.7E+308 stretches the range up to it for good, and its samples are gaps (it is NoValue).
//   Once both ends of the doubles have been seen, the visible part has no size: every drawing
//   fails with 6 and the picture stays.
// - Text that is no number ends the drawing with 13 and the picture stays; its samples are gaps.
// - Null ends the drawing with 94 and the picture stays; the timer's handler, which catches
//   nothing, fails with 94 to the platform once a burst and takes no sample until a value comes.
// - A Null unit fails every drawing with 94 until a unit comes; the timer samples on.
// - A burst of values draws once a value; the samples stay on the 250 ms beat.
// - A clock set back takes no sample until it passes the last one again; a clock a day on
//   fills the store at the next beat, and the window walks on by a tenth a drawing.
// - A viewport written out of range is brought back by the viewer at the update that draws;
//   a control smaller than 6630 by 3610 twips grows.
// - The timer can't fire inside a drawing: it is a message on the control's thread, and no
//   drawing waits or yields.
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
