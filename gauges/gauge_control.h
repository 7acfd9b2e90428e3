#pragma once

#include <memory>
#include <string>

#include "frame/control_frame.h"
#include "frame/definitions.h"
#include "frame/dispatch.h"
#include "frame/interfaces.h"
#include "platform/chart.h"
#include "platform/chart_viewer.h"
#include "support/tooltip.h"

namespace tessaline {

// What the three gauges share: a caption over a chart viewer, the unit table, the reduced set
// of data members that a host reaches by name only (a gauge is no IDTMDataControl), the
// tooltip, and the hand-over of a drawn meter to the viewer. Each gauge states its own
// drawing, its value's path and its literals.
class GaugeControl : public virtual IDtmControl,
                     public virtual IDTMEnumeration,
                     public virtual IDtmDataSubscriptionControl,
                     public Dispatchable,
                     public ControlFrame {
 public:
  ~GaugeControl() override;

  // IDtmControl: host and container are ignored; Enable and Visible are only stored.
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return nullptr; }
  void IDtmControl_DtmContainer(Ref<DtmContainer>) override {}
  int32_t IDtmControl_DataMode() override { return dataMode_; }
  void IDtmControl_DataMode(int32_t value) override;
  std::string IDtmControl_Name() override { return name_; }
  void IDtmControl_Name(const std::string& value) override;
  bool IDtmControl_Enable() override { return enable_; }
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // The reduced data members.
  bool IDTMDataControl_Active() { return active_; }
  void IDTMDataControl_Active(bool value);
  bool IDTMDataControl_CanSubscribe() { return canSubscribe_; }
  void IDTMDataControl_CanSubscribe(bool value);
  int32_t IDTMDataControl_Source() { return source_; }
  void IDTMDataControl_Source(int32_t value);
  Ref<Object> IDTMDataControl_DataItemDef() { return dataItemNode_; }
  void IDTMDataControl_DataItemDef(Ref<Object> node);
  Ref<Object> IDTMDataControl_DeviceDataDef() { return deviceDataNode_; }
  void IDTMDataControl_DeviceDataDef(Ref<Object> node);
  std::string IDTMDataControl_ErrorString() { return {}; }
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

  platform::Color BackColor() { return Label1_->BackColor(); }
  void BackColor(platform::Color value);
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

  template <class Self>
  static void addGaugeMembers(MemberTableBuilder<Self>& table) {
    table
        .method("IDTMControl_Init",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMControl_Init(fromVariant<Ref<GenericDtm>>(argument(a, 0)));
                  return Variant();
                })
        .TESSALINE_PROPERTY(int32_t, IDtmControl_DataMode)
        .TESSALINE_PROPERTY(std::string, IDtmControl_Name)
        .TESSALINE_PROPERTY(bool, IDtmControl_Enable)
        .TESSALINE_PROPERTY(bool, IDtmControl_Visible)
        .TESSALINE_PROPERTY(Ref<GenericDtm>, IDtmControl_GenericDtm)
        .TESSALINE_PROPERTY(Ref<DtmContainer>, IDtmControl_DtmContainer)
        .TESSALINE_PROPERTY(bool, IDTMDataControl_Active)
        .TESSALINE_PROPERTY(bool, IDTMDataControl_CanSubscribe)
        .TESSALINE_PROPERTY(int32_t, IDTMDataControl_Source)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DataItemDef)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DeviceDataDef)
        .TESSALINE_READONLY(std::string, IDTMDataControl_ErrorString)
        .method("IDTMDataControl_Validate",
                [](Self& s, DispatchArgs&) { return Variant(s.IDTMDataControl_Validate()); })
        .TESSALINE_PROPERTY(Variant, IDTMDataControl_Value)
        .method("IDTMDataControl_SetDeviceValue",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMDataControl_SetDeviceValue(argument(a, 0));
                  return Variant();
                })
        .method("IDTMDataControl_SetUserValue",
                [](Self& s, DispatchArgs& a) {
                  s.IDTMDataControl_SetUserValue(argument(a, 0));
                  return Variant();
                })
        .TESSALINE_PROPERTY(std::string, IDTMDataControl_Caption)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMEnumeration_EnumDataDef)
        .TESSALINE_PROPERTY(Variant, IDtmDataSubscriptionControl_SubscriptionItems)
        .method("IDtmDataSubscriptionControl_UpdateSubscriptionValues",
                [](Self& s, DispatchArgs& a) {
                  s.IDtmDataSubscriptionControl_UpdateSubscriptionValues(argument(a, 0).toText(),
                                                                         argument(a, 1));
                  return Variant();
                })
        .TESSALINE_PROPERTY(std::string, DTMDataGaugeControl_Unit)
        .TESSALINE_PROPERTY(platform::Color, BackColor)
        .TESSALINE_PROPERTY(int32_t, MousePointer)
        .TESSALINE_PROPERTY(Ref<Object>, MouseIcon)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .method("getNoOfCharts", [](Self& s, DispatchArgs&) { return Variant(s.getNoOfCharts()); })
        .method("createChart",
                [](Self& s, DispatchArgs&) {
                  s.createChart();
                  return Variant();
                })
        .method("IsNotANumber",
                [](Self& s, DispatchArgs& a) { return Variant(s.IsNotANumber(argument(a, 0))); });
  }

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
  std::string name_;
  int32_t dataMode_ = 2;
  int32_t source_ = 0;
  bool enable_ = true;
  bool visible_ = true;
  bool active_ = true;
  bool canSubscribe_ = true;

  // UpdateGuageControl: the tooltip from the item's description.
  void UpdateGuageControl();

 private:
  void Resize();

  int32_t viewerHeight_;
  std::string valueLiteral_;
  ControlTooltip tooltip_{"Error in CreateTooltip of DtmDataGaugeControl ", 10000};
};

}  // namespace tessaline
