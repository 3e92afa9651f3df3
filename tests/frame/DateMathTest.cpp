#include "frame/DateMath.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

using namespace qvt;

namespace {

double serial(int y, int m, int d) {
    double v = NAN;
    EXPECT_EQ(dateSerial(y, m, d, v), 0) << y << '/' << m << '/' << d;
    return v;
}

double parsed(const char16_t* text) {
    double v = NAN;
    EXPECT_EQ(parseDate(text, v), 0) << "not accepted";
    return v;
}

// Day count of a month and day in the current year, for the forms without a year.
double thisYear(int month, int day) {
    DateParts now{};
    EXPECT_EQ(splitDate(nowAsDate(), now), 0);
    return serial(now.year, month, day);
}

}  // namespace

TEST(DateMath, SerialCarriesWindowAndLeapYears) {
    EXPECT_EQ(serial(2000, 13, 1), 36892);
    EXPECT_EQ(serial(2000, 3, 0), 36585);  // 29 Feb 2000
    EXPECT_EQ(serial(2000, 1, -1), 36524);
    EXPECT_EQ(serial(2000, 0, 1), 36495);  // 1 Dec 1999
    EXPECT_EQ(serial(99, 13, 1), 36526);   // window first, then the carry
    EXPECT_EQ(serial(30, 1, 2), 10960);
    EXPECT_EQ(serial(29, 1, 2), 47120);
    // The count is continuous through 1900, which had no 29 February.
    EXPECT_EQ(serial(1900, 1, 1), 2);
    EXPECT_EQ(serial(1900, 2, 28), 60);
    EXPECT_EQ(serial(1900, 2, 29), 61);
    EXPECT_EQ(serial(1900, 3, 1), 61);
}

TEST(DateMath, RangeLimits) {
    double v = 0;
    EXPECT_EQ(serial(100, 1, 1), -657434);
    EXPECT_EQ(serial(9999, 12, 31), 2958465);
    EXPECT_EQ(dateSerial(100, 1, 0, v), 5);
    EXPECT_EQ(dateSerial(9999, 12, 32, v), 5);
    EXPECT_EQ(dateSerial(INT_MAX, INT_MAX, INT_MAX, v), 5);
    EXPECT_EQ(dateSerial(INT_MIN, INT_MIN, INT_MIN, v), 5);
    EXPECT_EQ(dateFromParts(1980, 1, 1, v), 0);
    EXPECT_EQ(v, 29221);
    EXPECT_EQ(dateFromParts(2001, 2, 29, v), 5);
    EXPECT_EQ(dateFromParts(99, 1, 1, v), 5);  // literal years only
}

TEST(DateMath, TimeSerialBorrowsAndCarries) {
    double v = 0;
    ASSERT_EQ(timeSerial(12 - 6, -15, 0, v), 0);
    EXPECT_DOUBLE_EQ(v, (5 * 60 + 45) / 1440.0);
    ASSERT_EQ(timeSerial(23, 75, 0, v), 0);
    EXPECT_DOUBLE_EQ(v, 1 + 15 / 1440.0);
    ASSERT_EQ(timeSerial(0, 0, -3600, v), 0);
    EXPECT_DOUBLE_EQ(v, -1 / 24.0);
    EXPECT_EQ(timeSerial(INT_MAX, INT_MAX, INT_MAX, v), 5);
}

