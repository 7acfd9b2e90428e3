#pragma once

#include "tessaline/platform/chart.h"

// The chart engine as applications and tests install it.
namespace tessaline::chart {

// Installs the engine and the picture decoder on this thread.
void install();
// A new API object of the engine itself, without the recorder.
Ref<platform::chart::ChartApi> createEngineApi();

}  // namespace tessaline::chart
