#include <cmath>
#include <fstream>
#include <memory>

#include "apps/demo/scenes.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/picture.h"
#include "tessaline/platform/xml/pugi_dom.h"
#include "tessaline/trends/data_trend.h"
#include "tessaline/trends/dynamic_trend.h"
#include "tessaline/trends/multi_trend.h"
#include "tessaline/trends/waveform.h"

namespace tessaline::demo {

namespace {

constexpr const char* kUnits = R"(<enumeration><entry name="bar" code="1137" label="unit_bar"/>)"
                               R"(</enumeration>)";

void writePicture(Transcript& t, platform::ChartViewer& viewer, const std::filesystem::path& file) {
  const auto picture = refCast<platform::Picture>(viewer.Picture());
  if (!picture) {
    t.note("no picture to write for " + file.filename().string());
    return;
  }
  const auto bytes = chart::encodePng(picture->image());
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  t.note("wrote " + file.string() + " (" + std::to_string(picture->Width()) + "x" +
         std::to_string(picture->Height()) + ")");
}

// A pressure that swings slowly with some noise, and drops out for a while.
Variant pressure(int seconds) {
  if (seconds >= 1500 && seconds < 1560) return Variant(std::nan(""));
  const double t = seconds;
  return Variant(std::round((8 + 5 * std::sin(t / 600) + 0.4 * std::sin(t * 1.7)) * 100) / 100);
}

template <class Trend>
std::shared_ptr<Trend> make(const std::shared_ptr<host::ReferenceHost>& host, const char* caption) {
  auto trend = Trend::create();
  trend->IDTMControl_Init(host);
  trend->IDtmControl_Name("PT1");
  trend->DTMDataGaugeControl_Unit("PT1_Unit");
  trend->IDTMDataControl_Caption(caption);
  trend->IDTMEnumeration_EnumDataDef(xml::parseElement(kUnits));
  trend->IDtmDataSubscriptionControl_SubscriptionItems();
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PT1_Unit", Variant(1137));
  return trend;
}

template <class Trend>
std::string state(Trend& trend) {
  size_t samples = 0;
  for (double stamp : trend.timeStamps()) samples += stamp != 1.7e308;
  return std::to_string(samples) + " samples, y range " + Variant(trend.axisMin()).toText() +
         " to " + Variant(trend.axisMax()).toText();
}

}  // namespace

void playTrends(Transcript& t, const std::filesystem::path& out) {
  headless::install(".");
  auto host = std::make_shared<host::ReferenceHost>();
  host->translations = {{"unit_bar", "bar"},
                        {"PT1_hour", "Outlet pressure, last hour"},
                        {"PT1_minutes", "Outlet pressure, last ten minutes"}};
  headless::current().clock().set({2026, 11, 23, 8, 0, 0});
  t.title("Trends: a simulated hour on a fast clock");
  t.host("subscribes a data trend and a fast trend to PT1 and its unit (bar)");
  auto data = make<DTMDataTrendControl>(host, "PT1_hour");
  auto fast = make<DTMDynamicTrendControl>(host, "PT1_minutes");
  t.note("the device sends PT1 every 5 s to the fast trend, every 10 s to the data trend;");
  t.note(
      "the fast trend samples four times a second by its own timer, the data trend at each "
      "drawing");

  for (int second = 1; second <= 3600; ++second) {
    headless::current().clock().advance(1);
    if (second % 5 == 0) {
      fast->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PT1", pressure(second));
    }
    if (second % 10 == 0) {
      data->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PT1", pressure(second));
    }
    if (second == 60) {
      t.note("after a minute: fast trend " + state(*fast) + "; data trend " + state(*data));
      writePicture(t, fast->ChartViewer1(), out / "DTMDynamicTrendControl-first-minute.png");
      writePicture(t, data->ChartViewer1(), out / "DTMDataTrendControl-first-minute.png");
    }
    if (second == 900) {
      t.note("after 15 minutes (the fast trend's window is full): " + state(*fast));
      writePicture(t, fast->ChartViewer1(), out / "DTMDynamicTrendControl-full-window.png");
    }
  }
  t.note("after an hour (a gap where the device sent no number): data trend " + state(*data));
  writePicture(t, data->ChartViewer1(), out / "DTMDataTrendControl-full-window.png");

  t.user("arms zoom in on the fast trend and clicks the lower half of its chart twice");
  headless::user(fast->frame().zoomIn()).click();
  headless::user(fast->ChartViewer1()).click(350, 300);
  headless::user(fast->ChartViewer1()).click(350, 300);
  t.note("viewport top " + Variant(fast->ChartViewer1().ViewPortTop()).toText() + ", height " +
         Variant(fast->ChartViewer1().ViewPortHeight()).toText());
  writePicture(t, fast->ChartViewer1(), out / "DTMDynamicTrendControl-zoomed-in.png");
  for (const std::string& line : host->errorLines()) t.note("error line: " + line);
  SetSharedHost(nullptr);
}

void playMultiTrendAndWaveForm(Transcript& t, const std::filesystem::path& out) {
  headless::install(".");
  auto host = std::make_shared<host::ReferenceHost>();
  headless::current().clock().set({2026, 11, 23, 8, 0, 0});
  t.title("A flow with its bands over an hour, and a vibration wave form");
  auto multi = DTMMultiTrendControl::create();
  multi->IDTMControl_Init(host);
  multi->IDtmControl_Name("FT1_trend");
  multi->IDtmTrendControl_TrendDataDef(xml::parseElement(
      R"(<trend lowerRange="FT1_Low" upperRange="FT1_High" isLegend="true">)"
      R"(<trendSource color="1F4E9A" label="Flow" itemName="FT1"/>)"
      R"(<rangeSource color="7F7F7F" label="Range" itemNameHi="FT1_RH" itemNameLow="FT1_RL"/>)"
      R"(<limitSource color="E08A00" label="Limits" itemNameHi="FT1_LH" itemNameLow="FT1_LL"/>)"
      R"(<alertSource color="D02020" label="Alerts" itemNameHi="FT1_AH" itemNameLow="FT1_AL"/>)"
      R"(</trend>)"));
  multi->IDtmTrendControl_XLabel("Outlet flow, last hour");
  multi->IDtmTrendControl_YLabel("m3/h");
  multi->IDtmDataSubscriptionControl_SubscriptionItems();
  multi->IDtmDataSubscriptionControl_UpdateSubscriptionValues("FT1_Low", Variant(0));
  multi->IDtmDataSubscriptionControl_UpdateSubscriptionValues("FT1_High", Variant(120));
  t.host("reads the trend definition and sends the six band values, then the flow, every 5 s");
  for (int second = 5; second <= 3600; second += 5) {
    headless::current().clock().advance(5);
    multi->IDtmTrendControl_RangeHighValue(Variant(110));
    multi->IDtmTrendControl_RangeLowValue(Variant(10));
    multi->IDtmTrendControl_LimitHighValue(Variant(95));
    multi->IDtmTrendControl_LimitLowValue(Variant(25));
    multi->IDtmTrendControl_AlertHighValue(Variant(second < 1800 ? 85 : 88));
    multi->IDtmTrendControl_AlertLowValue(Variant(35));
    const double flow = 60 + 22 * std::sin(second / 500.0) + 3 * std::sin(second * 0.9);
    multi->IDtmTrendControl_ItemValue(Variant(std::round(flow * 10) / 10));
  }
  writePicture(t, multi->MultiChartViewer(), out / "DTMMultiTrendControl-hour.png");

  auto wave = DTMWaveFormControl::create();
  wave->IDTMControl_Init(host);
  wave->IDtmControl_Name("VT1_wave");
  wave->IDtmWaveFormControl_TrendDataDef(xml::parseElement(
      R"(<wave lowerRange="VT1_Low" upperRange="VT1_High" lineColor="1F4E9A" isLegend="false"/>)"));
  wave->IDtmWaveFormControl_title("Bearing vibration");
  wave->IDtmWaveFormControl_XLabel("ms");
  wave->IDtmWaveFormControl_YLabel("mm/s");
  wave->IDtmWaveFormControl_SetXLowerValue(Variant(0));
  wave->IDtmWaveFormControl_SetXUpperValue(Variant(200));
  VariantArray xs, ys;
  for (int i = 0; i < 100000; ++i) {
    const double ms = i * 0.002;
    xs.items.emplace_back(ms);
    ys.items.emplace_back(4 * std::sin(ms * 0.31) + 1.5 * std::sin(ms * 2.9) +
                          0.6 * std::sin(ms * 37.0) * std::exp(-std::fmod(ms, 50.0) / 12));
  }
  t.host("hands over a recorded wave form of 100,000 points and draws it");
  wave->IDtmWaveFormControl_SetXAxisValues(Variant(std::move(xs)));
  wave->IDtmWaveFormControl_SetYAxisValues(Variant(std::move(ys)));
  wave->IDtmWaveFormControl_DrawChart();
  writePicture(t, wave->ChartViewer1(), out / "DTMWaveFormControl-all.png");
  t.user("arms zoom in and clicks the chart twice near the first peak");
  headless::user(wave->frame().zoomIn()).click();
  wave->IDtmWaveFormControl_DrawChart();
  headless::user(wave->ChartViewer1()).click(150, 150);
  headless::user(wave->ChartViewer1()).click(150, 150);
  writePicture(t, wave->ChartViewer1(), out / "DTMWaveFormControl-zoomed-in.png");
  t.user("arms zoom out and clicks until the whole range shows again");
  headless::user(wave->frame().ZoomOut()).click();
  for (int i = 0; i < 3; ++i) headless::user(wave->ChartViewer1()).click(150, 150);
  t.note("mouse usage after zooming out all the way: " +
         std::to_string(wave->ChartViewer1().MouseUsage()));
  t.host("draws the wave form again: with the zoom mode ended, it shows all");
  wave->IDtmWaveFormControl_DrawChart();
  writePicture(t, wave->ChartViewer1(), out / "DTMWaveFormControl-zoomed-out.png");
  for (const std::string& line : host->errorLines()) t.note("error line: " + line);
  SetSharedHost(nullptr);
}

}  // namespace tessaline::demo
