#pragma once

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "support.h"
#include "tessaline/platform/chart_recorder.h"

namespace tessaline::testing {

// What a store holds in a slot that has had no sample yet.
constexpr double kNoValue = 1.7e308;

// The slots of a store's times or series that hold a sample.
inline size_t samples(const std::vector<double>& slots) {
  return static_cast<size_t>(std::ranges::count_if(slots, [](double x) { return x != kNoValue; }));
}

// A drawing's calls put together from its named parts.
inline std::vector<std::string> joined(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// The charts' tests: every chart call recorded, the clock at 23 November 2026, 08:00.
class ChartTest : public HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    clock().set({2026, 11, 23, 8, 0, 0});
    log = platform::chart::recordChartCalls();
  }
  void TearDown() override {
    platform::chart::stopRecordingChartCalls();
    HeadlessTest::TearDown();
  }
  static headless::Clock& clock() { return headless::current().clock(); }

  // The drawings since the recording was last cleared, each from the chart's making on.
  std::vector<std::vector<std::string>> drawings() const {
    std::vector<std::vector<std::string>> out;
    for (const auto& line : log->lines()) {
      if (line.starts_with("api.XYChart")) out.emplace_back();
      if (!out.empty()) out.back().push_back(line);
    }
    return out;
  }
  std::vector<std::string> lastDrawing() const {
    auto all = drawings();
    return all.empty() ? std::vector<std::string>{} : all.back();
  }
  bool drew(const std::string& call) const { return std::ranges::count(lastDrawing(), call) > 0; }

  std::shared_ptr<platform::chart::ChartRecording> log;
};

}  // namespace tessaline::testing
