// The navigation on a large menu: 5,000 entries in 20 groups, each with a condition for the
// host, built into bars and trees; then the host's activation of the last entry, which walks
// every entry of every tree with its trace line.
#include <benchmark/benchmark.h>

#include "large_menu.h"
#include "quiet_host.h"
#include "tessaline/navigation/navigation.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace {

using namespace tessaline;

int entryCount(DtmNavigation& nav) {
  int count = 0;
  for (int16_t j = 1; j <= kGroups; ++j) count += nav.TreeViews(j)->NodeCount() - 1;
  return count;
}

void Navigation_Load5000Entries(benchmark::State& state) {
  headless::install(".");
  auto host = std::make_shared<QuietHost>();
  const Ref<platform::XmlNode> menu = largeMenu();
  int built = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto nav = DtmNavigation::create();
    nav->IDtmNavigation_Init(host, host);
    state.ResumeTiming();
    nav->IDtmNavigation_Load(menu);
    state.PauseTiming();
    built = entryCount(*nav);
    nav.reset();
    state.ResumeTiming();
  }
  if (built != 5000) state.SkipWithError("entries missing");
  platform::setBackend(nullptr);
}
BENCHMARK(Navigation_Load5000Entries)->Unit(benchmark::kMillisecond);

void Navigation_ActivateMenuOn5000Entries(benchmark::State& state) {
  headless::install(".");
  auto host = std::make_shared<QuietHost>();
  auto nav = DtmNavigation::create();
  nav->IDtmNavigation_Init(host, host);
  nav->IDtmNavigation_Load(largeMenu());
  // The last entry of the last bar: the search visits all 5,020 entries with their roots.
  const std::string last = "G19F24I8";
  bool found = false;
  for (auto _ : state) found = nav->IDtmNavigation_ActivateMenu(last);
  if (!found) state.SkipWithError("entry not found");
  nav.reset();
  platform::setBackend(nullptr);
}
BENCHMARK(Navigation_ActivateMenuOn5000Entries)->Unit(benchmark::kMicrosecond);

}  // namespace
