// The trends at work: one redraw of a full chart, from the viewport's change through the chart
// building to the pixels in the viewer; and a control room of fast trends running on a
// fast-forwarded clock, reported as CPU milliseconds per simulated second.
#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <memory>
#include <vector>

#include "platform/chart/install.h"
#include "platform/headless/headless.h"
#include "platform/picture.h"
#include "quiet_host.h"
#include "trends/data_trend.h"
#include "trends/dynamic_trend.h"

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
