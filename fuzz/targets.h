#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The readers of outside input, each driven through the entry points that a host (or a user)
// reaches: definitions handed to the controls, edit formats with typed keys and pastes, numbers
// and dates read from text, chart label formats, pictures, saved forms. The same functions run
// under libFuzzer (fuzz/fuzzer.cpp) and over the seeds and kept findings in the test suite.
namespace tessaline::fuzz {

struct Target {
  const char* name;
  // Runs one input. A failure that the library raises on purpose (VbError) is an outcome;
  // anything else that escapes, and every crash, is a finding.
  void (*run)(const uint8_t* data, size_t size);
  // Valid examples to start from, made from the library's own vocabulary.
  std::vector<std::string> (*seeds)();
};

std::span<const Target> targets();
const Target* findTarget(std::string_view name);

}  // namespace tessaline::fuzz
