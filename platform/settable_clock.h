#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tessaline/platform/widgets.h"

// A clock that its owner sets and moves on, and the timers that count by it. Moving the clock on
// fires every timer that falls due on the way, in the order of their moments (a timer due
// several times fires each time), with the clock standing at each moment while its handler runs;
// a handler may switch timers on or off, make them or end them. No time passes otherwise. The
// headless backend always runs on one; the Qt backend on request, for an application that
// simulates time.
namespace tessaline::platform {

class SettableClock : public Clock {
 public:
  // How the backend runs a handler as a user's action (catching what escapes it).
  using Runner = std::function<void(const Handler&)>;

  explicit SettableClock(Runner run);
  ~SettableClock() override;

  LocalTime now() override;
  // The clock at a moment of local time; running timers count their interval from there.
  void set(const LocalTime& time);
  // The clock `seconds` on, firing every timer that falls due on the way.
  void advance(double seconds);
  // Seconds since 30 December 1899 00:00, local time.
  double seconds() const;

  // A timer that counts by this clock. It may outlive the clock.
  std::unique_ptr<Timer> createTimer(const std::string& name);

 private:
  struct Schedule;
  class ScheduledTimer;
  std::shared_ptr<Schedule> schedule_;
};

}  // namespace tessaline::platform
