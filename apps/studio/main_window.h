#pragma once

#include <QMainWindow>
#include <QTimer>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "apps/studio/session.h"
#include "tessaline/navigation/navigation.h"

class QCheckBox;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QScrollArea;

// The studio's window: the device's navigation (or, without one, the list of its forms) on the
// left, the form on show in the middle, the host's calls on the right, the problems below;
// Apply writes the edited values of every form to the device, Discard drops them.
namespace tessaline::studio {

class MainWindow : public QMainWindow {
 public:
  // What the user decides when the window closes with edits that aren't applied.
  enum class Closing { Apply, Discard, Cancel };
  struct Options {
    // The device moves by itself in real time; otherwise only advance() moves it.
    bool realTime = true;
    // Asked when the window closes with unapplied edits (given as "Form: Parameter"). Without
    // it the window closes and the edits are dropped: nothing may wait for a user.
    std::function<Closing(const std::vector<std::string>& edits)> askBeforeClosing;
  };

  MainWindow(std::unique_ptr<Session> session, const std::vector<std::string>& problems,
             Options options);
  ~MainWindow() override;

  // Shows a form of the package. A form left with unapplied edits keeps them, out of sight.
  void showForm(size_t index);
  // The simulated device `seconds` later, at once, and the driven clock with it where the Qt
  // backend runs on one (the timer does it in real time).
  void advance(double seconds);
  void apply();
  void discard();
  // Makes the window large enough that the form on show fits without scrolling, and keeps it
  // so: for pictures of whole forms.
  void fitForm();
  Session& session() { return *session_; }
  // The navigation on the left, when the package has a menu.
  DtmNavigation* navigation() { return navigation_.get(); }
  QListWidget* calls() { return calls_; }
  QListWidget* problems() { return problems_; }
  QCheckBox* debugLines() { return debugLines_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void report(const std::vector<std::string>& problems);
  void logCall(const host::HostCall& call);
  void logLine(const std::string& line, bool debug);
  void showDebugLines(bool shown);
  // The host's answer to a launch: a form opened or a message shown, after the click is over.
  void answer(const host::HostCall& call);
  // The surface of the form on show: its controls' widgets, or why it can't be shown.
  QWidget* makeSurface();
  // Surfaces of forms that the session no longer keeps go (their controls are gone already).
  void releaseSurfaces();
  void markEditedForms();

  Options options_;
  std::unique_ptr<Session> session_;
  std::shared_ptr<DtmNavigation> navigation_;
  QListWidget* forms_ = nullptr;
  QScrollArea* area_ = nullptr;
  // The surfaces of the forms kept with their edits, out of sight.
  std::map<size_t, QWidget*> kept_;
  QListWidget* calls_ = nullptr;
  QCheckBox* debugLines_ = nullptr;
  // The lines of the call list, oldest first: the debug ones and the others, each kept up to
  // its own count, so that a flood of debug lines never pushes the others out.
  std::deque<QListWidgetItem*> debugItems_, otherItems_;
  size_t debugCount_ = 0;
  QListWidget* problems_ = nullptr;
  QLabel* clock_ = nullptr;
  QTimer timer_;
};

}  // namespace tessaline::studio
