#pragma once

#include "gauges/gauge_control.h"
#include "gauges/gauge_items.h"

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

  // IDTMDataControl_Name shares its field with IDtmControl_Name.
  std::string IDTMDataControl_Name() { return name_; }
  void IDTMDataControl_Name(const std::string& value) { IDtmControl_Name(value); }

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
    addGaugeMembers(table);
    table.TESSALINE_PROPERTY(Ref<Object>, IDtmDataSubscriptionControlRange_GaugeDataDef)
        .method("ReadGaugeNode",
                [](Self& s, DispatchArgs&) {
                  s.ReadGaugeNode();
                  return Variant();
                })
        .method("IDTMEnumeration1_UpdateEnumString",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMEnumeration1_UpdateEnumString(argument(a, 0).toText(),
                                                      argument(a, 1).toText());
                  return Variant();
                })
        .TESSALINE_PROPERTY(std::string, IDTMDataControl_Name)
        .TESSALINE_PROPERTY(std::string, DTMDataGaugeControl_LowerRange)
        .TESSALINE_PROPERTY(std::string, DTMDataGaugeControl_UpperRange);
  }

  // The member table of a ranged gauge class.
  template <class Self>
  static const MemberTable& rangedGaugeTable() {
    static const MemberTable table = [] {
      MemberTableBuilder<Self> builder;
      addRangedGaugeMembers(builder);
      return builder.build();
    }();
    return table;
  }

  std::string& unitItem() override { return items_.Unit; }

  GaugeItems items_;
  Ref<Object> gaugeNode_;

 private:
  std::string loggerName_;
};

// A meter with limits from the device: it waits for both limits before it draws, parks a
// value beyond the scale one small step past its end, and switches its labels to exponent form
// for large limits.
class DTMDataGuageControl : public RangedGauge {
 public:
  static std::shared_ptr<DTMDataGuageControl> create();

  void IDTMDataControl_SetDeviceValue(const Variant& value) override;
  void createChart() override;
  // "nan", "#" or "$" in the text of the value.
  bool IsNotANumber(const Variant& value) override;

 protected:
  const MemberTable& members() const override;

 private:
  DTMDataGuageControl();
};

// The same meter without the guards: it draws at every value, leaves a value beyond the scale
// where the chart puts it, and always labels with two decimals.
class DTMDataAngularGuage : public RangedGauge {
 public:
  static std::shared_ptr<DTMDataAngularGuage> create();

  void IDTMDataControl_SetDeviceValue(const Variant& value) override;
  void createChart() override;
  // "nan" or "#" in the General Number text of the value.
  bool IsNotANumber(const Variant& value) override;

 protected:
  const MemberTable& members() const override;

 private:
  DTMDataAngularGuage();

  // Kept for the control's life.
  Ref<platform::chart::ChartApi> api_;
};

}  // namespace tessaline
