#include "frame/NumberParse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace qvt;

namespace {

std::string narrow(std::u16string_view s) { return std::string(s.begin(), s.end()); }

unsigned __int128 pow10(int k) {
    unsigned __int128 p = 1;
    while (k-- > 0) p *= 10;
    return p;
}

double dbl(std::u16string_view s) {
    double d = -999;
    EXPECT_EQ(parseDouble(s, d), 0) << narrow(s);
    return d;
}

}  // namespace

TEST(NumberParse, AcceptsTheRuntimeForms) {
    const struct { const char16_t* text; double value; } cases[] = {
        {u" 12 ", 12},        {u"-12", -12},         {u"12-", -12},        {u"(12)", -12},
        {u"$1,234.50", 1234.5}, {u"-$5", -5},        {u"$-5", -5},         {u"5$ ", 5},
        {u"( $7 )", -7},      {u"+ 3", 3},           {u"\t7\r\n", 7},      {u"1e3", 1000},
        {u"1D3", 1000},       {u"1d-2", 0.01},       {u"2.5E+1", 25},      {u".5", 0.5},
        {u"5.", 5},           {u"1,,2", 12},         {u"0,5", 5},          {u"12,", 12},
        {u"&HFF", 255},       {u"&hff", 255},        {u"&O17", 15},        {u"-&H10", -16},
        {u"(&HFF)", -255},    {u"&HFFFF", -1},       {u"&H8000", -32768},  {u"&H0000FFFF", -1},
        {u"&H10000", 65536},  {u"&HFFFFFFFF", -1},   {u"&H80000000", -2147483648.0},
        {u"0", 0},            {u"-0.000", 0},        {u"1.5E+300", 1.5e300},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(dbl(c.text), c.value) << narrow(c.text);
        EXPECT_TRUE(isNumericText(c.text)) << narrow(c.text);
    }
    EXPECT_FALSE(std::signbit(dbl(u"-0")));
}

TEST(NumberParse, RejectsWhatIsNotANumber) {
    const char16_t* cases[] = {
        u"",     u" ",     u".",     u"1.2.3", u"12x",  u"e3",    u"1e",    u"1e+",    u"$",
        u"-",    u"()",    u"(12",   u"12)",   u"-12-", u"+-1",   u"(-12)", u",5",     u"1 2",
        u"$&HFF", u"&H",   u"&O8",   u"&HFF,", u"&HG",  u"1e3.5", u"1 e3",  u"$1$",    u"0x10",
        u"1e3,", u"--1",  u"12 -3",
    };
    for (const char16_t* c : cases) {
        double d;
        EXPECT_EQ(parseDouble(c, d), 13) << narrow(c);
        EXPECT_FALSE(isNumericText(c)) << narrow(c);
    }
}

TEST(NumberParse, OverflowAndUnderflow) {
    double d = 1;
    EXPECT_EQ(parseDouble(u"1E+400", d), 6);
    EXPECT_EQ(parseDouble(u"1.79769313486232E+308", d), 6);  // CStr of the largest Double
    EXPECT_EQ(parseDouble(u"&H100000000", d), 6);
    EXPECT_EQ(parseDouble(u"1e999999999999999999", d), 6);
    EXPECT_FALSE(isNumericText(u"1E+400"));
    EXPECT_FALSE(isNumericText(u"&H100000000"));
    EXPECT_TRUE(isNumericText(u"1.7976931348623157E+308"));
    EXPECT_EQ(dbl(u"1.79769313486231E+308"), 1.79769313486231e308);
    EXPECT_EQ(dbl(u"1e-400"), 0.0);
    EXPECT_EQ(dbl(u"-1e-999999999999"), 0.0);
    EXPECT_EQ(dbl(u"4.9e-324"), 4.9406564584124654e-324);  // denormals are kept
}

TEST(NumberParse, DoubleIsCorrectlyRounded) {
    EXPECT_EQ(dbl(u"0.1"), 0.1);
    EXPECT_EQ(dbl(u"9007199254740993"), 9007199254740992.0);  // tie, to even
    EXPECT_EQ(dbl(u"9007199254740993.000000000000001"), 9007199254740994.0);
    // The deciding digit lies beyond the digits kept.
    std::u16string longTail = u"9007199254740993." + std::u16string(900, u'0') + u"1";
    EXPECT_EQ(dbl(longTail), 9007199254740994.0);
    std::u16string longInt = u"1" + std::u16string(1000, u'0');
    double d;
    EXPECT_EQ(parseDouble(longInt, d), 6);
}

