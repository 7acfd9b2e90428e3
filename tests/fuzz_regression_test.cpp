// Every fuzz target over its seeds and over the inputs that once found a fault, kept in
// tests/fuzz-regressions/<target>/: each must run through, under the sanitizers too.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/targets.h"
#include "support.h"

namespace tessaline {
namespace {

class FuzzTarget : public testing::HeadlessTest,
                   public ::testing::WithParamInterface<const fuzz::Target*> {
 protected:
  void run(const std::string& input) {
    GetParam()->run(reinterpret_cast<const uint8_t*>(input.data()), input.size());
  }
};

TEST_P(FuzzTarget, RunsThroughItsSeeds) {
  const std::vector<std::string> seeds = GetParam()->seeds();
  EXPECT_FALSE(seeds.empty());
  for (const std::string& seed : seeds) run(seed);
}

TEST_P(FuzzTarget, RunsThroughTheInputsThatOnceFoundAFault) {
  const std::filesystem::path directory =
      std::filesystem::path(TESSALINE_SOURCE_DIR) / "tests" / "fuzz-regressions" / GetParam()->name;
  if (!std::filesystem::is_directory(directory)) GTEST_SKIP() << "no findings kept";
  for (const auto& file : std::filesystem::directory_iterator(directory)) {
    std::ifstream in(file.path(), std::ios::binary);
    run(std::string(std::istreambuf_iterator<char>(in), {}));
  }
}

std::vector<const fuzz::Target*> allTargets() {
  std::vector<const fuzz::Target*> list;
  for (const fuzz::Target& target : fuzz::targets()) list.push_back(&target);
  return list;
}

INSTANTIATE_TEST_SUITE_P(All, FuzzTarget, ::testing::ValuesIn(allTargets()),
                         [](const auto& info) { return std::string(info.param->name); });

}  // namespace
}  // namespace tessaline
