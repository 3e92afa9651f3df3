// The date functions of the runtime on Variant arguments: the clock (Now,
// Date, Time, Timer), building dates (DateSerial, TimeSerial, DateValue,
// TimeValue), taking them apart (Year .. Second, Weekday, DatePart) and
// calendar arithmetic (DateAdd, DateDiff).
//
// A date argument may be a Date, a number (a day count) or a String that the
// date parser accepts (else 13); Null gives Null. Results outside 1 January
// 100 to 31 December 9999 raise 5. Intervals are Basic's: "yyyy" year, "q"
// quarter, "m" month, "y" day of year, "d" day, "w" weekday, "ww" week, "h"
// hour, "n" minute, "s" second, in any case; another text raises 5.
#pragma once
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

Variant Now();
Variant Date();           // today, midnight
Variant Time();           // the time of day on day 0
float Timer();            // seconds since midnight
String DateText();        // Date$: "mm-dd-yyyy"
String TimeText();        // Time$: "hh:mm:ss"

// Arguments are converted as Integer parameters (13, 6, 94).
Variant DateSerial(const Variant& year, const Variant& month, const Variant& day);
Variant TimeSerial(const Variant& hour, const Variant& minute, const Variant& second);
Variant DateValue(const Variant& v);  // the date part
Variant TimeValue(const Variant& v);  // the time part on day 0

// Integer parts; Null for Null.
Variant Year(const Variant& v);
Variant Month(const Variant& v);
Variant Day(const Variant& v);
Variant Hour(const Variant& v);
Variant Minute(const Variant& v);
Variant Second(const Variant& v);
Variant Weekday(const Variant& v, int32_t firstDayOfWeek = 1);

// number is rounded to a whole count; months and years keep the day of the
// month where it exists and clamp it to the month's end where not.
Variant DateAdd(StringView interval, const Variant& number, const Variant& date);
// Crossed boundaries of the interval from date1 to date2 (negative when
// date2 is earlier), as a Long; "w" counts whole weeks, "ww" the
// firstDayOfWeek days crossed.
Variant DateDiff(StringView interval, const Variant& date1, const Variant& date2, int32_t firstDayOfWeek = 1,
                 int32_t firstWeekOfYear = 1);
Variant DatePart(StringView interval, const Variant& date, int32_t firstDayOfWeek = 1, int32_t firstWeekOfYear = 1);

}  // namespace qvt
