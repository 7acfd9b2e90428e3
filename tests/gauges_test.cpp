#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support.h"
#include "tessaline/gauges/angular_gauge.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/gauges/dynamic_gauge.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/chart_recorder.h"
#include "tessaline/platform/picture.h"

namespace tessaline {
namespace {

constexpr const char* kGauge =
    R"(<gauge lowerRange="Low" upperRange="High" pointerColor="FF0000">)"
    R"(<zones type="low_limit"><zone name="Z1" color="00FF00"/><zone name="Z2" color="FFFF00"/>)"
    R"(<zone name="Z3" color="FF0000"/></zones></gauge>)";
constexpr const char* kMetal = "-130982";

class GaugeTest : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    log = platform::chart::recordChartCalls();
  }
  void TearDown() override {
    platform::chart::stopRecordingChartCalls();
    HeadlessTest::TearDown();
  }

  // A gauge with its host, its item and the gauge node, its item list read.
  template <class Gauge>
  std::shared_ptr<Gauge> ranged(const char* gaugeXml = kGauge) {
    auto gauge = Gauge::create();
    gauge->IDTMControl_Init(host);
    gauge->IDtmControl_Name("PV");
    gauge->DTMDataGaugeControl_Unit("Unit");
    gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(testing::element(gaugeXml));
    gauge->IDtmDataSubscriptionControl_SubscriptionItems();
    return gauge;
  }

  // The lines from the first meter operation on, without the API's metal colour.
  std::vector<std::string> meterLines() const {
    std::vector<std::string> out;
    for (const auto& line : log->lines()) {
      if (line.rfind("api.meterBackgroundColor", 0) != 0) out.push_back(line);
    }
    return out;
  }

  // The last line of that operation.
  std::string last(const std::string& operation) const {
    const auto lines = log->lines();
    for (auto it = lines.rbegin(); it != lines.rend(); ++it) {
      if (it->rfind(operation, 0) == 0) return *it;
    }
    return {};
  }
  std::string pointerLine() const { return last("meter.addPointer"); }
  std::string textLine() const { return last("meter.addText"); }
  bool has(const std::string& line) const {
    const auto lines = log->lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }

  std::shared_ptr<platform::chart::ChartRecording> log;
};

// ---- Subscription ------------------------------------------------------------------------

TEST_F(GaugeTest, ItemListNamesUnitLimitsValueAndZonesWithASpareSlot) {
  auto gauge = ranged<DTMDataGuageControl>();
  const auto list = gauge->IDtmDataSubscriptionControl_SubscriptionItems().toArray().items;
  std::vector<std::string> names;
  for (const auto& item : list) names.push_back(item.toText());
  EXPECT_EQ(names, (std::vector<std::string>{"Unit", "Low", "High", "PV", "Z1", "Z2", "Z3", ""}));

  auto dynamic = DTMDynamicGuageControl::create();
  dynamic->IDTMControl_Init(host);
  dynamic->IDtmControl_Name("PV");
  dynamic->DTMDataGaugeControl_Unit("Unit");
  EXPECT_EQ(dynamic->IDtmDataSubscriptionControl_SubscriptionItems().toArray().items.size(), 2u);
}

TEST_F(GaugeTest, OnlyTheGaugesOwnItemDraws) {
  auto gauge = ranged<DTMDataGuageControl>();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 50.0);  // no limits yet
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
  EXPECT_TRUE(log->calls().empty());
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 100.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Other", 1.0);
  EXPECT_TRUE(log->calls().empty());
  EXPECT_TRUE(gauge->ChartViewer1().Picture().isNothing());
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 50.0);
  EXPECT_FALSE(log->calls().empty());
  const auto picture = refCast<platform::Picture>(gauge->ChartViewer1().Picture());
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->Width(), 208);
  EXPECT_EQ(picture->Height(), 145);
}

// ---- DTMDataGuageControl -----------------------------------------------------------------

