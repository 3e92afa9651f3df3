#include "frame/DateFunctions.h"

#include <cmath>
#include <ctime>

#include "frame/Conversions.h"
#include "frame/DateMath.h"
#include "frame/Format.h"
#include "frame/NumberFormat.h"

namespace qvt {

namespace {

constexpr int64_t kSecondsPerDay = 86400;

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval intervalOf(StringView text) {
    String key;
    for (char16_t c : text) key += (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c;
    if (key == u"yyyy") return Interval::Year;
    if (key == u"q") return Interval::Quarter;
    if (key == u"m") return Interval::Month;
    if (key == u"y") return Interval::DayOfYear;
    if (key == u"d") return Interval::Day;
    if (key == u"w") return Interval::Weekday;
    if (key == u"ww") return Interval::Week;
    if (key == u"h") return Interval::Hour;
    if (key == u"n") return Interval::Minute;
    if (key == u"s") return Interval::Second;
    raiseError(errInvalidCall);
}

double dateArg(const Variant& v) {
    double d = 0;
    check(toDate(v, d));
    return d;
}

// A date as its day number (trunc, the time rounded to the second) and second.
struct DayAndSecond {
    DateParts parts;
    int64_t day;
    int64_t second;
};

DayAndSecond split(double date) {
    DayAndSecond r{};
    check(splitDate(date, r.parts));
    double midnight = 0;
    check(dateFromParts(r.parts.year, r.parts.month, r.parts.day, midnight));
    r.day = static_cast<int64_t>(midnight);
    r.second = r.parts.hour * 3600 + r.parts.minute * 60 + r.parts.second;
    return r;
}

int64_t floorDiv(int64_t a, int64_t b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }

// A day number and a second count (any size) as a Date; 5 out of range.
Variant compose(int64_t day, int64_t second) {
    const int64_t carry = floorDiv(second, kSecondsPerDay);
    day += carry;
    second -= carry * kSecondsPerDay;
    const double frac = static_cast<double>(second) / kSecondsPerDay;
    const double d = day < 0 ? static_cast<double>(day) - frac : static_cast<double>(day) + frac;
    if (d < kMinDate || d > kMaxDate) raiseError(errInvalidCall);
    return Variant::date(d);
}

int16_t integerArg(const Variant& v) { return CInt(v); }

template <class F>
Variant part(const Variant& v, F&& f) {
    if (v.isNull()) return Variant::null();
    const DateParts p = split(dateArg(v)).parts;
    return Variant(static_cast<int16_t>(f(p)));
}

}  // namespace

Variant Now() { return Variant::date(nowAsDate()); }
Variant Date() { return Variant::date(std::floor(nowAsDate())); }
Variant Time() {
    const double now = nowAsDate();
    return Variant::date(now - std::floor(now));
}
float Timer() { return timerSeconds(); }

String DateText() {
    const DateParts p = split(nowAsDate()).parts;
    return twoDigits(p.month) + u"-" + twoDigits(p.day) + u"-" + twoDigits(p.year / 100) + twoDigits(p.year % 100);
}

String TimeText() {
    const DateParts p = split(nowAsDate()).parts;
    return twoDigits(p.hour) + u":" + twoDigits(p.minute) + u":" + twoDigits(p.second);
}

Variant DateSerial(const Variant& year, const Variant& month, const Variant& day) {
    double d = 0;
    check(dateSerial(integerArg(year), integerArg(month), integerArg(day), d));
    return Variant::date(d);
}

Variant TimeSerial(const Variant& hour, const Variant& minute, const Variant& second) {
    double d = 0;
    check(timeSerial(integerArg(hour), integerArg(minute), integerArg(second), d));
    return Variant::date(d);
}

Variant DateValue(const Variant& v) {
    // The argument is a date text: anything but a Date is read as its text,
    // so a bare number is no date (13) and Null cannot become text (94).
    double d = 0;
    if (v.vt() == vbDate) d = v.asDate();
    else if (parseDate(CStr(v), d) != 0) raiseError(errTypeMismatch);
    const DayAndSecond s = split(d);
    return Variant::date(static_cast<double>(s.day));
}

Variant TimeValue(const Variant& v) {
    if (v.isNull()) return Variant::null();
    const DayAndSecond s = split(dateArg(v));
    return Variant::date(static_cast<double>(s.second) / kSecondsPerDay);
}

Variant Year(const Variant& v) { return part(v, [](const DateParts& p) { return p.year; }); }
Variant Month(const Variant& v) { return part(v, [](const DateParts& p) { return p.month; }); }
Variant Day(const Variant& v) { return part(v, [](const DateParts& p) { return p.day; }); }
Variant Hour(const Variant& v) { return part(v, [](const DateParts& p) { return p.hour; }); }
Variant Minute(const Variant& v) { return part(v, [](const DateParts& p) { return p.minute; }); }
Variant Second(const Variant& v) { return part(v, [](const DateParts& p) { return p.second; }); }

Variant Weekday(const Variant& v, int32_t firstDayOfWeek) {
    if (firstDayOfWeek < 0 || firstDayOfWeek > 7) raiseError(errInvalidCall);
    if (v.isNull()) return Variant::null();
    const int w = weekday(dateArg(v), firstDayOfWeek);
    if (w == 0) raiseError(errInvalidCall);
    return Variant(static_cast<int16_t>(w));
}

Variant DateAdd(StringView interval, const Variant& number, const Variant& date) {
    const Interval iv = intervalOf(interval);
    if (number.isNull() || date.isNull()) return Variant::null();
    const int64_t n = CLng(number);
    const DayAndSecond s = split(dateArg(date));
    switch (iv) {
        case Interval::Year:
        case Interval::Quarter:
        case Interval::Month: {
            const int64_t months = iv == Interval::Year ? n * 12 : iv == Interval::Quarter ? n * 3 : n;
            const int64_t total = int64_t(s.parts.year) * 12 + (s.parts.month - 1) + months;
            const int64_t year = total >= 0 ? total / 12 : -((11 - total) / 12);
            const int month = static_cast<int>(total - year * 12) + 1;
            if (year < 100 || year > 9999) raiseError(errInvalidCall);
            int dayOfMonth = s.parts.day;
            double midnight = 0;
            while (dateFromParts(static_cast<int>(year), month, dayOfMonth, midnight) != 0) --dayOfMonth;
            return compose(static_cast<int64_t>(midnight), s.second);
        }
        case Interval::DayOfYear:
        case Interval::Day:
        case Interval::Weekday: return compose(s.day + n, s.second);
        case Interval::Week: return compose(s.day + 7 * n, s.second);
        case Interval::Hour: return compose(s.day, s.second + 3600 * n);
        case Interval::Minute: return compose(s.day, s.second + 60 * n);
        case Interval::Second: return compose(s.day, s.second + n);
    }
    raiseError(errInvalidCall);
}

Variant DateDiff(StringView interval, const Variant& date1, const Variant& date2, int32_t firstDayOfWeek,
                 int32_t firstWeekOfYear) {
    const Interval iv = intervalOf(interval);
    if (firstDayOfWeek < 0 || firstDayOfWeek > 7 || firstWeekOfYear < 0 || firstWeekOfYear > 3)
        raiseError(errInvalidCall);
    if (date1.isNull() || date2.isNull()) return Variant::null();
    const DayAndSecond a = split(dateArg(date1)), b = split(dateArg(date2));
    int64_t r = 0;
    switch (iv) {
        case Interval::Year: r = b.parts.year - a.parts.year; break;
        case Interval::Quarter:
            r = (int64_t(b.parts.year) * 4 + (b.parts.month - 1) / 3) - (int64_t(a.parts.year) * 4 + (a.parts.month - 1) / 3);
            break;
        case Interval::Month:
            r = (int64_t(b.parts.year) * 12 + b.parts.month) - (int64_t(a.parts.year) * 12 + a.parts.month);
            break;
        case Interval::DayOfYear:
        case Interval::Day: r = b.day - a.day; break;
        case Interval::Weekday: r = (b.day - a.day) / 7; break;
        case Interval::Week: {
            const int first = firstDayOfWeek == 0 ? 1 : firstDayOfWeek;
            const int64_t startA = a.day - (weekday(static_cast<double>(a.day), first) - 1);
            const int64_t startB = b.day - (weekday(static_cast<double>(b.day), first) - 1);
            r = (startB - startA) / 7;
            break;
        }
        case Interval::Hour: r = (b.day * 24 + b.parts.hour) - (a.day * 24 + a.parts.hour); break;
        case Interval::Minute:
            r = (b.day * 1440 + b.parts.hour * 60 + b.parts.minute) - (a.day * 1440 + a.parts.hour * 60 + a.parts.minute);
            break;
        case Interval::Second: r = (b.day * kSecondsPerDay + b.second) - (a.day * kSecondsPerDay + a.second); break;
    }
    return Variant(static_cast<int32_t>(r));
}

Variant DatePart(StringView interval, const Variant& date, int32_t firstDayOfWeek, int32_t firstWeekOfYear) {
    const Interval iv = intervalOf(interval);
    if (firstDayOfWeek < 0 || firstDayOfWeek > 7 || firstWeekOfYear < 0 || firstWeekOfYear > 3)
        raiseError(errInvalidCall);
    if (date.isNull()) return Variant::null();
    const double d = dateArg(date);
    const DateParts p = split(d).parts;
    int r = 0;
    switch (iv) {
        case Interval::Year: r = p.year; break;
        case Interval::Quarter: r = (p.month - 1) / 3 + 1; break;
        case Interval::Month: r = p.month; break;
        case Interval::DayOfYear: r = p.dayOfYear; break;
        case Interval::Day: r = p.day; break;
        case Interval::Weekday: r = weekday(d, firstDayOfWeek); break;
        case Interval::Week: r = weekOfYear(d, firstDayOfWeek, firstWeekOfYear); break;
        case Interval::Hour: r = p.hour; break;
        case Interval::Minute: r = p.minute; break;
        case Interval::Second: r = p.second; break;
    }
    return Variant(static_cast<int16_t>(r));
}

}  // namespace qvt
