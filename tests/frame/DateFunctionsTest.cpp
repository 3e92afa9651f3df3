#include <gtest/gtest.h>

#include "TestSupport.h"
#include <cmath>

#include "frame/DateFunctions.h"
#include "frame/Random.h"

namespace qvt {
namespace {

using qvt::test::errorOf;

Variant I(int16_t x) { return Variant(x); }
Variant S(const char16_t* s) { return Variant(s); }
double dateOf(const Variant& v) { return v.asDate(); }

TEST(DateFunctions, SerialsCarryOutOfRangeParts) {
    EXPECT_EQ(dateOf(DateSerial(I(2000), I(1), I(2))), 36527);
    EXPECT_EQ(dateOf(DateSerial(I(2000), I(13), I(1))), 36892);
    EXPECT_EQ(dateOf(DateSerial(I(2000), I(3), I(0))), 36585);
    EXPECT_EQ(dateOf(DateSerial(I(2000), I(1), I(-1))), 36524);
    EXPECT_EQ(dateOf(DateSerial(I(99), I(1), I(1))), dateOf(DateSerial(I(1999), I(1), I(1))));
    EXPECT_DOUBLE_EQ(dateOf(TimeSerial(I(25), I(-30), I(0))), 24.5 / 24);
    EXPECT_EQ(errorOf([] { DateSerial(I(10000), I(1), I(1)); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { DateSerial(S(u"x"), I(1), I(1)); }), errTypeMismatch);
}

TEST(DateFunctions, PartsAcceptDatesNumbersAndDateText) {
    const Variant t = Variant::date(36527 + 0.5729861111);  // 2 Jan 2000 13:45:06
    EXPECT_EQ(Year(t).asInteger(), 2000);
    EXPECT_EQ(Month(S(u"January 2, 2000")).asInteger(), 1);
    EXPECT_EQ(Day(Variant(36527.0)).asInteger(), 2);
    EXPECT_EQ(Hour(t).asInteger(), 13);
    EXPECT_EQ(Minute(t).asInteger(), 45);
    EXPECT_EQ(Second(t).asInteger(), 6);
    EXPECT_EQ(Weekday(t).asInteger(), 1);
    EXPECT_EQ(Weekday(t, 2).asInteger(), 7);
    EXPECT_TRUE(Year(Variant::null()).isNull());
    EXPECT_EQ(errorOf([] { Year(S(u"not a date")); }), errTypeMismatch);
    EXPECT_EQ(dateOf(DateValue(S(u"1/2/2000 13:45"))), 36527);
    EXPECT_NEAR(dateOf(TimeValue(t)), 0.5729861111, 1e-9);
    EXPECT_EQ(dateOf(DateValue(Variant::date(-1.25))), -1);
    // DateValue reads a date text: a bare number is none, Null cannot be one.
    EXPECT_EQ(errorOf([] { DateValue(Variant(int16_t(12))); }), errTypeMismatch);
    EXPECT_EQ(errorOf([] { DateValue(S(u"12")); }), errTypeMismatch);
    EXPECT_EQ(errorOf([] { DateValue(Variant::null()); }), errInvalidUseOfNull);
}

TEST(DateFunctions, DateAddClampsToTheMonthEnd) {
    const Variant jan31 = Variant::date(34730);  // 31 Jan 1995
    EXPECT_EQ(dateOf(DateAdd(u"m", Variant(1.0), jan31)), 34758);  // 28 Feb 1995
    EXPECT_EQ(Day(DateAdd(u"M", Variant(1.0), S(u"1/31/1996"))).asInteger(), 29);
    EXPECT_EQ(Year(DateAdd(u"yyyy", Variant(-5.0), jan31)).asInteger(), 1990);
    EXPECT_EQ(Month(DateAdd(u"q", Variant(-1.0), jan31)).asInteger(), 10);
    EXPECT_EQ(dateOf(DateAdd(u"ww", Variant(2.0), jan31)), 34744);
    EXPECT_DOUBLE_EQ(dateOf(DateAdd(u"h", Variant(36.0), Variant::date(1.5))), 3);
    EXPECT_DOUBLE_EQ(dateOf(DateAdd(u"n", Variant(-1.0), Variant::date(2))), 2 - 1.0 / 1440);
    EXPECT_EQ(dateOf(DateAdd(u"d", Variant(1.6), jan31)), 34732);  // rounded to 2
    EXPECT_EQ(errorOf([&] { DateAdd(u"x", Variant(1.0), jan31); }), errInvalidCall);
    EXPECT_EQ(errorOf([&] { DateAdd(u"yyyy", Variant(9000.0), jan31); }), errInvalidCall);
}

TEST(DateFunctions, DateDiffCountsBoundaries) {
    const Variant a = S(u"12/31/1999 23:00"), b = S(u"1/1/2000 01:00");
    EXPECT_EQ(DateDiff(u"yyyy", a, b).asLong(), 1);
    EXPECT_EQ(DateDiff(u"m", a, b).asLong(), 1);
    EXPECT_EQ(DateDiff(u"d", a, b).asLong(), 1);
    EXPECT_EQ(DateDiff(u"h", a, b).asLong(), 2);
    EXPECT_EQ(DateDiff(u"s", b, a).asLong(), -7200);
    EXPECT_EQ(DateDiff(u"q", S(u"3/31/2000"), S(u"4/1/2000")).asLong(), 1);
    // 1 Jan 2000 is a Saturday: one Sunday is crossed to 2 Jan, none to 1 Jan.
    EXPECT_EQ(DateDiff(u"ww", S(u"1/1/2000"), S(u"1/2/2000")).asLong(), 1);
    EXPECT_EQ(DateDiff(u"w", S(u"1/1/2000"), S(u"1/2/2000")).asLong(), 0);
    EXPECT_EQ(DateDiff(u"w", S(u"1/1/2000"), S(u"1/15/2000")).asLong(), 2);
    EXPECT_TRUE(DateDiff(u"d", a, Variant::null()).isNull());
}

TEST(DateFunctions, DatePart) {
    const Variant d = S(u"5/17/2000 08:09:10");
    EXPECT_EQ(DatePart(u"q", d).asInteger(), 2);
    EXPECT_EQ(DatePart(u"y", d).asInteger(), 138);
    EXPECT_EQ(DatePart(u"w", d).asInteger(), 4);
    EXPECT_EQ(DatePart(u"ww", d).asInteger(), 21);
    EXPECT_EQ(DatePart(u"s", d).asInteger(), 10);
}

TEST(DateFunctions, ClockReadingsAgree) {
    const double now = Now().asDate();
    EXPECT_EQ(Date().asDate(), std::floor(now));
    EXPECT_LT(Time().asDate(), 1.0);
    EXPECT_GE(Timer(), 0.0f);
    EXPECT_LT(Timer(), 86400.0f);
    EXPECT_EQ(DateText().size(), 10u);
    EXPECT_EQ(TimeText()[2], u':');
}

TEST(Random, SequenceFromTheLoadState) {
    setRndState(327680);
    EXPECT_FLOAT_EQ(Rnd(), 0.7055475f);
    EXPECT_FLOAT_EQ(Rnd(), 0.533424f);
    EXPECT_FLOAT_EQ(Rnd(), 0.5795186f);
    EXPECT_FLOAT_EQ(Rnd(0), 0.5795186f);  // repeats the last value
}

TEST(Random, NegativeArgumentReseedsAndRandomizeMixesTheSeed) {
    EXPECT_FLOAT_EQ(Rnd(-1), 0.224007f);
    const float again = Rnd(-1);
    EXPECT_EQ(again, Rnd(-1));
    Randomize(12345);
    const uint32_t seeded = rndState();
    Rnd(-1);
    Randomize(12345);
    EXPECT_EQ(rndState() & 0xFFFF00, seeded & 0xFFFF00);  // the middle bits come from the seed
    for (int i = 0; i < 10000; ++i) {
        const float r = Rnd();
        ASSERT_GE(r, 0.0f);
        ASSERT_LT(r, 1.0f);
    }
}

}  // namespace
}  // namespace qvt