TEST(NumberParse, SingleRoundsOnceFromTheDigits) {
    float f = 0;
    // Just above the tie between 1 and the next float; through a double it
    // would become the tie itself and round down.
    ASSERT_EQ(parseSingle(u"1.0000000596046447753906250001", f), 0);
    EXPECT_EQ(f, 1.00000011920928955078125f);
    ASSERT_EQ(parseSingle(u"3.402823E+38", f), 0);
    EXPECT_EQ(f, 3.402823e38f);
    EXPECT_EQ(parseSingle(u"3.5E+38", f), 6);
}

TEST(NumberParse, CurrencyIsExactHalfEvenAtTheFourthDecimal) {
    const struct { const char16_t* text; int64_t value; } cases[] = {
        {u"1.23455", 12346},   {u"1.23445", 12344},  {u"1.234450001", 12345}, {u"(1.5)", -15000},
        {u"$1,000", 10000000}, {u"&HFFFF", -10000},  {u"0.00005", 0},         {u"0.00015", 2},
        {u"922337203685477.5807", INT64_MAX},        {u"-922337203685477.5808", INT64_MIN},
    };
    for (const auto& c : cases) {
        int64_t cy = 0;
        EXPECT_EQ(parseCurrency(c.text, cy), 0) << narrow(c.text);
        EXPECT_EQ(cy, c.value) << narrow(c.text);
    }
    int64_t cy;
    EXPECT_EQ(parseCurrency(u"922337203685477.5808", cy), 6);
    EXPECT_EQ(parseCurrency(u"1e20", cy), 6);
    EXPECT_EQ(parseCurrency(u"x", cy), 13);
}

TEST(NumberParse, DecimalKeepsAllDigitsAndRoundsTheRest) {
    Decimal d;
    ASSERT_EQ(parseDecimal(u"79228162514264337593543950335", d), 0);
    EXPECT_EQ(decimalMantissa(d), (static_cast<unsigned __int128>(1) << 96) - 1);
    EXPECT_EQ(d.scale, 0);
    EXPECT_EQ(parseDecimal(u"79228162514264337593543950336", d), 6);

    ASSERT_EQ(parseDecimal(u"-0.1", d), 0);
    EXPECT_TRUE(d.negative && d.lo == 1 && d.scale == 1);

    // 30 significant digits: the last one goes, half-even.
    ASSERT_EQ(parseDecimal(u"1.00000000000000000000000000005", d), 0);
    EXPECT_EQ(decimalMantissa(d), pow10(28));
    ASSERT_EQ(parseDecimal(u"1.00000000000000000000000000015", d), 0);
    EXPECT_EQ(decimalMantissa(d), pow10(28) + 2);
    ASSERT_EQ(parseDecimal(u"0.00000000000000000000000000005", d), 0);
    EXPECT_TRUE(decimalIsZero(d) && !d.negative);
    // Too wide at scale 28: the scale gives way, not the value.
    ASSERT_EQ(parseDecimal(u"7.92281625142643375935439503355", d), 0);
    EXPECT_EQ(d.scale, 27);
}

TEST(NumberParse, IntegersRoundHalfEvenAndCheckRange) {
    const struct { const char16_t* text; int error; int32_t value; } longs[] = {
        {u"2.5", 0, 2},  {u"3.5", 0, 4},           {u"-0.5", 0, 0},
        {u"&H8000", 0, -32768},                   {u"-2147483648.5", 0, INT32_MIN},
        {u"2147483647.5", 6, 0},                  {u"1e300", 6, 0},  {u"12x", 13, 0},
    };
    for (const auto& c : longs) {
        int32_t v = 0;
        EXPECT_EQ(parseLong(c.text, v), c.error) << narrow(c.text);
        if (c.error == 0) {
            EXPECT_EQ(v, c.value) << narrow(c.text);
        }
    }
    int16_t i = 0;
    uint8_t b = 0;
    EXPECT_EQ(parseInteger(u"&HFFFF", i), 0);
    EXPECT_EQ(i, -1);
    EXPECT_EQ(parseInteger(u"32768", i), 6);
    EXPECT_EQ(parseByte(u"&HFF", b), 0);
    EXPECT_EQ(b, 255);
    for (const char16_t* t : {u"256", u"-1", u"&HFFFF"}) EXPECT_EQ(parseByte(t, b), 6) << narrow(t);
}