TEST_F(GaugeTest, FixedLimitMeterDrawsItsSequence) {
  auto gauge = ranged<DTMDataGuageControl>();
  for (auto [name, value] : {std::pair{"Low", 0.0},
                             {"High", 100.0},
                             {"Z1", 30.0},
                             {"Z2", 70.0},
                             {"Z3", 100.0},
                             {"Unit", 7.0}}) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(name, value);
  }
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 42.5);
  const std::vector<std::string> expected = {
      std::string("api.AngularMeter(208, 145, ") + kMetal + ", 0, 0)",
      "meter.setMeter(104, 117, 85, -90, 90)",
      std::string("meter.setRoundedFrame(") + kMetal + ", 4, -1, -1, -1)",
      "meter.setLabelStyle(\"arial.ttf\", 8, -65534, 0)",
      "meter.setScale(0, 100, 16.6666666666667, 8.33333333333333, 1.66666666666667)",
      "meter.setLabelStyle(\"arial.ttf\", 8, -65534, 0)",
      "meter.addZone(0, 30, 73, 80, \"65280\", -1)",
      "meter.addZone(30, 70, 73, 80, \"16776960\", -1)",
      "meter.addZone(70, 100, 73, 80, \"16711680\", -1)",
      "meter.setLabelFormat(\"{value|2}\")",
      "meter.addPointer(42.5, \"16711680\", 0)",
      "meter.addText(100, 130, \"42.5 Unknown Units\", \"arialbd.ttf\", 8, -65534, 5, 0, False)",
      "meter.makeChart2(2)",
  };
  EXPECT_EQ(meterLines(), expected);
}

TEST_F(GaugeTest, HighLimitZonesArePaintedFromTheTop) {
  std::string xml = kGauge;
  xml.replace(xml.find("low_limit"), 9, "high_limit");
  auto gauge = ranged<DTMDataGuageControl>(xml.c_str());
  for (auto [name, value] : {std::pair{"Low", 0.0}, {"High", 100.0}, {"Z1", 30.0}, {"Z2", 70.0}}) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(name, value);
  }
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 1.0);
  std::vector<std::string> zones;
  for (const auto& line : log->lines()) {
    if (line.rfind("meter.addZone", 0) == 0) zones.push_back(line);
  }
  // Z3 has no value yet: its zone ends at 0.
  EXPECT_EQ(zones, (std::vector<std::string>{"meter.addZone(70, 0, 73, 80, \"16711680\", -1)",
                                             "meter.addZone(30, 70, 73, 80, \"16776960\", -1)",
                                             "meter.addZone(0, 30, 73, 80, \"65280\", -1)"}));
}

TEST_F(GaugeTest, ValuesBeyondTheScaleParkOneMicroTickPastItsEnd) {
  const struct {
    double lower, upper, value;
    const char* pointer;
    double stored;
  } rows[] = {
      {0, 100, 150, "101.666666666667", 101.66666666666667},
      {0, 100, -5, "-1.66666666666667", -1.66666666666667},
      {100, 0, 150, "101.666666666667", 101.66666666666667},
      {100, 0, -5, "-1.66666666666667", -1.66666666666667},
      {50, 50, 60, "50", 50},
      {0, 100, 100, "100", 100},
  };
  for (const auto& row : rows) {
    auto gauge = ranged<DTMDataGuageControl>();
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", row.lower);
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", row.upper);
    log->clear();
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", row.value);
    EXPECT_EQ(pointerLine(), std::string("meter.addPointer(") + row.pointer + ", \"16711680\", 0)")
        << row.value;
    EXPECT_NEAR(gauge->IDTMDataControl_Value().toDouble(), row.stored, 1e-9) << row.value;
    // The text keeps telling the true value.
    EXPECT_NE(textLine().find("\"" + Variant(row.value).toText() + " "), std::string::npos);
  }
}

TEST_F(GaugeTest, WhatIsNoNumberTakesThePointerAway) {
  auto gauge = ranged<DTMDataGuageControl>();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 100.0);
  for (const char* bad : {"NaN", "#N/A", "$12"}) {
    log->clear();
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", bad);
    EXPECT_EQ(pointerLine(), "meter.addPointer(1.7E+308, \"16711680\", 0)");
    EXPECT_FALSE(has("meter.setLabelFormat(\"{value|2}\")"));
    EXPECT_NE(textLine().find("\"NaN \""), std::string::npos) << textLine();
  }
  // A bad limit: no scale, but a good value is still told.
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", "#bad");
  log->clear();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 12.0);
  EXPECT_EQ(pointerLine(), "meter.addPointer(1.7E+308, \"16711680\", 0)");
  EXPECT_NE(textLine().find("\"12 \""), std::string::npos) << textLine();
}

