// tessaline-studio: runs a device package's dialogs in real windows, driven by the reference
// host and a simulated device with live values.
//   tessaline-studio [--package DIR] [--screenshots DIR] [--seconds N]
// --screenshots writes a picture of each dialog, whole, after some minutes of the device, and
// quits; --seconds runs the device that long and quits. Both run on simulated time: the device
// and the platform clock move on together as fast as the machine allows. Without a display, Qt
// runs offscreen.
#include <QApplication>
#include <QMessageBox>
#include <QStyleFactory>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "apps/studio/main_window.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/qt/qt_backend.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"

namespace {

using namespace tessaline;

int usage() {
  std::cerr << "usage: tessaline-studio [--package DIR] [--screenshots DIR] [--seconds N]\n";
  return 2;
}

std::string safeName(const std::string& title) {
  std::string name;
  for (char c : title) name += std::isalnum(static_cast<unsigned char>(c)) ? c : '-';
  return name;
}

// The interactive studio asks before it drops edits that aren't applied.
studio::MainWindow::Closing askUser(QWidget* parent, const std::vector<std::string>& edits) {
  QString list;
  for (const std::string& edit : edits) list += "\n  " + QString::fromStdString(edit);
  QMessageBox box(
      QMessageBox::Question, "Unapplied edits",
      "These edits aren't written to the device yet:" + list + "\n\nApply them before closing?",
      QMessageBox::Apply | QMessageBox::Discard | QMessageBox::Cancel, parent);
  box.setDefaultButton(QMessageBox::Apply);
  switch (box.exec()) {
    case QMessageBox::Apply:
      return studio::MainWindow::Closing::Apply;
    case QMessageBox::Discard:
      return studio::MainWindow::Closing::Discard;
    default:
      return studio::MainWindow::Closing::Cancel;
  }
}

// Simulated seconds of the device before each screenshot: enough for the trends to have drawn
// several minutes of lines.
constexpr double kSecondsBeforeShot = 600;

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
  const bool simulated = !screenshots.empty() || seconds >= 0;
  qt::install(simulated ? qt::Time::Driven : qt::Time::Wall);
  regexp::install();
  chart::install();

  std::vector<std::string> problems;
  studio::DevicePackage device = studio::loadPackage(package, problems);
  for (const std::string& problem : problems) std::cerr << "problem: " << problem << "\n";
  studio::MainWindow::Options options;
  options.realTime = !simulated;
  studio::MainWindow* shown = nullptr;
  if (!simulated) {
    options.askBeforeClosing = [&shown](const std::vector<std::string>& edits) {
      return askUser(shown, edits);
    };
  }
  studio::MainWindow window(std::make_unique<studio::Session>(std::move(device)), problems,
                            std::move(options));
  shown = &window;
  window.show();

  if (!screenshots.empty()) {
    std::filesystem::create_directories(screenshots);
    const size_t forms = window.session().package().forms.size();
    for (size_t i = 0; i < forms; ++i) {
      window.showForm(i);
      // The device runs, so that its values move, the gauges have drawn and the trends have
      // minutes of lines; the clock moves in steps of the trends' own timers.
      for (double t = 0; t < kSecondsBeforeShot; t += 0.25) window.advance(0.25);
      window.fitForm();
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