TEST(DateMath, SplitRoundsToTheSecond) {
    DateParts p{};
    ASSERT_EQ(splitDate(29221.7508765432, p), 0);
    EXPECT_EQ((p.year * 100 + p.month) * 100 + p.day, 19800101);
    EXPECT_EQ((p.hour * 100 + p.minute) * 100 + p.second, 180116);
    EXPECT_EQ(p.weekday, 3);
    EXPECT_EQ(p.dayOfYear, 1);
    ASSERT_EQ(splitDate(36526 + 86399.6 / 86400, p), 0);  // 23:59:59.6 is the next midnight
    EXPECT_EQ((p.month * 100 + p.day) * 100 + p.hour + p.minute + p.second, 10200);
    ASSERT_EQ(splitDate(0.0, p), 0);
    EXPECT_EQ(p.year * 10000 + p.month * 100 + p.day, 18991230);
    EXPECT_EQ(p.weekday, 7);
    EXPECT_EQ(p.dayOfYear, 364);
    ASSERT_EQ(splitDate(-1.25, p), 0);  // the fraction's magnitude is the time
    EXPECT_EQ(p.day * 100 + p.hour, 2906);
    ASSERT_EQ(splitDate(-657434.0, p), 0);
    EXPECT_EQ(p.year * 10000 + p.month * 100 + p.day, 1000101);
    EXPECT_EQ(p.weekday, 6);
    ASSERT_EQ(splitDate(2958465.999988426, p), 0);
    EXPECT_EQ(p.dayOfYear * 100 + p.second, 36559);
    for (double bad : {-657435.0, 2958466.0, 2958465.999999, double(NAN), double(INFINITY)})
        EXPECT_EQ(splitDate(bad, p), 5) << bad;
}

TEST(DateMath, WeekdayFromAnyFirstDay) {
    const double saturday = 36526;
    EXPECT_EQ(weekday(saturday, 0), 7);
    EXPECT_EQ(weekday(saturday, 1), 7);
    EXPECT_EQ(weekday(saturday, 2), 6);
    EXPECT_EQ(weekday(saturday, 7), 1);
    EXPECT_EQ(weekday(saturday, 8), 0);
    EXPECT_EQ(weekday(3e6, 1), 0);
}

TEST(DateMath, ParsesNumericOrders) {
    EXPECT_EQ(parsed(u"1/2/2000"), 36527);
    EXPECT_EQ(parsed(u"1-2-1970"), 25570);
    EXPECT_EQ(parsed(u"2000-01-02"), 36527);
    EXPECT_EQ(parsed(u"2000/1/2"), 36527);
    EXPECT_EQ(parsed(u"13-1-1970"), 25581);  // no month 13: day first
    EXPECT_EQ(parsed(u"1/2/70"), 25570);
    EXPECT_EQ(parsed(u"1 2 29"), 47120);
    EXPECT_EQ(parsed(u"1 2 30"), 10960);
    EXPECT_EQ(parsed(u"1 2 3"), 37623);
    EXPECT_EQ(parsed(u"14 2 3"), 41673);
    EXPECT_EQ(parsed(u"2 14 3"), 37666);
    EXPECT_EQ(parsed(u"32 2 3"), 11722);
    EXPECT_EQ(parsed(u"30 2"), 10990);  // neither day nor month: month and year
    EXPECT_EQ(parsed(u"2 30"), 10990);
    EXPECT_EQ(parsed(u"1 2"), thisYear(1, 2));
    EXPECT_EQ(parsed(u"14 1"), thisYear(1, 14));
}

TEST(DateMath, ParsesMonthAndWeekdayNames) {
    EXPECT_EQ(parsed(u"January 2, 2000"), 36527);
    EXPECT_EQ(parsed(u"2 Jan 2000"), 36527);
    EXPECT_EQ(parsed(u"2-jan-2000"), 36527);
    EXPECT_EQ(parsed(u"2000 JAN 2"), 36527);
    EXPECT_EQ(parsed(u"Sunday, January 2, 2000"), 36527);
    EXPECT_EQ(parsed(u"Jan 2000"), 36526);
    EXPECT_EQ(parsed(u"35-Jan"), 12785);
    EXPECT_EQ(parsed(u"2 Jan"), thisYear(1, 2));
}

