#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tessaline/platform/chart.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/chart/label_format.h"
#include "tessaline/platform/chart/paint.h"
#include "tessaline/platform/chart/scale.h"
#include "tessaline/platform/picture.h"

// The chart engine behind the chart interfaces: each chart object keeps what it is told and
// draws it all at makeChart2.
namespace tessaline::chart {

// Arguments as the engine reads them. A number that is no number raises 13 (Null 94); a
// colour that is no whole 32-bit value (NaN, infinities, out of range) is no colour.
double argNumber(const Variant& value);
uint32_t argColor(const Variant& value);
std::string argText(const Variant& value);
bool argFlag(const Variant& value);
// The numbers of an array; elements that are no number (Empty, text, objects) are gaps (the
// no-value mark). A value that is no array raises 13.
std::vector<double> argSeries(const Variant& value);

// The bytes of a drawn image in a makeChart2 format; 5 for a format it doesn't write.
// `opaque` when the picture was drawn on an opaque background, so that no pixel needs laying
// on white.
Variant encodeChart(platform::PixelImage image, const Variant& format, bool opaque);

// ---- Meter ----------------------------------------------------------------------------

struct MeterScene {
  int32_t width = 1, height = 1;
  uint32_t background = kPaletteBase, edge = kNoColor;
  int32_t raised = 0;
  double cx = 0, cy = 0, radius = 0, startAngle = -90, endAngle = 90;
  bool roundedFrame = false;
  uint32_t frameColor = kNoColor;
  double corners[4] = {0, 0, 0, 0};
  TextStyle labelStyle{"", 8, kTextColor, 0};
  bool hasScale = false;
  double lower = 0, upper = 0, major = 0, minor = 0, micro = 0;
  struct Zone {
    double start, end, startRadius, endRadius;
    uint32_t fill, edge;
  };
  std::vector<Zone> zones;
  std::string labelFormat = "{value}";
  bool labelInside = false;
  double labelOffset = 4;
  std::vector<std::pair<double, std::string>> extraLabels;
  struct Pointer {
    double value;
    uint32_t fill, edge;
  };
  std::vector<Pointer> pointers;
  struct Text {
    double x, y;
    std::string text;
    TextStyle style;
    int32_t alignment;
  };
  std::vector<Text> texts;

  // The meter's angle of a value: the scale's sweep, a pointer standing at most a twentieth of
  // the sweep beyond either end.
  double angleOf(double value) const;
  // Positions of the finest ticks the scale has.
  std::vector<double> finestTicks() const;
  platform::PixelImage render() const;
};

class MeterChart : public platform::chart::Meter {
 public:
  MeterChart(int32_t width, int32_t height, uint32_t background, uint32_t edge, int32_t raised);
  void setMeter(const Variant& cx, const Variant& cy, const Variant& radius,
                const Variant& startAngle, const Variant& endAngle) override;
  void setRoundedFrame(const Variant& extColor, const Variant& r1, const Variant& r2,
                       const Variant& r3, const Variant& r4) override;
  Ref<Object> setLabelStyle(const Variant& font, const Variant& fontSize, const Variant& fontColor,
                            const Variant& fontAngle) override;
  void setScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                const Variant& minorTick, const Variant& microTick) override;
  void addZone(const Variant& startValue, const Variant& endValue, const Variant& startRadius,
               const Variant& endRadius, const Variant& fillColor,
               const Variant& edgeColor) override;
  void setLabelFormat(const Variant& format) override;
  Ref<Object> addPointer(const Variant& value, const Variant& fillColor,
                         const Variant& edgeColor) override;
  Ref<Object> addText(const Variant& x, const Variant& y, const Variant& text, const Variant& font,
                      const Variant& fontSize, const Variant& fontColor, const Variant& alignment,
                      const Variant& angle, const Variant& vertical) override;
  void setLabelPos(const Variant& labelInside, const Variant& labelOffset) override;
  Variant getTicks() override;
  void addLabel(const Variant& position, const Variant& label) override;
  Variant makeChart2(const Variant& format) override;

  const MeterScene& scene() const { return scene_; }

 private:
  MeterScene scene_;
};

// ---- XY chart -------------------------------------------------------------------------

struct AxisState {
  enum class Kind { Auto, Linear, Date };
  Kind kind = Kind::Auto;
  double lower = 0, upper = 0, major = 0, minor = 0;
  bool roundMin = true, roundMax = true;
  double majorSpacing = 0, minorSpacing = 0;  // 0: the axis's own default
  std::string labelFormat;                    // empty: the default of the scale's kind
  TextStyle labelStyle{"", 8, kTextColor, 0};
  std::string title;
  TextStyle titleStyle{"arialbd.ttf", 10, kTextColor, 0};
  double width = 1;
  Scale settled;
};

