// The multi-trend (its definition with the bands, the samples of seven lines, the drawing's
// chart calls, the armed pointer modes) and the waveform (arrays set by the host, scales on both
// axes, zooming out back to the full view).
#include "tessaline/trends/multi_trend.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "chart_test.h"
#include "tessaline/trends/waveform.h"

namespace tessaline {
namespace {

using testing::joined;
using testing::kNoValue;
using testing::samples;

constexpr const char* kDefinition =
    "<trend lowerRange='Low' upperRange='High' isLegend='true'>"
    "<trendSource color='FF0000' label='Flow' itemName='PV'/>"
    "<rangeSource color='00FF00' label='Range' itemNameHi='RH' itemNameLow='RL'/>"
    "<limitSource itemHiincludeIf='hasHigh' itemLowincludeIf=' ' color='0000FF' label='Limit' "
    "itemNameHi='LH' itemNameLow='LL'/>"
    "<alertSource itemHiincludeIf='no' itemLowincludeIf='no' color='FF8800' label='Alert' "
    "itemNameHi='AH' itemNameLow='AL'/>"
    "</trend>";

class ChartControls : public testing::ChartTest {
 protected:
  std::shared_ptr<DTMMultiTrendControl> multi(const char* definition = kDefinition) {
    auto trend = DTMMultiTrendControl::create();
    trend->IDTMControl_Init(host);
    trend->IDtmControl_Name("MT");
    trend->IDtmTrendControl_TrendDataDef(definition ? testing::element(definition) : nullptr);
    trend->IDtmTrendControl_XLabel("Flow, last hour");
    trend->IDtmTrendControl_YLabel("m3/h");
    return trend;
  }
};

// ---- The definition ------------------------------------------------------------------------

TEST_F(ChartControls, TheDefinitionKeepsEachBandsLinesAsItsConditionsSay) {
  host->evaluate = [](const std::string& expression) { return expression != "no"; };
  auto trend = multi();
  EXPECT_EQ(trend->lowerRangeItem(), "Low");
  EXPECT_TRUE(trend->showLegend());
  EXPECT_EQ(trend->trendSourceRec().Color, "16711680");
  EXPECT_EQ(trend->trendSourceRec().ItemValue, Variant("PV"));
  EXPECT_EQ(trend->rangeSourceRec().ItemNameLow, "RL");
  // A blank condition is asked of the host and not heeded.
  EXPECT_EQ(trend->limitSourceRec().ItemNameHigh, "LH");
  EXPECT_EQ(trend->limitSourceRec().ItemNameLow, "LL");
  std::vector<std::string> asked;
  for (const auto& call : host->callsOf("EvaluateCondition")) asked.push_back(call.arguments[0]);
  EXPECT_EQ(asked, (std::vector<std::string>{"hasHigh", "", "no", "no"}));
  // Both lines of the alert band dropped: the band is empty, its colour never read.
  EXPECT_TRUE(trend->alertSourceRec().Color.empty());
  EXPECT_TRUE(trend->alertSourceRec().ItemNameHigh.empty());
  EXPECT_TRUE(host->errorLines().empty());
}

TEST_F(ChartControls, AFaultyDefinitionStopsWhereItStands) {
  auto noLegend = multi("<trend lowerRange='L' upperRange='U'><trendSource color='1'/></trend>");
  EXPECT_EQ(noLegend->upperRangeItem(), "U");
  EXPECT_TRUE(noLegend->trendSourceRec().Color.empty()) << "no source is read";
  ASSERT_EQ(host->errorLines().size(), 1u);
  EXPECT_EQ(host->errorLines()[0].rfind("Error on Trend ReadTrendNode91", 0), 0u);
  EXPECT_FALSE(multi("<t lowerRange='' upperRange='' isLegend='True'/>")->showLegend());
  multi(nullptr);
  EXPECT_EQ(host->errorLines().back(), "TrendNode is null for trendMT");
  // A second definition that drops a line leaves the earlier name in place.
  host->evaluate = [](const std::string&) { return false; };
  auto trend = multi();
  host->evaluate = [](const std::string&) { return true; };
  trend->IDtmTrendControl_TrendDataDef(testing::element(kDefinition));
  EXPECT_EQ(trend->limitSourceRec().ItemNameHigh, "LH");
  // A band without its item names stops the reading there; its lines are not drawn.
  trend = multi(
      "<t lowerRange='Low' upperRange='High' isLegend='false'>"
      "<trendSource color='FF0000' label='Flow' itemName='PV'/>"
      "<rangeSource color='0000FF' label='Range'/></t>");
  EXPECT_EQ(host->errorLines().back().rfind("Error on Trend ReadTrendNode91", 0), 0u);
  EXPECT_EQ(trend->rangeSourceRec().Label, "Range");
  trend->IDtmTrendControl_ItemValue(Variant(1));
  EXPECT_FALSE(drew("layer.addDataSet(<array 0 to 1499>, \"255\", \"Range\")"));
  // Without a trend source the item's line has no colour and no name: the chart's own colour.
  trend = multi("<t lowerRange='Low' upperRange='High' isLegend='true'/>");
  trend->IDtmTrendControl_ItemValue(Variant(1));
  EXPECT_TRUE(drew("layer.addDataSet(<array 0 to 1499>, \"\", \"\")"));
  EXPECT_TRUE(trend->MultiChartViewer().Picture());
  // A child of another name is no band; of two of the same name, the first counts.
  host->takeCalls();
  trend = multi(
      "<t lowerRange='Low' upperRange='High' isLegend='true'>"
      "<speedSource color='00FF00' label='Speed' itemNameHi='a' itemNameLow='b'/>"
      "<limitSource color='0000FF' label='First' itemNameHi='LH' itemNameLow='LL'/>"
      "<limitSource color='00FFFF' label='Second' itemNameHi='X' itemNameLow='Y'/></t>");
  EXPECT_TRUE(host->errorLines().empty());
  EXPECT_EQ(trend->limitSourceRec().Label, "First");
  EXPECT_EQ(trend->limitSourceRec().ItemNameLow, "LL");
  EXPECT_TRUE(trend->rangeSourceRec().Label.empty());
}

// ---- Values and samples -------------------------------------------------------------------

TEST_F(ChartControls, BandSeriesMoveFromTheirFirstValueAndTheItemDrivesTheSamples) {
  auto trend = multi();
  EXPECT_EQ(trend->IDtmDataSubscriptionControl_SubscriptionItems().toArray().items,
            (std::vector<Variant>{Variant("Low"), Variant("High"), Variant("")}));
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", Variant(0));
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("high", Variant(100));  // case
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", Variant("120"));
  EXPECT_EQ(trend->upperRangeValue(), 120);
  trend->IDtmTrendControl_ItemValue(Variant(40));
  EXPECT_TRUE(trend->frame().DataRateTimer().Enabled());
  trend->IDtmTrendControl_RangeHighValue(Variant(90));
  clock().advance(10);
  trend->IDtmTrendControl_ItemValue(Variant(41));
  // Creation, +2.5, +5, +7.5, +10: five samples; the band joined at the second drawing.
  EXPECT_EQ(samples(trend->timeStamps()), 5u);
  const auto high = trend->rangeHighSeries();
  EXPECT_EQ(high.back(), 90);
  EXPECT_EQ(high[high.size() - 5], kNoValue);
  EXPECT_EQ(high[high.size() - 4], 90);
  EXPECT_EQ(trend->itemSeries().back(), 41);
  EXPECT_EQ(trend->limitLowSeries().back(), kNoValue) << "never given a value";
  // A value that can't be a double fails the drawing's sample, logged by its catch block.
  trend->IDtmTrendControl_AlertHighValue(Variant("high"));
  clock().advance(3);
  trend->IDtmTrendControl_ItemValue(Variant(42));
  EXPECT_EQ(host->errorLines().back().rfind("Error on createChart 13 ,Description = ", 0), 0u);
}

TEST_F(ChartControls, BandValuesAreOnlyStored) {
  auto trend = multi();
  auto& window = headless::user(trend->window());
  window.takePropertyChanges();
  log->clear();
  trend->IDtmTrendControl_RangeHighValue(Variant(1));
  trend->IDtmTrendControl_RangeLowValue(Variant(2));
  trend->IDtmTrendControl_LimitHighValue(Variant(3));
  trend->IDtmTrendControl_LimitLowValue(Variant(4));
  trend->IDtmTrendControl_AlertHighValue(Variant(5));
  trend->IDtmTrendControl_AlertLowValue(Variant(6));
  EXPECT_EQ(window.takePropertyChanges(), std::vector<std::string>{});
  EXPECT_TRUE(log->lines().empty());
  EXPECT_EQ(trend->IDtmTrendControl_LimitLowValue(), Variant(4));
}

// ---- Drawing ------------------------------------------------------------------------------

// The calls of a multi-trend's drawing, in parts: everything up to its lines (the legend when
// it has one, the clock read by the catching up), the item's line under its time axis, and the
// ending (the exponent guard reads both ends).
std::vector<std::string> head(bool legend) {
  std::vector<std::string> calls = {
      "api.XYChart(738, 484, 16053492, 0, 0)",
      "chart.setPlotArea(95, 80, 538.74, 285.56, 16777215, -1, -1, 13421772, 13421772)",
      "chart.setClipping(0)",
      "chart.addTitle(\"Flow, last hour\", \"timesbi.ttf\", 15, -65534, -16777216, -16777216)",
      "api.glassEffect(3, 8, 5)",
      "title.setBackground(14540253, 0, 16975877)"};
  if (legend) {
    calls.insert(calls.end(),
                 {"chart.addLegend2(100, 26, 4, \"arialbd.ttf\", 9)",
                  "legend.setBackground(-16777216, -16777216, 0)", "legend.setWidth(540)"});
  }
  calls.insert(calls.end(), {"yAxis.setTitle(\"m3/h\", \"arialbd.ttf\", 10, -65534)",
                             "xAxis.setTickDensity(75, 15)", "xAxis.setWidth(0)",
                             "yAxis.setWidth(0)", "api.chartTime(2026, 11, 23, 8, 0, 0)"});
  return calls;
}
std::vector<std::string> itemLine(double start) {
  return {"xAxis.setDateScale(" + Variant(start).toText() + ", " + Variant(start + 3600).toText() +
              ", 360, 0)",
          "xAxis.setLabelFormat(\"{value|hh:nn:ss}\")",
          "chart.addLineLayer2(0, 0)",
          "layer.setLineWidth(3)",
          "layer.addDataSet(<array 0 to 1499>, \"16711680\", \"Flow\")",
          "layer.setXData(<array 0 to 1499>)",
          "xAxis.setLabelStyle(\"SSERIFE.FON\", 8, 0, 20)"};
}
const std::vector<std::string> kEnd = {"yAxis.getMaxValue()", "yAxis.getMinValue()",
                                       "chart.makeChart2(2)"};
const std::vector<std::string> kExponentEnd = {"yAxis.getMaxValue()", "yAxis.getMinValue()",
                                               "yAxis.setLabelFormat(\"{value|e5}\")",
                                               "chart.makeChart2(2)"};

constexpr const char* kPlain =
    "<trend lowerRange='Low' upperRange='High' isLegend='false'>"
    "<trendSource color='FF0000' label='Flow' itemName='PV'/></trend>";

TEST_F(ChartControls, TheMultiTrendsDrawingCallByCall) {
  host->evaluate = [](const std::string& expression) { return expression != "hasHigh"; };
  const std::vector<std::string> bands = {
      "layer.addDataSet(<array 0 to 1499>, \"65280\", \"\")",
      "layer.addDataSet(<array 0 to 1499>, \"65280\", \"Range\")",
      "layer.addDataSet(<array 0 to 1499>, \"255\", \"Limit\")",  // the low line alone
      "layer.addDataSet(<array 0 to 1499>, \"16746496\", \"\")",
      "layer.addDataSet(<array 0 to 1499>, \"16746496\", \"Alert\")"};
  // The legend comes with the bands' definition; the scale is the device limits'.
  const struct {
    const char* definition;
    double low, high;
    std::vector<std::string> bands;
    std::string scale;
    const std::vector<std::string>& end;
  } cases[] = {
      {kDefinition, 0, 100, bands, "0, 100, 10", kEnd},
      {kPlain, 0, 100, {}, "0, 100, 10", kEnd},
      {kPlain, 0, 99999, {}, "0, 99999, 9999.9", kEnd},
      {kPlain, 0, 100000, {}, "0, 100000, 10000", kExponentEnd},
      {kPlain, -100000, 0, {}, "-100000, 0, 10000", kExponentEnd},
  };
  for (const auto& c : cases) {
    auto trend = multi(c.definition);
    trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", Variant(c.low));
    trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", Variant(c.high));
    trend->IDtmTrendControl_ItemValue(Variant(40));
    const std::vector<std::string> scale = {"yAxis.setLinearScale(" + c.scale + ", 0)",
                                            "yAxis.getMinValue()", "yAxis.getMaxValue()"};
    EXPECT_EQ(lastDrawing(), joined({head(c.definition == kDefinition),
                                     itemLine(trend->timeStamps().back()), c.bands, scale, c.end}))
        << c.definition << " " << c.high;
  }
}

TEST_F(ChartControls, AButtonArmsAModeThatTheNextPressOnTheChartPutsIntoEffect) {
  auto trend = multi();
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", Variant(100));
  trend->IDtmTrendControl_ItemValue(Variant(40));
  platform::ChartViewer& viewer = trend->MultiChartViewer();
  auto& chart = headless::user(viewer);
  // Zoom out before any zoom in: only the pointer changes.
  headless::user(trend->frame().ZoomOut()).click();
  EXPECT_EQ(viewer.MousePointer(), 53);
  chart.click(100, 100);
  EXPECT_EQ(viewer.MouseUsage(), 0);
  headless::user(trend->frame().zoomIn()).click();
  EXPECT_EQ(viewer.MouseUsage(), 0) << "armed, not yet in effect";
  chart.click(300, 200);
  EXPECT_EQ(viewer.MouseUsage(), 3);
  EXPECT_TRUE(trend->hasZoomedIn());
  EXPECT_DOUBLE_EQ(viewer.ViewPortHeight(), 0.5) << "the first press already zooms";
  EXPECT_TRUE(drew("yAxis.setRounding(False, False)"));
  headless::user(trend->frame().ZoomOut()).click();
  EXPECT_EQ(viewer.MouseUsage(), 4);
  EXPECT_EQ(viewer.MousePointer(), 52);
  chart.click(300, 200);
  EXPECT_EQ(viewer.MouseUsage(), 4) << "a later press leaves the mode as it is";
  // Home undoes the vertical zoom around the middle: width and height 0.5 give height 1.
  headless::user(trend->frame().Home()).click();
  EXPECT_EQ(viewer.MouseUsage(), 0);
  EXPECT_DOUBLE_EQ(viewer.ViewPortHeight(), 1);
  EXPECT_DOUBLE_EQ(viewer.ViewPortTop(), 0);
  EXPECT_FALSE(trend->hasZoomedIn());
  // Half the width and the whole height: the height of 2 that this asks for is brought into
  // range by the viewer, and the chart drawn again.
  viewer.ViewPortWidth(0.5);
  log->clear();
  headless::user(trend->frame().Home()).click();
  EXPECT_DOUBLE_EQ(viewer.ViewPortHeight(), 1);
  EXPECT_DOUBLE_EQ(viewer.ViewPortTop(), 0);
  EXPECT_DOUBLE_EQ(viewer.ViewPortWidth(), 0.5);
  EXPECT_TRUE(drew("chart.makeChart2(2)"));
  headless::user(trend->frame().HandScroll()).click();
  chart.drag(100, 100, 120, 140);
  EXPECT_EQ(viewer.MouseUsage(), 1);
}

TEST_F(ChartControls, InAZoomModeTheFirstScaleIsTheFullRangeAndTheViewportPicksFromIt) {
  auto trend = multi(kPlain);
  const auto pressInZoomMode = [&] {
    headless::user(trend->frame().zoomIn()).click();
    log->clear();
    headless::user(trend->MultiChartViewer()).click(0, 481);  // the lower left quarter
    return drawings();
  };
  const auto drawing = [&](const std::vector<std::string>& scale, const auto& end) {
    return joined({head(false), itemLine(trend->timeStamps().back()), scale, end});
  };
  // No drawing before the press: the press draws on the chart's own scale, the zoom that
  // follows shows a part of it exactly.
  auto drawn = pressInZoomMode();
  EXPECT_EQ(
      drawn,
      (std::vector{drawing({"chart.layout()", "yAxis.getMinValue()", "yAxis.getMaxValue()"}, kEnd),
                   drawing({"yAxis.setLinearScale(-1, 0, 0, 0)", "yAxis.setRounding(False, False)"},
                           kEnd)}));
  // Limits beyond the plain labels: the first scale came from them, and both the viewport's
  // ends and the scale's ends switch the labels.
  trend = multi(kPlain);
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", Variant(1000000));
  trend->IDtmTrendControl_ItemValue(Variant(1));
  const auto exponent = [&](const std::string& ends) {
    return drawing({"yAxis.setLinearScale(" + ends + ", 0, 0)", "yAxis.setRounding(False, False)",
                    "yAxis.setLabelFormat(\"{value|e5}\")"},
                   kExponentEnd);
  };
  drawn = pressInZoomMode();
  EXPECT_EQ(drawn, (std::vector{exponent("0, 1000000"), exponent("0, 500000")}));
}

TEST_F(ChartControls, ResizeLogsItsTwoLinesAndKeepsTheLeastSize) {
  auto trend = multi();
  headless::user(trend->window()).resize(1000, 7260);
  // Widening the control inside the handler raises Resize again, as on the classic form.
  const std::vector<std::string> expected = {
      "UserControl_Resize called", "UserControl_Resize called", "UserControl_Resize end6630 7260",
      "UserControl_Resize end6630 7260"};
  EXPECT_EQ(host->errorLines(), expected);
}

// ---- Bad input to the multi-trend ------------------------------------------------------

TEST_F(ChartControls, TheMultiTrendsBadValuesAndLimits) {
  const double inf = std::numeric_limits<double>::infinity();
  const std::string ten = "yAxis.setLinearScale(0, 100, 10, 0)";
  const struct {
    const char* what;
    Variant item;
    double low, high;
    const char* line;   // the drawing's log line; none when it goes through
    std::string scale;  // the y scale drawn
    size_t samples;     // after three drawings' worth of time
  } cases[] = {
      {"NaN", Variant(std::nan("")), 0, 100, nullptr, ten, 3},
      {"infinity", Variant(inf), 0, 100, nullptr, ten, 3},
      {"1.7E+308, a gap", Variant(1.7e308), 0, 100, nullptr, ten, 3},
      // A value that is no number moves nothing: each index stays one moment in all series.
      {"Null", Variant::null(), 0, 100,
       "Error on createChart 94 ,Description = Invalid use of Null", "", 1},
      {"text", Variant("x"), 0, 100, "Error on createChart 13 ,Description = Type mismatch", "", 1},
      {"reversed limits", Variant(5), 100, 0, nullptr, "yAxis.setLinearScale(100, 0, -10, 0)", 3},
      {"equal limits", Variant(5), 50, 50, nullptr, "yAxis.setLinearScale(50, 50, 0, 0)", 3},
      {"limits at both ends of the doubles", Variant(5), -1.7e308, 1.7e308,
       "Error on createChart 6 ,Description = Overflow", "", 3},
  };
  for (const auto& c : cases) {
    auto trend = multi(kPlain);
    trend->IDtmTrendControl_RangeHighValue(Variant(3));
    trend->IDtmTrendControl_ItemValue(Variant(40));
    trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", Variant(c.low));
    trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", Variant(c.high));
    host->takeCalls();
    clock().advance(5);
    trend->IDtmTrendControl_ItemValue(c.item);
    EXPECT_EQ(host->errorLines(),
              c.line ? std::vector<std::string>{c.line} : std::vector<std::string>{})
        << c.what;
    EXPECT_TRUE(c.scale.empty() || drew(c.scale)) << c.what;
    EXPECT_EQ(samples(trend->timeStamps()), c.samples) << c.what;
    EXPECT_EQ(samples(trend->rangeHighSeries()), c.samples) << c.what;
    EXPECT_EQ(trend->itemSeries()[1500 - c.samples], 40) << c.what << ": the first sample";
  }
}

// ---- The waveform -------------------------------------------------------------------------

class WaveForm : public ChartControls {
 protected:
  std::shared_ptr<DTMWaveFormControl> make() {
    auto wave = DTMWaveFormControl::create();
    wave->IDTMControl_Init(host);
    wave->IDtmControl_Name("WF");
    wave->IDtmWaveFormControl_TrendDataDef(testing::element(
        "<wave lowerRange='0' upperRange='10' lineColor='0000FF' isLegend='true'/>"));
    wave->IDtmWaveFormControl_title("Vibration");
    wave->IDtmWaveFormControl_XLabel("ms");
    wave->IDtmWaveFormControl_YLabel("mm/s");
    wave->IDtmWaveFormControl_SetXLowerValue(Variant(0));
    wave->IDtmWaveFormControl_SetXUpperValue(Variant(40));
    return wave;
  }
  static Variant values(std::initializer_list<double> numbers) {
    VariantArray array;
    for (double n : numbers) array.items.emplace_back(n);
    return Variant(std::move(array));
  }
  // The host's arrays, and the drawing it asks for then.
  static void draw(DTMWaveFormControl& wave, const Variant& xs, const Variant& ys) {
    wave.IDtmWaveFormControl_SetXAxisValues(xs);
    wave.IDtmWaveFormControl_SetYAxisValues(ys);
    wave.IDtmWaveFormControl_DrawChart();
  }
};

TEST_F(WaveForm, NothingIsDrawnBeforeTheArraysAndHomeThenOnlySetsThePointer) {
  auto wave = make();
  EXPECT_EQ(wave->lineColor(), "255");
  EXPECT_TRUE(wave->showLegend());
  wave->IDtmWaveFormControl_DrawChart();
  ASSERT_EQ(host->errorLines().size(), 1u);
  EXPECT_EQ(host->errorLines()[0].rfind("Error on Trend IDtmWaveFormControl_DrawChart", 0), 0u);
  EXPECT_FALSE(wave->ChartViewer1().Picture());
  headless::user(wave->frame().Home()).click();
  EXPECT_EQ(wave->ChartViewer1().MousePointer(), 1);
  EXPECT_FALSE(wave->ChartViewer1().Picture());
  EXPECT_THROW(wave->IDtmWaveFormControl_SetXAxisValues(Variant(3)), VbError);
}

// The wave form's drawing before its scales, for arrays with that upper bound.
std::vector<std::string> waveHead(int upperBound) {
  const std::string data = "<array 0 to " + std::to_string(upperBound) + ">";
  return {"api.XYChart(742, 487, 16053492, 0, 0)",
          "chart.setPlotArea(90, 77.7127659574468, 556.5, 304.375, 16777215, -1, -1, 13421772, "
          "-16777216)",
          "chart.setClipping(0)",
          "chart.addTitle(\"Vibration\", \"timesbi.ttf\", 15, -65534, -16777216, -16777216)",
          "api.glassEffect(3, 8, 5)",
          "title.setBackground(14540253, 0, 16975877)",
          "chart.addLineLayer(" + data + ", \"255\", \"\", 0)",
          "layer.setXData(" + data + ")",
          "yAxis.setTitle(\"mm/s\", \"arialbd.ttf\", 10, -65534)",
          "xAxis.setTitle(\"ms\", \"arialbd.ttf\", 10, -65534)"};
}
// The scales of a part of the full ranges that the viewport picks.
std::vector<std::string> viewportScales(const std::string& y, const std::string& x) {
  return {"yAxis.setLinearScale(" + y + ", 0, 0)", "yAxis.setRounding(False, False)",
          "xAxis.setLinearScale(" + x + ", 0, 0)", "xAxis.setRounding(False, False)",
          "chart.makeChart2(2)"};
}

TEST_F(WaveForm, ThePlainViewShowsAllWithATenthOfTheGreatestValueAsTick) {
  const struct {
    std::initializer_list<double> ys;
    const char* yScale;
  } cases[] = {{{2, 5, 3}, "yAxis.setLinearScale(2, 5, 0.5, 0)"},
               {{0, 0, 0}, "yAxis.setLinearScale(0, 0, 0, 0)"}};  // the chart picks the tick
  for (const auto& c : cases) {
    auto wave = make();
    draw(*wave, values({0, 10, 20}), values(c.ys));
    EXPECT_EQ(lastDrawing(),
              joined({waveHead(2),
                      {"xAxis.setLinearScale(0, 40, 4, 0)", c.yScale, "chart.makeChart2(2)"}}));
    EXPECT_TRUE(wave->ChartViewer1().Picture());
  }
}

TEST_F(WaveForm, ZoomingMovesOverBothAxesAndZoomingOutAllTheWayShowsAllAgain) {
  auto wave = make();
  VariantArray xs, ys;
  for (int i = 0; i <= 400; ++i) {
    xs.items.emplace_back(i * 0.1);
    ys.items.emplace_back(i % 40 < 20 ? 8.0 : -8.0);
  }
  draw(*wave, Variant(std::move(xs)), Variant(std::move(ys)));
  platform::ChartViewer& viewer = wave->ChartViewer1();
  // The first drawing in a zoom mode takes the chart's own scales as the full ranges.
  headless::user(wave->frame().zoomIn()).click();
  wave->IDtmWaveFormControl_DrawChart();
  EXPECT_EQ(lastDrawing(),
            joined({waveHead(400),
                    {"chart.layout()", "yAxis.getMinValue()", "yAxis.getMaxValue()",
                     "xAxis.getMinValue()", "xAxis.getMaxValue()", "chart.makeChart2(2)"}}));
  EXPECT_EQ(wave->xMin(), 0);
  EXPECT_EQ(wave->xMax(), 40);
  // The upper left quarter; the y range is the data's again, as at every drawing.
  headless::user(viewer).click(0, 0);
  EXPECT_EQ(lastDrawing(), joined({waveHead(400), viewportScales("0, 8", "0, 20")}));
  // Scrolled with both bars to their ends: the lower right quarter.
  headless::user(wave->frame().HandScroll()).click();
  headless::user(wave->frame().HScrollbar()).drag(32767, 1);
  headless::user(wave->frame().VScrollbar()).drag(32767, 1);
  EXPECT_EQ(lastDrawing(), joined({waveHead(400), viewportScales("-8, 0", "20, 40")}));
  headless::user(wave->frame().ZoomOut()).click();
  headless::user(viewer).click(0, 0);
  EXPECT_EQ(viewer.ViewPortTop(), 0);
  EXPECT_TRUE(wave->zoomedOutFlag());
  wave->IDtmWaveFormControl_DrawChart();
  EXPECT_EQ(viewer.MouseUsage(), 0) << "zoomed out all the way";
  wave->IDtmWaveFormControl_DrawChart();
  EXPECT_TRUE(drew("xAxis.setLinearScale(0, 40, 4, 0)"));
  EXPECT_FALSE(wave->zoomedOutFlag());
}

TEST_F(WaveForm, EachKindOfBadArrayHasItsOutcome) {
  const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
  const std::string subscript =
      "Error on Trend IDtmWaveFormControl_DrawChart9 ,Description = Subscript out of range";
  const std::string x = "0, 40, 4, 0|", plain = x + "1, 3, 0.3, 0";
  const struct {
    const char* what;
    Variant xs, ys;
    double xLower, xUpper;
    std::string scales;  // the x and y scales drawn, or the log line
  } cases[] = {
      // The line pairs points as far as both arrays go; the y scale counts every y.
      {"fewer x", values({0, 10}), values({1, 2, 3}), 0, 40, plain},
      {"more x", values({0, 10, 20, 30}), values({1, 2, 3}), 0, 40, plain},
      {"no x", values({}), values({1, 2, 3}), 0, 40, plain},
      {"no y", values({0, 1}), values({}), 0, 40, subscript},
      // No comparison with a NaN holds: first, it is both ends, and the chart scales itself;
      // later, the scan passes over it and the line has a gap.
      {"NaN first", values({0, 1, 2}), values({nan, 2, 3}), 0, 40,
       x + "1.#QNAN, 1.#QNAN, 1.#QNAN, 0"},
      {"NaN later", values({0, 1, 2}), values({1, nan, 3}), 0, 40, plain},
      {"infinite y", values({0, 1, 2}), values({1, inf, -inf}), 0, 40,
       x + "-1.#INF, 1.#INF, 1.#INF, 0"},
      {"NaN and infinite x, gaps", values({nan, inf, 2}), values({1, 2, 3}), 0, 40, plain},
      {"x not sorted, drawn in order", values({20, 0, 10}), values({1, 2, 3}), 0, 40, plain},
      {"all y equal: the chart widens the range", values({0, 1, 2}), values({5, 5, 5}), 0, 40,
       x + "5, 5, 0.5, 0"},
      {"reversed x limits: the chart picks the tick", values({0, 1, 2}), values({1, 2, 3}), 40, 0,
       "40, 0, 0, 0|1, 3, 0.3, 0"},
  };
  for (const auto& c : cases) {
    auto wave = make();
    wave->IDtmWaveFormControl_SetXLowerValue(Variant(c.xLower));
    wave->IDtmWaveFormControl_SetXUpperValue(Variant(c.xUpper));
    wave->IDtmWaveFormControl_SetXAxisValues(c.xs);
    wave->IDtmWaveFormControl_SetYAxisValues(c.ys);
    host->takeCalls();
    wave->IDtmWaveFormControl_DrawChart();
    const size_t bar = c.scales.find('|');
    const bool drawn = bar != std::string::npos;
    EXPECT_EQ(host->errorLines(), drawn ? std::vector<std::string>{} : std::vector{c.scales})
        << c.what;
    EXPECT_EQ(static_cast<bool>(wave->ChartViewer1().Picture()), drawn) << c.what;
    if (!drawn) continue;
    const auto lines = lastDrawing();
    EXPECT_EQ(std::vector<std::string>(lines.end() - 3, lines.end() - 1),
              (std::vector<std::string>{"xAxis.setLinearScale(" + c.scales.substr(0, bar) + ")",
                                        "yAxis.setLinearScale(" + c.scales.substr(bar + 1) + ")"}))
        << c.what;
  }
}

TEST_F(WaveForm, TenMillionPointsAreDrawnAndAControlOfNoSizeToo) {
  auto wave = make();
  // One array for both axes: a diagonal, and half the memory.
  VariantArray points;
  points.items.reserve(10'000'000);
  for (int i = 0; i < 10'000'000; ++i) points.items.emplace_back(i * 4e-6);
  const Variant shared(std::move(points));
  draw(*wave, shared, shared);
  EXPECT_TRUE(drew("yAxis.setLinearScale(0, 39.999996, 3.9999996, 0)"));
  EXPECT_TRUE(wave->ChartViewer1().Picture());
  auto small = make();
  small->window().Width(0);
  small->window().Height(0);
  draw(*small, values({0, 1}), values({0, 1}));
  EXPECT_TRUE(drew("api.XYChart(0, 0, 16053492, 0, 0)"));
  EXPECT_TRUE(small->ChartViewer1().Picture());
  EXPECT_TRUE(host->errorLines().empty());
}

TEST_F(WaveForm, ADefinitionWithoutItsColourDrawsInTheChartsLineColour) {
  auto wave = DTMWaveFormControl::create();
  wave->IDTMControl_Init(host);
  wave->IDtmWaveFormControl_TrendDataDef(
      testing::element("<wave lowerRange='0' upperRange='10'/>"));
  EXPECT_EQ(host->errorLines().back().rfind("Error on Trend ReadTrendNode91", 0), 0u);
  EXPECT_EQ(wave->upperRange(), "10");
  draw(*wave, values({0, 1, 2}), values({1, 2, 3}));
  EXPECT_TRUE(drew("chart.addLineLayer(<array 0 to 2>, \"\", \"\", 0)"));
  EXPECT_TRUE(wave->ChartViewer1().Picture());
}

TEST_F(WaveForm, TheHostSetsItsWriteOnlyMembersByName) {
  auto wave = make();
  wave->let("IDtmWaveFormControl_SetXAxisValues", values({0, 10, 20}));
  wave->let("IDtmWaveFormControl_SetYAxisValues", values({2, 5, 3}));
  wave->let("IDtmWaveFormControl_SetXLowerValue", Variant(5));
  wave->let("IDtmWaveFormControl_SetXUpperValue", Variant(25));
  wave->let("IDtmWaveFormControl_SetXUnit", Variant("Hz"));
  wave->let("IDtmWaveFormControl_SetYUnit", Variant("g"));
  wave->IDtmWaveFormControl_DrawChart();
  EXPECT_TRUE(drew("xAxis.setLinearScale(5, 25, 2.5, 0)"));
  EXPECT_TRUE(drew("yAxis.setLinearScale(2, 5, 0.5, 0)"));
  EXPECT_EQ(testing::errorOf([&] { wave->get("IDtmWaveFormControl_SetXUnit"); }), 438);
}

}  // namespace
}  // namespace tessaline
