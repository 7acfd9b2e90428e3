#pragma once

#include <array>

#include "tessaline/frame/interfaces.h"
#include "tessaline/trends/host_fed_chart.h"

// One device value over the last hour with up to six band lines: the high and low ends of a
// range, a limit band and an alert band. The host reads the items from the trend definition and
// pushes each value through IDtmTrendControl, band values first and the item value last, which
// redraws and so samples; only the two items that scale the y axis come by subscription. Its
// buttons only arm a pointer mode, which the next mouse press on the chart puts into effect.
//
// What bad input does:
// - NaN and infinities are stored as they come, 1.7E+308 as a gap.
// - A Null or text value (item or band) fails the drawing with 94 or 13 before the store
//   moves; the picture stays.
// - Limits reversed draw a scale that runs downward; equal limits leave the chart to scale
//   itself over the data; limits at both ends of the doubles overflow (6) and fail the drawing.
// - A definition that lacks a required attribute is read as far as it goes (one line, 91); a
//   band without its item names draws no line; without "trendSource" the item's line has the
//   chart's line colour and no name; children of other names are ignored, and of two of the
//   same name the first counts.
// - A control smaller than 6630 by 3610 twips grows; the height above 1 that Home may ask for
//   is brought back into range by the viewer.
namespace tessaline {

// The plotted item of a definition, in the order of the type library's record.
struct ItemSource {
  std::string Label;
  std::string itemName;
  std::string Color;
  Variant ItemValue;
  bool IsAvailable = false;
};

// One band: an empty item name says that its line is not drawn.
struct RangeSource {
  std::string Label;
  std::string Color;
  std::string ItemNameHigh;
  Variant ItemValueHigh;
  std::string ItemNameLow;
  Variant ItemValueLow;
  bool IsAvailable = false;
};

class DTMMultiTrendControl : public HostFedChart,
                             public virtual IDtmTrendControl,
                             public virtual IDtmDataSubscriptionControl {
 public:
  static std::shared_ptr<DTMMultiTrendControl> create();
  static void describeMembers(MemberTableBuilder<DTMMultiTrendControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMMultiTrendControl>(); }

  // The logger is "DtmDynamicTrend", as the fast trend's.
  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;

  Ref<Object> IDtmTrendControl_TrendDataDef() override { return definition_; }
  // Keeps the node and reads it; what an earlier definition left stays where this one reads
  // nothing.
  void IDtmTrendControl_TrendDataDef(Ref<Object> node) override;
  Variant IDtmTrendControl_ItemValue() override { return values_[kItem]; }
  // Stores the value, enables DataRateTimer and redraws.
  void IDtmTrendControl_ItemValue(const Variant& value) override;
  // The band values are only stored: they show at the next item value.
  Variant IDtmTrendControl_RangeHighValue() override { return values_[kRangeHigh]; }
  void IDtmTrendControl_RangeHighValue(const Variant& value) override;
  Variant IDtmTrendControl_RangeLowValue() override { return values_[kRangeLow]; }
  void IDtmTrendControl_RangeLowValue(const Variant& value) override;
  Variant IDtmTrendControl_AlertHighValue() override { return values_[kAlertHigh]; }
  void IDtmTrendControl_AlertHighValue(const Variant& value) override;
  Variant IDtmTrendControl_AlertLowValue() override { return values_[kAlertLow]; }
  void IDtmTrendControl_AlertLowValue(const Variant& value) override;
  Variant IDtmTrendControl_LimitHighValue() override { return values_[kLimitHigh]; }
  void IDtmTrendControl_LimitHighValue(const Variant& value) override;
  Variant IDtmTrendControl_LimitLowValue() override { return values_[kLimitLow]; }
  void IDtmTrendControl_LimitLowValue(const Variant& value) override;
  // The chart's title and the y axis title.
  std::string IDtmTrendControl_XLabel() override { return xLabel_; }
  void IDtmTrendControl_XLabel(const std::string& value) override;
  std::string IDtmTrendControl_YLabel() override { return yLabel_; }
  void IDtmTrendControl_YLabel(const std::string& value) override;
  // On the class only: the let is ignored and the get is empty.
  std::string IDtmTrendControl_LowerRange() { return {}; }
  void IDtmTrendControl_LowerRange(const std::string&) {}
  std::string IDtmTrendControl_UpperRange() { return {}; }
  void IDtmTrendControl_UpperRange(const std::string&) {}

  // The two items of the y limits and an empty slot; the let is ignored.
  Variant IDtmDataSubscriptionControl_SubscriptionItems() override;
  void IDtmDataSubscriptionControl_SubscriptionItems(const Variant&) override {}
  // A value of a limit item, compared by exact name; no redraw.
  void IDtmDataSubscriptionControl_UpdateSubscriptionValues(const std::string& name,
                                                            const Variant& value) override;

  void createChart() { createChart(frame_->viewer()); }
  void createChart(platform::ChartViewer& viewer);
  // The control's pointer modes: a click arms, the next mouse press acts.
  void HandScroll_Click();
  void zoomIn_Click();
  void ZoomOut_Click();
  void Home_Click();
  void MultiChartViewer_MouseDown();

  platform::ChartViewer& MultiChartViewer() { return frame_->viewer(); }
  const ItemSource& trendSourceRec() const { return trendSource_; }
  const RangeSource& rangeSourceRec() const { return bands_[0]; }
  const RangeSource& limitSourceRec() const { return bands_[1]; }
  const RangeSource& alertSourceRec() const { return bands_[2]; }
  const std::string& lowerRangeItem() const { return lowerRangeItem_; }
  const std::string& upperRangeItem() const { return upperRangeItem_; }
  double lowerRangeValue() const { return lowerRangeValue_; }
  double upperRangeValue() const { return upperRangeValue_; }
  bool showLegend() const { return showLegend_; }
  bool hasZoomedIn() const { return hasZoomedIn_; }
  double axisMin() const { return axisMin_; }
  double axisMax() const { return axisMax_; }
  std::vector<double> timeStamps() const { return times_.ordered(); }
  std::vector<double> itemSeries() const { return series_[kItem].ordered(); }
  std::vector<double> rangeHighSeries() const { return series_[kRangeHigh].ordered(); }
  std::vector<double> limitLowSeries() const { return series_[kLimitLow].ordered(); }
  std::vector<double> alertHighSeries() const { return series_[kAlertHigh].ordered(); }

 private:
  DTMMultiTrendControl();

  // The seven lines; the bands in the order appendSample takes them.
  enum Line : size_t {
    kAlertHigh,
    kAlertLow,
    kLimitHigh,
    kLimitLow,
    kRangeHigh,
    kRangeLow,
    kItem,
    kLines
  };
  void ReadTrendNode();
  void readBand(const Ref<platform::XmlNode>& node, const char* child, RangeSource& band);
  void appendSample();
  void catchUp();
  void addBand(platform::chart::Layer& layer, const RangeSource& band, Line high, Line low);
  void scaleYAxis(platform::chart::XYPlot& chart, platform::ChartViewer& viewer);
  void recentreVerticalView();
  void Resize();

  Ref<platform::XmlNode> definition_;
  ItemSource trendSource_;
  std::array<RangeSource, 3> bands_;  // range, limit, alert
  std::string lowerRangeItem_, upperRangeItem_;
  double lowerRangeValue_ = 0, upperRangeValue_ = 0;
  bool showLegend_ = false;
  std::array<Variant, kLines> values_;
  SampleRing times_;
  std::vector<SampleRing> series_;
  double nextDataTime_;
  std::string xLabel_, yLabel_;
  double axisMin_ = 0, axisMax_ = 0;
  TimeWindow view_{0, 0, 0};
  bool zoomInArmed_ = false, zoomOutArmed_ = false, handArmed_ = false;
  bool hasZoomedIn_ = false;
};

}  // namespace tessaline
