// tessaline-demo: plays scenes of the controls against the reference host on the headless
// backend and prints a transcript of everything the host and the user see.
#include <filesystem>
#include <iostream>
#include <string>

#include "apps/demo/scenes.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/values/vb_error.h"

int main(int argc, char** argv) {
  std::filesystem::path out = "out";
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--out" && i + 1 < argc) {
      out = argv[++i];
    } else {
      std::cerr << "usage: tessaline-demo [--out DIR]\n";
      return 2;
    }
  }
  try {
    std::filesystem::create_directories(out);
    tessaline::demo::Transcript transcript(std::cout);
    tessaline::chart::install();
    std::cout << "tessaline-demo: the controls on the headless backend, driven by the reference "
                 "host\n";
    tessaline::demo::playOneEdit(transcript);
    tessaline::demo::playTyping(transcript);
    tessaline::demo::playCheckAndDate(transcript);
    tessaline::demo::playDialog(transcript, out);
    tessaline::demo::playCharts(transcript, out);
    tessaline::demo::playGauges(transcript, out);
    tessaline::demo::playTrends(transcript, out);
    tessaline::demo::playMultiTrendAndWaveForm(transcript, out);
    tessaline::demo::playNavigation(transcript, out);
    std::cout << "\ndone\n";
    return 0;
  } catch (const std::exception& e) {
    std::cerr << "tessaline-demo failed: " << e.what() << "\n";
    return 1;
  }
}
