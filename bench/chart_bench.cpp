// One whole redraw of each sample chart (build, draw, encode as JPEG, decode for the viewer),
// through the chart engine and, as the floor, with the same drawing in plain cairo calls.
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cmath>
#include <string>

#include "apps/demo/sample_charts.h"
#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/chart/engine.h"
#include "tessaline/platform/picture.h"

namespace {

using namespace tessaline;
constexpr double kPi = 3.14159265358979323846;

const demo::TrendData& data() {
  static const demo::TrendData d = demo::sampleTrendData(7, 1500);
  return d;
}

// A cairo surface over pixels that the encoder can take without a copy.
struct Surface {
  platform::PixelImage image;
  cairo_surface_t* surface;
  Surface(int width, int height) {
    image.width = width;
    image.height = height;
    image.pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    surface =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(image.pixels.data()),
                                            CAIRO_FORMAT_ARGB32, width, height, width * 4);
  }
  ~Surface() { cairo_surface_destroy(surface); }
};

// Encodes and decodes the pixels as the viewer would receive them.
void handOver(Surface& target) {
  cairo_surface_flush(target.surface);
  const auto bytes = chart::encodeJpeg(target.image);
  platform::PixelImage decoded;
  chart::decodePicture(bytes.data(), bytes.size(), decoded);
  benchmark::DoNotOptimize(decoded.pixels.data());
}

void text(cairo_t* cr, const char* family, bool bold, double size, double x, double y,
          const std::string& s, double angle = 0) {
  cairo_select_font_face(cr, family, CAIRO_FONT_SLANT_NORMAL,
                         bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cr, size * 4 / 3);
  cairo_text_extents_t e;
  cairo_text_extents(cr, s.c_str(), &e);
  cairo_save(cr);
  cairo_translate(cr, x, y);
  cairo_rotate(cr, -angle * kPi / 180);
  cairo_move_to(cr, -e.x_advance / 2, e.height / 2);
  cairo_set_source_rgb(cr, 0, 0, 0);
  cairo_show_text(cr, s.c_str());
  cairo_restore(cr);
}

void floorMeter() {
  Surface target(208, 145);
  cairo_t* cr = cairo_create(target.surface);
  cairo_pattern_t* metal = cairo_pattern_create_linear(0, 72, 208, 72);
  cairo_pattern_add_color_stop_rgb(metal, 0, 0.8, 0.8, 0.83);
  cairo_pattern_add_color_stop_rgb(metal, 0.5, 0.93, 0.93, 0.96);
  cairo_pattern_add_color_stop_rgb(metal, 1, 0.78, 0.78, 0.81);
  cairo_set_source(cr, metal);
  cairo_paint(cr);
  cairo_pattern_destroy(metal);
  cairo_set_source_rgb(cr, 0, 0, 0);
  cairo_rectangle(cr, 0.5, 0.5, 207, 144);
  cairo_stroke(cr);
  const double limits[] = {0, 30, 60, 100, 125, 150};
  for (int i = 0; i < 5; ++i) {
    const double a0 = (-180 + limits[i] / 150 * 180) * kPi / 180;
    const double a1 = (-180 + limits[i + 1] / 150 * 180) * kPi / 180;
    cairo_arc(cr, 104, 117, 80, a0, a1);
    cairo_arc_negative(cr, 104, 117, 73, a1, a0);
    cairo_close_path(cr);
    cairo_set_source_rgb(cr, 0.2 * i, 0.8, 0.3);
    cairo_fill(cr);
  }
  cairo_set_source_rgb(cr, 0.12, 0.12, 0.12);
  cairo_arc(cr, 104, 117, 85, kPi, 2 * kPi);
  cairo_stroke(cr);
  for (int i = 0; i <= 60; ++i) {
    const double a = kPi + i * kPi / 60, len = i % 10 == 0 ? 10 : (i % 5 == 0 ? 6 : 3);
    cairo_move_to(cr, 104 + 85 * std::cos(a), 117 + 85 * std::sin(a));
    cairo_line_to(cr, 104 + (85 - len) * std::cos(a), 117 + (85 - len) * std::sin(a));
    cairo_set_line_width(cr, i % 10 == 0 ? 1.5 : 1);
    cairo_stroke(cr);
  }
  for (int i = 0; i <= 6; ++i) {
    const double a = kPi + i * kPi / 6;
    text(cr, "Liberation Sans", false, 8, 104 + 97 * std::cos(a), 117 + 97 * std::sin(a),
         std::to_string(i * 25) + ".00");
  }
  const double a = kPi + 87.0 / 150 * kPi;
  cairo_move_to(cr, 104 + 83 * std::cos(a), 117 + 83 * std::sin(a));
  cairo_line_to(cr, 104 - 3.5 * std::sin(a), 117 + 3.5 * std::cos(a));
  cairo_line_to(cr, 104 - 12 * std::cos(a), 117 - 12 * std::sin(a));
  cairo_line_to(cr, 104 + 3.5 * std::sin(a), 117 - 3.5 * std::cos(a));
  cairo_close_path(cr);
  cairo_fill_preserve(cr);
  cairo_stroke(cr);
  cairo_arc(cr, 104, 117, 5, 0, 2 * kPi);
  cairo_fill(cr);
  text(cr, "Liberation Sans", true, 8, 100, 130, "87 bar");
  cairo_destroy(cr);
  handOver(target);
}

