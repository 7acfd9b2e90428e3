#include "tessaline/gauges/gauge_items.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support.h"

namespace tessaline {
namespace {

using testing::errorOf;

constexpr const char* kThreeZones =
    R"(<gauge lowerRange="Low" upperRange="High" pointerColor="FF0000">)"
    R"(<zones type="low_limit"><zone name="Z1" color="00FF00"/><zone name="Z2" color="FFFF00"/>)"
    R"(<zone name="Z3" color="ff0000"/></zones></gauge>)";

std::vector<std::string> texts(const Variant& array) {
  std::vector<std::string> out;
  for (const Variant& item : array.toArray().items) out.push_back(item.toText());
  return out;
}

TEST(GaugeItems, ReadsNamesAndColoursAsDecimalText) {
  GaugeItems items;
  items.ReadGaugeNode(testing::element(kThreeZones));
  EXPECT_EQ(items.LowerRange, "Low");
  EXPECT_EQ(items.UpperRange, "High");
  EXPECT_EQ(items.pointerColor, "16711680");
  EXPECT_EQ(items.zoneType, "low_limit");
  EXPECT_EQ(items.zoneNames.upperBound(), 3);
  EXPECT_EQ(items.zoneNames[2], "Z3");
  EXPECT_EQ(items.zoneColors[1], "16776960");
  EXPECT_EQ(items.zoneNames[3], "");
  EXPECT_EQ(gaugeColor("FFFFFFFF"), "-1");
}

TEST(GaugeItems, AskForTheLimitsTheValueAndEachZone) {
  GaugeItems items;
  items.Unit = "UnitItem";
  items.ReadGaugeNode(testing::element(kThreeZones));
  EXPECT_EQ(texts(items.SubscriptionItems("Flow")),
            (std::vector<std::string>{"UnitItem", "Low", "High", "Flow", "Z1", "Z2", "Z3", ""}));

  GaugeItems none;
  none.ReadGaugeNode(testing::element(
      R"(<gauge lowerRange="L" upperRange="U" pointerColor="0"><zones type="x"/></gauge>)"));
  const Variant list = none.SubscriptionItems("V");
  EXPECT_EQ(list.toArray().upperBound(), 4);
  EXPECT_EQ(list.toArray().at(4), Variant(""));
  EXPECT_EQ(errorOf([] { GaugeItems().SubscriptionItems("V"); }), 9);
}

TEST(GaugeItems, AMissingAttributeOrZoneListStopsTheReadingThere) {
  GaugeItems items;
  EXPECT_EQ(errorOf([&] {
              items.ReadGaugeNode(testing::element(
                  R"(<gauge lowerRange="L" upperRange="U" pointerColor="FF">)"
                  R"(<zones type="low_limit"><zone name="A" color="1"/><zone name="B"/>)"
                  R"(<zone name="C" color="2"/></zones></gauge>)"));
            }),
            91);
  EXPECT_EQ(items.zoneNames[0], "A");
  EXPECT_EQ(items.zoneColors[0], "1");
  EXPECT_EQ(items.zoneNames[1], "B");  // as far as it got
  EXPECT_EQ(items.zoneColors[1], "");
  EXPECT_EQ(items.zoneNames[2], "");

  GaugeItems noList;
  EXPECT_EQ(errorOf([&] {
              noList.ReadGaugeNode(
                  testing::element(R"(<gauge lowerRange="L" upperRange="U" pointerColor="FF"/>)"));
            }),
            91);
  EXPECT_EQ(noList.pointerColor, "255");
  EXPECT_EQ(
      errorOf([&] { GaugeItems().ReadGaugeNode(testing::element(R"(<gauge upperRange="U"/>)")); }),
      91);
}

TEST(GaugeItems, ASecondReadingWithoutInitWritesPastTheZones) {
  GaugeItems items;
  items.ReadGaugeNode(testing::element(kThreeZones));
  EXPECT_EQ(errorOf([&] { items.ReadGaugeNode(testing::element(kThreeZones)); }), 9);
  items.zoneCount = 0;  // what IDTMControl_Init does
  EXPECT_EQ(errorOf([&] { items.ReadGaugeNode(testing::element(kThreeZones)); }), 0);
}

TEST(GaugeItems, FileValuesByNameAndLetOneItemServeSeveralPlaces) {
  GaugeItems items;
  items.ReadGaugeNode(testing::element(
      R"(<gauge lowerRange="Low" upperRange="High" pointerColor="0"><zones type="low_limit">)"
      R"(<zone name="High" color="1"/><zone name="Z" color="2"/><zone name="Z" color="3"/>)"
      R"(</zones></gauge>)"));
  items.SubscriptionItems("Flow");
  std::vector<Variant> drawn;
  const auto own = [&](const Variant& v) { drawn.push_back(v); };
  items.take("High", Variant(100), "Flow", own);
  items.take("Z", Variant(50), "Flow", own);
  items.take("Other", Variant(7), "Flow", own);
  items.take("Flow", Variant(42), "Flow", own);
  EXPECT_EQ(items.upperValue, Variant(100));
  EXPECT_EQ(items.zoneValues[0], Variant(100));
  EXPECT_EQ(items.zoneValues[1], Variant(50));
  EXPECT_EQ(items.zoneValues[2], Variant(50));
  EXPECT_EQ(drawn, std::vector<Variant>{Variant(42)});
}

TEST(GaugeItems, ValuesBeforeTheListStoreTheirBranchAndFailAtTheZones) {
  GaugeItems items;
  const auto own = [](const Variant&) {};
  EXPECT_EQ(errorOf([&] { items.take("", Variant(1), "Flow", own); }), 9);  // no node yet
  items.ReadGaugeNode(testing::element(kThreeZones));
  EXPECT_EQ(errorOf([&] { items.take("Low", Variant(0), "Flow", own); }), 0);
  EXPECT_EQ(items.lowerValue, Variant(0));
  EXPECT_EQ(errorOf([&] { items.take("Z1", Variant(10), "Flow", own); }), 9);
}

TEST(GaugeItems, ZonesTileTheScaleFromTheLowerLimit) {
  GaugeItems items;
  items.ReadGaugeNode(testing::element(kThreeZones));
  items.SubscriptionItems("Flow");
  items.lowerValue = Variant(0);
  items.zoneValues[0] = Variant(30);
  items.zoneValues[2] = Variant(100);  // Z2 has no value yet
  items.BuildZoneLimits();
  EXPECT_EQ(items.zoneStarts[0], Variant(0));
  EXPECT_EQ(items.zoneEnds[0], Variant(30));
  EXPECT_EQ(items.zoneStarts[1], Variant(30));
  EXPECT_TRUE(items.zoneEnds[1].isEmpty());
  EXPECT_TRUE(items.zoneStarts[2].isEmpty());
  EXPECT_EQ(items.zoneEnds[2], Variant(100));
}

class DynamicRangeTest : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    logger = MakeLogger(host, "DTMDynamicGuageControl");
  }
  void value(double v) { range.CalculateRange(Variant(v), "Flow", *logger); }
  std::pair<double, double> limits() {
    return {range.currentLower.toDouble(), range.currentUpper.toDouble()};
  }
  DynamicRange range;
  Ref<Logger> logger;
};

