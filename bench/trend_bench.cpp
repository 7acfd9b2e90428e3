// The trends at work: one redraw of a full chart, from the viewport's change through the chart
// building to the pixels in the viewer; and a control room of fast trends running on a
// fast-forwarded clock, reported as CPU milliseconds per simulated second.
#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <memory>
#include <vector>

#include "quiet_host.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/picture.h"
#include "tessaline/platform/xml/pugi_dom.h"
#include "tessaline/trends/data_trend.h"
#include "tessaline/trends/dynamic_trend.h"
#include "tessaline/trends/multi_trend.h"
#include "tessaline/trends/waveform.h"

namespace {

using namespace tessaline;

struct Stage {
  Stage() {
    headless::install(".");
    chart::install();
    headless::current().clock().set({2026, 11, 23, 8, 0, 0});
  }
  ~Stage() {
    SetSharedHost(nullptr);
    platform::setBackend(nullptr);
  }
  std::shared_ptr<QuietHost> host = std::make_shared<QuietHost>();
};

// A pressure that breathes slowly with some noise, the same on every run.
double pressure(double t) {
  return 50 + 30 * std::sin(t / 90) + 4 * std::sin(t * 1.7) + 2 * std::sin(t * 13.1);
}

template <class Trend>
std::shared_ptr<Trend> makeTrend(Stage& stage) {
  auto trend = Trend::create();
  trend->IDTMControl_Init(stage.host);
  trend->IDtmControl_Name("PV");
  trend->DTMDataGaugeControl_Unit("Unit");
  trend->IDTMDataControl_Caption("Pressure");
  return trend;
}

bool hasPicture(platform::ChartViewer& viewer) { return !viewer.Picture().isNothing(); }

// 2500 samples over the last ten minutes and some, four a second.
void BM_DynamicTrendRedraw(benchmark::State& state) {
  Stage stage;
  auto trend = makeTrend<DTMDynamicTrendControl>(stage);
  headless::Clock& clock = headless::current().clock();
  for (int second = 0; second < 630; ++second) {
    trend->IDTMDataControl_SetDeviceValue(Variant(pressure(second)));
    clock.advance(1);
  }
  for (auto _ : state) trend->frame().viewer().updateViewPort(true, false);
  if (!hasPicture(trend->frame().viewer())) state.SkipWithError("no picture");
}
BENCHMARK(BM_DynamicTrendRedraw)->Unit(benchmark::kMillisecond);

// 1500 samples, one every 2.5 s, over the last hour and some.
void BM_DataTrendRedraw(benchmark::State& state) {
  Stage stage;
  auto trend = makeTrend<DTMDataTrendControl>(stage);
  headless::Clock& clock = headless::current().clock();
  for (int second = 0; second < 3800; second += 5) {
    trend->IDTMDataControl_SetDeviceValue(Variant(pressure(second)));
    clock.advance(5);
  }
  for (auto _ : state) trend->frame().viewer().updateViewPort(true, false);
  if (!hasPicture(trend->frame().viewer())) state.SkipWithError("no picture");
}
BENCHMARK(BM_DataTrendRedraw)->Unit(benchmark::kMillisecond);

// Seven lines of 1500 samples with the legend, 738x484: the value and three full bands.
void BM_MultiTrendRedraw(benchmark::State& state) {
  Stage stage;
  auto trend = DTMMultiTrendControl::create();
  trend->IDTMControl_Init(stage.host);
  trend->IDtmTrendControl_TrendDataDef(xml::parseElement(
      R"(<trend lowerRange="L" upperRange="U" isLegend="true">)"
      R"(<trendSource color="1F4E9A" label="Flow" itemName="PV"/>)"
      R"(<rangeSource color="7F7F7F" label="Range" itemNameHi="RH" itemNameLow="RL"/>)"
      R"(<limitSource color="E08A00" label="Limits" itemNameHi="LH" itemNameLow="LL"/>)"
      R"(<alertSource color="D02020" label="Alerts" itemNameHi="AH" itemNameLow="AL"/></trend>)"));
  trend->IDtmTrendControl_XLabel("Flow");
  trend->IDtmDataSubscriptionControl_UpdateSubscriptionValues("U", Variant(120));
  headless::Clock& clock = headless::current().clock();
  for (int second = 0; second < 3800; second += 5) {
    trend->IDtmTrendControl_RangeHighValue(Variant(110 + std::sin(second * 0.01)));
    trend->IDtmTrendControl_RangeLowValue(Variant(10 + std::sin(second * 0.013)));
    trend->IDtmTrendControl_LimitHighValue(Variant(95 + std::sin(second * 0.017)));
    trend->IDtmTrendControl_LimitLowValue(Variant(25 + std::sin(second * 0.019)));
    trend->IDtmTrendControl_AlertHighValue(Variant(85 + std::sin(second * 0.023)));
    trend->IDtmTrendControl_AlertLowValue(Variant(35 + std::sin(second * 0.029)));
    trend->IDtmTrendControl_ItemValue(Variant(pressure(second)));
    clock.advance(5);
  }
  for (auto _ : state) trend->MultiChartViewer().updateViewPort(true, false);
  if (!hasPicture(trend->MultiChartViewer())) state.SkipWithError("no picture");
}
BENCHMARK(BM_MultiTrendRedraw)->Unit(benchmark::kMillisecond);

// A wave form of 100,000 points drawn whole.
void BM_WaveFormRedraw(benchmark::State& state) {
  Stage stage;
  auto wave = DTMWaveFormControl::create();
  wave->IDTMControl_Init(stage.host);
  wave->IDtmWaveFormControl_TrendDataDef(
      xml::parseElement(R"(<w lowerRange="" upperRange="" lineColor="1F4E9A" isLegend=""/>)"));
  wave->IDtmWaveFormControl_SetXUpperValue(Variant(200));
  VariantArray xs, ys;
  for (int i = 0; i < 100000; ++i) {
    xs.items.emplace_back(i * 0.002);
    ys.items.emplace_back(pressure(i * 0.05));
  }
  wave->IDtmWaveFormControl_SetXAxisValues(Variant(std::move(xs)));
  wave->IDtmWaveFormControl_SetYAxisValues(Variant(std::move(ys)));
  for (auto _ : state) wave->IDtmWaveFormControl_DrawChart();
  if (!hasPicture(wave->ChartViewer1())) state.SkipWithError("no picture");
}
BENCHMARK(BM_WaveFormRedraw)->Unit(benchmark::kMillisecond);

double cpuSeconds() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

// Twenty fast trends on one dialog, each given a new value four times a second for a simulated
// minute (every value redraws, the sampling timer runs beside): CPU ms per simulated second.
void BM_ControlRoom(benchmark::State& state) {
  Stage stage;
  std::vector<std::shared_ptr<DTMDynamicTrendControl>> trends;
  for (int i = 0; i < 20; ++i) trends.push_back(makeTrend<DTMDynamicTrendControl>(stage));
  headless::Clock& clock = headless::current().clock();
  double t = 0;
  double cpu = 0;
  double simulated = 0;
  for (auto _ : state) {
    const double start = cpuSeconds();
    for (int tick = 0; tick < 60 * 4; ++tick, t += 0.25) {
      for (size_t i = 0; i < trends.size(); ++i) {
        trends[i]->IDTMDataControl_SetDeviceValue(Variant(pressure(t + 40.0 * i)));
      }
      clock.advance(0.25);
    }
    cpu += cpuSeconds() - start;
    simulated += 60;
  }
  state.counters["cpu_ms_per_simulated_s"] = cpu * 1000 / simulated;
  for (auto& trend : trends) {
    if (!hasPicture(trend->frame().viewer())) state.SkipWithError("no picture");
  }
}
BENCHMARK(BM_ControlRoom)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
