#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Scale and tick arithmetic of the chart engine: pure functions, tested without drawing.
namespace tessaline::chart {

// The value that a chart treats as no value: a line has a gap there, a pointer is hidden.
inline constexpr double kNoValue = 1.7e308;

// True for a value a chart can place: finite and not the no-value mark.
bool isPlottable(double value);

// The smallest step of the series 1, 2, 5, 10, 20, 50, ... that is at least `raw`; 0 when
// `raw` is not a positive finite number.
double niceStep(double raw);

// The ends of a scale and its ticks. `major` and `minor` are the spacing (0: none of that
// kind). Ticks stand at whole multiples of the spacing counted from `anchor`.
struct Scale {
  double lower = 0;
  double upper = 1;
  double major = 0;
  double minor = 0;
  double anchor = 0;
};

// The tick positions of one spacing from lower to upper (either order), at most `limit` of
// them: empty when the spacing is 0, not finite, or would give more than `limit` ticks.
std::vector<double> tickPositions(const Scale& scale, double spacing, int32_t limit = 2000);

// How an automatic axis is settled.
struct AutoScaleRequest {
  double dataMin = 0;  // smallest and largest plottable value; dataMin > dataMax when none
  double dataMax = -1;
  double pixels = 300;       // length of the axis
  double majorSpacing = 30;  // least pixels between major ticks
  double minorSpacing = 10;
  bool roundMin = true;  // an end rounds out to a tick
  bool roundMax = true;
  bool zeroAffinity = true;  // a range mostly on one side of zero starts at zero
  // Fixed ends chosen by the caller; only the ticks are chosen (and the ends rounded).
  bool fixedEnds = false;
  double fixedLower = 0;
  double fixedUpper = 0;
};
Scale autoScale(const AutoScaleRequest& request);

// Ticks of a time scale (chart time, seconds) when none is given: a step of 1, 2, 5, 10, 15,
// 30 seconds, minutes, 1, 2, 3, 6, 12 hours, days, weeks, that keeps the spacing.
double niceTimeStep(double raw);

// Chart time: seconds since 0001-01-01 00:00:00 of the proleptic Gregorian calendar.
double chartTime(int64_t year, int64_t month, int64_t day, int64_t hour, int64_t minute,
                 double second);
struct CivilTime {
  int64_t year = 1, month = 1, day = 1, hour = 0, minute = 0;
  double second = 0;
};
// The calendar time of a chart time; false when it lies outside the years 1 to 9999.
bool civilFromChartTime(double seconds, CivilTime& out);

}  // namespace tessaline::chart
