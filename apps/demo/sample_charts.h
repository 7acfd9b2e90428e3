#pragma once

#include <vector>

#include "tessaline/platform/chart.h"

// Sample charts drawn through the chart interfaces, as the chart controls draw theirs: for the
// demo's pictures and for the redraw benchmarks.
namespace tessaline::demo {

// A 208x145 meter with five zones and a pointer, drawn like the fixed-limit gauge.
Ref<platform::chart::Meter> sampleMeter(platform::chart::ChartApi& api, double value);

// A 705x385 trend of `samples` points (2.5 s apart) with time labels and a gap.
struct TrendData {
  std::vector<double> times;
  std::vector<std::vector<double>> series;
};
TrendData sampleTrendData(int series, int samples);
Ref<platform::chart::XYPlot> sampleTrend(platform::chart::ChartApi& api, const TrendData& data);

// A 738x484 chart of several lines with a legend, drawn like the multi-trend.
Ref<platform::chart::XYPlot> sampleMultiTrend(platform::chart::ChartApi& api,
                                              const TrendData& data);

}  // namespace tessaline::demo
