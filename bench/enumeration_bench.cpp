// Loading a long enumeration: reading the entries, asking the host for their texts and
// conditions, and filling the list child.
#include <benchmark/benchmark.h>

#include "quiet_host.h"
#include "tessaline/entry/data_combo_box.h"
#include "tessaline/entry/list_control.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace {

using namespace tessaline;

Ref<platform::XmlNode> enumeration(int entries, bool conditions) {
  std::string xml = "<enumeration>";
  for (int i = 0; i < entries; ++i) {
    const std::string n = std::to_string(i);
    xml += "<entry name='Entry " + n + "' code='" + n + "' label='Label_" + n + "'";
    if (conditions) xml += " includeIf=' mode == " + n + " '";
    xml += "/>";
  }
  return xml::parseElement(xml + "</enumeration>");
}

template <class Control>
void load(benchmark::State& state, bool conditions) {
  headless::install(".");
  auto host = std::make_shared<QuietHost>();
  auto control = Control::create();
  control->IDTMControl_Init(host);
  const Ref<platform::XmlNode> node = enumeration(static_cast<int>(state.range(0)), conditions);
  for (auto _ : state) {
    control->IDTMEnumeration_EnumDataDef(node);
    benchmark::DoNotOptimize(control->listChild().ListCount());
  }
  if (control->listChild().ListCount() != state.range(0)) state.SkipWithError("rows missing");
  SetSharedHost(nullptr);
  platform::setBackend(nullptr);
}

void LoadEnumeration_ComboWithConditions(benchmark::State& state) {
  load<DTMDataComboBox>(state, true);
}
BENCHMARK(LoadEnumeration_ComboWithConditions)->Arg(10000)->Unit(benchmark::kMillisecond);

void LoadEnumeration_List(benchmark::State& state) { load<DTMListControl>(state, false); }
BENCHMARK(LoadEnumeration_List)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
