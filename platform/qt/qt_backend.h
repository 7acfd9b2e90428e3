#pragma once

#include <memory>
#include <vector>

#include "tessaline/platform/settable_clock.h"
#include "tessaline/platform/widgets.h"
#include "tessaline/values/vb_error.h"

class QWidget;

// The Qt 6 Widgets backend: every child control a real Qt widget, with the behaviour of the
// classic Windows child controls that the composite controls rely on (written at each member of
// platform/widgets.h). A QApplication must exist on the thread before install(). Lengths stay
// twips on every child and window; they become pixels at the screen's resolution (15 twips a
// pixel at 96 dpi).
namespace tessaline::qt {

class Backend;

// Where the platform clock's time comes from. Wall: the system's clock, and timers that Qt runs
// in real time. Driven: a clock that starts at the present moment and stands still until the
// application moves it on (drivenClock()), firing the controls' timers as it passes their
// moments, as the headless backend's clock does: for an application that simulates time, such
// as a device run faster than real time.
enum class Time { Wall, Driven };

// Installs a fresh Qt backend on this thread, with the system's number format as the locale
// service (US English where the system names none) and the system clipboard.
std::shared_ptr<Backend> install(Time time = Time::Wall);
// The Qt backend installed on this thread; a failure that says so where there is none.
Backend& current();

// The installed backend's driven clock; null when it runs on the wall clock (or none is
// installed).
platform::SettableClock* drivenClock();

// The Qt widget behind a composite control's window or behind one of its children: what a
// host places in its own windows, and what tests act on as a user.
QWidget* widgetOf(platform::UserControl& window);
QWidget* widgetOf(platform::Widget& child);

// Errors that escaped an event handler while Qt delivered a user's action, oldest first; taking
// them clears the list. They stop that action, as an unhandled error in an event would, and
// never reach Qt.
std::vector<VbError> takeUnhandledErrors();

// Pixels of a length in twips at the screen's resolution, and back.
int32_t pixelsOf(int32_t twips);
int32_t twipsOf(int32_t pixels);
// Screen pixels to one pixel of a chart: charts are drawn at 15 twips a pixel (96 dpi), the
// screen shows lengths at its own resolution. 1 at 96 dpi, 1.25 at 120 dpi.
double chartScale();

// What a tooltip window holds, for tests and hosts that inspect it: its tools, its width and
// its times.
struct TooltipInfo {
  int32_t maxWidth = -1;
  int32_t initialTime = 500;
  int32_t visibleTime = 5000;
  int32_t reshowTime = 100;
  size_t tools = 0;
};
// The live tooltip windows, and the one owned by a window (false when there is none).
size_t liveTooltips();
bool tooltipOwnedBy(platform::WindowHandle parent, TooltipInfo& info);

// The tip that the mouse has brought up and that waits for its delay: its text (wrapped to the
// tooltip's width, lines ended with "\n") and the delay: the initial time, or the reshow time
// while a tip of the same tooltip window is up or went less than the reshow time ago. False
// when none waits.
bool pendingTooltip(std::string& text, int32_t& delayMilliseconds);
// The delay runs out now: the pending tip shows, for its visible time.
void showPendingTooltip();

}  // namespace tessaline::qt
