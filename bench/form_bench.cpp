// A host's form of 200 controls saved to and loaded from a form file, and a control created by
// its ProgID.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "tessaline/host/form.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/server/class_catalogue.h"

namespace {

using namespace tessaline;

// 200 controls of every class the catalogue carries, each with a few properties away from
// their defaults so that the bags hold something.
host::HostForm twoHundredControls() {
  std::vector<std::string> progIds;
  for (const CatalogueEntry& entry : catalogue()) {
    if (entry.identity->isControl()) progIds.push_back(entry.identity->progId());
  }
  host::HostForm form;
  form.name = "Bench";
  form.width = 30000;
  form.height = 30000;
  for (int i = 0; i < 200; ++i) {
    const std::string name = "Control" + std::to_string(i);
    ControlFrame& control =
        form.add(progIds[i % progIds.size()], name, (i % 10) * 2400, (i / 10) * 420, 2300, 360);
    if (control.hasMember("IDtmControl_Name")) control.let("IDtmControl_Name", Variant(name));
    if (control.hasMember("IDtmControl_DataMode")) {
      control.let("IDtmControl_DataMode", Variant(int32_t{i}));
    }
  }
  return form;
}

class Backends {
 public:
  Backends() {
    headless::install(".");
    regexp::install();
    chart::install();
  }
  ~Backends() { platform::setBackend(nullptr); }
};

void Form_Save200Controls(benchmark::State& state) {
  Backends backends;
  const host::HostForm form = twoHundredControls();
  const std::string path =
      (std::filesystem::temp_directory_path() / "tessaline-bench-form.xml").string();
  for (auto _ : state) xml::saveForm(path, form.save());
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  std::filesystem::remove(path);
}
BENCHMARK(Form_Save200Controls)->Unit(benchmark::kMillisecond);

void Form_Load200Controls(benchmark::State& state) {
  Backends backends;
  const std::string path =
      (std::filesystem::temp_directory_path() / "tessaline-bench-form-load.xml").string();
  xml::saveForm(path, twoHundredControls().save());
  for (auto _ : state) {
    std::vector<std::string> problems;
    const host::HostForm loaded = host::HostForm::load(xml::loadForm(path), problems);
    if (loaded.controls().size() != 200 || !problems.empty()) state.SkipWithError("incomplete");
  }
  std::filesystem::remove(path);
}
BENCHMARK(Form_Load200Controls)->Unit(benchmark::kMillisecond);

void CreateObject_ByProgId(benchmark::State& state) {
  Backends backends;
  for (auto _ : state) benchmark::DoNotOptimize(CreateObject("Tessaline.DTMDataTextBox"));
}
BENCHMARK(CreateObject_ByProgId)->Unit(benchmark::kMicrosecond);

}  // namespace
