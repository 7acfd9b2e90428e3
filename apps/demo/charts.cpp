#include <fstream>

#include "apps/demo/sample_charts.h"
#include "apps/demo/scenes.h"
#include "tessaline/platform/chart.h"
#include "tessaline/platform/picture.h"

namespace tessaline::demo {

namespace {
void writePng(const Variant& bytes, const std::filesystem::path& file) {
  const auto held = std::dynamic_pointer_cast<platform::ByteArray>(bytes.toObject());
  std::ofstream out(file, std::ios::binary);
  out.write(reinterpret_cast<const char*>(held->bytes().data()),
            static_cast<std::streamsize>(held->bytes().size()));
}
}  // namespace

void playCharts(Transcript& t, const std::filesystem::path& out) {
  t.title("Charts: a meter, a trend of 1500 points, seven lines with a legend");
  auto api = platform::chart::createChartApi();
  const auto data = sampleTrendData(7, 1500);
  const std::pair<std::string, Variant> pictures[] = {
      {"sample-meter.png", sampleMeter(*api, 87)->makeChart2(0)},
      {"sample-trend.png", sampleTrend(*api, data)->makeChart2(0)},
      {"sample-multi-trend.png", sampleMultiTrend(*api, data)->makeChart2(0)},
  };
  for (const auto& [name, bytes] : pictures) {
    writePng(bytes, out / name);
    const auto picture = platform::PictureFromBytes(bytes);
    t.note("wrote " + (out / name).string() + " (" + std::to_string(picture->Width()) + "x" +
           std::to_string(picture->Height()) + ")");
  }
}

}  // namespace tessaline::demo
