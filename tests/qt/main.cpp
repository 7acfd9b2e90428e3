// The tests that need a QApplication: the Qt backend's own, and the behaviour suite that runs
// every user scenario on the headless backend and on Qt. Without a display Qt runs offscreen.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <QApplication>
#include <QStyleFactory>
#include <filesystem>

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  if (!getenv("XDG_RUNTIME_DIR")) {
    const auto runtime = std::filesystem::temp_directory_path() / "tessaline-qt-runtime";
    std::filesystem::create_directories(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
  }
  QApplication application(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
