#include "tessaline/platform/chart/scale.h"

#include <algorithm>
#include <cmath>

namespace tessaline::chart {

namespace {
constexpr double kEpsilon = 1e-9;
constexpr int64_t kDaysFromYearOneToEpoch = 719162;

// Days from 1970-01-01 of a proleptic Gregorian date; days and months beyond their range
// carry over.
int64_t daysFromCivil(int64_t y, int64_t m, int64_t d) {
  y += (m - 1) >= 0 ? (m - 1) / 12 : -((12 - m) / 12);
  m = ((m - 1) % 12 + 12) % 12 + 1;
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;
  const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

void civilFromDays(int64_t z, int64_t& y, int64_t& m, int64_t& d) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t doe = z - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  d = doy - (153 * mp + 2) / 5 + 1;
  m = mp < 10 ? mp + 3 : mp - 9;
  y = yoe + era * 400 + (m <= 2);
}

// Ends that are the same value are spread to a span that shows the value in the middle.
void spreadEqualEnds(double& lo, double& hi) {
  if (lo != hi) return;
  const double d = lo == 0 ? 1 : std::abs(lo) * 0.1;
  lo -= d;
  hi += d;
}
}  // namespace

bool isPlottable(double value) { return std::isfinite(value) && std::abs(value) < kNoValue; }

double niceStep(double raw) {
  if (!(raw > 0) || !std::isfinite(raw)) return 0;
  const double base = std::pow(10.0, std::floor(std::log10(raw)));
  const double f = raw / base;
  double step = 10 * base;
  for (double m : {1.0, 2.0, 5.0}) {
    if (f <= m * (1 + kEpsilon)) {
      step = m * base;
      break;
    }
  }
  return std::isfinite(step) ? step : raw;
}

std::vector<double> tickPositions(const Scale& scale, double spacing, int32_t limit) {
  std::vector<double> ticks;
  spacing = std::abs(spacing);
  if (!(spacing > 0) || !std::isfinite(spacing)) return ticks;
  const double lo = std::min(scale.lower, scale.upper);
  const double hi = std::max(scale.lower, scale.upper);
  if (!std::isfinite(lo) || !std::isfinite(hi)) return ticks;
  const double first = std::ceil((lo - scale.anchor) / spacing - kEpsilon);
  const double last = std::floor((hi - scale.anchor) / spacing + kEpsilon);
  if (!std::isfinite(first) || !std::isfinite(last) || last < first) return ticks;
  // Tick numbers are counted as integers: beyond 2^53 a double can't tell a number from the
  // next, so a spacing that fine beside ends that large gives no ticks of this kind.
  constexpr double kExactIntegers = 9007199254740992.0;
  if (std::abs(first) >= kExactIntegers || std::abs(last) >= kExactIntegers) return ticks;
  if (last - first + 1 > limit) return ticks;
  const auto firstNumber = static_cast<int64_t>(first);
  const auto count = static_cast<int64_t>(last - first) + 1;
  ticks.reserve(static_cast<size_t>(count));
  for (int64_t k = 0; k < count; ++k) {
    double position = scale.anchor + static_cast<double>(firstNumber + k) * spacing;
    // Ticks that land within rounding noise of zero are zero, so labels don't read -0.
    if (std::abs(position) < spacing * kEpsilon) position = 0;
    // A spacing below the precision of the ends puts ticks on one another: none of them.
    if (!ticks.empty() && position == ticks.back()) return {};
    ticks.push_back(position);
  }
  if (scale.lower > scale.upper) std::reverse(ticks.begin(), ticks.end());
  return ticks;
}

Scale autoScale(const AutoScaleRequest& r) {
  double lo = r.fixedEnds ? std::min(r.fixedLower, r.fixedUpper) : r.dataMin;
  double hi = r.fixedEnds ? std::max(r.fixedLower, r.fixedUpper) : r.dataMax;
  const bool reversed = r.fixedEnds && r.fixedLower > r.fixedUpper;
  if (!r.fixedEnds) {
    if (!(lo <= hi) || !isPlottable(lo) || !isPlottable(hi)) {
      lo = 0;
      hi = 1;
    } else if (r.zeroAffinity) {
      if (lo > 0 && lo < 0.8 * hi) lo = 0;
      if (hi < 0 && hi > 0.8 * lo) hi = 0;
    }
  }
  spreadEqualEnds(lo, hi);

  const double intervals = std::max(1.0, std::floor(r.pixels / std::max(1.0, r.majorSpacing)));
  // Halves before the difference, so that ends near the largest double give no infinity.
  const double major = niceStep(hi / intervals - lo / intervals);
  Scale scale{lo, hi, major, 0, 0};
  if (major > 0) {
    if (r.roundMin) scale.lower = std::floor(lo / major + kEpsilon) * major;
    if (r.roundMax) scale.upper = std::ceil(hi / major - kEpsilon) * major;
    const double majors = scale.upper / major - scale.lower / major;
    const double majorPixels = majors > 0 ? r.pixels / majors : r.pixels;
    for (double parts : {10.0, 5.0, 2.0}) {
      if (majorPixels / parts >= std::max(1.0, r.minorSpacing)) {
        scale.minor = major / parts;
        break;
      }
    }
  }
  if (reversed) std::swap(scale.lower, scale.upper);
  return scale;
}

double niceTimeStep(double raw) {
  if (!(raw > 0) || !std::isfinite(raw)) return 0;
  static constexpr double kSteps[] = {1,     2,     5,     10,    15,     30,     60,
                                      120,   300,   600,   900,   1800,   3600,   7200,
                                      10800, 21600, 43200, 86400, 172800, 604800, 1209600};
  for (double step : kSteps) {
    if (raw <= step * (1 + kEpsilon)) return step;
  }
  return niceStep(raw / 86400) * 86400;
}

double chartTime(int64_t year, int64_t month, int64_t day, int64_t hour, int64_t minute,
                 double second) {
  const int64_t days = daysFromCivil(year, month, day) + kDaysFromYearOneToEpoch;
  return static_cast<double>(days) * 86400.0 + static_cast<double>(hour * 3600 + minute * 60) +
         second;
}

bool civilFromChartTime(double seconds, CivilTime& out) {
  if (!std::isfinite(seconds) || seconds < 0 || seconds >= 315537897600.0) return false;
  const double dayNumber = std::floor(seconds / 86400.0);
  double rest = seconds - dayNumber * 86400.0;
  civilFromDays(static_cast<int64_t>(dayNumber) - kDaysFromYearOneToEpoch, out.year, out.month,
                out.day);
  out.hour = static_cast<int64_t>(rest / 3600);
  rest -= static_cast<double>(out.hour) * 3600;
  out.minute = static_cast<int64_t>(rest / 60);
  out.second = rest - static_cast<double>(out.minute) * 60;
  return true;
}

}  // namespace tessaline::chart
