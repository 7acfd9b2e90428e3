#include "tessaline/platform/settable_clock.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "tessaline/values/dates.h"

namespace tessaline::platform {

// The clock's time and its timers. Timers hold it too, so that one which outlives its clock
// still has something to leave.
struct SettableClock::Schedule {
  // 23 November 2026, 12:00: the same start on every machine.
  double seconds = 46349.5 * 86400;
  std::vector<ScheduledTimer*> timers;
  Runner run;
};

class SettableClock::ScheduledTimer : public Timer {
 public:
  ScheduledTimer(std::string name, std::shared_ptr<Schedule> schedule)
      : name_(std::move(name)), schedule_(std::move(schedule)) {
    schedule_->timers.push_back(this);
  }
  ~ScheduledTimer() override { std::erase(schedule_->timers, this); }

  const std::string& Name() const override { return name_; }
  int32_t Interval() const override { return interval_; }
  void Interval(int32_t milliseconds) override {
    if (milliseconds == interval_) return;
    interval_ = milliseconds;
    restart();
  }
  bool Enabled() const override { return enabled_; }
  void Enabled(bool value) override {
    if (value == enabled_) return;
    enabled_ = value;
    restart();
  }

  std::optional<double> due() const {
    if (!enabled_ || interval_ <= 0) return std::nullopt;
    return next_;
  }
  void restart() { next_ = schedule_->seconds + interval_ / 1000.0; }
  void fire() {
    next_ += interval_ / 1000.0;
    // The handler may end this timer: it runs from a copy, and nothing of the timer is touched
    // after it.
    const Handler handler = events.Timer;
    const Runner run = schedule_->run;
    if (handler) run(handler);
  }

 private:
  std::string name_;
  std::shared_ptr<Schedule> schedule_;
  int32_t interval_ = 0;
  bool enabled_ = false;
  double next_ = 0;
};

SettableClock::SettableClock(Runner run) : schedule_(std::make_shared<Schedule>()) {
  schedule_->run = std::move(run);
}

SettableClock::~SettableClock() = default;

LocalTime SettableClock::now() {
  const double seconds = schedule_->seconds;
  const double days = std::floor(seconds / 86400);
  const CalendarDate date = calendarFromSerial(days);
  double rest = seconds - days * 86400;
  LocalTime time;
  time.year = date.year;
  time.month = date.month;
  time.day = date.day;
  time.hour = static_cast<int32_t>(rest / 3600);
  rest -= time.hour * 3600.0;
  time.minute = static_cast<int32_t>(rest / 60);
  time.second = rest - time.minute * 60.0;
  return time;
}

void SettableClock::set(const LocalTime& time) {
  schedule_->seconds = serialFromCalendar(time.year, time.month, time.day) * 86400 +
                       time.hour * 3600.0 + time.minute * 60.0 + time.second;
  for (ScheduledTimer* timer : schedule_->timers) timer->restart();
}

void SettableClock::advance(double seconds) {
  // The schedule stays alive through handlers that end the clock's owner.
  const std::shared_ptr<Schedule> schedule = schedule_;
  const double end = schedule->seconds + std::max(0.0, seconds);
  for (;;) {
    ScheduledTimer* next = nullptr;
    double nextDue = 0;
    for (ScheduledTimer* timer : schedule->timers) {
      const auto due = timer->due();
      if (due && *due <= end && (!next || *due < nextDue)) {
        next = timer;
        nextDue = *due;
      }
    }
    if (!next) break;
    schedule->seconds = std::max(schedule->seconds, nextDue);
    next->fire();
  }
  schedule->seconds = end;
}

double SettableClock::seconds() const { return schedule_->seconds; }

std::unique_ptr<Timer> SettableClock::createTimer(const std::string& name) {
  return std::make_unique<ScheduledTimer>(name, schedule_);
}

}  // namespace tessaline::platform
