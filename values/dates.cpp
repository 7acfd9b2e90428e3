#include "tessaline/values/dates.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

#include "tessaline/values/text.h"
#include "tessaline/values/vb_error.h"

namespace tessaline {

namespace {

// Serials strictly between these are dates: any time of 1 January 100 (whose serial, below the
// epoch, runs from -657434 down toward -657435) to any time of 31 December 9999.
constexpr double kBeforeFirstDate = -657435.0;
constexpr double kAfterLastDate = 2958466.0;
constexpr int64_t kLastDay = 2958465;

// Days from 1 January 1970 of a proleptic Gregorian date.
int64_t daysFromCivil(int64_t y, int64_t m, int64_t d) {
  // Months beyond 1 to 12 carry into the year, so that a day can roll over as well.
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
  y = yoe + era * 400;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  d = doy - (153 * mp + 2) / 5 + 1;
  m = mp < 10 ? mp + 3 : mp - 9;
  y += m <= 2;
}

// The serial of 30 December 1899 counted from 1 January 1970.
constexpr int64_t kSerialEpoch = -25569;

int32_t currentYear() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local.tm_year + 1900;
}

// A piece of date text: a number (with the count of its digits), a word, or one separator.
struct Token {
  enum Kind { Number, Word, Separator } kind;
  int64_t number = 0;
  size_t digits = 0;
  std::string text;
};

bool tokenize(std::string_view text, std::vector<Token>& tokens) {
  size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c >= '0' && c <= '9') {
      Token token{Token::Number, 0, 0, {}};
      while (i < text.size() && text[i] >= '0' && text[i] <= '9') {
        // More than nine digits is no part of a date.
        if (++token.digits > 9) return false;
        token.number = token.number * 10 + (text[i++] - '0');
      }
      tokens.push_back(token);
    } else if ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') {
      Token token{Token::Word, 0, 0, {}};
      while (i < text.size() && (text[i] | 0x20) >= 'a' && (text[i] | 0x20) <= 'z') {
        token.text += static_cast<char>(text[i++] | 0x20);
      }
      tokens.push_back(token);
    } else if (c == ' ' || c == '\t') {
      ++i;
      // Blanks separate, but only where nothing else does.
      if (!tokens.empty() && tokens.back().kind != Token::Separator) {
        tokens.push_back({Token::Separator, 0, 0, " "});
      }
    } else if (c == '/' || c == '-' || c == ',' || c == '.' || c == ':') {
      if (!tokens.empty() && tokens.back().kind == Token::Separator && tokens.back().text == " ") {
        tokens.back().text = std::string(1, c);
      } else {
        tokens.push_back({Token::Separator, 0, 0, std::string(1, c)});
      }
      ++i;
    } else {
      return false;
    }
  }
  if (!tokens.empty() && tokens.back().kind == Token::Separator && tokens.back().text == " ") {
    tokens.pop_back();
  }
  return true;
}

// January is 1; 0 for a word that names no month. Names and their three-letter abbreviations.
int32_t monthOf(const std::string& word) {
  static const char* const names[] = {"january",   "february", "march",    "april",
                                      "may",       "june",     "july",     "august",
                                      "september", "october",  "november", "december"};
  for (int32_t m = 0; m < 12; ++m) {
    const std::string_view name = names[m];
    if (word == name || (word.size() == 3 && name.substr(0, 3) == word)) return m + 1;
  }
  return 0;
}

int64_t fullYear(const Token& year) {
  if (year.digits <= 2) return year.number + (year.number < 30 ? 2000 : 1900);
  return year.number;
}

bool isYear(const Token& token) { return token.digits >= 3 || token.number > 31; }

// Takes the time out of the tokens: "h:mm[:ss]" with an optional AM or PM, or "h AM".
bool takeTime(std::vector<Token>& tokens, double& time, bool& found) {
  found = false;
  for (size_t k = 0; k < tokens.size(); ++k) {
    const bool colon = k + 2 < tokens.size() && tokens[k].kind == Token::Number &&
                       tokens[k + 1].kind == Token::Separator && tokens[k + 1].text == ":";
    const auto isMarker = [&](size_t at) {
      return at < tokens.size() && tokens[at].kind == Token::Word &&
             (tokens[at].text == "am" || tokens[at].text == "pm");
    };
    const bool markerOnly = tokens[k].kind == Token::Number &&
                            (isMarker(k + 1) || (k + 1 < tokens.size() &&
                                                 tokens[k + 1].text == " " && isMarker(k + 2)));
    if (!colon && !markerOnly) continue;
    size_t end = k;
    int64_t h = tokens[k].number, mi = 0, s = 0;
    if (colon) {
      if (tokens[k + 2].kind != Token::Number) return false;
      mi = tokens[k + 2].number;
      end = k + 2;
      if (end + 2 < tokens.size() && tokens[end + 1].kind == Token::Separator &&
          tokens[end + 1].text == ":") {
        if (tokens[end + 2].kind != Token::Number) return false;
        s = tokens[end + 2].number;
        end += 2;
      }
    }
    size_t marker = end + 1;
    if (marker < tokens.size() && tokens[marker].kind == Token::Separator &&
        tokens[marker].text == " ") {
      ++marker;
    }
    if (marker < tokens.size() && tokens[marker].kind == Token::Word &&
        (tokens[marker].text == "am" || tokens[marker].text == "pm")) {
      if (h < 1 || h > 12) return false;
      h = h % 12 + (tokens[marker].text == "pm" ? 12 : 0);
      end = marker;
    }
    if (h > 23 || mi > 59 || s > 59) return false;
    time = static_cast<double>(h * 3600 + mi * 60 + s) / 86400.0;
    found = true;
    // The time leaves with one separator beside it, so that the date's pieces stay apart.
    size_t from = k;
    if (k > 0 && tokens[k - 1].kind == Token::Separator) {
      from = k - 1;
    } else if (end + 1 < tokens.size() && tokens[end + 1].kind == Token::Separator) {
      ++end;
    }
    tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(from),
                 tokens.begin() + static_cast<std::ptrdiff_t>(end + 1));
    return true;
  }
  return true;
}

}  // namespace

