// tessaline-studio: runs a device package's dialogs in real windows, driven by the reference
// host and a simulated device with live values.
//   tessaline-studio [--package DIR] [--screenshots DIR] [--seconds N]
// --screenshots writes a picture of each dialog (after some seconds of the device) and quits;
// --seconds runs the device that long and quits. Without a display, Qt runs offscreen.
#include <QApplication>
#include <QStyleFactory>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "apps/studio/main_window.h"
#include "platform/chart/install.h"
#include "platform/qt/qt_backend.h"
#include "platform/regexp/pcre2_regexp.h"

namespace {

int usage() {
  std::cerr << "usage: tessaline-studio [--package DIR] [--screenshots DIR] [--seconds N]\n";
  return 2;
}

std::string safeName(const std::string& title) {
  std::string name;
  for (char c : title) name += std::isalnum(static_cast<unsigned char>(c)) ? c : '-';
  return name;
}

}  // namespace

int main(int argc, char** argv) {
  std::string package = TESSALINE_SAMPLE_DEVICE, screenshots;
  double seconds = -1;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (i + 1 >= argc) return usage();
    if (arg == "--package") {
      package = argv[++i];
    } else if (arg == "--screenshots") {
      screenshots = argv[++i];
    } else if (arg == "--seconds") {
      seconds = std::atof(argv[++i]);
    } else {
      return usage();
    }
  }
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY")) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
  }
  QApplication application(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  using namespace tessaline;
  qt::install();
  regexp::install();
  chart::install();

  std::vector<std::string> problems;
  studio::DevicePackage device = studio::loadPackage(package, problems);
  for (const std::string& problem : problems) std::cerr << "problem: " << problem << "\n";
  studio::MainWindow window(std::make_unique<studio::Session>(std::move(device)), problems);
  window.show();

  if (!screenshots.empty()) {
    std::filesystem::create_directories(screenshots);
    const size_t forms = window.session().package().forms.size();
    for (size_t i = 0; i < forms; ++i) {
      window.showForm(i);
      // Some seconds of the device, so that its values move and the gauges have drawn.
      for (int tick = 0; tick < 40; ++tick) window.advance(0.25);
      QApplication::processEvents();
      const std::string title = window.session().package().forms[i].title;
      const auto file = std::filesystem::path(screenshots) /
                        ("studio-" + std::to_string(i + 1) + "-" + safeName(title) + ".png");
      if (!window.grab().save(QString::fromStdString(file.string()))) {
        std::cerr << "cannot write " << file << "\n";
        return 1;
      }
      std::cout << "wrote " << file.string() << "\n";
    }
    return 0;
  }
  if (seconds >= 0) {
    for (double t = 0; t < seconds; t += 0.25) window.advance(0.25);
    return 0;
  }
  return application.exec();
}
