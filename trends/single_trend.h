#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tessaline/frame/control_frame.h"
#include "tessaline/frame/definitions.h"
#include "tessaline/trends/chart_frame.h"

// What the two single-item trends share: one value and its unit by subscription, the reduced
// set of data members that a host reaches by name (a trend is no IDTMDataControl), the unit
// table, the chart frame with its sample store, and the steps of a drawing that both take. Each
// trend states its own sampling, its range, its drawing's differences and its literals.
namespace tessaline {

class SingleItemTrend : public DataMembers<NoDataControlInterface>,
                        public virtual IDTMEnumeration,
                        public virtual IDtmDataSubscriptionControl,
                        public virtual IDTMEnumeration1 {
 public:
  ~SingleItemTrend() override;

  // IDtmControl: host and container are ignored; Enable is only stored, Visible reaches the
  // viewer and the buttons.
  Ref<GenericDtm> IDtmControl_GenericDtm() override { return nullptr; }
  void IDtmControl_GenericDtm(Ref<GenericDtm>) override {}
  Ref<DtmContainer> IDtmControl_DtmContainer() override { return nullptr; }
  void IDtmControl_DtmContainer(Ref<DtmContainer>) override {}
  bool IDtmControl_Enable() override { return enable_; }
  void IDtmControl_Enable(bool value) override;
  bool IDtmControl_Visible() override { return visible_; }
  void IDtmControl_Visible(bool value) override;

  // The reduced data members.
  Ref<Object> IDTMDataControl_DataItemDef() { return dataItemNode_; }
  virtual void IDTMDataControl_DataItemDef(Ref<Object> node) = 0;
  Ref<Object> IDTMDataControl_DeviceDataDef() { return deviceDataNode_; }
  void IDTMDataControl_DeviceDataDef(Ref<Object> node);
  bool IDTMDataControl_Validate() { return true; }
  // The stored value through MatchType without a type name.
  Variant IDTMDataControl_Value();
  virtual void IDTMDataControl_Value(const Variant& value) = 0;
  virtual void IDTMDataControl_SetDeviceValue(const Variant& value) = 0;
  void IDTMDataControl_SetUserValue(const Variant& value) { IDTMDataControl_Value(value); }
  std::string IDTMDataControl_Caption() { return caption_; }
  void IDTMDataControl_Caption(const std::string& value);

  // The unit table.
  Ref<Object> IDTMEnumeration_EnumDataDef() override { return enumNode_; }
  void IDTMEnumeration_EnumDataDef(Ref<Object> node) override;
  // A new display text for the unit of that code, taken as the host gives it.
  void IDTMEnumeration1_UpdateEnumString(const std::string& code,
                                         const std::string& Label) override;

  void IDtmDataSubscriptionControl_SubscriptionItems(const Variant&) override {}
  std::string DTMDataGaugeControl_Unit() { return unitItem_; }
  void DTMDataGaugeControl_Unit(const std::string& value);

  // Writing only marks the property changed; reading gives 0, no object, the empty text.
  int32_t BackColor() { return 0; }
  void BackColor(int32_t) { PropertyChanged("BackColor"); }
  int32_t MousePointer() { return 0; }
  void MousePointer(int32_t) { PropertyChanged("MousePointer"); }
  Ref<Object> MouseIcon() { return nullptr; }
  void MouseIcon(Ref<Object>) { PropertyChanged("MouseIcon"); }
  virtual std::string ToolTipText() { return {}; }
  virtual void ToolTipText(const std::string&) { PropertyChanged("ToolTipText"); }
  int16_t getNoOfCharts() { return 1; }
  // The major tick of the y range, worked out once from the range of that moment.
  double yMajorTick();
  // Draws the chart from the present state.
  virtual void createChart() = 0;
  // "nan" or "#" in the General Number text: a sample that goes in as NoValue.
  bool IsNotANumber(const Variant& value) { return IsNotANumberAsGeneralNumber(value); }

  ChartFrame& frame() { return *frame_; }
  platform::ChartViewer& ChartViewer1() { return frame_->viewer(); }
  std::vector<double> timeStamps() const { return store_.times(); }
  std::vector<double> dataSeries() const { return store_.series(0); }
  double axisMin() const { return axisMin_.isEmpty() ? 0 : axisMin_.toDouble(); }
  double axisMax() const { return axisMax_.isEmpty() ? 0 : axisMax_.toDouble(); }
  const TimeWindow& timeWindow() const { return view_; }
  const Variant& unitValue() const { return unitValue_; }

 protected:
  // `samples` slots in the store, the window `unset` until the first sample is drawn.
  SingleItemTrend(const std::string& className, size_t samples, double unset);

  // The API object, made at the first need: the clock at creation.
  platform::chart::ChartApi& api();
  // The control's own text width of a text, in pixels, the unit of the plot area it narrows.
  double textWidth(const std::string& text);
  // The pixel size of the chart: the control's size in twips over 15.
  double chartWidth() const { return window_->Width() / 15.0; }
  double chartHeight() const { return window_->Height() / 15.0; }
  // The unit of the y axis: the text of the unit value, or the Local of its entry in the unit
  // table (a later entry of the same code wins).
  std::string unitEntryText(bool& found);
  // Steps of the drawing that both trends take, with their own numbers: the plot area from
  // `left`, its width less the text width, the title and the y axis's title.
  void drawFrame(platform::chart::XYPlot& chart, const Variant& left, double textWidth,
                 const std::string& unitText);
  // The samples as a line, when the newest time stamp is a time; the data set's name is the
  // newest sample through `nameFormat`.
  void drawLine(platform::chart::XYPlot& chart, const std::string& nameFormat);
  // A sample of the value into the store at a moment: NoValue where it is no number.
  void takeSample(double at);
  // The y axis when the range is unset or zooming is off: the automatic scale becomes the range.
  bool takeAutomaticRange(platform::chart::XYPlot& chart);

  // The member rows and the reading order that both trends share.
  template <class Self>
  static void addTrendMembers(MemberTableBuilder<Self>& table) {
    addDataMembers(table);
    table.TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DataItemDef)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMDataControl_DeviceDataDef)
        .function("IDTMDataControl_Validate", &Self::IDTMDataControl_Validate)
        .TESSALINE_PROPERTY(Variant, IDTMDataControl_Value)
        .procedure("IDTMDataControl_SetDeviceValue", &Self::IDTMDataControl_SetDeviceValue)
        .procedure("IDTMDataControl_SetUserValue", &Self::IDTMDataControl_SetUserValue)
        .TESSALINE_PROPERTY(std::string, IDTMDataControl_Caption)
        .TESSALINE_PROPERTY(Ref<Object>, IDTMEnumeration_EnumDataDef)
        .procedure("IDTMEnumeration1_UpdateEnumString", &Self::IDTMEnumeration1_UpdateEnumString)
        .TESSALINE_PROPERTY(Variant, IDtmDataSubscriptionControl_SubscriptionItems)
        .procedure("IDtmDataSubscriptionControl_UpdateSubscriptionValues",
                   &Self::IDtmDataSubscriptionControl_UpdateSubscriptionValues)
        .TESSALINE_PROPERTY(std::string, DTMDataGaugeControl_Unit)
        .TESSALINE_PROPERTY(int32_t, BackColor)
        .TESSALINE_PROPERTY(int32_t, MousePointer)
        .TESSALINE_PROPERTY(Ref<Object>, MouseIcon)
        .TESSALINE_PROPERTY(std::string, ToolTipText)
        .function("getNoOfCharts", &Self::getNoOfCharts)
        .procedure("createChart", &Self::createChart)
        .TESSALINE_READONLY(double, yMajorTick)
        .persist({"IDTMDataControl_Active", "IDtmControl_Enable", "IDtmControl_Visible",
                  Persisted("IDTMDataControl_Name")
                      .restoredBy(&SingleItemTrend::restoreName)
                      .savedFrom(&SingleItemTrend::savedName),
                  "IDtmControl_Name", "DTMDataGaugeControl_Unit", "IDTMDataControl_Caption",
                  "IDTMDataControl_CanSubscribe", "IDTMDataControl_Value", "IDTMDataControl_Source",
                  "IDtmControl_DataMode", Persisted("BackColor").withDefault(int32_t{0}),
                  Persisted::writtenOnly("IDTMDataControl_Access")
                      .withDefault(int32_t{2})
                      .savedFrom(&SingleItemTrend::savedAccess)});
  }
  static void restoreName(SingleItemTrend& trend, const Variant& name);
  static Variant savedName(SingleItemTrend& trend) { return Variant(trend.name_); }
  static Variant savedAccess(SingleItemTrend&) { return Variant(int32_t{0}); }

  std::unique_ptr<ChartFrame> frame_;
  Variant value_ = Variant(std::string());
  std::string caption_;
  std::string unitItem_;
  Variant unitValue_;
  VbArray<EnumData> units_;
  Ref<Object> enumNode_;
  Ref<Object> dataItemNode_;
  Ref<Object> deviceDataNode_;
  Variant axisMin_;
  Variant axisMax_;
  SampleStore store_;
  // The newest sample as it was taken (the chart names the line after it).
  Variant newestSample_ = Variant(1.7e308);
  double nextDataTime_ = 0;
  TimeWindow view_;
  double majorTick_ = 0;
  bool enable_ = true;
  bool visible_ = true;
  Ref<platform::chart::ChartApi> api_;

 private:
  void Resize();
};

}  // namespace tessaline
