// The picture codecs on a chart of the size the viewer shows: what each redraw pays to hand its
// pixels over as JPEG, and what a PNG export costs.
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cmath>
#include <cstdio>

#include "tessaline/platform/chart/codecs.h"
#include "tessaline/platform/picture.h"

namespace {

using namespace tessaline;

// White, a tinted plot area with a grid, four antialiased curves and axis labels.
const platform::PixelImage& chart() {
  static const platform::PixelImage image = [] {
    platform::PixelImage out;
    out.width = 738;
    out.height = 484;
    out.pixels.resize(static_cast<size_t>(out.width) * static_cast<size_t>(out.height));
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(out.pixels.data()), CAIRO_FORMAT_ARGB32, out.width,
        out.height, out.width * 4);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_paint(cr);
    cairo_set_source_rgb(cr, 0.94, 0.94, 1);
    cairo_rectangle(cr, 50, 30, 660, 400);
    cairo_fill(cr);
    cairo_set_source_rgb(cr, 0.8, 0.8, 0.8);
    cairo_set_line_width(cr, 1);
    for (int i = 0; i <= 10; ++i) {
      cairo_move_to(cr, 50, 30.5 + i * 40);
      cairo_line_to(cr, 710, 30.5 + i * 40);
    }
    cairo_stroke(cr);
    const double colours[4][3] = {{1, 0, 0}, {0, 0.6, 0}, {0, 0, 1}, {0.8, 0.5, 0}};
    cairo_set_line_width(cr, 1.5);
    for (int k = 0; k < 4; ++k) {
      cairo_set_source_rgb(cr, colours[k][0], colours[k][1], colours[k][2]);
      for (int x = 0; x <= 660; x += 2) {
        const double y = 230 + 150 * std::sin(x / (40.0 + 13 * k) + k) * std::cos(x / 170.0);
        x == 0 ? cairo_move_to(cr, 50 + x, y) : cairo_line_to(cr, 50 + x, y);
      }
      cairo_stroke(cr);
    }
    cairo_select_font_face(cr, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, 11);
    cairo_set_source_rgb(cr, 0, 0, 0);
    for (int i = 0; i <= 10; ++i) {
      char label[8];
      std::snprintf(label, sizeof label, "%d", i * 10);
      cairo_move_to(cr, 20, 434 - i * 40);
      cairo_show_text(cr, label);
    }
    cairo_destroy(cr);
    cairo_surface_flush(surface);
    cairo_surface_destroy(surface);
    return out;
  }();
  return image;
}

void encodedSize(benchmark::State& state, size_t bytes) {
  state.counters["bytes"] = static_cast<double>(bytes);
}

void JpegEncode(benchmark::State& state) {
  size_t bytes = 0;
  for (auto _ : state) {
    const auto encoded = chart::encodeJpeg(chart());
    bytes = encoded.size();
    benchmark::DoNotOptimize(encoded.data());
  }
  encodedSize(state, bytes);
}
BENCHMARK(JpegEncode)->Unit(benchmark::kMillisecond);

void JpegDecode(benchmark::State& state) {
  const auto encoded = chart::encodeJpeg(chart());
  for (auto _ : state) {
    platform::PixelImage decoded;
    chart::decodePicture(encoded.data(), encoded.size(), decoded);
    benchmark::DoNotOptimize(decoded.pixels.data());
  }
}
BENCHMARK(JpegDecode)->Unit(benchmark::kMillisecond);

// What the viewer pays per redraw.
void JpegEncodeAndDecode(benchmark::State& state) {
  for (auto _ : state) {
    const auto encoded = chart::encodeJpeg(chart());
    platform::PixelImage decoded;
    chart::decodePicture(encoded.data(), encoded.size(), decoded);
    benchmark::DoNotOptimize(decoded.pixels.data());
  }
}
BENCHMARK(JpegEncodeAndDecode)->Unit(benchmark::kMillisecond);

void PngEncode(benchmark::State& state) {
  size_t bytes = 0;
  for (auto _ : state) {
    const auto encoded = chart::encodePng(chart());
    bytes = encoded.size();
    benchmark::DoNotOptimize(encoded.data());
  }
  encodedSize(state, bytes);
}
BENCHMARK(PngEncode)->Unit(benchmark::kMillisecond);

void PngDecode(benchmark::State& state) {
  const auto encoded = chart::encodePng(chart());
  for (auto _ : state) {
    platform::PixelImage decoded;
    chart::decodePicture(encoded.data(), encoded.size(), decoded);
    benchmark::DoNotOptimize(decoded.pixels.data());
  }
}
BENCHMARK(PngDecode)->Unit(benchmark::kMillisecond);

}  // namespace
