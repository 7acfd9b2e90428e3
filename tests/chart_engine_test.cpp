#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support.h"
#include "tessaline/platform/chart/engine.h"
#include "tessaline/platform/chart_recorder.h"

namespace tessaline::chart {
namespace {

using platform::PictureFromBytes;
using platform::PixelImage;
using testing::errorOf;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

Variant series(std::initializer_list<double> values) {
  VariantArray out;
  for (double v : values) out.items.emplace_back(v);
  return Variant(std::move(out));
}

// A chart whose plot area is the whole white picture, without axis lines.
std::unique_ptr<XYChartImpl> bareChart(int32_t width, int32_t height) {
  auto chart = std::make_unique<XYChartImpl>(width, height, 0xFFFFFF, kNoColor, 0);
  chart->setPlotArea(0, 0, width, height, 0xFFFFFF, -1, -1, -1, -1);
  chart->xAxis()->setWidth(0);
  chart->yAxis()->setWidth(0);
  return chart;
}

PixelImage drawn(platform::chart::XYPlot& chart) {
  const auto picture = PictureFromBytes(chart.makeChart2(0));
  if (!picture) ADD_FAILURE() << "the chart drew no picture";
  return picture ? picture->image() : PixelImage{};
}

// A pixel of the image; nothing (0) outside it.
uint32_t pixel(const PixelImage& image, int x, int y) {
  const size_t at = static_cast<size_t>(y * image.width + x);
  return at < image.pixels.size() ? image.pixels[at] : 0;
}

// The dial of a gauge, from 0 to 100.
MeterScene dial() {
  MeterScene scene;
  scene.width = 208, scene.height = 145, scene.cx = 104, scene.cy = 117, scene.radius = 85;
  scene.hasScale = true, scene.lower = 0, scene.upper = 100;
  return scene;
}

class ChartEngine : public ::testing::Test {
 protected:
  void SetUp() override { install(); }
  void TearDown() override {
    platform::chart::stopRecordingChartCalls();
    platform::chart::setChartEngine(nullptr);
    platform::setPictureDecoder(nullptr);
  }
};

// ---- Scales ------------------------------------------------------------------------------

TEST(ChartScale, NiceStepsFollowOneTwoFive) {
  const std::pair<double, double> rows[] = {{0.7, 1}, {1, 1},    {1.2, 2},      {3, 5},
                                            {7, 10},  {12, 20},  {0.031, 0.05}, {0, 0},
                                            {-1, 0},  {kNaN, 0}, {kInf, 0}};
  for (auto [raw, step] : rows) EXPECT_DOUBLE_EQ(niceStep(raw), step) << raw;
}

// The ends of the automatic scale for a request.
std::pair<double, double> endsOf(const AutoScaleRequest& request) {
  const Scale s = autoScale(request);
  return {s.lower, s.upper};
}

TEST(ChartScale, AutomaticScalesRoundOutAndLeanOnZero) {
  AutoScaleRequest r{.dataMin = 3, .dataMax = 97};
  EXPECT_EQ(endsOf(r), std::pair(0.0, 100.0));
  EXPECT_DOUBLE_EQ(autoScale(r).major, 10);
  r.dataMin = 90;  // far from zero: the scale stays near the data
  EXPECT_EQ(endsOf(r), std::pair(90.0, 97.0));
  r.dataMin = 12.3, r.dataMax = 47.7, r.zeroAffinity = false, r.roundMax = false;
  EXPECT_EQ(endsOf(r), std::pair(10.0, 47.7));
  r.fixedEnds = true, r.fixedLower = 10, r.fixedUpper = 20, r.roundMin = false;
  EXPECT_EQ(endsOf(r), std::pair(10.0, 20.0));
  r.fixedLower = 20, r.fixedUpper = 10;  // reversed ends keep their order
  EXPECT_EQ(endsOf(r), std::pair(20.0, 10.0));
}

TEST(ChartScale, DegenerateDataGivesAUsableScale) {
  const auto [noneLower, noneUpper] = endsOf({});  // no data at all
  EXPECT_LT(noneLower, noneUpper);
  const auto [flatLower, flatUpper] = endsOf({.dataMin = 5, .dataMax = 5, .zeroAffinity = false});
  EXPECT_LE(flatLower, 5);
  EXPECT_GE(flatUpper, 5);
  EXPECT_LT(flatLower, flatUpper);
  const Scale huge = autoScale({.dataMin = -1.6e308, .dataMax = 1.6e308});
  EXPECT_TRUE(std::isfinite(huge.major));
  EXPECT_GT(huge.major, 0);
  EXPECT_LE(tickPositions(huge, huge.major).size(), 20u);
}

TEST(ChartScale, TicksStopAtTheirLimitInsteadOfLooping) {
  Scale s{0, 100, 0, 0, 0};
  EXPECT_EQ(tickPositions(s, 10).size(), 11u);
  EXPECT_TRUE(tickPositions(s, 1e-12).empty());
  EXPECT_TRUE(tickPositions(s, 0).empty());
  EXPECT_TRUE(tickPositions(s, kNaN).empty());
  EXPECT_TRUE(tickPositions(Scale{0, kInf, 0, 0, 0}, 1).empty());
  const auto reversed = tickPositions(Scale{100, 0, 0, 0, 100}, -25);
  ASSERT_EQ(reversed.size(), 5u);
  EXPECT_DOUBLE_EQ(reversed.front(), 100);
  EXPECT_DOUBLE_EQ(reversed.back(), 0);
}

// Ends that differ by a hair compared with their size would make a tick counter pass 2^53,
// where adding one no longer changes a double; such a spacing gives no ticks and ends.
TEST(ChartScale, TicksThatTheEndsCantTellApartAreNone) {
  EXPECT_TRUE(tickPositions(Scale{0.9999999999999996, 1.0, 0, 0, 0}, 1e-17).empty());
  EXPECT_TRUE(tickPositions(Scale{2.8e276, 2.8e276 * (1 + 4e-16), 0, 0, 0}, 2.8e260).empty());
  EXPECT_TRUE(tickPositions(Scale{1e20, 1e20 + 65536, 0, 0, 0}, 1).empty());
  EXPECT_EQ(tickPositions(Scale{1e15, 1e15 + 4, 0, 0, 0}, 1).size(), 5u);
}

TEST(ChartScale, ChartTimeCountsSecondsFromTheYearOne) {
  EXPECT_DOUBLE_EQ(chartTime(1, 1, 1, 0, 0, 0), 0);
  EXPECT_DOUBLE_EQ(chartTime(1970, 1, 1, 0, 0, 0), 62135596800.0);
  EXPECT_DOUBLE_EQ(chartTime(2024, 3, 1, 0, 0, 0) - chartTime(2024, 2, 28, 0, 0, 0), 2 * 86400.0);
  CivilTime t;
  ASSERT_TRUE(civilFromChartTime(chartTime(2026, 11, 23, 10, 5, 7.25), t));
  EXPECT_EQ(std::vector({t.year, t.month, t.day, t.hour, t.minute}),
            std::vector<int64_t>({2026, 11, 23, 10, 5}));
  EXPECT_DOUBLE_EQ(t.second, 7.25);
  EXPECT_FALSE(civilFromChartTime(-1, t));
  EXPECT_FALSE(civilFromChartTime(kNaN, t));
  EXPECT_FALSE(civilFromChartTime(kNoValue, t));
}

// ---- Label formats and markup ------------------------------------------------------------

TEST(ChartLabels, FormatsFillTheirFields) {
  const double time = chartTime(2026, 11, 23, 10, 5, 7);
  struct R {
    const char* format;
    double value;
    const char* text;
  };
  for (const R& row :
       {R{"{value|2}", 3.14159, "3.14"}, R{"{value|0}", 2.5, "2"}, R{"{value|1}", -0.04, "0.0"},
        R{"{value|2,.}", 1234567.891, "1,234,567.89"}, R{"{value|e3}", 12346, "1.235e+04"},
        R{"{value|e5}", -0.5, "-5.00000e-01"}, R{"{value|P4}", 12.3456, "12.35"},
        R{"{value|P4}", 0.00123456, "0.001235"}, R{"{value|P4}", 123456, "123456"},
        R{"{value}", 0.1 + 0.2, "0.3"}, R{"{value|hh:nn:ss}", time, "10:05:07"},
        R{"{value|yyyy-mm-dd}", time, "2026-11-23"}, R{"{value|mmm dd}", time, "Nov 23"},
        R{"Software: <*bgColor=FFCCCC*> {value|2} ", 5, "Software: <*bgColor=FFCCCC*> 5.00 "},
        // No value, values that are no numbers and times before the calendar.
        R{"{value|2}", kNoValue, ""}, R{"{value|2}", kNaN, "NaN"},
        R{"{value|2}", -kInf, "-Infinity"}, R{"{value|hh:nn:ss}", -5, ""},
        // Text that only looks like a field is left as it is.
        R{"{valuex} and {value", 1, "{valuex} and {value"}, R{"no field", 1, "no field"}}) {
    EXPECT_EQ(formatLabel(row.format, row.value), row.text) << row.format;
  }
}

TEST(ChartLabels, MarkupSplitsTextIntoStyledRuns) {
  auto runs = parseMarkup("Software: <*bgColor=FFCCCC*> 5.00 <*/*>end");
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[0].text, "Software: ");
  EXPECT_FALSE(runs[0].background);
  EXPECT_EQ(runs[1].text, " 5.00 ");
  EXPECT_EQ(runs[1].background, 0xFFCCCCu);
  EXPECT_FALSE(runs[2].background);

