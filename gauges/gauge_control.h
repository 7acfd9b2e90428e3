#pragma once

#include <memory>
#include <string>

#include "tessaline/frame/control_frame.h"
#include "tessaline/frame/definitions.h"
#include "tessaline/platform/chart.h"
#include "tessaline/platform/chart_viewer.h"
#include "tessaline/support/tooltip.h"
#include "tessaline/validation/validators.h"

namespace tessaline {

// What the three gauges share: a caption over a chart viewer, the unit table, the reduced set
// of data members that a host reaches by name only (a gauge is no IDTMDataControl), the
// tooltip, and the hand-over of a drawn meter to the viewer. Each gauge states its own
// drawing, its value's path and its literals.
class GaugeControl : public DataMembers<NoDataControlInterface>,
                     public virtual IDTMEnumeration,
                     public virtual IDtmDataSubscriptionControl {
 public:
  ~GaugeControl() override;

  // A gauge new on its form starts in data mode 2.
  void InitProperties() override { IDtmControl_DataMode(2); }

  // IDtmControl: host and container are ignored; Enable and Visible are only stored.
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return nullptr; }
  void IDtmControl_DtmContainer(Ref<DtmContainer>) override {}
  bool IDtmControl_Enable() override { return enable_; }
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // The rest of the reduced data members.
  Ref<Object> IDTMDataControl_DataItemDef() { return dataItemNode_; }
  void IDTMDataControl_DataItemDef(Ref<Object> node);
  Ref<Object> IDTMDataControl_DeviceDataDef() { return deviceDataNode_; }
  void IDTMDataControl_DeviceDataDef(Ref<Object> node);
  bool IDTMDataControl_Validate() { return true; }
  // The stored value through MatchType without a type name.
  Variant IDTMDataControl_Value();
  void IDTMDataControl_Value(const Variant& value);
  virtual void IDTMDataControl_SetDeviceValue(const Variant& value) = 0;
  void IDTMDataControl_SetUserValue(const Variant& value);
  std::string IDTMDataControl_Caption() { return caption_; }
  void IDTMDataControl_Caption(const std::string& value);

  // The unit table.
  Ref<Object> IDTMEnumeration_EnumDataDef() override { return enumNode_; }
  void IDTMEnumeration_EnumDataDef(Ref<Object> node) override;

  std::string DTMDataGaugeControl_Unit() { return unitItem(); }
  void DTMDataGaugeControl_Unit(const std::string& value);

  // Stored only: reads 0 and no object; writing only marks the property changed.
  int32_t MousePointer() { return 0; }
  void MousePointer(int32_t) { PropertyChanged("MousePointer"); }
  Ref<Object> MouseIcon() { return nullptr; }
  void MouseIcon(Ref<Object>) { PropertyChanged("MouseIcon"); }
  std::string ToolTipText() { return tooltipText_; }
  void ToolTipText(const std::string& value);
  int16_t getNoOfCharts() { return 1; }
  // Draws the meter from the present state.
  virtual void createChart() = 0;
  // Whether a value's text tells no number; each gauge reads the text its own way.
  virtual bool IsNotANumber(const Variant& value) = 0;

  platform::Label& Label1() { return *Label1_; }
  platform::ChartViewer& ChartViewer1() { return *ChartViewer1_; }
  const DeviceDataItem& dataItem() const { return item_; }
  const VbArray<EnumData>& unitTable() const { return units_; }
  const Ref<cTooltip>& tooltip() const { return tooltip_.object(); }

 protected:
  GaugeControl(const std::string& className, int32_t viewerHeight, std::string valueLiteral);

  // The start of IDTMControl_Init of every gauge: logger, background colour, caption.
  void initFrame(const Ref<GenericDtm>& host, const std::string& loggerName);

  // The name of the unit's item, where each kind of gauge keeps it.
  virtual std::string& unitItem() = 0;

  // The unit as a text, through the unit table. With `unknownUnits`, a code that isn't in the
  // table and is neither empty nor holds "*" reads "Unknown Units".
  std::string UnitText(const Variant& unitValue, bool unknownUnits);

  // The scale of every gauge: a major tick at each sixth of the span, a minor one at each
  // twelfth, a micro one at each sixtieth.
  static void setSixtiethsScale(platform::chart::Meter& meter, double lower, double upper);