// The plot area of each sample chart and the number of y ticks its scale settles on.
struct PlotArea {
  double x, y, w, h;
  int yTicks;
};

void floorTrend(int width, int height, const PlotArea& plot, int lines, bool legend) {
  const auto& d = data();
  Surface target(width, height);
  cairo_t* cr = cairo_create(target.surface);
  cairo_set_source_rgb(cr, 0.957, 0.957, 0.957);
  cairo_paint(cr);
  cairo_set_source_rgb(cr, 0.01, 0.19, 0.4);
  cairo_rectangle(cr, 1, 1, width - 2, 24);
  cairo_fill(cr);
  text(cr, "Liberation Sans", false, 13, width / 2.0, 13, "Outlet pressure");
  const double px = plot.x, py = plot.y, pw = plot.w, ph = plot.h;
  cairo_set_source_rgb(cr, 1, 1, 1);
  cairo_rectangle(cr, px, py, pw, ph);
  cairo_fill(cr);
  cairo_set_source_rgb(cr, 0.8, 0.8, 0.8);
  for (int i = 0; i <= 10; ++i) {
    cairo_move_to(cr, std::round(px + pw * i / 10) + 0.5, py);
    cairo_line_to(cr, std::round(px + pw * i / 10) + 0.5, py + ph);
  }
  for (int i = 0; i < plot.yTicks; ++i) {
    const double y = std::round(py + ph * i / (plot.yTicks - 1)) + 0.5;
    cairo_move_to(cr, px, y);
    cairo_line_to(cr, px + pw, y);
  }
  cairo_set_line_width(cr, 1);
  cairo_stroke(cr);
  const double viewEnd = d.times.back() + 180, viewStart = viewEnd - 3600;
  cairo_save(cr);
  cairo_rectangle(cr, std::floor(px), std::floor(py), std::ceil(px + pw) - std::floor(px),
                  std::ceil(py + ph) - std::floor(py));
  cairo_clip(cr);
  cairo_set_line_join(cr, CAIRO_LINE_JOIN_BEVEL);
  cairo_set_antialias(cr, CAIRO_ANTIALIAS_FAST);
  for (int s = 0; s < lines; ++s) {
    bool open = false;
    for (size_t i = 0; i < d.times.size(); ++i) {
      const double v = d.series[s][i];
      if (v >= 1e300) {
        open = false;
        continue;
      }
      const double x = px + (d.times[i] - viewStart) / (viewEnd - viewStart) * pw;
      const double y = py + ph - v / (lines == 1 ? 60 : 120) * ph;
      open ? cairo_line_to(cr, x, y) : cairo_move_to(cr, x, y);
      open = true;
    }
    cairo_set_source_rgb(cr, s == 0 ? 1 : 0, 0, s == 0 ? 0 : 0.8);
    cairo_set_line_width(cr, legend ? 3 : 1);
    cairo_stroke(cr);
  }
  cairo_restore(cr);
  for (int i = 0; i <= 10; ++i) {
    text(cr, "Liberation Sans", false, 8, px + pw * i / 10 - 20, py + ph + 18, "10:05:07", 20);
  }
  for (int i = 0; i < plot.yTicks; ++i) {
    text(cr, "Liberation Sans", false, 8, px - 20, py + ph * i / (plot.yTicks - 1),
         std::to_string(20 * i));
  }
  text(cr, "Liberation Sans", true, 10, 20, py + ph / 2, "Temperature", 90);
  if (legend) {
    for (int s = 0; s < lines; ++s) {
      cairo_move_to(cr, 104 + (s % 4) * 133, 32 + (s / 4) * 14);
      cairo_rel_line_to(cr, 16, 0);
      cairo_stroke(cr);
      text(cr, "Liberation Sans", true, 9, 150 + (s % 4) * 133, 32 + (s / 4) * 14, "Tray 1");
    }
  }
  cairo_destroy(cr);
  handOver(target);
}

