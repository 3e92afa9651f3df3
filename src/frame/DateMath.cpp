#include "frame/DateMath.h"

#include <cmath>
#include <cstdint>
#include <ctime>

#include "frame/Locale.h"

namespace qvt {

namespace {

constexpr int kInvalid = 5;
constexpr int kMismatch = 13;

constexpr int64_t kMinDay = -657434;  // 1 Jan 100
constexpr int64_t kMaxDay = 2958465;  // 31 Dec 9999
constexpr int64_t kSecondsPerDay = 86400;

int64_t floorDiv(int64_t a, int64_t b) noexcept { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }
int64_t floorMod(int64_t a, int64_t b) noexcept { return a - floorDiv(a, b) * b; }

bool isLeapYear(int64_t y) noexcept { return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0); }

int daysInMonth(int64_t y, int m) noexcept {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && isLeapYear(y) ? 29 : kDays[m - 1];
}

// Day count of a proleptic Gregorian date, counted in 400-year cycles with
// the year starting in March so that the leap day ends it.
int64_t dayNumber(int64_t y, int m, int d) noexcept {
    if (m <= 2) --y;
    const int64_t cycle = floorDiv(y, 400);
    const int64_t yearOfCycle = y - cycle * 400;
    const int64_t dayOfYear = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const int64_t dayOfCycle = yearOfCycle * 365 + yearOfCycle / 4 - yearOfCycle / 100 + dayOfYear;
    // 693899 places 30 Dec 1899 at 0.
    return cycle * 146097 + dayOfCycle - 693899;
}

void civilFromDayNumber(int64_t n, int& y, int& m, int& d) noexcept {
    n += 693899;
    const int64_t cycle = floorDiv(n, 146097);
    const int64_t dayOfCycle = n - cycle * 146097;
    const int64_t yearOfCycle =
        (dayOfCycle - dayOfCycle / 1460 + dayOfCycle / 36524 - dayOfCycle / 146096) / 365;
    const int64_t dayOfYear = dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
    const int64_t mp = (5 * dayOfYear + 2) / 153;
    d = static_cast<int>(dayOfYear - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(yearOfCycle + cycle * 400 + (m <= 2));
}

// A day and a second of that day as a Date; the time adds away from zero,
// so a negative day keeps its time in the fraction's magnitude.
double composeDate(int64_t day, int64_t seconds) noexcept {
    const double frac = static_cast<double>(seconds) / kSecondsPerDay;
    const double whole = static_cast<double>(day);
    return day < 0 ? whole - frac : whole + frac;
}

int windowYear(int y) noexcept {
    if (y < 0 || y > 99) return y;
    const int start = locale().twoDigitYearStart;
    int full = start - static_cast<int>(floorMod(start, 100)) + y;
    if (full < start) full += 100;
    return full;
}

// The day and the rounded second of a Date, the second carried into the
// next calendar day when it reaches midnight.
int splitDay(double date, int64_t& day, int64_t& seconds) noexcept {
    if (!(date > kMinDay - 1.0 && date < kMaxDay + 1.0)) return kInvalid;
    const double whole = std::trunc(date);
    day = static_cast<int64_t>(whole);
    seconds = std::llround(std::fabs(date - whole) * kSecondsPerDay);
    if (seconds >= kSecondsPerDay) {
        seconds -= kSecondsPerDay;
        ++day;
    }
    return day > kMaxDay ? kInvalid : 0;
}

int dayOfWeekSunday1(int64_t day) noexcept { return static_cast<int>(floorMod(day + 6, 7)) + 1; }

int currentLocalYear() noexcept {
    const std::time_t t = std::time(nullptr);
    std::tm tm{};
    localtime_r(&t, &tm);
    return tm.tm_year + 1900;
}

// ---- parser -------------------------------------------------------------

struct Item {
    int value;
    bool month;    // written as a month name
    bool timeSep;  // followed by ':'
};

struct Scan {
    Item items[6];
    int count = 0;
    int ampmItem = -1;  // item the AM/PM follows
    bool pm = false;
};

bool isBlank(char16_t c) noexcept {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == u'\v' || c == u'\f' ||
           c == 0x00A0 || c == 0x3000;
}

bool isAsciiLetter(char16_t c) noexcept { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

bool onlyBlanksFrom(std::u16string_view s, size_t i) noexcept {
    for (; i < s.size(); ++i)
        if (!isBlank(s[i])) return false;
    return true;
}

enum class Word { None, Month, Weekday, Am, Pm };

Word classifyWord(std::u16string_view w, int& month) noexcept {
    static constexpr const char* kMonths[12] = {"january", "february", "march",     "april",
                                                "may",     "june",     "july",      "august",
                                                "september", "october", "november", "december"};
    static constexpr const char* kDays[7] = {"sunday",   "monday", "tuesday", "wednesday",
                                             "thursday", "friday", "saturday"};
    char lower[10];
    if (w.size() > 9) return Word::None;
    for (size_t i = 0; i < w.size(); ++i) lower[i] = static_cast<char>(w[i] | 0x20);
    const std::string_view word(lower, w.size());
    for (int i = 0; i < 12; ++i) {
        const std::string_view name(kMonths[i]);
        if (word == name || word == name.substr(0, 3)) {
            month = i + 1;
            return Word::Month;
        }
    }
    for (const char* day : kDays) {
        const std::string_view name(day);
        if (word == name || word == name.substr(0, 3)) return Word::Weekday;
    }
    if (word == "am" || word == "a") return Word::Am;
    if (word == "pm" || word == "p") return Word::Pm;
    return Word::None;
}

int scanText(std::u16string_view s, Scan& sc) noexcept {
    int dateSeps = 0;
    bool afterItem = false;  // a separator must follow a number or month
    size_t i = 0;
    while (i < s.size()) {
        const char16_t c = s[i];
        if (c >= u'0' && c <= u'9') {
            int v = 0;
            while (i < s.size() && s[i] >= u'0' && s[i] <= u'9') {
                v = v * 10 + (s[i] - u'0');
                if (v > 999999) v = 999999;  // far past any field; keeps it invalid
                ++i;
            }
            if (sc.count == 6) return kMismatch;
            sc.items[sc.count++] = {v, false, false};
            afterItem = true;
            continue;
        }
        if (isAsciiLetter(c)) {
            const size_t start = i;
            while (i < s.size() && isAsciiLetter(s[i])) ++i;
            int month = 0;
            switch (classifyWord(s.substr(start, i - start), month)) {
            case Word::Month:
                if (sc.count == 6) return kMismatch;
                sc.items[sc.count++] = {month, true, false};
                afterItem = true;
                break;
            case Word::Weekday:
                afterItem = false;
                break;
            case Word::Am:
            case Word::Pm:
                if (sc.count == 0 || sc.ampmItem >= 0) return kMismatch;
                sc.ampmItem = sc.count - 1;
                sc.pm = s[start] == u'p' || s[start] == u'P';
                afterItem = false;
                break;
            case Word::None:
                return kMismatch;
            }
            continue;
        }
        if (c == u':') {
            if (!afterItem || sc.items[sc.count - 1].month || onlyBlanksFrom(s, i + 1)) return kMismatch;
            sc.items[sc.count - 1].timeSep = true;
            afterItem = false;
        } else if (c == u'/' || c == u'-') {
            if (!afterItem || ++dateSeps > 2 || onlyBlanksFrom(s, i + 1)) return kMismatch;
            afterItem = false;
        } else if (c == u',') {
            if (onlyBlanksFrom(s, i + 1)) return kMismatch;
        } else if (!isBlank(c)) {
            return kMismatch;
        }
        ++i;
    }
    return sc.count == 0 ? kMismatch : 0;
}

// Which items are the time and which the date. Items joined by ':' are
// time; without any, a lone hour is marked by AM/PM at either end.
bool splitFields(const Scan& sc, int& timeFirst, int& timeCount, int& dateFirst, int& dateCount) noexcept {
    const int n = sc.count;
    unsigned mask = 0;
    for (int i = 0; i < n; ++i)
        if (sc.items[i].timeSep) mask |= 1u << i;
    timeFirst = dateFirst = 0;
    timeCount = dateCount = 0;
    switch (mask) {
    case 0x1:  // h:m, then an optional date
        if (n != 2 && n != 4 && n != 5) return false;
        timeCount = 2, dateFirst = 2, dateCount = n - 2;
        break;
    case 0x3:  // h:m:s, then an optional date
        if (n != 3 && n != 5 && n != 6) return false;
        timeCount = 3, dateFirst = 3, dateCount = n - 3;
        break;
    case 0x4:  // two-part date, h:m
        if (n != 4) return false;
        timeFirst = 2, timeCount = 2, dateCount = 2;
        break;
    case 0x8:  // three-part date, h:m
        if (n != 5) return false;
        timeFirst = 3, timeCount = 2, dateCount = 3;
        break;
    case 0xC:  // two-part date, h:m:s
        if (n != 5) return false;
        timeFirst = 2, timeCount = 3, dateCount = 2;
        break;
    case 0x18:  // three-part date, h:m:s
        if (n != 6) return false;
        timeFirst = 3, timeCount = 3, dateCount = 3;
        break;
    case 0:
        if (sc.ampmItem < 0) {
            if (n != 2 && n != 3) return false;  // a number alone is no date
            dateCount = n;
        } else if (n == 1) {
            timeCount = 1;
        } else if (n == 3 || n == 4) {
            timeCount = 1, dateCount = n - 1;
            if (sc.ampmItem == 0)
                dateFirst = 1;
            else if (sc.ampmItem == n - 1)
                timeFirst = n - 1;
            else
                return false;
        } else {
            return false;
        }
        break;
    default:
        return false;
    }
    if (sc.ampmItem >= 0 && (sc.ampmItem < timeFirst || sc.ampmItem >= timeFirst + timeCount)) return false;
    for (int i = timeFirst; i < timeFirst + timeCount; ++i)
        if (sc.items[i].month) return false;
    return true;
}

bool validMonthDay(int year, int month, int day) noexcept {
    return month >= 1 && month <= 12 && day >= 1 && day <= daysInMonth(year, month);
}

// Picks the reading of the date items, preferring month/day/year and
// falling back to the orders that can still make a valid date.
bool resolveDate(const Item* it, int count, int& y, int& m, int& d) noexcept {
    if (count == 2) {
        const int year = currentLocalYear();
        const Item& a = it[0];
        const Item& b = it[1];
        if (!b.month && validMonthDay(year, a.value, b.value)) {
            y = year, m = a.value, d = b.value;
            return true;
        }
        if (!a.month && validMonthDay(year, b.value, a.value)) {
            y = year, m = b.value, d = a.value;
            return true;
        }
        // Neither day nor month: a month and a year, on the first.
        if (!a.month && b.value >= 1 && b.value <= 12) {
            y = windowYear(a.value), m = b.value, d = 1;
            return true;
        }
        if (!b.month && a.value >= 1 && a.value <= 12) {
            y = windowYear(b.value), m = a.value, d = 1;
            return true;
        }
        return false;
    }
    const int a = it[0].value, b = it[1].value, c = it[2].value;
    const bool anyMonth = it[0].month || it[1].month || it[2].month;
    struct Order {
        int y, m, d;
        int monthAt;
    };
    const Order orders[4] = {
        {c, a, b, 0},  // m/d/y
        {a, b, c, 1},  // y/m/d
        {a, c, b, 2},  // y/d/m
        {c, b, a, 1},  // d/m/y
    };
    for (const Order& o : orders) {
        if (anyMonth && !it[o.monthAt].month) continue;
        const int year = windowYear(o.y);
        if (validMonthDay(year, o.m, o.d)) {
            y = year, m = o.m, d = o.d;
            return true;
        }
    }
    return false;
}

}  // namespace

int dateFromParts(int year, int month, int day, double& out) noexcept {
    if (year < 100 || year > 9999 || !validMonthDay(year, month, day)) return kInvalid;
    out = static_cast<double>(dayNumber(year, month, day));
    return 0;
}

int dateSerial(int year, int month, int day, double& out) noexcept {
    const int64_t months = static_cast<int64_t>(windowYear(year)) * 12 + (static_cast<int64_t>(month) - 1);
    const int64_t y = floorDiv(months, 12);
    const int m = static_cast<int>(floorMod(months, 12)) + 1;
    const int64_t n = dayNumber(y, m, 1) + (static_cast<int64_t>(day) - 1);
    if (n < kMinDay || n > kMaxDay) return kInvalid;
    out = static_cast<double>(n);
    return 0;
}

int timeSerial(int hour, int minute, int second, double& out) noexcept {
    const int64_t total = static_cast<int64_t>(hour) * 3600 + static_cast<int64_t>(minute) * 60 + second;
    const double v = static_cast<double>(total) / kSecondsPerDay;
    if (!(v > kMinDay - 1.0 && v < kMaxDay + 1.0)) return kInvalid;
    out = v;
    return 0;
}

int splitDate(double date, DateParts& out) noexcept {
    int64_t day = 0, seconds = 0;
    if (const int err = splitDay(date, day, seconds)) return err;
    civilFromDayNumber(day, out.year, out.month, out.day);
    const int s = static_cast<int>(seconds);
    out.hour = s / 3600;
    out.minute = s / 60 % 60;
    out.second = s % 60;
    out.weekday = dayOfWeekSunday1(day);
    out.dayOfYear = static_cast<int>(day - dayNumber(out.year, 1, 1)) + 1;
    return 0;
}

int weekday(double date, int firstDayOfWeek) noexcept {
    if (firstDayOfWeek < 0 || firstDayOfWeek > 7) return 0;
    int64_t day = 0, seconds = 0;
    if (splitDay(date, day, seconds) != 0) return 0;
    const int first = firstDayOfWeek == 0 ? 1 : firstDayOfWeek;
    return (dayOfWeekSunday1(day) - first + 7) % 7 + 1;
}

int parseDate(std::u16string_view text, double& out) noexcept {
    Scan sc;
    if (const int err = scanText(text, sc)) return err;
    int timeFirst, timeCount, dateFirst, dateCount;
    if (!splitFields(sc, timeFirst, timeCount, dateFirst, dateCount)) return kMismatch;

    int hour = timeCount > 0 ? sc.items[timeFirst].value : 0;
    const int minute = timeCount > 1 ? sc.items[timeFirst + 1].value : 0;
    const int second = timeCount > 2 ? sc.items[timeFirst + 2].value : 0;
    if (hour > 23 || minute > 59 || second > 59) return kMismatch;
    // AM/PM only shifts a 12-hour clock reading; "13:00 AM" stays 13:00.
    if (sc.ampmItem >= 0) {
        if (sc.pm && hour < 12)
            hour += 12;
        else if (!sc.pm && hour == 12)
            hour = 0;
    }

    int64_t day = 0;
    if (dateCount > 0) {
        int y, m, d;
        if (!resolveDate(sc.items + dateFirst, dateCount, y, m, d) || y < 100 || y > 9999) return kMismatch;
        day = dayNumber(y, m, d);
    }
    out = composeDate(day, hour * 3600 + minute * 60 + second);
    return 0;
}

bool isDateText(std::u16string_view text) noexcept {
    double ignored;
    return parseDate(text, ignored) == 0;
}

int formatDateShort(double date, std::u16string& out) noexcept {
    int64_t day = 0, seconds = 0;
    if (const int err = splitDay(date, day, seconds)) return err;
    char16_t buf[32];
    int len = 0;
    auto put = [&](int v, int minDigits) {
        char16_t tmp[8];
        int k = 0;
        do {
            tmp[k++] = static_cast<char16_t>(u'0' + v % 10);
            v /= 10;
        } while (v > 0 || k < minDigits);
        while (k > 0) buf[len++] = tmp[--k];
    };
    auto putChar = [&](char16_t c) { buf[len++] = c; };

    if (day != 0) {
        int y, m, d;
        civilFromDayNumber(day, y, m, d);
        put(m, 1), putChar(u'/'), put(d, 1), putChar(u'/'), put(y, 1);
    }
    if (day == 0 || seconds != 0) {
        if (day != 0) putChar(u' ');
        const int s = static_cast<int>(seconds);
        const int h = s / 3600;
        put(h % 12 == 0 ? 12 : h % 12, 1), putChar(u':'), put(s / 60 % 60, 2), putChar(u':'), put(s % 60, 2);
        putChar(u' '), putChar(h < 12 ? u'A' : u'P'), putChar(u'M');
    }
    out.assign(buf, static_cast<size_t>(len));
    return 0;
}

std::u16string formatDateShort(double date) noexcept {
    std::u16string s;
    formatDateShort(date, s);
    return s;
}

double nowAsDate() noexcept {
    const std::time_t t = std::time(nullptr);
    std::tm tm{};
    localtime_r(&t, &tm);
    const int second = tm.tm_sec > 59 ? 59 : tm.tm_sec;  // a leap second stays in its minute
    return composeDate(dayNumber(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday),
                       tm.tm_hour * 3600 + tm.tm_min * 60 + second);
}

float timerSeconds() noexcept {
    timespec ts{};
    clock_gettime(CLOCK_REALTIME, &ts);
    std::tm tm{};
    localtime_r(&ts.tv_sec, &tm);
    const double s = tm.tm_hour * 3600.0 + tm.tm_min * 60.0 + tm.tm_sec + static_cast<double>(ts.tv_nsec) / 1e9;
    return static_cast<float>(s);
}

}  // namespace qvt
