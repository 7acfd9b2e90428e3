#include "apps/demo/sample_charts.h"

#include <cmath>
#include <cstdint>

namespace tessaline::demo {

namespace {
Variant array(const std::vector<double>& values) {
  VariantArray out;
  out.items.reserve(values.size());
  for (double v : values) out.items.emplace_back(v);
  return Variant(std::move(out));
}

constexpr int32_t kColors[] = {0xFF0000, 0x0000CC, 0x009900, 0xCC6600,
                               0x990099, 0x008888, 0x666666};
}  // namespace

Ref<platform::chart::Meter> sampleMeter(platform::chart::ChartApi& api, double value) {
  const Variant metal = api.meterBackgroundColor(90);
  auto meter = api.AngularMeter(208, 145, metal, 0, 0);
  meter->setMeter(104, 117, 85, -90, 90);
  meter->setRoundedFrame(metal, 4, -1, -1, -1);
  meter->setLabelStyle("arial.ttf", 8, api.TextColor(), 0);
  meter->setScale(0, 150, 25.0, 12.5, 2.5);
  meter->setLabelStyle("arial.ttf", 8, api.TextColor(), 0);
  const double limits[] = {0, 30, 60, 100, 125, 150};
  const int32_t colours[] = {0x3366FF, 0x66CC66, 0x33AA33, 0xFFCC00, 0xFF3333};
  for (int i = 0; i < 5; ++i) meter->addZone(limits[i], limits[i + 1], 73, 80, colours[i], -1);
  meter->setLabelFormat("{value|2}");
  meter->addPointer(value, 0x000000, 0);
  meter->addText(100, 130, std::to_string(static_cast<int>(value)) + " bar", "arialbd.ttf", 8,
                 api.TextColor(), api.Center(), 0, false);
  return meter;
}

TrendData sampleTrendData(int series, int samples) {
  TrendData data;
  // 2026-11-23 10:00:00 is the newest sample.
  const double newest = 63906400800.0;
  uint32_t noise = 12345;
  for (int i = 0; i < samples; ++i) data.times.push_back(newest - (samples - 1 - i) * 2.5);
  for (int s = 0; s < series; ++s) {
    std::vector<double> values;
    for (int i = 0; i < samples; ++i) {
      noise = noise * 1664525u + 1013904223u;
      const double jitter = (static_cast<double>(noise >> 8) / 16777216.0 - 0.5) * 1.5;
      values.push_back(40 + 8 * s + 12 * std::sin(i / (90.0 + 15 * s)) + jitter);
    }
    // A stretch where the device gave no number: a gap in the line.
    for (int i = samples / 2; i < samples / 2 + 20 && i < samples; ++i) values[i] = 1.7e308;
    data.series.push_back(std::move(values));
  }
  return data;
}

Ref<platform::chart::XYPlot> sampleTrend(platform::chart::ChartApi& api, const TrendData& data) {
  auto chart = api.XYChart(705, 385, 0xF4F4F4, 0, 0);
  chart->setPlotArea(70, 40, 610, 285, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
  chart->setClipping(0);
  chart->addTitle("Outlet pressure", "", 13, 0xFFFFFF, 0x033166, static_cast<int32_t>(0xFF000000));
  chart->yAxis()->setTitle("bar", "arialbd.ttf", 10, api.TextColor());
  chart->xAxis()->setTickDensity(75, 15);
  chart->xAxis()->setWidth(2);
  chart->yAxis()->setWidth(2);
  chart->yAxis()->setLabelFormat("{value|P4}");
  const double viewEnd = data.times.back() + 180, viewStart = viewEnd - 3600;
  chart->xAxis()->setDateScale(viewStart, viewEnd, (viewEnd - viewStart) / 10, 0);
  chart->xAxis()->setLabelFormat("{value|hh:nn:ss}");
  auto layer = chart->addLineLayer2(0, 0);
  layer->setXData(array(data.times));
  chart->xAxis()->setLabelStyle("SSERIFE.FON", 8, 0, 20);
  layer->addDataSet(array(data.series[0]), 0xFF0000,
                    chart->formatValue(data.series[0].back(), "<*bgColor=FFCCCC*> {value|2} "));
  chart->yAxis()->setRounding(true, false);
  return chart;
}

Ref<platform::chart::XYPlot> sampleMultiTrend(platform::chart::ChartApi& api,
                                              const TrendData& data) {
  auto chart = api.XYChart(738, 484, 0xF4F4F4, 0, 0);
  chart->setPlotArea(95, 80, 738 * 0.73, 484 * 0.59, 0xFFFFFF, -1, -1, 0xCCCCCC, 0xCCCCCC);
  chart->setClipping(0);
  auto title = chart->addTitle("Column temperatures", "timesbi.ttf", 15, api.TextColor(),
                               api.Transparent(), api.Transparent());
  title->setBackground(0xDDDDDD, 0, api.glassEffect(3, 8, 5));
  auto legend = chart->addLegend2(100, 26, 4, "arialbd.ttf", 9);
  legend->setBackground(api.Transparent(), api.Transparent(), 0);
  legend->setWidth(540);
  chart->yAxis()->setTitle("Temperature (degC)", "arialbd.ttf", 10, api.TextColor());
  chart->xAxis()->setTickDensity(75, 15);
  chart->xAxis()->setWidth(0);
  chart->yAxis()->setWidth(0);
  const double viewEnd = data.times.back() + 180, viewStart = viewEnd - 3600;
  chart->xAxis()->setDateScale(viewStart, viewEnd, (viewEnd - viewStart) / 10, 0);
  chart->xAxis()->setLabelFormat("{value|hh:nn:ss}");
  const Variant times = array(data.times);
  for (size_t s = 0; s < data.series.size(); ++s) {
    auto layer = chart->addLineLayer2(0, 0);
    layer->setLineWidth(3);
    layer->addDataSet(array(data.series[s]), kColors[s % 7], "Tray " + std::to_string(s + 1));
    layer->setXData(times);
    chart->xAxis()->setLabelStyle("SSERIFE.FON", 8, 0, 20);
  }
  chart->layout();
  if (chart->yAxis()->getMaxValue() > 99999 || chart->yAxis()->getMinValue() < -99999) {
    chart->yAxis()->setLabelFormat("{value|e5}");
  }
  return chart;
}

}  // namespace tessaline::demo
