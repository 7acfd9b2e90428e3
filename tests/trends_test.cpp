// The chart frame and the two single-item trends: the frame's children and pointer modes, the
// store and its clock, the sliding window, the drawing's exact chart calls at chosen moments,
// and what each sibling does otherwise.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "chart_test.h"
#include "tessaline/trends/data_trend.h"
#include "tessaline/trends/dynamic_trend.h"
#include "tessaline/trends/multi_trend.h"
#include "tessaline/trends/waveform.h"

namespace tessaline {
namespace {

using testing::joined;
using testing::kNoValue;
using testing::samples;

// Chart time of 23 November 2026, 08:00, when each test's trends are made.
constexpr double kEight = 63931017600;
constexpr const char* kUnits =
    "<enumeration><e name='bar' code='1137' label='unit_bar'/></enumeration>";

class Trends : public testing::ChartTest {
 protected:
  void SetUp() override {
    ChartTest::SetUp();
    host->translations = {{"unit_bar", "bar"}, {"title", "Pressure"}};
  }

  template <class Trend>
  std::shared_ptr<Trend> make() {
    auto trend = Trend::create();
    trend->IDTMControl_Init(host);
    trend->IDtmControl_Name("PV");
    trend->DTMDataGaugeControl_Unit("Unit");
    trend->IDTMDataControl_Caption("title");
    trend->IDTMEnumeration_EnumDataDef(testing::element(kUnits));
    return trend;
  }
  // A value of one of the trend's items, as the host sends it.
  static void send(const auto& trend, const char* item, const Variant& value) {
    trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, value);
  }
};

// ---- The frame ---------------------------------------------------------------------------

TEST_F(Trends, TheFrameLaysOutItsChildrenAndStartsOnTheWholeRange) {
  auto trend = make<DTMDataTrendControl>();
  EXPECT_EQ(log->lines(), std::vector<std::string>{"api.chartTime(2026, 11, 23, 8, 0, 0)"})
      << "the clock read at creation";
  ChartFrame& f = trend->frame();
  EXPECT_EQ(f.zoomIn().Left(), 480);
  EXPECT_EQ(f.Home().Left(), 1440);
  EXPECT_EQ(f.HandScroll().Height(), 375);
  EXPECT_EQ(f.HScrollbar().Top(), 5520);
  EXPECT_EQ(f.VScrollbar().Left(), 10320);
  EXPECT_EQ(f.viewer().Width(), 10575);
  EXPECT_EQ(f.viewer().Height(), 5775);
  EXPECT_TRUE(refCast<platform::Picture>(f.zoomIn().Picture()));
  EXPECT_EQ(f.ChartUpdateTimer().Interval(), 250);
  EXPECT_FALSE(f.DataRateTimer().Enabled());
  EXPECT_EQ(f.viewer().ZoomDirection(), 2);
  EXPECT_EQ(f.viewer().MouseUsage(), 0);
  EXPECT_EQ(f.viewer().ViewPortHeight(), 1);
  EXPECT_EQ(trend->window().Width(), 9855);
  EXPECT_EQ(DTMDynamicTrendControl::create()->window().Width(), 10620);
  EXPECT_EQ(samples(trend->timeStamps()), 0u);
  // Visible reaches the viewer and the buttons, not the scroll bars.
  trend->IDtmControl_Visible(false);
  EXPECT_FALSE(f.viewer().Visible() || f.HandScroll().Visible() || f.Home().Visible());
  EXPECT_TRUE(f.HScrollbar().Visible());
  // A small control grows to its least size, one dimension at a time.
  trend->window().Width(3000);
  EXPECT_EQ(trend->window().Width(), 6630);
  EXPECT_EQ(trend->window().Height(), 5835);
  trend->window().Height(100);
  EXPECT_EQ(trend->window().Height(), 3610);
  trend->window().Width(8000);
  EXPECT_EQ(trend->window().Width(), 8000);
}

TEST_F(Trends, PointerModesSetTheViewersMouseAndScrollBarsMoveTheViewport) {
  auto trend = make<DTMDynamicTrendControl>();
  ChartFrame& f = trend->frame();
  headless::user(f.HandScroll()).click();
  EXPECT_EQ(f.viewer().MousePointer(), 50);
  EXPECT_EQ(f.viewer().MouseUsage(), 1);
  headless::user(f.zoomIn()).click();
  EXPECT_EQ(f.viewer().MouseUsage(), 3);
  EXPECT_FALSE(f.HandScroll().Value()) << "one button of the four stays pressed";
  headless::user(f.ZoomOut()).click();
  EXPECT_EQ(f.viewer().MouseUsage(), 4);
  headless::user(f.Home()).click();
  EXPECT_EQ(f.viewer().MouseUsage(), 0);
  EXPECT_EQ(f.viewer().MousePointer(), 1);
  EXPECT_EQ(f.viewer().ViewPortWidth(), 1) << "no mode touches the viewport";
  // With no mouse usage, a click on the chart changes nothing.
  headless::user(f.viewer()).click(100, 100);
  EXPECT_EQ(f.viewer().ViewPortHeight(), 1);
  // The bars move the viewport and redraw.
  f.viewer().ViewPortHeight(0.5);
  log->clear();
  headless::user(f.VScrollbar()).drag(32767, 2);
  EXPECT_DOUBLE_EQ(f.viewer().ViewPortTop(), 0.5);
  EXPECT_EQ(drawings().size(), 3u) << "two Scroll events and the Change";
  f.viewer().ViewPortWidth(0.25);
  headless::user(f.HScrollbar()).clickTrack(1);
  EXPECT_DOUBLE_EQ(f.viewer().ViewPortLeft(), 1.0 / 32767 * 0.75);
}

TEST(SampleStore, TheOldestFallsOffAndEverySeriesMovesWithTheTimes) {
  SampleStore store(3, 2);
  EXPECT_EQ(store.times(), (std::vector<double>{kNoValue, kNoValue, kNoValue}));
  for (double t : {1.0, 2.0, 3.0, 4.0}) store.shiftData(t, std::array{t * 10, t * 100});
  EXPECT_EQ(store.times(), (std::vector<double>{2, 3, 4}));
  EXPECT_EQ(store.series(0), (std::vector<double>{20, 30, 40}));
  EXPECT_EQ(store.series(1), (std::vector<double>{200, 300, 400}));
  EXPECT_EQ(store.newestTime(), 4);
  EXPECT_EQ(store.value(1, 0), 200);
}

// A long pause is made good by a tenth a drawing only: the data trend's catching up shows it.
TEST(TimeWindow, EntersAtTheLeftAndJumpsOnByATenth) {
  TimeWindow window{0, 0, 0};
  window.follow(kNoValue, 3600);
  EXPECT_FALSE(window.isSet());
  window.follow(1000, 3600);
  EXPECT_EQ(window.viewStart, 1000);
  EXPECT_EQ(window.viewEnd, 4600);
  window.follow(4600, 3600);
  EXPECT_EQ(window.viewStart, 1000);
  window.follow(4601, 3600);
  EXPECT_EQ(window.viewStart, 1360);
  EXPECT_EQ(window.viewEnd, 4960);
}

// ---- DTMDataTrendControl -------------------------------------------------------------------

// The data trend's range grows by 15 % around new values and never shrinks; the fast trend's
// stretches to 15 around every drawn value.
TEST_F(Trends, EachTrendsRangeFollowsItsValues) {
  const auto feed = [&](const auto& trend, std::vector<std::array<double, 3>> steps) {
    for (const auto& [value, min, max] : steps) {
      send(trend, "PV", value);
      EXPECT_DOUBLE_EQ(trend->axisMin(), min) << value;
      EXPECT_DOUBLE_EQ(trend->axisMax(), max) << value;
    }
  };
  feed(make<DTMDataTrendControl>(), {{100, 85, 115}, {110, 85, 126.5}, {90, 76.5, 126.5}});
  EXPECT_EQ(host->errorLines().front(), " GAUGE Prev Value Initialized for PV");
  const auto debug = host->callsOf("LogDebug");
  ASSERT_FALSE(debug.empty());
  EXPECT_EQ(debug.back().arguments.at(1),
            " GAUGE Prev Upper value taken for PVPrev Value = 126.5 Currnet Value= 103.5");
  feed(make<DTMDynamicTrendControl>(), {{100, 0, 115}, {120, 0, 135}, {-50, -65, 135}});
  // A first value of zero, and one below zero, whose limits come out the wrong way round.
  for (const auto& [first, min, max] :
       std::vector<std::tuple<int, double, double>>{{0, -2, 2}, {-10, -8.5, -11.5}}) {
    auto trend = make<DTMDataTrendControl>();
    trend->CalculateRange(Variant(first));
    EXPECT_DOUBLE_EQ(trend->axisMin(), min) << first;
    EXPECT_DOUBLE_EQ(trend->axisMax(), max) << first;
  }
}

TEST_F(Trends, AValueWhoseLimitsLeaveTheDoublesFailsToTheHostAndChangesNothing) {
  auto trend = make<DTMDataTrendControl>();
  send(trend, "PV", 100.0);
  log->clear();
  for (double value : {1.7e308, -1.7e308}) {
    EXPECT_EQ(testing::errorOf([&] { send(trend, "PV", value); }), err::Overflow) << value;
  }
  EXPECT_EQ(trend->axisMin(), 85);
  EXPECT_EQ(trend->axisMax(), 115);
  EXPECT_EQ(trend->IDTMDataControl_Value(), Variant("100"));
  EXPECT_TRUE(log->lines().empty());
}

// The unit's title is its entry's text, taken as given when the entry comes later; without an
// entry the data trend shows the value itself and the fast trend "Unknown Units".
TEST_F(Trends, TheUnitsTitleIsItsEntryOrElseTheValueOrUnknown) {
  const auto title = [](const std::string& text) {
    return "yAxis.setTitle(\"" + text + "\", \"arialbd.ttf\", 10, -65534)";
  };
  auto data = make<DTMDataTrendControl>();
  send(data, "PV", 5.0);
  send(data, "Unit", 1137);
  EXPECT_TRUE(drew(title("bar"))) << "the unit arriving alone redraws with the new title";
  send(data, "Unit", 9);
  EXPECT_TRUE(drew(title("9")));
  auto fast = make<DTMDynamicTrendControl>();
  send(fast, "Unit", 7);
  send(fast, "PV", 1.0);
  EXPECT_TRUE(drew(title("Unknown Units")));
  host->translations["psi"] = "Pfund";
  const auto renamed = [&](auto trend) {
    trend->IDTMEnumeration1_UpdateEnumString("1137", "psi");
    send(trend, "Unit", 1137);
    send(trend, "PV", 5.0);
    EXPECT_TRUE(drew(title("psi")));
  };
  renamed(make<DTMDataTrendControl>());
  renamed(make<DTMDynamicTrendControl>());
}

TEST_F(Trends, TheDataTrendCatchesUpAndItsWindowSlidesWithinTheStore) {
  auto trend = make<DTMDataTrendControl>();
  send(trend, "PV", 5.0);
  const double first = trend->timeStamps().back();
  EXPECT_EQ(trend->timeWindow().viewStart, first);
  // Two hours without a value: one drawing fills the store, the window jumps a tenth.
  clock().advance(7200);
  send(trend, "Unit", 1137);
  EXPECT_EQ(samples(trend->timeStamps()), 1500u);
  EXPECT_EQ(trend->timeWindow().viewStart, first + 360);
  EXPECT_EQ(trend->dataSeries().front(), 5);
  // With no new value there is no drawing, however long the clock runs.
  log->clear();
  clock().advance(600);
  EXPECT_TRUE(log->lines().empty());
}

// ---- DTMDynamicTrendControl ----------------------------------------------------------------

TEST_F(Trends, TheFastTrendSamplesFourTimesASecondInBursts) {
  auto trend = make<DTMDynamicTrendControl>();
  clock().advance(10);
  EXPECT_EQ(samples(trend->timeStamps()), 0u) << "the timer starts with the first value";
  send(trend, "PV", 100.0);
  log->clear();
  clock().advance(0.25);
  // The first firing fills the time since the creation: 10 s of four samples.
  EXPECT_EQ(samples(trend->timeStamps()), 41u);
  EXPECT_EQ(log->lines(), std::vector<std::string>{"api.chartTime(2026, 11, 23, 8, 0, 10)"})
      << "the timer reads the clock and draws nothing";
  clock().advance(1);
  EXPECT_EQ(samples(trend->timeStamps()), 45u);
}

TEST_F(Trends, TheFastTrendFedFasterThanItsBeatStillSamplesOnTheBeat) {
  auto trend = make<DTMDynamicTrendControl>();
  log->clear();
  for (int i = 0; i < 50; ++i) {
    send(trend, "PV", 100.0);
    clock().advance(0.2);
  }
  clock().advance(0.1);  // past the beat at ten seconds, short of the next
  EXPECT_EQ(std::ranges::count_if(
                log->lines(), [](const std::string& l) { return l.starts_with("api.chartTime"); }),
            40)
      << "one clock reading a beat";
  // The clock of the last beat is a few microseconds past the tenth second: its sample is in.
  const auto stamps = trend->timeStamps();
  ASSERT_EQ(samples(stamps), 41u);
  EXPECT_EQ(stamps.back(), kEight + 10);
  for (size_t i = stamps.size() - 41; i + 1 < stamps.size(); ++i) {
    EXPECT_EQ(stamps[i + 1] - stamps[i], 0.25);
  }
}

TEST_F(Trends, TheFastTrendsUnitWaitsForTheNextValueAndTextThatIsNoNumberStopsTheDrawing) {
  auto trend = make<DTMDynamicTrendControl>();
  send(trend, "PV", 100.0);
  const Ref<Object> picture = trend->ChartViewer1().Picture();
  log->clear();
  send(trend, "Unit", 1137);
  EXPECT_TRUE(log->lines().empty());
  EXPECT_EQ(trend->unitValue(), Variant(1137));
  // The range can't stretch around a text: the drawing ends there and the picture stays.
  send(trend, "PV", "high");
  EXPECT_EQ(log->lines(), std::vector<std::string>{"api.XYChart(708, 383, 16053492, 0, 0)"});
  EXPECT_EQ(host->errorLines().back(), "Error on createChart 13 ,Description = Type mismatch");
  EXPECT_EQ(trend->ChartViewer1().Picture(), picture);
}

TEST_F(Trends, TheFastTrendKeepsOneTooltipWindowAndTakesItAlong) {
  const headless::Tooltips& tips = headless::current().tooltips();
  auto trend = make<DTMDynamicTrendControl>();
  host->translations["d"] = "Outlet pressure";
  const auto define = [&] {
    trend->IDTMDataControl_DataItemDef(testing::element("<dataItem name='PV' description='d'/>"));
  };
  for (int i = 0; i < 3; ++i) define();
  ASSERT_TRUE(trend->tooltip());
  EXPECT_EQ(trend->dataItem().Description, "d");
  EXPECT_EQ(tips.liveCount(), 1u);
  // A failure while the tooltip's text is made goes to the caller, and to no log.
  host->onCall = [](const host::HostCall& call) {
    if (call.operation == "GetLocalizedString") throw VbError(err::ObjectNotSet);
  };
  EXPECT_EQ(testing::errorOf(define), 91);
  host->onCall = nullptr;
  EXPECT_TRUE(host->errorLines().empty());
  trend.reset();
  EXPECT_EQ(tips.liveCount(), 0u);
}

// ---- Both --------------------------------------------------------------------------------

// The data trend's drawing in parts: all before its line, with the clock of the catching up;
// the line under its time window, named after the newest sample.
std::vector<std::string> dataHead(const std::string& clock) {
  return {"api.XYChart(657, 389, 16053492, 0, 0)",
          "chart.setPlotArea(103, 62.0744680851064, 551.705882352941, 243.125, 16777215, -1, -1, "
          "13421772, 13421772)",
          "chart.setClipping(0)",
          "chart.addTitle(\"Pressure\", \"\", 13, 16777215, 209254, -16777216)",
          "yAxis.setTitle(\"bar\", \"arialbd.ttf\", 10, -65534)",
          "xAxis.setTickDensity(75, 15)",
          "xAxis.setWidth(2)",
          "yAxis.setWidth(2)",
          "yAxis.setLabelFormat(\"{value|P4}\")",
          "api.chartTime(2026, 11, 23, " + clock + ")"};
}
std::vector<std::string> line(double start, double width, size_t slots, const std::string& sample,
                              const std::string& format, const std::string& name) {
  const std::string data = "<array 0 to " + std::to_string(slots - 1) + ">";
  return {"xAxis.setDateScale(" + Variant(start).toText() + ", " + Variant(start + width).toText() +
              ", " + Variant(width / 10).toText() + ", 0)",
          "xAxis.setLabelFormat(\"{value|hh:nn:ss}\")",
          "chart.addLineLayer2(0, 0)",
          "layer.setXData(" + data + ")",
          "xAxis.setLabelStyle(\"SSERIFE.FON\", 8, 0, 20)",
          "chart.formatValue(" + sample + ", \"" + format + "\")",
          "layer.addDataSet(" + data + ", 16711680, \"" + name + "\")"};
}
std::vector<std::string> dataLine(double start, const std::string& sample,
                                  const std::string& name) {
  return line(start, 3600, 1500, sample, "Software: <*bgColor=FFCCCC*> {value|2} ", name);
}
const std::vector<std::string> kAutomatic = {"chart.layout()", "yAxis.getMinValue()",
                                             "yAxis.getMaxValue()", "chart.makeChart2(2)"};
std::vector<std::string> fixedScale(const std::string& ends) {
  return {"yAxis.setLinearScale(" + ends + ", 0, 0)", "yAxis.setRounding(True, False)",
          "chart.makeChart2(2)"};
}
// In a pointer mode the chart keeps the scale it has.
const std::vector<std::string> kKeptScale = {"yAxis.setRounding(True, False)",
                                             "chart.makeChart2(2)"};

// The fast trend's drawing before its line, with the plot area narrowed by the wider end label
// of the visible part.
std::vector<std::string> fastHead(const std::string& left, const std::string& width) {
  return {"api.XYChart(708, 383, 16053492, 0, 0)",
          "chart.setPlotArea(" + left + ", 61.1170212765957, " + width +
              ", 239.375, 16777215, -1, -1, 13421772, 13421772)",
          "chart.setClipping(0)",
          "chart.addTitle(\"Pressure\", \"\", 13, 16777215, 209254, -16777216)",
          "yAxis.setTitle(\"bar\", \"arialbd.ttf\", 10, -65534)",
          "yAxis.setLabelFormat(\"{value|P4}\")",
          "xAxis.setTickDensity(75, 15)",
          "xAxis.setWidth(2)",
          "yAxis.setWidth(2)"};
}

TEST_F(Trends, EachTrendsDrawingCallByCall) {
  using Step = std::function<void(SingleItemTrend&)>;
  const auto value = [](const Variant& v) { return Step([v](auto& t) { send(&t, "PV", v); }); };
  const auto wait = [](double s) { return Step([s](auto&) { clock().advance(s); }); };
  const auto click = [](platform::OptionButton& (ChartFrame::*button)()) {
    return Step([button](auto& t) { headless::user((t.frame().*button)()).click(); });
  };
  const Step scroll = [](auto& t) { headless::user(t.frame().VScrollbar()).clickTrack(1); };
  const Step lowerHalf = [](auto& t) {
    t.ChartViewer1().ViewPortTop(0.5);
    t.ChartViewer1().ViewPortHeight(0.5);
  };
  const std::string hundred = "Software: <*bgColor=FFCCCC*> 100.00 ";
  const auto at100 = dataLine(kEight, "\"100\"", hundred);
  const auto gap = dataLine(kEight, "1.7E+308", "Software: <*bgColor=FFCCCC*>  ");
  const auto fastHundred = line(kEight + 1.75, 600, 2500, "\"100\"",
                                "<*bgColor=FFCCCC*> {value|2} ", "<*bgColor=FFCCCC*> 100.00 ");
  const auto fastHead77 = fastHead("77", "582.705882352941");
  constexpr bool kFast = true, kData = false;
  const struct {
    std::pair<bool, const char*> moment;  // of the fast trend or of the data trend
    std::vector<Step> steps;
    std::vector<std::string> expected;
  } cases[] = {
      {{kData, "before any value"}, {}, joined({dataHead("8, 0, 0"), gap, kAutomatic})},
      {{kData, "a value ten seconds on"},
       {wait(10), value(100.0)},
       joined({dataHead("8, 0, 10"), at100, fixedScale("85, 115")})},
      {{kData, "the window slid by a tenth"},
       {value(100.0), wait(3700), value(100.0)},
       joined({dataHead("9, 1, 40"), dataLine(kEight + 360, "\"100\"", hundred),
               fixedScale("85, 115")})},
      {{kData, "zoomed"},
       {value(100.0), click(&ChartFrame::zoomIn), wait(5), value(100.0)},
       joined({dataHead("8, 0, 5"), at100, kKeptScale})},
      {{kData, "scrolled"},
       {wait(5), value(100.0), click(&ChartFrame::HandScroll), scroll},
       joined({dataHead("8, 0, 5"), at100, kKeptScale})},
      {{kData, "after a value that is no number"},
       {value(100.0), wait(5), value(std::nan(""))},
       joined({dataHead("8, 0, 5"), gap, fixedScale("85, 115")})},
      {{kFast, "the first value before any sample"},
       {value(100.0)},
       joined({fastHead77, fixedScale("0, 115")})},
      {{kFast, "two seconds of samples"},
       {value(100.0), wait(2), value(100.0)},
       joined({fastHead77, fastHundred, fixedScale("0, 115")})},
      {{kFast, "zoomed to the lower half"},
       {value(100.0), wait(2), click(&ChartFrame::zoomIn), lowerHalf, value(100.0)},
       joined({fastHead("70", "589.705882352941"), fastHundred, fixedScale("0, 57.5")})},
      // The range stays at 0 to 0: the chart's own scale is taken.
      {{kFast, "a first value that is no number"},
       {value(std::nan(""))},
       joined({fastHead("63", "596.705882352941"), kAutomatic})},
  };
  for (const auto& c : cases) {
    clock().set({2026, 11, 23, 8, 0, 0});
    log->clear();
    const auto [fast, moment] = c.moment;
    const std::shared_ptr<SingleItemTrend> trend =
        fast ? std::shared_ptr<SingleItemTrend>(make<DTMDynamicTrendControl>())
             : make<DTMDataTrendControl>();
    send(trend, "Unit", 1137);
    for (const auto& step : c.steps) step(*trend);
    EXPECT_EQ(lastDrawing(), c.expected) << moment;
    // The fast trend's margin keeps the single precision of the label's width.
    for (const auto& call : log->calls()) {
      if (fast && call.operation == "setPlotArea") {
        EXPECT_EQ(call.args[0].type(), VarType::Single) << moment;
      }
    }
  }
}

// A value reaches none of the setters' guards by itself: a viewer whose redraw fails and a host
// that can't write a line stand in for what could.
TEST_F(Trends, EachOfTheFastTrendsGuardsWritesItsOwnLine) {
  auto fast = make<DTMDynamicTrendControl>();
  fast->ChartViewer1().viewerEvents.ViewPortChanged = [](bool, bool) {
    throw VbError(err::ObjectNotSet);
  };
  fast->IDTMDataControl_SetDeviceValue(Variant(1.0));
  EXPECT_TRUE(host->errorLines().back().starts_with(
      "Error on Dynamic Trend IDTMDataControl_SetDeviceValue91 ,Description = "));
  host->onCall = [](const host::HostCall& call) {
    if (call.operation == "LogError" &&
        call.arguments.at(1).starts_with("Error on Dynamic Trend")) {
      throw VbError(err::InvalidCall);
    }
  };
  send(fast, "PV", 1.0);
  EXPECT_EQ(host->errorLines().back(),
            "Error on DynamicTrend Control IDtmDataSubscriptionControl_UpdateSubscriptionValues5 "
            ",Description = Invalid procedure call or argument");
}

TEST_F(Trends, EachTrendLogsUnderItsOwnNameAndListsItsItems) {
  send(make<DTMDataTrendControl>(), "Unit", Variant::null());
  send(make<DTMDynamicTrendControl>(), "PV", "high");
  auto multi = DTMMultiTrendControl::create();
  multi->IDTMControl_Init(host);
  multi->IDtmTrendControl_TrendDataDef(nullptr);
  auto wave = DTMWaveFormControl::create();
  wave->IDTMControl_Init(host);
  wave->IDtmWaveFormControl_TrendDataDef(nullptr);
  std::vector<std::string> loggers;
  for (const auto& call : host->callsOf("LogError")) loggers.push_back(call.arguments.at(0));
  EXPECT_EQ(loggers, (std::vector<std::string>{"DTMDataTrendControl", "DtmDynamicTrend",
                                               "DtmDynamicTrend", "DTMWaveFormControl"}));
  EXPECT_EQ(make<DTMDataTrendControl>()->IDtmDataSubscriptionControl_SubscriptionItems(),
            Variant(VariantArray{0, {Variant("Unit"), Variant(""), Variant(""), Variant("PV")}}));
  EXPECT_EQ(make<DTMDynamicTrendControl>()->IDtmDataSubscriptionControl_SubscriptionItems(),
            Variant(VariantArray{0, {Variant("Unit"), Variant("PV")}}));
}

// ---- Bad input --------------------------------------------------------------------------

TEST_F(Trends, EachKindOfBadValueHasItsOutcome) {
  const double inf = std::numeric_limits<double>::infinity();
  const std::string null = "Error on createChart 94 ,Description = Invalid use of Null";
  const std::string text = "Error on createChart 13 ,Description = Type mismatch";
  const struct {
    const char* what;
    Variant value;
    int dataError;  // what the data trend's host gets, with no drawing; 0: drawn, as a gap
    std::vector<std::string> fastLines;
    double fastMax;
    bool fastSamplesGaps;  // else the fast trend's timer fails and takes no sample
  } cases[] = {
      {"NaN", Variant(std::nan("")), 0, {}, 115, true},
      {"infinity", Variant(inf), 0, {}, 115, true},
      {"minus infinity", Variant(-inf), 0, {}, 115, true},
      {"1.7E+308", Variant(1.7e308), err::Overflow, {}, 1.7e308, true},
      {"Null", Variant::null(), err::InvalidUseOfNull, {null}, 115, false},
      {"text", Variant("high"), err::TypeMismatch, {text}, 115, true},
  };
  for (const auto& c : cases) {
    clock().set({2026, 11, 23, 8, 0, 0});
    auto data = make<DTMDataTrendControl>();
    auto fast = make<DTMDynamicTrendControl>();
    send(data, "PV", 100.0);
    send(fast, "PV", 100.0);
    clock().advance(5);
    host->takeCalls();
    log->clear();
    EXPECT_EQ(testing::errorOf([&] { send(data, "PV", c.value); }), c.dataError) << c.what;
    EXPECT_EQ(log->lines().empty(), c.dataError != 0) << c.what;
    EXPECT_EQ(data->axisMax(), 115) << c.what;
    EXPECT_EQ(data->dataSeries().back(), c.dataError == 0 ? kNoValue : 100) << c.what;
    send(fast, "PV", c.value);
    EXPECT_EQ(host->errorLines(), c.fastLines) << c.what;
    EXPECT_EQ(fast->axisMax(), c.fastMax) << c.what;
    clock().advance(1);
    EXPECT_EQ(fast->dataSeries().back(), c.fastSamplesGaps ? kNoValue : 100) << c.what;
    EXPECT_EQ(unhandled().size(), c.fastSamplesGaps ? 0u : 1u) << c.what << ": one a burst";
  }
  // Both ends of the doubles: the fast trend's visible part no longer has a size.
  auto fast = make<DTMDynamicTrendControl>();
  send(fast, "PV", 1.7e308);
  send(fast, "PV", -1.7e308);
  EXPECT_EQ(host->errorLines().back(), "Error on createChart 6 ,Description = Overflow");
}

TEST_F(Trends, ANullUnitStopsTheDrawingsUntilAUnitComes) {
  auto data = make<DTMDataTrendControl>();
  send(data, "PV", 100.0);
  send(data, "Unit", Variant::null());
  clock().advance(10);
  send(data, "PV", 100.0);
  EXPECT_EQ(host->errorLines().back(),
            "Error on createChart 94 ,Description = Invalid use of Null");
  EXPECT_EQ(samples(data->timeStamps()), 1u) << "a failed drawing takes no sample";
  send(data, "Unit", 1137);
  EXPECT_EQ(samples(data->timeStamps()), 5u) << "the next drawing catches up";
}

TEST_F(Trends, ABurstOfValuesDrawsEachButSamplesOnTheClock) {
  auto data = make<DTMDataTrendControl>();
  auto fast = make<DTMDynamicTrendControl>();
  for (int i = 0; i < 1000; ++i) {
    send(data, "PV", i % 7);
    send(fast, "PV", i % 7);
    clock().advance(0.001);
  }
  clock().advance(0.1);
  EXPECT_EQ(headless::user(data->ChartViewer1()).picturesShown(), 1000);
  EXPECT_EQ(headless::user(fast->ChartViewer1()).picturesShown(), 1000);
  EXPECT_EQ(samples(data->timeStamps()), 1u);
  EXPECT_EQ(samples(fast->timeStamps()), 4u) << "the quarters of the first second";
}

TEST_F(Trends, AClockThatJumpsBackStandsStillAndOneThatJumpsOnFillsTheStore) {
  auto data = make<DTMDataTrendControl>();
  auto fast = make<DTMDynamicTrendControl>();
  const auto feed = [&] {
    send(data, "PV", 100.0);
    send(fast, "PV", 100.0);
  };
  feed();
  clock().advance(10);
  feed();
  const size_t dataSamples = samples(data->timeStamps()), fastSamples = samples(fast->timeStamps());
  const double dataStart = data->timeWindow().viewStart, fastStart = fast->timeWindow().viewStart;
  // An hour back: nothing is sampled until the clock is past the last sample again.
  clock().set({2026, 11, 23, 7, 0, 10});
  feed();
  clock().advance(10);
  feed();
  EXPECT_EQ(samples(data->timeStamps()), dataSamples);
  EXPECT_EQ(samples(fast->timeStamps()), fastSamples);
  EXPECT_EQ(data->timeWindow().viewStart, dataStart);
  // A day on: the store fills at once, and a drawing walks the window on by a tenth only.
  clock().set({2026, 11, 24, 8, 0, 10});
  clock().advance(0.25);
  feed();
  EXPECT_EQ(samples(data->timeStamps()), 1500u);
  EXPECT_EQ(samples(fast->timeStamps()), 2500u);
  EXPECT_EQ(data->timeWindow().viewStart, dataStart + 360);
  EXPECT_EQ(fast->timeWindow().viewStart, fastStart + 60);
}

TEST_F(Trends, AViewportOutOfRangeComesBackIntoItAndASmallControlGrows) {
  auto fast = make<DTMDynamicTrendControl>();
  send(fast, "PV", 100.0);
  headless::user(fast->frame().zoomIn()).click();
  fast->ChartViewer1().ViewPortTop(-5);
  fast->ChartViewer1().ViewPortHeight(40);
  fast->window().Width(0);
  fast->window().Height(0);
  send(fast, "PV", 100.0);
  EXPECT_TRUE(drew("yAxis.setLinearScale(0, 115, 0, 0)")) << "the whole range";
  EXPECT_TRUE(drew("api.XYChart(442, 240.666666666667, 16053492, 0, 0)"));
  EXPECT_EQ(fast->ChartViewer1().ViewPortHeight(), 1);
}

}  // namespace
}  // namespace tessaline
