// Calendar arithmetic on the Date value: a binary64 count of days since
// midnight 30 December 1899 whose fraction is the time of day. For a negative
// count the integer part is the day and the fraction's magnitude the time,
// so -1.25 is 29 December 1899 06:00. Proleptic Gregorian calendar
// throughout, valid from 1 January 100 to 31 December 9999 23:59:59.
//
// Everything here is pure apart from the clock readers at the end. Failure
// is an error number: 0 success, 5 invalid argument (out of range), 13 type
// mismatch (text that is not a date).
#pragma once
#include <string>
#include <string_view>

namespace qvt {

inline constexpr double kMinDate = -657434.0;            // 1 Jan 100
inline constexpr double kMaxDate = 2958465.999988426;    // 31 Dec 9999 23:59:59

struct DateParts {
    int year, month, day, hour, minute, second;
    int weekday;    // 1 = Sunday .. 7 = Saturday
    int dayOfYear;  // 1 .. 366
};

// An existing calendar date, taken literally: year 100..9999, month 1..12,
// day within the month; 5 otherwise. No two-digit window, no carries.
int dateFromParts(int year, int month, int day, double& out) noexcept;

// DateSerial: years 0..99 go through the locale's two-digit window, then
// months and days outside their range carry (month 13 is January of the
// next year, day 0 the last day of the previous month). 5 when the result
// leaves the valid range.
int dateSerial(int year, int month, int day, double& out) noexcept;

// TimeSerial: (hour * 3600 + minute * 60 + second) / 86400, so negative
// parts borrow and a total past 24 hours runs into the following days.
// 5 when the result leaves the valid range.
int timeSerial(int hour, int minute, int second, double& out) noexcept;

// Splits a Date, rounding the time to the nearest second (23:59:59.6 is
// midnight of the next day). 5 when the date, after rounding, is outside
// the valid range or not a number.
int splitDate(double date, DateParts& out) noexcept;

// Weekday 1..7 counted from firstDayOfWeek (1 = Sunday .. 7 = Saturday,
// 0 = the locale's first day, Sunday). 0 when firstDayOfWeek is outside
// 0..7 or the date is invalid; callers raise error 5 for it.
int weekday(double date, int firstDayOfWeek) noexcept;

// The date parser behind IsDate, CDate and DateValue (US English): numeric
// dates in month/day/year preference with the other orders tried when that
// one cannot be a date, "/" and "-" and blanks between the parts, month
// names and abbreviations anywhere, weekday names ignored, an optional time
// h:mm[:ss] or a bare hour with AM/PM, a time alone giving day 0. A number
// alone is not a date. 13 for text that is not a date.
int parseDate(std::u16string_view text, double& out) noexcept;
bool isDateText(std::u16string_view text) noexcept;

// CStr of a Date in the US short form: "1/2/2000", "1/2/2000 1:45:00 PM",
// and the time alone ("1:45:00 PM", "12:00:00 AM") on day 0. 5 when the
// date is out of range. The second form gives "" for that case.
int formatDateShort(double date, std::u16string& out) noexcept;
std::u16string formatDateShort(double date) noexcept;

// Now: the local clock to the whole second, as a Date.
double nowAsDate() noexcept;
// Timer: seconds since local midnight, with the fraction.
float timerSeconds() noexcept;

}  // namespace qvt
