#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tessaline/values/variant.h"

// The call recorder: while it records, every chart operation made on this thread is kept in
// order with its arguments, so that a drawing sequence can be checked step by step.
namespace tessaline::platform::chart {

struct RecordedCall {
  // "api", "meter", "chart", "xAxis", "yAxis", "layer", "title" or "legend".
  std::string object;
  std::string operation;
  std::vector<Variant> args;
  // As `meter.setScale(0, 100, 16.6666666666667, 8.33333333333333, 1.66666666666667)`: numbers
  // in their text form, texts in quotes, arrays by their bounds.
  std::string line() const;
};

class ChartRecording {
 public:
  const std::vector<RecordedCall>& calls() const { return calls_; }
  std::vector<std::string> lines() const;
  void clear() { calls_.clear(); }
  void add(RecordedCall call) { calls_.push_back(std::move(call)); }

 private:
  std::vector<RecordedCall> calls_;
};

// Records the operations of API objects made from now on, until stopRecordingChartCalls.
std::shared_ptr<ChartRecording> recordChartCalls();
void stopRecordingChartCalls();

}  // namespace tessaline::platform::chart
