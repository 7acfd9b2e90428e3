#pragma once

#include "tessaline/frame/interfaces.h"
#include "tessaline/trends/host_fed_chart.h"

// One curve, y against x, from two arrays that the host hands over, drawn when the host asks
// or the viewport moves. It keeps no history; zooming and scrolling move over the data on both
// axes, and zooming out all the way returns to the plain full view.
//
// What bad input does:
// - Arrays of different lengths: the line pairs points as far as both go; the y scale counts
//   every y. No x: no line. No y: the drawing fails with 9 and the picture stays.
// - NaN as the first y is both ends of the scale (no comparison with it holds), and the chart
//   scales itself; later it is a gap. Infinite y values are the ends, and the chart scales
//   itself. NaN and infinities in x are gaps.
// - x out of order is drawn in the order given; all y equal leave the chart to scale itself;
//   reversed x limits draw a scale that runs backwards.
// - Ten million points draw: the cost grows with the points, and each line is reduced to a few
//   points a pixel column before it is drawn.
// - A control of no size draws a chart of no pixels; it has no least size.
// - A definition that lacks an attribute is read as far as it goes (one line, 91); without
//   "lineColor" the curve has the chart's line colour.
namespace tessaline {

class DTMWaveFormControl : public HostFedChart, public virtual IDtmWaveFormControl {
 public:
  static std::shared_ptr<DTMWaveFormControl> create();
  static void describeMembers(MemberTableBuilder<DTMWaveFormControl>& table);
  const MemberTable& members() const override { return memberTableOf<DTMWaveFormControl>(); }
  ~DTMWaveFormControl() override;

  void IDTMControl_Init(Ref<GenericDtm> genericDtm) override;

  Ref<Object> IDtmWaveFormControl_TrendDataDef() override { return definition_; }
  void IDtmWaveFormControl_TrendDataDef(Ref<Object> node) override;
  std::string IDtmWaveFormControl_XLabel() override { return xLabel_; }
  void IDtmWaveFormControl_XLabel(const std::string& value) override;
  std::string IDtmWaveFormControl_YLabel() override { return yLabel_; }
  void IDtmWaveFormControl_YLabel(const std::string& value) override;
  std::string IDtmWaveFormControl_title() override { return title_; }
  void IDtmWaveFormControl_title(const std::string& value) override;
  // Copies that replace the arrays; no redraw. A value that is no array fails with 13.
  void IDtmWaveFormControl_SetXAxisValues(const Variant& values) override;
  void IDtmWaveFormControl_SetYAxisValues(const Variant& values) override;
  // The x scale of the plain pointer mode; no redraw.
  void IDtmWaveFormControl_SetXLowerValue(const Variant& value) override { xLower_ = value; }
  void IDtmWaveFormControl_SetXUpperValue(const Variant& value) override { xUpper_ = value; }
  void IDtmWaveFormControl_SetXUnit(const Variant&) override {}
  void IDtmWaveFormControl_SetYUnit(const Variant&) override {}
  void IDtmWaveFormControl_DrawChart() override;

  // The pointer modes of the frame; Home returns to the full view when there are arrays.
  void Home_Click();

  platform::ChartViewer& ChartViewer1() { return frame_->viewer(); }
  const std::string& lineColor() const { return lineColor_; }
  const std::string& lowerRange() const { return lowerRange_; }
  const std::string& upperRange() const { return upperRange_; }
  bool showLegend() const { return showLegend_; }
  double xMin() const { return xMin_; }
  double xMax() const { return xMax_; }
  double yMin() const { return yMin_; }
  double yMax() const { return yMax_; }
  bool zoomedOutFlag() const { return zoomedOutFlag_; }

 private:
  DTMWaveFormControl();
  void ReadTrendNode();
  void scaleAxes(platform::chart::XYPlot& chart);

  Ref<platform::XmlNode> definition_;
  std::string lowerRange_, upperRange_, lineColor_;
  bool showLegend_ = false;
  // Not allocated until the host sets them.
  Variant xValues_, yValues_;
  Variant xLower_, xUpper_;
  std::string xLabel_, yLabel_, title_;
  double xMin_ = 0, xMax_ = 0, yMin_ = 0, yMax_ = 0;
  bool zoomedOutFlag_ = false;
};

}  // namespace tessaline
