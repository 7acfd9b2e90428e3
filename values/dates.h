#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tessaline/values/variant.h"

// Dates as the language keeps them: a serial of days since 30 December 1899, the time of day
// as the fraction (for serials below zero the fraction still counts forward from midnight).
namespace tessaline {

// The serial range of the language's dates: 1 January 100 to 31 December 9999.
bool isDateInRange(double days);
// 6 for a serial outside that range (also NaN and the infinities).
void checkDateRange(double days);

// The text form of a date in US English: the time alone for a serial without a day part
// ("12:00:00 AM" for 0), the date alone without a time part ("1/2/1970"), both otherwise
// ("1/2/1970 6:30:00 AM"). 6 outside the range of dates.
std::string formatDate(DateSerial date);

// A date read from text as the platform reads it in US English: month, day and year with "/"
// or "-" between them ("1/2/1970", "1-2-70"), a year first ("1970-01-02"), month names and
// their abbreviations ("2 January 1970", "Jan 2, 1970", "2-Jan-1970"), a date without a year
// in the current year, a time "h:mm[:ss]" with or without AM or PM, or both. Nothing for text
// that is no date.
std::optional<double> parseDateText(std::string_view text);

// The calendar (proleptic Gregorian) behind the serials.
struct CalendarDate {
  int32_t year = 1899;
  int32_t month = 12;
  int32_t day = 30;
};
// The serial of a calendar day; days and months beyond their range roll over.
double serialFromCalendar(int32_t year, int32_t month, int32_t day);
// The calendar day of a serial's day part (its whole days counted toward zero).
CalendarDate calendarFromSerial(double days);

// A date to the second, as a date picker shows it field by field.
struct DateTimeFields {
  int32_t year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
  bool operator==(const DateTimeFields&) const = default;
};
// The fields of a serial, its time rounded to the second. 6 outside the range of dates.
DateTimeFields fieldsFromSerial(double days);
// The serial of the fields; days, months and times beyond their range roll over.
double serialFromFields(const DateTimeFields& fields);

// A date written by the tokens of a date picker's custom format: d dd (day), ddd dddd (day
// name), M MM (month), MMM MMMM (month name), y yy yyy yyyy (year), h hh (hour 1 to 12),
// H HH (hour 0 to 23), m mm (minute), s ss (second), t tt (A or AM, P or PM), text between
// single quotes as it stands ('' is one quote); every other character stands for itself. Names
// are English. An empty format gives the general form of formatDate. 6 outside the range of
// dates.
std::string formatPickerDate(DateSerial date, std::string_view format);

}  // namespace tessaline
