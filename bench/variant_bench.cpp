// The value model sits under every control: text form and reading of numbers.
#include <benchmark/benchmark.h>

#include "tessaline/values/variant.h"

namespace {

using tessaline::Variant;

void DoubleToText(benchmark::State& state) {
  const Variant value(1234.5678901234);
  for (auto _ : state) benchmark::DoNotOptimize(value.toText());
}
BENCHMARK(DoubleToText);

void TextToDouble(benchmark::State& state) {
  const Variant value("-1234.5678901234E-3");
  for (auto _ : state) benchmark::DoNotOptimize(value.toDouble());
}
BENCHMARK(TextToDouble);

void TextToInteger(benchmark::State& state) {
  const Variant value("2.5");
  for (auto _ : state) benchmark::DoNotOptimize(value.toInt16());
}
BENCHMARK(TextToInteger);

}  // namespace
