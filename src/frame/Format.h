// Format$ and Format: a value as text by a pattern.
//
// Named formats (any case): "General Number", "Currency", "Fixed",
// "Standard", "Percent", "Scientific", "Yes/No", "True/False", "On/Off",
// "General Date", "Long Date", "Medium Date", "Short Date", "Long Time",
// "Medium Time", "Short Time"; their patterns come from the locale.
//
// User-defined numeric patterns, up to four sections split by ";": positive,
// negative, zero, Null. A missing or empty negative section formats the
// value with the first and puts "-" in front; a missing zero section uses
// the first. Tokens:
//   0   a digit, or 0 where the number has none; from the leftmost 0 of the
//       integer part on, leading zeros are written, and the fraction is
//       written at least up to its rightmost 0
//   #   a digit, or nothing; the leftmost integer placeholder takes all the
//       digits the pattern has no room for
//   .   the decimal point (written even when no digit follows: "#." of 5 is
//       "5."); a second "." is literal
//   ,   between digit placeholders of the integer part: thousands
//       separators; right after the last one (or before "."): divide by
//       1000 per comma
//   %   multiply by 100 and write "%"
//   E+ E- e+ e-   scientific notation: the mantissa gets as many integer
//       digits as the integer part has placeholders, the exponent at least
//       as many digits as 0s follow the sign ("E+" always writes the sign,
//       "E-" only a minus)
//   "text", \c   literal text; any character that is no token is literal.
// Rounding is half away from zero on the decimal digits of the value (15
// significant digits of a Double, 7 of a Single, every digit of Currency,
// Decimal and the integer types), so Format$(1.005, "0.00") is "1.01".
//
// Date patterns (one section): d dd ddd dddd ddddd (short date) dddddd (long
// date), w (weekday, counted from firstDayOfWeek), ww (week of the year), m
// mm mmm mmmm (m and mm are minutes right after h or hh), q, y (day of the
// year), yy, yyyy, h hh (12-hour when the pattern has an AM/PM token), n nn,
// s ss, ttttt (long time), c (general date), AM/PM am/pm A/P a/p AMPM, the
// separators ":" and "/" (the locale's), literals as above.
//
// String patterns: @ (a character or a blank), & (a character or nothing),
// < (lower case), > (upper case), ! (fill from the left; the default fills
// from the right); two sections: the second for "" and Null.
//
// How the value meets the pattern: a Date, or a number or numeric String
// under a pattern with date tokens and no digit placeholders, is formatted
// as a date; other numbers, Booleans (-1 and 0) and numeric Strings by the
// numeric grammar; a String that is not a number (or date, under a date
// pattern) goes through the string grammar, or unchanged. With no pattern a
// value is written as CStr writes it. Empty is 0 under a numeric or date
// pattern and "" otherwise. Objects, arrays and Error values raise 13.
#pragma once
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

// vbUseSystemDayOfWeek / vbSunday .. vbSaturday; vbFirstJan1,
// vbFirstFourDays, vbFirstFullWeek.
enum : int32_t { vbUseSystem = 0, vbSunday = 1, vbFirstJan1 = 1, vbFirstFourDays = 2, vbFirstFullWeek = 3 };

// Format$: Null raises 94 unless the numeric pattern has a Null section.
// firstDayOfWeek 0..7, firstWeekOfYear 0..3 (0: the locale's), else 5.
String FormatText(const Variant& value, StringView pattern = {}, int32_t firstDayOfWeek = vbSunday,
                  int32_t firstWeekOfYear = vbFirstJan1);
// Format: as Format$, but Null without a Null section gives Null.
Variant Format(const Variant& value, StringView pattern = {}, int32_t firstDayOfWeek = vbSunday,
               int32_t firstWeekOfYear = vbFirstJan1);

// Week of the year (the "ww" token and DatePart "ww").
int32_t weekOfYear(double date, int32_t firstDayOfWeek, int32_t firstWeekOfYear);

}  // namespace qvt
