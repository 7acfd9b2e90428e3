// One libFuzzer binary per target: the build names the target with TESSALINE_FUZZ_TARGET.
#include <cstdio>
#include <cstdlib>

#include "fuzz/targets.h"

namespace {
const tessaline::fuzz::Target* target = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  target = tessaline::fuzz::findTarget(TESSALINE_FUZZ_TARGET);
  if (!target) {
    std::fprintf(stderr, "no fuzz target %s\n", TESSALINE_FUZZ_TARGET);
    std::abort();
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  target->run(data, size);
  return 0;
}
