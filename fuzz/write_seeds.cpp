// Writes the seeds of every fuzz target into DIR/<target>/seed-N:
//   tessaline-fuzz-seeds DIR
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "fuzz/targets.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: tessaline-fuzz-seeds DIR\n");
    return 2;
  }
  for (const tessaline::fuzz::Target& target : tessaline::fuzz::targets()) {
    const std::filesystem::path directory = std::filesystem::path(argv[1]) / target.name;
    std::filesystem::create_directories(directory);
    int n = 0;
    for (const std::string& seed : target.seeds()) {
      std::ofstream(directory / ("seed-" + std::to_string(n++)), std::ios::binary) << seed;
    }
  }
  return 0;
}
