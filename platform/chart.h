#pragma once

#include <functional>

#include "tessaline/values/object.h"
#include "tessaline/values/variant.h"

// The chart library as the chart controls reach it: an API object that makes meters and XY
// charts, and the objects those hand out. Every argument is a value, as the controls pass
// them; the engine converts and checks. Colours are 0xRRGGBB; 0xFF000000 is transparent, -1
// (0xFFFFFFFF) is none, 0xFFFF0002 (-65534) is the theme's text colour, and the engine's own
// dynamic colours (metallic gradients) are values it hands out. Operations that the controls
// call and drop return an object all the same.
namespace tessaline::platform::chart {

class Axis : public Object {
 public:
  virtual Ref<Object> setTitle(const Variant& text, const Variant& font, const Variant& fontSize,
                               const Variant& fontColor) = 0;
  virtual void setLabelFormat(const Variant& format) = 0;
  virtual Ref<Object> setLabelStyle(const Variant& font, const Variant& fontSize,
                                    const Variant& fontColor, const Variant& fontAngle) = 0;
  // The least space in pixels between the ticks of an automatic scale.
  virtual void setTickDensity(const Variant& majorSpacing, const Variant& minorSpacing) = 0;
  // A time scale in chart time (seconds); ticks in seconds, 0 for none.
  virtual void setDateScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                            const Variant& minorTick) = 0;
  // A fixed scale; a major tick of 0 chooses the ticks, and then the ends round out to a tick
  // as setRounding says.
  virtual void setLinearScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                              const Variant& minorTick) = 0;
  virtual void setRounding(const Variant& roundMin, const Variant& roundMax) = 0;
  // Line width of the axis; 0 draws no axis line.
  virtual void setWidth(const Variant& width) = 0;
  // The ends of the scale as the chart has settled it.
  virtual double getMinValue() = 0;
  virtual double getMaxValue() = 0;
};

// A title box or a legend box.
class Box : public Object {
 public:
  virtual void setBackground(const Variant& color, const Variant& edgeColor,
                             const Variant& effect) = 0;
  virtual void setWidth(const Variant& width) = 0;
};

class Layer : public Object {
 public:
  virtual void setXData(const Variant& xData) = 0;
  virtual Ref<Object> addDataSet(const Variant& data, const Variant& color,
                                 const Variant& name) = 0;
  virtual void setLineWidth(const Variant& width) = 0;
};

// A meter with a circular scale. Angles are degrees clockwise from twelve o'clock.
class Meter : public Object {
 public:
  virtual void setMeter(const Variant& cx, const Variant& cy, const Variant& radius,
                        const Variant& startAngle, const Variant& endAngle) = 0;
  virtual void setRoundedFrame(const Variant& extColor, const Variant& r1, const Variant& r2,
                               const Variant& r3, const Variant& r4) = 0;
  virtual Ref<Object> setLabelStyle(const Variant& font, const Variant& fontSize,
                                    const Variant& fontColor, const Variant& fontAngle) = 0;
  virtual void setScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                        const Variant& minorTick, const Variant& microTick) = 0;
  virtual void addZone(const Variant& startValue, const Variant& endValue,
                       const Variant& startRadius, const Variant& endRadius,
                       const Variant& fillColor, const Variant& edgeColor) = 0;
  virtual void setLabelFormat(const Variant& format) = 0;
  virtual Ref<Object> addPointer(const Variant& value, const Variant& fillColor,
                                 const Variant& edgeColor) = 0;
  virtual Ref<Object> addText(const Variant& x, const Variant& y, const Variant& text,
                              const Variant& font, const Variant& fontSize,
                              const Variant& fontColor, const Variant& alignment,
                              const Variant& angle, const Variant& vertical) = 0;
  virtual void setLabelPos(const Variant& labelInside, const Variant& labelOffset) = 0;
  // One position per tick of the finest kind the scale has (micro, else minor, else major),
  // from the lower end to the upper end, as an array with lower bound 0.
  virtual Variant getTicks() = 0;
  // Replaces the label of the tick at that position (or adds one there).
  virtual void addLabel(const Variant& position, const Variant& label) = 0;
  // The finished image in the format numbered as makeChart2 numbers them (0 PNG, 2 JPEG,
  // 4 BMP), as a ByteArray object.
  virtual Variant makeChart2(const Variant& format) = 0;
};

class XYPlot : public Object {
 public:
  virtual Ref<Object> setPlotArea(const Variant& x, const Variant& y, const Variant& width,
                                  const Variant& height, const Variant& bgColor,
                                  const Variant& altBgColor, const Variant& edgeColor,
                                  const Variant& hGridColor, const Variant& vGridColor) = 0;
  virtual void setClipping(const Variant& margin) = 0;
  virtual Ref<Box> addTitle(const Variant& text, const Variant& font, const Variant& fontSize,
                            const Variant& fontColor, const Variant& bgColor,
                            const Variant& edgeColor) = 0;
  virtual Ref<Box> addLegend2(const Variant& x, const Variant& y, const Variant& noOfCols,
                              const Variant& font, const Variant& fontSize) = 0;
  virtual Ref<Axis> xAxis() = 0;
  virtual Ref<Axis> yAxis() = 0;
  virtual Ref<Layer> addLineLayer(const Variant& data, const Variant& color, const Variant& name,
                                  const Variant& depth) = 0;
  virtual Ref<Layer> addLineLayer2(const Variant& dataCombineMethod, const Variant& depth) = 0;
  // A number through a format text ("{value|2}" and the like), as text.
  virtual Variant formatValue(const Variant& value, const Variant& format) = 0;
  // Settles the automatic scales, so that the axes can tell their ends.
  virtual void layout() = 0;
  virtual Variant makeChart2(const Variant& format) = 0;
};

class ChartApi : public Object {
 public:
  // A metallic background colour lit from that angle.
  virtual Variant meterBackgroundColor(const Variant& angle) = 0;
  virtual Ref<Meter> AngularMeter(const Variant& width, const Variant& height,
                                  const Variant& bgColor, const Variant& edgeColor,
                                  const Variant& raisedEffect) = 0;
  virtual Ref<XYPlot> XYChart(const Variant& width, const Variant& height, const Variant& bgColor,
                              const Variant& edgeColor, const Variant& raisedEffect) = 0;
  virtual Variant TextColor() = 0;
  virtual Variant Center() = 0;
  // 1.7E+308: a pointer given it is hidden, a line has a gap there.
  virtual Variant NoValue() = 0;
  virtual Variant Transparent() = 0;
  // A glassy look for a box's setBackground.
  virtual Variant glassEffect(const Variant& glareSize, const Variant& glareDirection,
                              const Variant& raisedEffect) = 0;
  // Seconds since the start of the year 1 of the proleptic Gregorian calendar.
  virtual Variant chartTime(const Variant& y, const Variant& m, const Variant& d, const Variant& h,
                            const Variant& n, const Variant& s) = 0;
};

// A new API object from the engine installed on this thread (with the call recorder around it
// when one is recording); a failure that says so when there is none.
Ref<ChartApi> createChartApi();
void setChartEngine(std::function<Ref<ChartApi>()> factory);

}  // namespace tessaline::platform::chart
