// One update of each gauge: the value of its own item, through the drawing and the JPEG round
// trip, to the new picture in the viewer.
#include <benchmark/benchmark.h>

#include "quiet_host.h"
#include "tessaline/gauges/angular_gauge.h"
#include "tessaline/gauges/data_gauge.h"
#include "tessaline/gauges/dynamic_gauge.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace {

using namespace tessaline;

constexpr const char* kGauge =
    R"(<gauge lowerRange="Low" upperRange="High" pointerColor="CC0000">)"
    R"(<zones type="low_limit"><zone name="Z1" color="3366FF"/><zone name="Z2" color="66CC66"/>)"
    R"(<zone name="Z3" color="33AA33"/><zone name="Z4" color="FFCC00"/>)"
    R"(<zone name="High" color="FF3333"/></zones></gauge>)";

template <class Gauge>
void update(benchmark::State& state) {
  headless::install(".");
  chart::install();
  auto host = std::make_shared<QuietHost>();
  auto gauge = Gauge::create();
  gauge->IDTMControl_Init(host);
  gauge->IDtmControl_Name("PV");
  gauge->DTMDataGaugeControl_Unit("Unit");
  if constexpr (!std::is_same_v<Gauge, DTMDynamicGuageControl>) {
    gauge->IDtmDataSubscriptionControlRange_GaugeDataDef(xml::parseElement(kGauge));
    gauge->IDtmDataSubscriptionControl_SubscriptionItems();
    for (auto [item, value] : {std::pair{"Low", 0.0},
                               {"High", 150.0},
                               {"Z1", 30.0},
                               {"Z2", 60.0},
                               {"Z3", 100.0},
                               {"Z4", 125.0}}) {
      gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues(item, Variant(value));
    }
  }
  double value = 40;
  for (auto _ : state) {
    value = value > 140 ? 40 : value + 1.5;
    gauge->IDtmDataSubscriptionControl_UpdateSubscriptionValues("PV", Variant(value));
  }
  if (gauge->ChartViewer1().Picture().isNothing()) state.SkipWithError("no picture");
  SetSharedHost(nullptr);
  platform::setBackend(nullptr);
}

void BM_UpdateDataGuageControl(benchmark::State& state) { update<DTMDataGuageControl>(state); }
void BM_UpdateDataAngularGuage(benchmark::State& state) { update<DTMDataAngularGuage>(state); }
void BM_UpdateDynamicGuageControl(benchmark::State& state) {
  update<DTMDynamicGuageControl>(state);
}
BENCHMARK(BM_UpdateDataGuageControl)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UpdateDataAngularGuage)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UpdateDynamicGuageControl)->Unit(benchmark::kMillisecond);

}  // namespace