// Infinities and not-a-number doubles read "1.#INF", "-1.#INF", "-1.#IND": every gauge's test
// for "#" catches them, so the meter shows "NaN" instead of failing a drawing.
TEST_F(GaugeTest, EveryGaugeShowsNaNForDoublesThatAreNoFiniteNumbers) {
  const double inf = std::numeric_limits<double>::infinity();
  std::vector<std::shared_ptr<GaugeControl>> gauges = {ranged<DTMDataGuageControl>(),
                                                       ranged<DTMDataAngularGuage>()};
  auto dynamic = DTMDynamicGuageControl::create();
  dynamic->IDTMControl_Init(host);
  dynamic->IDtmControl_Name("PV");
  gauges.push_back(dynamic);
  for (const auto& gauge : gauges) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 100.0);
    for (double bad : {inf, -inf, std::nan("")}) {
      gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 50.0);
      log->clear();
      host->takeCalls();
      gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", bad);
      EXPECT_NE(pointerLine().find("1.7E+308"), std::string::npos)
          << gauge->window().ClassName() << " " << bad << ": " << pointerLine();
      EXPECT_NE(textLine().find("\"NaN"), std::string::npos)
          << gauge->window().ClassName() << " " << bad << ": " << textLine();
      for (const std::string& line : host->errorLines()) {
        EXPECT_EQ(line.find("createChart"), std::string::npos) << line;
      }
    }
  }
}

TEST_F(GaugeTest, LargeLimitsSwitchTheLabelsToExponentForm) {
  auto gauge = ranged<DTMDataGuageControl>();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 9999.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 1.0);
  EXPECT_TRUE(has("meter.setLabelFormat(\"{value|2}\")"));
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 9999.5);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 1.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 2.0);
  EXPECT_TRUE(has("meter.setLabelFormat(\"{value|e3}\")"));
  const auto errors = host->errorLines();
  EXPECT_EQ(std::count(errors.begin(), errors.end(), "entered =9999.5"), 2);
}

TEST_F(GaugeTest, UnitTextComesFromTheUnitTable) {
  auto gauge = ranged<DTMDataGuageControl>();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 10.0);
  const auto textFor = [&](const Variant& unit) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Unit", unit);
    log->clear();
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 5.0);
    return textLine();
  };
  EXPECT_NE(textFor(12.0).find("\"5 Unknown Units\""), std::string::npos);
  EXPECT_NE(textFor("").find("\"5 \""), std::string::npos);
  EXPECT_NE(textFor("*raw").find("\"5 *raw\""), std::string::npos);
  host->translations["bar_key"] = "bar";
  gauge->IDTMEnumeration_EnumDataDef(testing::element(
      R"(<enumeration><entry name="bar" code="12" label="bar_key"/></enumeration>)"));
  EXPECT_NE(textFor(12.0).find("\"5 bar\""), std::string::npos);
  gauge->IDTMEnumeration1_UpdateEnumString("12", "Bar (abs)");
  EXPECT_NE(textFor(12.0).find("\"5 Bar (abs)\""), std::string::npos);
}

TEST_F(GaugeTest, ADrawingBeforeTheItemListFailsAndKeepsThePicture) {
  auto gauge = DTMDataGuageControl::create();
  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(testing::element(kGauge));
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 10.0);
  host->takeCalls();
  gauge->IDTMDataControl_SetDeviceValue(5.0);
  EXPECT_TRUE(gauge->ChartViewer1().Picture().isNothing());
  EXPECT_EQ(
      host->errorLines(),
      std::vector<std::string>{"Error on createChart 9 ,Description = Subscript out of range"});
}

// ---- DTMDataAngularGuage -----------------------------------------------------------------