  runs = parseMarkup("a<*br*>b<*color=00FF00,size=12*>c");
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_TRUE(runs[1].lineBreak);
  EXPECT_EQ(runs[2].color, 0x00FF00u);
  EXPECT_EQ(runs[2].size, 12);

  runs = parseMarkup("open <* never closed");
  ASSERT_EQ(runs.size(), 1u);
  EXPECT_EQ(runs[0].text, "open <* never closed");
  EXPECT_EQ(parseMarkup("<*bgColor=zz*>x")[0].background, std::nullopt);
}

// ---- Colours and fonts -----------------------------------------------------------------

TEST(ChartPaint, ColourValuesResolve) {
  EXPECT_FALSE(resolvePaint(kNoColor).visible());
  EXPECT_FALSE(resolvePaint(kTransparent).visible());
  const Paint red = resolvePaint(0xFF0000);
  EXPECT_EQ(red.kind, Paint::Kind::Solid);
  EXPECT_DOUBLE_EQ(red.r, 1);
  EXPECT_DOUBLE_EQ(red.a, 1);
  EXPECT_NEAR(resolvePaint(0x80FF0000).a, 127 / 255.0, 1e-9);
  EXPECT_EQ(resolvePaint(kTextColor).kind, Paint::Kind::Solid);
  EXPECT_DOUBLE_EQ(resolvePaint(kTextColor).r, 0);
  EXPECT_EQ(resolvePaint(kMetalBase + 90).kind, Paint::Kind::Metal);

  EXPECT_EQ(argColor(Variant(-65534)), kTextColor);
  EXPECT_EQ(argColor(Variant(-1)), kNoColor);
  EXPECT_EQ(argColor(Variant(4278190080.0)), kTransparent);
  EXPECT_EQ(argColor(Variant(1e20)), kNoColor);
  EXPECT_EQ(argColor(Variant(kNaN)), kNoColor);
  EXPECT_THROW(argColor(Variant("red")), VbError);
}

TEST(ChartPaint, FontNamesMapToInstalledFamilies) {
  EXPECT_EQ(fontFace("arial.ttf").family, "Liberation Sans");
  EXPECT_TRUE(fontFace("arialbd.ttf").bold);
  const FontFace times = fontFace("timesbi.ttf");
  EXPECT_EQ(times.family, "Liberation Serif");
  EXPECT_TRUE(times.bold && times.italic);
  EXPECT_EQ(fontFace("SSERIFE.FON").family, "Liberation Sans");
  EXPECT_TRUE(fontFace("bold").bold);
  EXPECT_EQ(fontFace("").family, "Liberation Sans");
  EXPECT_EQ(fontFace("C:\\Windows\\Fonts\\ARIAL.TTF").family, "Liberation Sans");
}

// ---- Meter -------------------------------------------------------------------------------

TEST_F(ChartEngine, MeterTicksGiveOnePositionPerMicroTick) {
  MeterChart meter(208, 148, kPaletteBase, 0, 0);
  meter.setScale(85, 115, 5, 2.5, 0.5);
  const Variant ticks = meter.getTicks();
  const auto& items = ticks.toArray().items;
  ASSERT_EQ(items.size(), 61u);
  for (auto [at, value] : {std::pair{0, 85.0}, {10, 90.0}, {50, 110.0}, {60, 115.0}}) {
    EXPECT_DOUBLE_EQ(items[at].toDouble(), value) << at;
  }

  meter.setScale(100, 0, -100 / 6.0, -100 / 12.0, -100 / 60.0);  // reversed
  const Variant reversedTicks = meter.getTicks();
  const auto& reversed = reversedTicks.toArray().items;
  ASSERT_EQ(reversed.size(), 61u);
  EXPECT_DOUBLE_EQ(reversed.front().toDouble(), 100);
  EXPECT_NEAR(reversed.back().toDouble(), 0, 1e-9);

  meter.setScale(0, 0, 0, 0, 0);  // no span, no ticks: just the one end
  EXPECT_EQ(meter.getTicks().toArray().items.size(), 1u);
  meter.setScale(0, 100, 50, 10, 1e-9);  // too fine to count falls back to the next kind
  EXPECT_EQ(meter.getTicks().toArray().items.size(), 11u);
  // Ends that the ticks can't be told apart on draw with no ticks, and end.
  meter.setScale(2.8e276, 2.8e276 * (1 + 4e-16), 2.8e260, 1.4e260, 2.8e259);
  EXPECT_LE(meter.getTicks().toArray().items.size(), 2u);
  EXPECT_TRUE(PictureFromBytes(meter.makeChart2(2)));
}

TEST_F(ChartEngine, AxesWithEndsAHairApartSettleAndDraw) {
  XYChartImpl chart(300, 200, 0xFFFFFF, kNoColor, 0);
  chart.setPlotArea(40, 10, 240, 160, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
  chart.addLineLayer(series({0.9999999999999996, 1.0}), 0xFF0000, "", 0);
  chart.yAxis()->setLinearScale(0.9999999999999996, 1.0, 0, 0);
  chart.xAxis()->setLinearScale(2.8e276, 2.8e276 * (1 + 4e-16), 2.8e260, 0);
  EXPECT_TRUE(PictureFromBytes(chart.makeChart2(0)));
}

TEST_F(ChartEngine, PointersAtNoValueAreHiddenAndFarValuesStayNearTheDial) {
  MeterScene scene = dial();
  EXPECT_DOUBLE_EQ(scene.angleOf(0), -90);
  EXPECT_DOUBLE_EQ(scene.angleOf(50), 0);
  EXPECT_DOUBLE_EQ(scene.angleOf(100 + 100 / 60.0), 93);  // the parked value shows past the end
  EXPECT_DOUBLE_EQ(scene.angleOf(1e300), 99);
  EXPECT_DOUBLE_EQ(scene.angleOf(-1e300), -99);
  scene.upper = 0;  // an empty scale puts values at either end
  EXPECT_DOUBLE_EQ(scene.angleOf(0), -90);
  EXPECT_DOUBLE_EQ(scene.angleOf(5), 90);

  scene.upper = 100;
  const auto bare = scene.render();
  scene.pointers.push_back(MeterScene::Pointer{kNoValue, 0xFF0000, 0});
  scene.pointers.push_back(MeterScene::Pointer{kNaN, 0xFF0000, 0});
  EXPECT_EQ(scene.render().pixels, bare.pixels);
  scene.pointers.push_back(MeterScene::Pointer{50, 0xFF0000, 0});
  EXPECT_NE(scene.render().pixels, bare.pixels);
}

TEST_F(ChartEngine, ZonesPaintTheirRing) {
  MeterScene scene = dial();
  scene.zones.push_back(MeterScene::Zone{50, 100, 73, 80, 0x00FF00, kNoColor});
  const auto image = scene.render();
  // At 45 degrees right of the top, radius 76.5: inside the zone.
  const double a = 45 * 3.14159265358979 / 180;
  const int x = static_cast<int>(104 + 76.5 * std::sin(a)),
            y = static_cast<int>(117 - 76.5 * std::cos(a));
  EXPECT_EQ(pixel(image, x, y), 0xFF00FF00u);
  EXPECT_NE(pixel(image, 208 - 1 - x, y), 0xFF00FF00u) << "the same place on the left half";
}

TEST_F(ChartEngine, MeterDrawsThroughBadArgumentsWithoutFailing) {
  auto api = platform::chart::createChartApi();
  for (double size : {0.0, -5.0, kNaN, kInf}) {
    auto meter = api->AngularMeter(size, size, api->meterBackgroundColor(kNaN), kNaN, kInf);
    meter->setMeter(kNaN, kInf, -5, kNaN, 1e300);
    meter->setScale(kNaN, kInf, 0, -1, kNaN);
    meter->addZone(kNaN, 1e300, -1, 1e9, 1e20, -1);
    meter->addPointer(kInf, 0, 0);
    meter->addText(0, 0, "bad \xff\xfe text \xe2\x82", "no-such-font.ttf", -3, 0, 42, kNaN, false);
    meter->addLabel(kNaN, "x");
    const auto picture = PictureFromBytes(meter->makeChart2(2));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Width(), 1);
  }
  auto meter = api->AngularMeter(208, 145, 0xFFFFFF, 0, 0);
  EXPECT_THROW(meter->setScale("low", 100, 1, 1, 1), VbError);
  EXPECT_EQ(errorOf([&] { meter->makeChart2(3); }), err::InvalidCall) << "no format 3";
}

// ---- XY chart ----------------------------------------------------------------------------

TEST_F(ChartEngine, LayoutSettlesAxesForTheirEnds) {
  XYChartImpl chart(600, 400, kPaletteBase, kNoColor, 0);
  chart.setPlotArea(50, 20, 500, 300, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
  chart.addLineLayer(series({12.3, 20, kNoValue, 47.7}), 0xFF0000, "", 0);
  auto y = chart.yAxis();
  y->setLinearScale(0, 0, 0, 0);  // equal ends: the data decides
  y->setRounding(true, false);
  chart.layout();
  EXPECT_LE(y->getMinValue(), 12.3);
  EXPECT_DOUBLE_EQ(y->getMaxValue(), 47.7);

  y->setLinearScale(12.3, 47.7, 0, 0);
  y->setRounding(false, false);
  EXPECT_DOUBLE_EQ(y->getMinValue(), 12.3);
  EXPECT_DOUBLE_EQ(y->getMaxValue(), 47.7);

  y->setLinearScale(0, 100, 10, 0);
  EXPECT_DOUBLE_EQ(y->getMaxValue(), 100);
  y->setLinearScale(kNoValue, kInf, 0, 0);  // ends that aren't numbers: automatic
  EXPECT_TRUE(std::isfinite(y->getMaxValue()));
}

TEST_F(ChartEngine, LinesLeaveGapsAtNoValue) {
  const auto chart = bareChart(200, 100);
  chart->xAxis()->setLinearScale(0, 4, 1, 0);
  chart->yAxis()->setLinearScale(0, 2, 1, 0);
  chart->addLineLayer(series({1, 1, kNoValue, 1, 1}), 0xFF0000, "", 0)->setLineWidth(3);
  const PixelImage image = drawn(*chart);
  EXPECT_EQ(pixel(image, 25, 50), 0xFFFF0000u);   // between the first two points
  EXPECT_EQ(pixel(image, 100, 50), 0xFFFFFFFFu);  // the gap
  EXPECT_EQ(pixel(image, 175, 50), 0xFFFF0000u);
}

// Thin lines are written into the pixels by the engine itself: a level line at a pixel's centre
// inks that row fully and nothing above or below, a line half-way between two rows shares its ink,
// and a line of 100,000 points that swings from end to end keeps its full height in every column
// although it is drawn as a few points per column.
TEST_F(ChartEngine, ThinLinesInkTheirPixelsAndManyPointsKeepTheirExtremes) {
  const auto draw = [](Variant values) {
    const auto chart = bareChart(200, 100);
    chart->yAxis()->setLinearScale(0, 100, 0, 0);
    chart->yAxis()->setRounding(false, false);
    chart->addLineLayer(values, 0x0000FF, "", 0);
    return drawn(*chart);
  };
  // y 49.5 of 100 maps to the centre of row 50.
  const PixelImage centred = draw(series({49.5, 49.5, 49.5}));
  EXPECT_EQ(pixel(centred, 100, 50), 0xFF0000FFu);
  EXPECT_EQ(pixel(centred, 100, 49), 0xFFFFFFFFu);
  EXPECT_EQ(pixel(centred, 100, 51), 0xFFFFFFFFu);
  const PixelImage between = draw(series({50, 50, 50}));
  for (int row : {49, 50}) {
    const uint32_t shared = pixel(between, 100, row);
    EXPECT_GT(shared & 0xFF, 0xF0u) << row;  // blue stays
    EXPECT_LT(shared >> 16 & 0xFF, 0xA0u) << row;
    EXPECT_GT(shared >> 16 & 0xFF, 0x60u) << row;  // red halved
  }
  VariantArray swings;
  for (int i = 0; i < 100000; ++i) swings.items.emplace_back(i % 2 ? 99.5 : 0.5);
  const PixelImage band = draw(Variant(std::move(swings)));
  for (int x : {3, 100, 196}) {
    for (int y : {0, 99}) EXPECT_LT(pixel(band, x, y) >> 16 & 0xFF, 0x80u) << x << "," << y;
  }
  // Points a world away are pulled in, not walked to.
  EXPECT_EQ(pixel(draw(series({1e300, -1e300, 1e300})), 0, 0) >> 24, 0xFFu);
}

TEST_F(ChartEngine, AReversedScaleTurnsTheAxisOver) {
  for (const bool reversed : {false, true}) {
    const auto chart = bareChart(200, 100);
    chart->yAxis()->setLinearScale(reversed ? 2 : 0, reversed ? 0 : 2, 1, 0);
    chart->addLineLayer(series({1.5, 1.5, 1.5}), 0xFF0000, "", 0)->setLineWidth(3);
    const PixelImage image = drawn(*chart);
    EXPECT_EQ(pixel(image, 100, reversed ? 75 : 25), 0xFFFF0000u) << reversed;
    EXPECT_EQ(pixel(image, 100, reversed ? 25 : 75), 0xFFFFFFFFu) << reversed;
  }
}

TEST_F(ChartEngine, LegendListsNamedDataSetsInOrder) {
  XYChartImpl chart(320, 60, 0xFFFFFF, kNoColor, 0);
  chart.setPlotArea(0, 40, 320, 20, 0xFFFFFF, -1, -1, -1, -1);
  chart.addLegend2(0, 0, 3, "arial.ttf", 9)->setWidth(308);
  auto layer = chart.addLineLayer2(0, 0);
  layer->setLineWidth(3);
  layer->addDataSet(series({}), 0xFF0000, "first");
  layer->addDataSet(series({}), 0x00FF00, "");  // no name: no entry
  layer->addDataSet(series({}), 0x0000FF, "third");
  const PixelImage image = drawn(chart);
  // Keys sit in columns of 100 pixels from x = 4, on the first row's middle line.
  const int keyRow = 4 + static_cast<int>(9 * 96.0 / 72 * 1.2 / 2);
  EXPECT_EQ(pixel(image, 12, keyRow), 0xFFFF0000u);
  EXPECT_EQ(pixel(image, 112, keyRow), 0xFF0000FFu);
  EXPECT_EQ(pixel(image, 212, keyRow), 0xFFFFFFFFu);  // the third column stays empty
}

TEST_F(ChartEngine, XYChartDrawsThroughBadData) {
  auto api = platform::chart::createChartApi();
  auto chart = api->XYChart(300, 200, 0xF4F4F4, 0, 0);
  chart->setPlotArea(kNaN, -50, 1e12, -3, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
  auto layer = chart->addLineLayer(series({}), 0xFF0000, "empty", 0);
  layer->setXData(series({1, 2, 3}));
  layer->addDataSet(series({kNaN, kInf, -kInf, 1e308, -1e308, 5}), 0x00FF00, "wild");
  chart->addLineLayer2(0, 0)->addDataSet(series({1, 2, 3, 4, 5, 6, 7}), 0x0000FF, "");
  chart->xAxis()->setDateScale(5, 5, 0, 0);
  chart->yAxis()->setLinearScale(1e300, -1e300, 1e-300, 0);
  chart->yAxis()->setTickDensity(kNaN, -1);
  chart->addLegend2(0, 0, 0, "", 9);
  chart->addTitle("\xc3\x28 title", "unknown.fon", 1e9, -1, -1, -1);
  for (int format : {0, 2, 4}) EXPECT_TRUE(PictureFromBytes(chart->makeChart2(format)));
  EXPECT_THROW(chart->addLineLayer(Variant(3.0), 0, "", 0), VbError);
}

TEST_F(ChartEngine, ChartBytesCarryTheirFormat) {
  auto api = platform::chart::createChartApi();
  auto meter = api->AngularMeter(208, 145, 0xFFFFFF, 0, 0);
  const auto bytes = [&](int format) {
    return std::dynamic_pointer_cast<platform::ByteArray>(meter->makeChart2(format).toObject())
        ->bytes();
  };
  EXPECT_EQ(bytes(0)[1], 'P');
  EXPECT_EQ(bytes(2)[0], 0xFF);
  EXPECT_EQ(bytes(2)[1], 0xD8);
  EXPECT_EQ(bytes(4)[0], 'B');
  const auto picture = PictureFromBytes(meter->makeChart2(2));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->Width(), 208);
  EXPECT_EQ(picture->Height(), 145);
}

// ---- Recorder ----------------------------------------------------------------------------

TEST_F(ChartEngine, RecorderKeepsEveryOperationInOrder) {
  auto log = platform::chart::recordChartCalls();
  auto api = platform::chart::createChartApi();
  auto meter = api->AngularMeter(208, 145, api->meterBackgroundColor(90), 0, 0);
  meter->setScale(0, 100, 100 / 6.0, 100 / 12.0, 100 / 60.0);
  meter->addText(100, 130, "50 bar", "arialbd.ttf", 8, api->TextColor(), api->Center(), 0, false);
  EXPECT_THROW(meter->addPointer("x", 0, 0), VbError);
  auto chart = api->XYChart(10, 10, 0, 0, 0);
  chart->xAxis()->setLabelFormat("{value|hh:nn:ss}");
  chart->addLineLayer2(0, 0)->addDataSet(series({1, 2}), 0xFF0000, "");
  const std::vector<std::string> expected = {
      "api.meterBackgroundColor(90)",
      "api.AngularMeter(208, 145, -130982, 0, 0)",
      "meter.setScale(0, 100, 16.6666666666667, 8.33333333333333, 1.66666666666667)",
      "meter.addText(100, 130, \"50 bar\", \"arialbd.ttf\", 8, -65534, 5, 0, False)",
      "meter.addPointer(\"x\", 0, 0)",
      "api.XYChart(10, 10, 0, 0, 0)",
      "xAxis.setLabelFormat(\"{value|hh:nn:ss}\")",
      "chart.addLineLayer2(0, 0)",
      "layer.addDataSet(<array 0 to 1>, 16711680, \"\")",
  };
  EXPECT_EQ(log->lines(), expected);

  platform::chart::stopRecordingChartCalls();
  platform::chart::createChartApi()->AngularMeter(1, 1, 0, 0, 0);
  EXPECT_EQ(log->calls().size(), expected.size());
}

}  // namespace
}  // namespace tessaline::chart