bool isDateInRange(double days) { return days > kBeforeFirstDate && days < kAfterLastDate; }

void checkDateRange(double days) {
  if (!isDateInRange(days)) throw VbError(err::Overflow);
}

namespace {

// The day and the second of the day of a serial, its time rounded to the second. A time that
// rounds up to midnight belongs to the next calendar day (the fraction counts forward from
// midnight on both sides of the epoch), but the last day of the calendar has no next one and
// keeps its last second.
struct DayAndSecond {
  int64_t day;
  int64_t second;
};

DayAndSecond splitSerial(double days) {
  checkDateRange(days);
  const double whole = std::trunc(days);
  DayAndSecond at{static_cast<int64_t>(whole), std::llround(std::fabs(days - whole) * 86400.0)};
  if (at.second >= 86400) {
    if (at.day == kLastDay) {
      at.second = 86399;
    } else {
      at.second -= 86400;
      ++at.day;
    }
  }
  return at;
}

}  // namespace

double serialFromCalendar(int32_t year, int32_t month, int32_t day) {
  return static_cast<double>(daysFromCivil(year, month, day) - kSerialEpoch);
}

CalendarDate calendarFromSerial(double days) {
  checkDateRange(days);
  int64_t y = 0, m = 0, d = 0;
  civilFromDays(static_cast<int64_t>(std::trunc(days)) + kSerialEpoch, y, m, d);
  return {static_cast<int32_t>(y), static_cast<int32_t>(m), static_cast<int32_t>(d)};
}

std::string formatDate(DateSerial date) {
  const auto [day, seconds] = splitSerial(date.days);
  std::string out;
  if (day != 0) {
    int64_t y = 0, m = 0, d = 0;
    civilFromDays(day + kSerialEpoch, y, m, d);
    out = std::to_string(m) + "/" + std::to_string(d) + "/" + std::to_string(y);
  }
  if (seconds != 0 || day == 0) {
    const int64_t h = seconds / 3600, mi = seconds / 60 % 60, s = seconds % 60;
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%lld:%02lld:%02lld %s",
                  static_cast<long long>(h % 12 == 0 ? 12 : h % 12), static_cast<long long>(mi),
                  static_cast<long long>(s), h < 12 ? "AM" : "PM");
    if (!out.empty()) out += ' ';
    out += buffer;
  }
  return out;
}

std::optional<double> parseDateText(std::string_view text) {
  text = trimWhitespace(text);
  if (text.empty() || text.size() > 256) return std::nullopt;
  std::vector<Token> tokens;
  if (!tokenize(text, tokens)) return std::nullopt;
  double time = 0;
  bool haveTime = false;
  if (!takeTime(tokens, time, haveTime)) return std::nullopt;

  // What is left is the date: numbers and at most one month name, separated.
  std::vector<Token> parts;
  int32_t month = 0;
  size_t monthAt = 0;
  for (size_t k = 0; k < tokens.size(); ++k) {
    const Token& token = tokens[k];
    const bool expectPart = k % 2 == 0;
    if ((token.kind == Token::Separator) == expectPart) return std::nullopt;
    if (token.kind == Token::Separator) continue;
    if (token.kind == Token::Word) {
      if (month != 0 || (month = monthOf(token.text)) == 0) return std::nullopt;
      monthAt = parts.size();
    }
    parts.push_back(token);
  }
  if (!tokens.empty() && tokens.back().kind == Token::Separator) return std::nullopt;
  if (parts.empty()) return haveTime ? std::optional<double>(time) : std::nullopt;

  int64_t year = currentYear(), m = 0, d = 1;
  std::vector<Token> numbers;
  for (const Token& part : parts) {
    if (part.kind == Token::Number) numbers.push_back(part);
  }
  if (month != 0) {
    m = month;
    if (numbers.size() == 2) {
      // "Jan 2, 1970" and "2 January 1970"; a year written first ("1970 Jan 2") too.
      const bool yearFirst = monthAt != 0 && isYear(numbers[0]) && !isYear(numbers[1]);
      d = numbers[yearFirst ? 1 : 0].number;
      year = fullYear(numbers[yearFirst ? 0 : 1]);
    } else if (numbers.size() == 1) {
      if (isYear(numbers[0])) {
        year = fullYear(numbers[0]);
      } else {
        d = numbers[0].number;
      }
    } else {
      return std::nullopt;
    }
  } else if (numbers.size() == 3) {
    if (isYear(numbers[0])) {
      year = fullYear(numbers[0]);
      m = numbers[1].number;
      d = numbers[2].number;
    } else {
      m = numbers[0].number;
      d = numbers[1].number;
      year = fullYear(numbers[2]);
    }
  } else if (numbers.size() == 2) {
    m = numbers[0].number;
    if (isYear(numbers[1])) {
      year = fullYear(numbers[1]);
    } else {
      d = numbers[1].number;
    }
  } else {
    return std::nullopt;
  }
  // A month that can't be one and a day that can: the two change places, as the platform does.
  if (month == 0 && m > 12 && d >= 1 && d <= 12) std::swap(m, d);
  if (m < 1 || m > 12 || d < 1 || d > 31 || year < 100 || year > 9999) return std::nullopt;
  const int64_t serial = daysFromCivil(year, m, d) - kSerialEpoch;
  int64_t y2 = 0, m2 = 0, d2 = 0;
  civilFromDays(serial + kSerialEpoch, y2, m2, d2);
  if (m2 != m || d2 != d) return std::nullopt;
  const double days = static_cast<double>(serial);
  return days + (days < 0 ? -time : time);
}