TEST_F(GaugeTest, AngularMeterDrawsWithoutTheGuards) {
  auto gauge = ranged<DTMDataAngularGuage>();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 7.0);  // before any limit
  EXPECT_TRUE(has(std::string("api.AngularMeter(208, 145, ") + kMetal + ", 0, -1)"));
  EXPECT_TRUE(has("meter.setScale(0, 0, 0, 0, 0)"));
  EXPECT_EQ(pointerLine(), "meter.addPointer(7, \"16711680\", 0)");

  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 99999.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Unit", 12.0);
  log->clear();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 150000.0);
  EXPECT_EQ(pointerLine(), "meter.addPointer(150000, \"16711680\", 0)");
  EXPECT_EQ(gauge->IDTMDataControl_Value().toDouble(), 150000.0);
  EXPECT_TRUE(has("meter.setLabelFormat(\"{value|2}\")"));
  const auto lines = log->lines();
  EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                          [](const std::string& l) { return l.find("setLabelStyle") != l.npos; }),
            1);
  EXPECT_EQ(textLine(),
            "meter.addText(100, 130, \"150000 12\", \"arial.ttf\", 8, -65534, 5, 0, False)");
  EXPECT_TRUE(host->errorLines().empty());

  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", "#bad");
  log->clear();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 3.0);
  EXPECT_NE(textLine().find("\"NaN 12\""), std::string::npos);
  // An infinite value reads "1.#INF" in the General Number text: no number.
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
  EXPECT_TRUE(gauge->IsNotANumber(std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(gauge->IsNotANumber("$5"));
}

// ---- DTMDynamicGuageControl --------------------------------------------------------------

TEST_F(GaugeTest, DynamicMeterFollowsTheValueAndShowsOnlyItsEnds) {
  auto gauge = DTMDynamicGuageControl::create();
  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 0.0);
  const std::vector<std::string> expected = {
      std::string("api.AngularMeter(208, 148, ") + kMetal + ", 0, -1)",
      "meter.setMeter(104, 117, 85, -90, 90)",
      "meter.setScale(-2, 2, 0.666666666666667, 0.333333333333333, 6.66666666666667E-02)",
      "meter.getTicks()",
      "meter.setLabelFormat(\"{value|2}\")",
      "meter.setLabelPos(True, 10)",
      "meter.setLabelStyle(\"bold\", 8, -65534, 0)",
      "meter.addLabel(-1.33333333333333, \" \")",
      "meter.addLabel(-0.666666666666667, \" \")",
      "meter.addLabel(0, \" \")",
      "meter.addLabel(0.666666666666667, \" \")",
      "meter.addLabel(1.33333333333333, \" \")",
      "meter.addPointer(\"0\", 0, 0)",
      "meter.addText(100, 130, \"0 \", \"arial.ttf\", 8, -65534, 5, 0, False)",
      "meter.makeChart2(2)",
  };
  EXPECT_EQ(meterLines(), expected);
  const auto picture = refCast<platform::Picture>(gauge->ChartViewer1().Picture());
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->Height(), 148);

  log->clear();
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 100.0);
  EXPECT_TRUE(has("meter.setScale(-2, 115, 19.5, 9.75, 1.95)"));
}

TEST_F(GaugeTest, DynamicMeterWithATextValueLogsTheRangeAndShowsNaN) {
  auto gauge = DTMDynamicGuageControl::create();
  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 100.0);
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", "nan");
  EXPECT_EQ(host->errorLines(),
            std::vector<std::string>{"Error on CalculateRange 13 ,Description = Type mismatch"});
  EXPECT_NE(textLine().find("\"NaN \""), std::string::npos);
  EXPECT_EQ(gauge->range().currentLower, Variant(85.0));

  // A text that passes the test fails at the pointer instead.
  gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", "abc");
  EXPECT_EQ(host->errorLines().back(), "Error on createChart 13 ,Description = Type mismatch");
}

TEST_F(GaugeTest, OnlyTheDynamicMeterPassesVisibleOn) {
  auto dynamic = DTMDynamicGuageControl::create();
  dynamic->IDtmControl_Visible(false);
  EXPECT_FALSE(dynamic->ChartViewer1().Visible());
  EXPECT_FALSE(dynamic->Label1().Visible());
  dynamic->IDtmControl_Visible(true);
  EXPECT_TRUE(dynamic->ChartViewer1().Visible());

  auto fixed = DTMDataGuageControl::create();
  fixed->IDtmControl_Visible(false);
  EXPECT_TRUE(fixed->ChartViewer1().Visible());
}

// ---- What the three share ----------------------------------------------------------------

