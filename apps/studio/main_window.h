#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "apps/studio/session.h"
#include "navigation/navigation.h"

class QLabel;
class QListWidget;
class QScrollArea;

// The studio's window: the device's navigation (or, without one, the list of its forms) on the
// left, the form on show in the middle, the
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
  // The navigation on the left, when the package has a menu.
  DtmNavigation* navigation() { return navigation_.get(); }

 private:
  void report(const std::vector<std::string>& problems);
  void logCall(const std::string& line);
  // The host's answer to a launch: a form opened or a message shown, after the click is over.
  void answer(const host::HostCall& call);

  std::unique_ptr<Session> session_;
  std::shared_ptr<DtmNavigation> navigation_;
  QListWidget* forms_ = nullptr;
  QScrollArea* area_ = nullptr;
  QWidget* surface_ = nullptr;
  QListWidget* calls_ = nullptr;
  QListWidget* problems_ = nullptr;
  QLabel* clock_ = nullptr;
  QTimer timer_;
};

}  // namespace tessaline::studio
