#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "apps/studio/session.h"

class QLabel;
class QListWidget;
class QScrollArea;

// The studio's window: the device's forms on the left, the form on show in the middle, the
// host's calls on the right, the problems below; Apply writes the edited values to the device.
namespace tessaline::studio {

class MainWindow : public QMainWindow {
 public:
  MainWindow(std::unique_ptr<Session> session, const std::vector<std::string>& problems);
  ~MainWindow() override;

  // Shows a form of the package.
  void showForm(size_t index);
  // The simulated device `seconds` later, at once (the timer does it in real time).
  void advance(double seconds);
  void apply();
  Session& session() { return *session_; }

 private:
  void report(const std::vector<std::string>& problems);
  void logCall(const std::string& line);

  std::unique_ptr<Session> session_;
  QListWidget* forms_ = nullptr;
  QScrollArea* area_ = nullptr;
  QWidget* surface_ = nullptr;
  QListWidget* calls_ = nullptr;
  QListWidget* problems_ = nullptr;
  QLabel* clock_ = nullptr;
  QTimer timer_;
};

}  // namespace tessaline::studio