struct BoxState {
  std::string text;
  TextStyle style;
  uint32_t background = kNoColor, edge = kNoColor;
  int32_t effect = 0;  // 0 flat; otherwise glassy
  double width = 0;    // 0: fits its content
};

struct DataSet {
  std::vector<double> values;
  uint32_t color = 0;
  std::string name;
};

struct LayerState {
  std::vector<double> xs;
  bool hasX = false;
  std::vector<DataSet> sets;
  double lineWidth = 1;
};

struct XYScene {
  int32_t width = 1, height = 1;
  uint32_t background = kPaletteBase, edge = kNoColor;
  int32_t raised = 0;
  bool hasPlotArea = false;
  Rect plot;
  uint32_t plotBackground = 0xFFFFFF, plotAltBackground = kNoColor, plotEdge = kNoColor;
  uint32_t hGrid = 0xC0C0C0, vGrid = kNoColor;
  std::shared_ptr<BoxState> title;
  std::shared_ptr<BoxState> legend;
  double legendX = 0, legendY = 0;
  int32_t legendColumns = 0;
  AxisState xAxis, yAxis;
  std::vector<std::shared_ptr<LayerState>> layers;

  Rect plotRect() const;
  // Settles both axes from their settings and the data.
  void layout();
  platform::PixelImage render();
};

class AxisImpl : public platform::chart::Axis {
 public:
  AxisImpl(std::shared_ptr<XYScene> scene, AxisState& state)
      : scene_(std::move(scene)), state_(state) {}
  Ref<Object> setTitle(const Variant& text, const Variant& font, const Variant& fontSize,
                       const Variant& fontColor) override;
  void setLabelFormat(const Variant& format) override;
  Ref<Object> setLabelStyle(const Variant& font, const Variant& fontSize, const Variant& fontColor,
                            const Variant& fontAngle) override;
  void setTickDensity(const Variant& majorSpacing, const Variant& minorSpacing) override;
  void setDateScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                    const Variant& minorTick) override;
  void setLinearScale(const Variant& lower, const Variant& upper, const Variant& majorTick,
                      const Variant& minorTick) override;
  void setRounding(const Variant& roundMin, const Variant& roundMax) override;
  void setWidth(const Variant& width) override;
  double getMinValue() override;
  double getMaxValue() override;

 private:
  void setScale(AxisState::Kind kind, const Variant& lower, const Variant& upper,
                const Variant& majorTick, const Variant& minorTick);

  std::shared_ptr<XYScene> scene_;  // keeps the state alive
  AxisState& state_;
};

class BoxImpl : public platform::chart::Box {
 public:
  explicit BoxImpl(std::shared_ptr<BoxState> state) : state_(std::move(state)) {}
  void setBackground(const Variant& color, const Variant& edgeColor,
                     const Variant& effect) override;
  void setWidth(const Variant& width) override;

 private:
  std::shared_ptr<BoxState> state_;
};

class LayerImpl : public platform::chart::Layer {
 public:
  explicit LayerImpl(std::shared_ptr<LayerState> state) : state_(std::move(state)) {}
  void setXData(const Variant& xData) override;
  Ref<Object> addDataSet(const Variant& data, const Variant& color, const Variant& name) override;
  void setLineWidth(const Variant& width) override;

 private:
  std::shared_ptr<LayerState> state_;
};

class XYChartImpl : public platform::chart::XYPlot {
 public:
  XYChartImpl(int32_t width, int32_t height, uint32_t background, uint32_t edge, int32_t raised);
  Ref<Object> setPlotArea(const Variant& x, const Variant& y, const Variant& width,
                          const Variant& height, const Variant& bgColor, const Variant& altBgColor,
                          const Variant& edgeColor, const Variant& hGridColor,
                          const Variant& vGridColor) override;
  void setClipping(const Variant& margin) override;
  Ref<platform::chart::Box> addTitle(const Variant& text, const Variant& font,
                                     const Variant& fontSize, const Variant& fontColor,
                                     const Variant& bgColor, const Variant& edgeColor) override;
  Ref<platform::chart::Box> addLegend2(const Variant& x, const Variant& y, const Variant& noOfCols,
                                       const Variant& font, const Variant& fontSize) override;
  Ref<platform::chart::Axis> xAxis() override;
  Ref<platform::chart::Axis> yAxis() override;
  Ref<platform::chart::Layer> addLineLayer(const Variant& data, const Variant& color,
                                           const Variant& name, const Variant& depth) override;
  Ref<platform::chart::Layer> addLineLayer2(const Variant& dataCombineMethod,
                                            const Variant& depth) override;
  Variant formatValue(const Variant& value, const Variant& format) override;
  void layout() override;
  Variant makeChart2(const Variant& format) override;

  const XYScene& scene() const { return *scene_; }

 private:
  std::shared_ptr<XYScene> scene_;
  std::shared_ptr<AxisImpl> xAxis_, yAxis_;
};

}  // namespace tessaline::chart