TEST(DateMath, ParsesTimes) {
    EXPECT_DOUBLE_EQ(parsed(u"13:45"), 13.75 / 24);
    EXPECT_DOUBLE_EQ(parsed(u"1:45 PM"), 13.75 / 24);
    EXPECT_DOUBLE_EQ(parsed(u"1:45pm"), 13.75 / 24);
    EXPECT_DOUBLE_EQ(parsed(u"1 PM"), 13 / 24.0);
    EXPECT_DOUBLE_EQ(parsed(u"1 a"), 1 / 24.0);
    EXPECT_DOUBLE_EQ(parsed(u"12:59 AM"), 59 / 1440.0);
    EXPECT_DOUBLE_EQ(parsed(u"00:00 pm"), 0.5);
    EXPECT_DOUBLE_EQ(parsed(u"13:00 AM"), 13 / 24.0);
    EXPECT_DOUBLE_EQ(parsed(u"6/30/2011 01:20:34 PM"), 40724.55594907407);
    EXPECT_DOUBLE_EQ(parsed(u"6/30/2011\u30001:20:34"), 40724.05594907407);
    EXPECT_DOUBLE_EQ(parsed(u"2013-05-14 02:04:12"), 41408.08625);
    EXPECT_DOUBLE_EQ(parsed(u"1:45 PM 1/2/2000"), 36527 + 13.75 / 24);
    EXPECT_DOUBLE_EQ(parsed(u"3 am 1 2"), thisYear(1, 2) + 0.125);
    EXPECT_DOUBLE_EQ(parsed(u"12/29/1899 6:00 AM"), -1.25);
}

TEST(DateMath, RejectsWhatIsNoDate) {
    for (const char16_t* text :
         {u"", u"  ", u"12", u"12.5", u"0.0", u"02.01.1970", u"1/2/2000 25:00", u"24:00", u"0:60",
          u"True", u"1;2;3", u"(1:2)", u"1 2 am", u"1 2 3 4", u"32 49", u"0 49", u"1/2/2000/1:45", u"1/2/",
          u"1/2/2000,", u"Janu 2", u"2013-05-14 02:04:12.017", u"1/2/10000", u"2/29/2001", u"1 am pm",
          u"am 1", u"Jan:5", u"1:2:3:4", u"1 2 3 4 5 6 7", u"-1/2/2000", u"1/2/2000 1:45 PM 3"}) {
        double v = 0;
        EXPECT_EQ(parseDate(text, v), 13) << std::string(text, text + std::char_traits<char16_t>::length(text));
        EXPECT_FALSE(isDateText(text));
    }
    EXPECT_TRUE(isDateText(u"Jan 2"));
}

TEST(DateMath, FormatsShortForm) {
    EXPECT_EQ(formatDateShort(0.0), u"12:00:00 AM");
    EXPECT_EQ(formatDateShort(3.34), u"1/2/1900 8:09:36 AM");
    EXPECT_EQ(formatDateShort(1461.5), u"12/31/1903 12:00:00 PM");
    EXPECT_EQ(formatDateShort(-49192.24), u"4/24/1765 5:45:36 AM");
    EXPECT_EQ(formatDateShort(-657434.0), u"1/1/100");
    EXPECT_EQ(formatDateShort(2958465.0), u"12/31/9999");
    EXPECT_EQ(formatDateShort(13.75 / 24), u"1:45:00 PM");
    EXPECT_EQ(formatDateShort(36527.99999999), u"1/3/2000");
    std::u16string s = u"kept";
    EXPECT_EQ(formatDateShort(2958466.0, s), 5);
    EXPECT_EQ(formatDateShort(-657435.0), u"");
}

TEST(DateMath, FormatAndParseRoundTrip) {
    for (double day : {-657434.0, -49192.0, -1.0, 0.0, 1.0, 60.0, 36585.0, 2958465.0}) {
        for (int seconds : {0, 1, 43200, 45296, 86399}) {
            const double date = day < 0 ? day - seconds / 86400.0 : day + seconds / 86400.0;
            const std::u16string text = formatDateShort(date);
            double back = NAN;
            ASSERT_EQ(parseDate(text, back), 0) << date;
            EXPECT_NEAR(back, date, 1e-9) << date;
            EXPECT_EQ(formatDateShort(back), text);
        }
    }
}

TEST(DateMath, ClockReadings) {
    const double now = nowAsDate();
    const float timer = timerSeconds();
    const double secondsOfDay = (now - std::floor(now)) * 86400;
    EXPECT_NEAR(secondsOfDay, std::round(secondsOfDay), 1e-4);
    EXPECT_GE(timer, 0.0f);
    EXPECT_LT(timer, 86400.0f);
    const double apart = std::fabs(timer - secondsOfDay);
    EXPECT_TRUE(apart < 3 || apart > 86400 - 3) << apart;
}