Ref<platform::chart::ChartApi> engineApi() {
  chart::install();
  return platform::chart::createChartApi();
}

void BM_MeterRedraw(benchmark::State& state) {
  auto api = engineApi();
  for (auto _ : state) {
    auto picture = platform::PictureFromBytes(demo::sampleMeter(*api, 87)->makeChart2(2));
    benchmark::DoNotOptimize(picture.get());
  }
}
BENCHMARK(BM_MeterRedraw)->Unit(benchmark::kMillisecond);

void BM_MeterCairoFloor(benchmark::State& state) {
  for (auto _ : state) floorMeter();
}
BENCHMARK(BM_MeterCairoFloor)->Unit(benchmark::kMillisecond);

void BM_TrendRedraw(benchmark::State& state) {
  auto api = engineApi();
  const demo::TrendData one{data().times, {data().series[0]}};
  for (auto _ : state) {
    auto picture = platform::PictureFromBytes(demo::sampleTrend(*api, one)->makeChart2(2));
    benchmark::DoNotOptimize(picture.get());
  }
}
BENCHMARK(BM_TrendRedraw)->Unit(benchmark::kMillisecond);

void BM_TrendCairoFloor(benchmark::State& state) {
  for (auto _ : state) floorTrend(705, 385, {70, 40, 610, 285, 6}, 1, false);
}
BENCHMARK(BM_TrendCairoFloor)->Unit(benchmark::kMillisecond);

void BM_SevenLinesRedraw(benchmark::State& state) {
  auto api = engineApi();
  for (auto _ : state) {
    auto picture = platform::PictureFromBytes(demo::sampleMultiTrend(*api, data())->makeChart2(2));
    benchmark::DoNotOptimize(picture.get());
  }
}
BENCHMARK(BM_SevenLinesRedraw)->Unit(benchmark::kMillisecond);

void BM_SevenLinesCairoFloor(benchmark::State& state) {
  for (auto _ : state) floorTrend(738, 484, {95, 80, 738 * 0.73, 484 * 0.59, 7}, 7, true);
}
BENCHMARK(BM_SevenLinesCairoFloor)->Unit(benchmark::kMillisecond);

}  // namespace

namespace {

// The share of a redraw that encoding and decoding take, on a blank picture of each size.
void BM_JpegHandOver(benchmark::State& state) {
  Surface target(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  cairo_t* cr = cairo_create(target.surface);
  cairo_set_source_rgb(cr, 0.96, 0.96, 0.96);
  cairo_paint(cr);
  cairo_destroy(cr);
  for (auto _ : state) handOver(target);
}
BENCHMARK(BM_JpegHandOver)
    ->Args({208, 145})
    ->Args({705, 385})
    ->Args({738, 484})
    ->Unit(benchmark::kMillisecond);

}  // namespace