DateTimeFields fieldsFromSerial(double days) {
  const auto [day, seconds] = splitSerial(days);
  int64_t y = 0, m = 0, d = 0;
  civilFromDays(day + kSerialEpoch, y, m, d);
  return {static_cast<int32_t>(y),
          static_cast<int32_t>(m),
          static_cast<int32_t>(d),
          static_cast<int32_t>(seconds / 3600),
          static_cast<int32_t>(seconds / 60 % 60),
          static_cast<int32_t>(seconds % 60)};
}

double serialFromFields(const DateTimeFields& f) {
  const double day = serialFromCalendar(f.year, f.month, f.day);
  const double time = (f.hour * 3600.0 + f.minute * 60.0 + f.second) / 86400.0;
  // Below the epoch the time still counts forward from midnight, away from zero.
  return day < 0 ? day - time : day + time;
}

namespace {

const char* const kMonthNames[] = {"January",   "February", "March",    "April",
                                   "May",       "June",     "July",     "August",
                                   "September", "October",  "November", "December"};
const char* const kDayNames[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                 "Thursday", "Friday", "Saturday"};

std::string padded(int64_t value, size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

}  // namespace

std::string formatPickerDate(DateSerial date, std::string_view format) {
  if (format.empty()) return formatDate(date);
  const DateTimeFields f = fieldsFromSerial(date.days);
  // 1 January 1970 (serial 25569) was a Thursday.
  const int64_t wholeDays = static_cast<int64_t>(serialFromCalendar(f.year, f.month, f.day));
  const int64_t weekday = ((wholeDays - 25569 + 4) % 7 + 7) % 7;
  std::string out;
  for (size_t i = 0; i < format.size();) {
    const char c = format[i];
    if (c == '\'') {
      size_t j = i + 1;
      while (j < format.size()) {
        if (format[j] == '\'') {
          if (j + 1 < format.size() && format[j + 1] == '\'') {
            out += '\'';
            j += 2;
            continue;
          }
          break;
        }
        out += format[j++];
      }
      i = j + 1;
      continue;
    }
    size_t run = 1;
    while (i + run < format.size() && format[i + run] == c) ++run;
    const int64_t hour12 = f.hour % 12 == 0 ? 12 : f.hour % 12;
    switch (c) {
      case 'd':
        if (run == 1 || run == 2)
          out += padded(f.day, run);
        else if (run == 3)
          out += std::string(kDayNames[weekday]).substr(0, 3);
        else
          out += kDayNames[weekday];
        break;
      case 'M':
        if (run <= 2)
          out += padded(f.month, run);
        else if (run == 3)
          out += std::string(kMonthNames[f.month - 1]).substr(0, 3);
        else
          out += kMonthNames[f.month - 1];
        break;
      case 'y':
        if (run == 1)
          out += std::to_string(f.year % 10);
        else if (run == 2)
          out += padded(f.year % 100, 2);
        else
          out += padded(f.year, run > 4 ? 4 : run);
        break;
      case 'h':
        out += padded(hour12, run > 2 ? 2 : run);
        break;
      case 'H':
        out += padded(f.hour, run > 2 ? 2 : run);
        break;
      case 'm':
        out += padded(f.minute, run > 2 ? 2 : run);
        break;
      case 's':
        out += padded(f.second, run > 2 ? 2 : run);
        break;
      case 't':
        out += run == 1 ? (f.hour < 12 ? "A" : "P") : (f.hour < 12 ? "AM" : "PM");
        break;
      default:
        out.append(run, c);
        break;
    }
    i += run;
  }
  return out;
}

}  // namespace tessaline