TEST_F(DynamicRangeTest, KeepsTheWidestLimitsAndSnapsBackWhenTooFar) {
  value(100);
  EXPECT_EQ(limits(), std::make_pair(85.0, 115.0));
  value(110);
  EXPECT_EQ(limits(), std::make_pair(85.0, 126.5));
  value(10);
  EXPECT_EQ(limits(), std::make_pair(8.5, 11.5));
}

TEST_F(DynamicRangeTest, ZeroResetsToPlusMinusTwo) {
  value(100);
  value(0);
  EXPECT_EQ(limits(), std::make_pair(-2.0, 2.0));
  value(100);
  EXPECT_EQ(limits(), std::make_pair(-2.0, 115.0));
  range.restart();
  value(-10);
  EXPECT_EQ(limits(), std::make_pair(-11.5, -8.5));
}

TEST_F(DynamicRangeTest, LogsEachStepWithTheValuesFromBeforeIt) {
  value(100);
  value(110);
  std::vector<std::string> lines;
  for (const auto& call : host->callsOf("LogDebug")) lines.push_back(call.arguments[1]);
  EXPECT_EQ(lines, (std::vector<std::string>{
                       " GAUGE Prev Value Initialized for Flow",
                       " GAUGE Prev Lower value taken for Flow Prev Value= 85 Currnet Value= 93.5",
                       " GAUGE Current Upper value taken for FlowPrev Value = 115 Currnet Value= "
                       "126.5"}));
}

TEST_F(DynamicRangeTest, AValueThatIsNoNumberLeavesTheLimits) {
  value(100);
  EXPECT_THROW(range.CalculateRange(Variant("high"), "Flow", *logger), VbError);
  EXPECT_THROW(range.CalculateRange(Variant::null(), "Flow", *logger), VbError);
  EXPECT_EQ(limits(), std::make_pair(85.0, 115.0));
  range.CalculateRange(Variant("110"), "Flow", *logger);
  EXPECT_EQ(limits(), std::make_pair(85.0, 126.5));
}

// Arithmetic that leaves the doubles overflows as the platform's does: the 15 % limits of the
// largest values, and five times a value beyond a fifth of the largest double.
TEST_F(DynamicRangeTest, ArithmeticBeyondTheLargestDoubleFailsWithOverflow) {
  value(100);
  for (const double v : {1.7e308, -1.7e308, 4e307}) {
    EXPECT_EQ(testing::errorOf([&] { value(v); }), err::Overflow) << v;
    EXPECT_TRUE(std::isfinite(limits().first) && std::isfinite(limits().second)) << v;
  }
}

}  // namespace
}  // namespace tessaline