  // The end of every drawing: the old picture dropped, the meter's JPEG made, decoded and shown.
  void showMeter(platform::chart::Meter& meter);

  // The colour of the window around the control, read at creation and at IDTMControl_Init.
  void applyBackground();

  // The member rows of every gauge, and the head of its reading order up to
  // DTMDataGaugeControl_Unit; `limits` come behind it, then the tail that all three share.
  // IDTMDataControl_Access is written from a field that nothing sets, and never read.
  template <class Self>
  static void addGaugeMembers(MemberTableBuilder<Self>& table,
                              std::initializer_list<Persisted> limits = {}) {
    addDataMembers(table);
    table.forward("Label1", &GaugeControl::Label1, {"BackColor"})
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DataItemDef)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DeviceDataDef)
        .function("IDTMDataControl_Validate", &Self::IDTMDataControl_Validate)
        .TESSALINE_PROPERTY(Variant, IDTMDataControl_Value)
        .procedure("IDTMDataControl_SetDeviceValue", &Self::IDTMDataControl_SetDeviceValue)
        .procedure("IDTMDataControl_SetUserValue", &Self::IDTMDataControl_SetUserValue)
        .TESSALINE_PROPERTY(std::string, IDTMDataControl_Caption)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMEnumeration_EnumDataDef)
        .TESSALINE_PROPERTY(Variant, IDtmDataSubscriptionControl_SubscriptionItems)
        .procedure("IDtmDataSubscriptionControl_UpdateSubscriptionValues",
                   &Self::IDtmDataSubscriptionControl_UpdateSubscriptionValues)
        .TESSALINE_PROPERTY(std::string, DTMDataGaugeControl_Unit)
        .TESSALINE_PROPERTY(int32_t, MousePointer)
        .TESSALINE_PROPERTY(Ref<Object>, MouseIcon)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .function("getNoOfCharts", &Self::getNoOfCharts)
        .procedure("createChart", &Self::createChart)
        .function("IsNotANumber", &Self::IsNotANumber)
        .persist({"IDTMDataControl_Active", "IDtmControl_Enable", "IDtmControl_Visible",
                  Persisted("IDTMDataControl_Name")
                      .restoredBy(&GaugeControl::restoreName)
                      .savedFrom(&GaugeControl::savedName),
                  "IDtmControl_Name", "DTMDataGaugeControl_Unit"})
        .persist(limits)
        .persist({"IDTMDataControl_Caption", "IDTMDataControl_CanSubscribe",
                  "IDTMDataControl_Value", "IDTMDataControl_Source", "IDtmControl_DataMode",
                  Persisted("BackColor").withDefault(int32_t{0}),
                  Persisted::writtenOnly("IDTMDataControl_Access")
                      .withDefault(int32_t{2})
                      .savedFrom(&GaugeControl::savedAccess)});
  }
  // The bag's IDTMDataControl_Name is the gauge's one name, also where no member has it.
  static void restoreName(GaugeControl& gauge, const Variant& name);
  static Variant savedName(GaugeControl& gauge) { return Variant(gauge.name_); }
  static Variant savedAccess(GaugeControl&) { return Variant(int32_t{0}); }

  std::unique_ptr<platform::Label> Label1_;
  std::unique_ptr<platform::ChartViewer> ChartViewer1_;
  Variant value_ = Variant(std::string());
  std::string caption_;
  std::string tooltipText_;
  DeviceDataItem item_;
  VbArray<EnumData> units_;
  Ref<Object> enumNode_;
  Ref<Object> dataItemNode_;
  Ref<Object> deviceDataNode_;
  bool enable_ = true;
  bool visible_ = true;
  // One validator of each kind, kept empty: the check that runs is the host's
  // ValidateItemValue, and the validators stand ready for a host that wants them.
  Ref<RangeValidator> rangeValidator_;
  Ref<LengthValidator> lengthValidator_;
  Ref<DiscreteValidator> discreteValidator_;

  // UpdateGuageControl: the tooltip from the item's description.
  void UpdateGuageControl();

 private:
  void Resize();

  int32_t viewerHeight_;
  std::string valueLiteral_;
  ControlTooltip tooltip_{"Error in CreateTooltip of DtmDataGaugeControl ", 10000};
};

}  // namespace tessaline