TEST_F(GaugeTest, GaugesAreNoDataControlsButAnswerTheReducedSetByName) {
  auto fixed = ranged<DTMDataGuageControl>();
  auto dynamic = DTMDynamicGuageControl::create();
  EXPECT_TRUE(queryInterface<IDTMDataControl>(fixed).isNothing());
  EXPECT_FALSE(queryInterface<IDtmDataSubscriptionControlRange>(fixed).isNothing());
  EXPECT_TRUE(queryInterface<IDtmDataSubscriptionControlRange>(dynamic).isNothing());
  fixed->let("IDTMDataControl_Name", "Other");
  EXPECT_EQ(fixed->IDtmControl_Name(), "Other");
  EXPECT_EQ(fixed->call("IDTMDataControl_Validate"), Variant(true));
  EXPECT_EQ(fixed->call("getNoOfCharts"), Variant(int16_t{1}));
  EXPECT_FALSE(dynamic->hasMember("IDTMDataControl_Name"));
  EXPECT_FALSE(dynamic->hasMember("IDTMEnumeration1_UpdateEnumString"));
  EXPECT_FALSE(dynamic->hasMember("CalculateRange"));
}

TEST_F(GaugeTest, CaptionTooltipBackgroundAndLayout) {
  auto gauge = DTMDataGuageControl::create();
  headless::current().ambientBackColor = 0x00C0FFEE;
  host->translations["caption_key"] = "Pressure";
  host->translations["desc_key"] = "Outlet pressure of pump 1";
  gauge->IDTMDataControl_Caption("caption_key");
  gauge->IDTMControl_Init(host);
  EXPECT_EQ(gauge->Label1().Caption(), "Pressure");
  EXPECT_EQ(gauge->get("BackColor"), Variant(0x00C0FFEE));
  gauge->IDTMDataControl_DataItemDef(
      testing::element(R"(<dataItem name="PV" description="desc_key"/>)"));
  EXPECT_EQ(gauge->ToolTipText(), "Outlet pressure of pump 1");
  ASSERT_TRUE(gauge->tooltip());
  EXPECT_EQ(gauge->window().Height(), 2458);
  EXPECT_EQ(gauge->window().Width(), 3113);
  gauge->window().Width(5000);
  EXPECT_EQ(gauge->window().Width(), 3113);
  // The children keep their pixel geometry, in twips.
  EXPECT_EQ(gauge->ChartViewer1().Top(), 19 * 15);
  EXPECT_EQ(gauge->ChartViewer1().Width(), 200 * 15);
  EXPECT_EQ(gauge->ChartViewer1().Height(), 145 * 15);
}

TEST_F(GaugeTest, HostileValuesNeverEscapeAGauge) {
  const Variant values[] = {
      Variant(),
      Variant::null(),
      Variant::nothing(),
      Variant(VariantArray{0, {Variant(1), Variant("x")}}),
      Variant(std::nan("")),
      Variant(std::numeric_limits<double>::infinity()),
      Variant(-std::numeric_limits<double>::infinity()),
      Variant(1.7e308),
      Variant(-1e300),
      Variant(std::string(1 << 16, '9')),
      Variant(std::string("\xff\xfe bad utf-8")),
      Variant("Grüße 流量 😀"),
  };
  std::vector<std::shared_ptr<GaugeControl>> gauges = {ranged<DTMDataGuageControl>(),
                                                       ranged<DTMDataAngularGuage>()};
  auto dynamic = DTMDynamicGuageControl::create();
  dynamic->IDTMControl_Init(host);
  dynamic->IDtmControl_Name("PV");
  dynamic->DTMDataGaugeControl_Unit("Unit");
  gauges.push_back(dynamic);
  for (const auto& gauge : gauges) {
    for (const char* item : {"Low", "High", "Unit", "Z1", "PV"}) {
      for (const Variant& value : values) {
        EXPECT_NO_THROW(gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, value));
        EXPECT_NO_THROW(gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 5.0));
      }
    }
    EXPECT_NO_THROW(gauge->createChart());
  }
  // Once limits and zones are numbers again, every gauge draws again.
  for (const auto& gauge : gauges) {
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Z1", 3.0);
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Low", 0.0);
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("High", 10.0);
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("Unit", "");
    gauge->ChartViewer1().Picture(nullptr);
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", 5.0);
    EXPECT_FALSE(gauge->ChartViewer1().Picture().isNothing()) << gauge->window().ClassName();
  }
}

}  // namespace
}  // namespace tessaline
