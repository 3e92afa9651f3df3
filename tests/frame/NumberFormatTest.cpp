#include "frame/NumberFormat.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cstdint>
#include <string>

#include "frame/NumberParse.h"

using namespace qvt;

namespace {

std::string narrow(const std::u16string& s) { return std::string(s.begin(), s.end()); }

Decimal dec(unsigned __int128 mantissa, int scale, bool negative = false) {
    Decimal d;
    d.lo = static_cast<uint64_t>(mantissa);
    d.hi = static_cast<uint32_t>(mantissa >> 64);
    d.scale = static_cast<uint8_t>(scale);
    d.negative = negative;
    return d;
}

}  // namespace

TEST(NumberFormat, DoubleLikeCStr) {
    const struct { double value; const char* text; } cases[] = {
        {1.0 / 3, "0.333333333333333"},
        {0.1 + 0.2, "0.3"},
        {100, "100"},
        {-2.5, "-2.5"},
        {-0.0, "0"},
        {123456789012345.0, "123456789012345"},
        {999999999999999.0, "999999999999999"},
        {999999999999999.9, "1E+15"},  // rounds into the next decade
        {1e15, "1E+15"},
        {1.2e15, "1.2E+15"},
        {1.234e16, "1.234E+16"},
        {1e100, "1E+100"},
        {12.345678901234567, "12.3456789012346"},
        {1.79769313486231e308, "1.79769313486231E+308"},
        {DBL_MAX, "1.79769313486232E+308"},
        // Small numbers: where plain notation gives way to E form.
        {0.0001, "0.0001"},
        {0.00001, "0.00001"},
        {5.6789e-5, "0.000056789"},
        {5.6789e-11, "0.000000000056789"},
        {5.6789e-12, "5.6789E-12"},
        {1.5e-14, "0.000000000000015"},
        {1e-14, "0.00000000000001"},
        {1e-15, "1E-15"},
        {-3.25e-20, "-3.25E-20"},
        {4.9406564584124654e-324, "4.94065645841247E-324"},
    };
    for (const auto& c : cases) EXPECT_EQ(narrow(formatDouble(c.value)), c.text) << c.text;
}

TEST(NumberFormat, SingleUsesSevenDigits) {
    EXPECT_EQ(narrow(formatSingle(FLT_MAX)), "3.402823E+38");
    EXPECT_EQ(narrow(formatSingle(1.401298e-45f)), "1.401298E-45");
    EXPECT_EQ(narrow(formatSingle(654322.23456f)), "654322.2");
    EXPECT_EQ(narrow(formatSingle(1e8f)), "1E+08");
    EXPECT_EQ(narrow(formatSingle(0.000005f)), "0.000005");
    EXPECT_EQ(narrow(formatSingle(0.1f)), "0.1");  // not the double's 0.100000001490116
}

TEST(NumberFormat, AppendsInPlaceWithTheGivenPoint) {
    std::u16string s = u"x=";
    appendDouble(s, 0.5, u',');
    appendCurrency(s, -15000, u',');
    appendSingle(s, 2.25f);
    EXPECT_EQ(s, u"x=0,5-1,52.25");
}

TEST(NumberFormat, IntegersAndTwoDigitFields) {
    EXPECT_EQ(narrow(formatInteger(0)), "0");
    EXPECT_EQ(narrow(formatInteger(-32768)), "-32768");
    EXPECT_EQ(narrow(formatInteger(INT64_MIN)), "-9223372036854775808");
    std::u16string s = u"x";
    appendInteger(s, 255);
    EXPECT_EQ(narrow(s), "x255");
    EXPECT_EQ(narrow(twoDigits(7)), "07");
    EXPECT_EQ(narrow(twoDigits(2024)), "24");
}

TEST(NumberFormat, CurrencyIsExact) {
    EXPECT_EQ(narrow(formatCurrency(15000)), "1.5");
    EXPECT_EQ(narrow(formatCurrency(25000)), "2.5");
    EXPECT_EQ(narrow(formatCurrency(9)), "0.0009");
    EXPECT_EQ(narrow(formatCurrency(-10000)), "-1");
    EXPECT_EQ(narrow(formatCurrency(0)), "0");
    EXPECT_EQ(narrow(formatCurrency(INT64_MIN)), "-922337203685477.5808");
    EXPECT_EQ(narrow(formatCurrency(INT64_MAX)), "922337203685477.5807");
}

TEST(NumberFormat, DecimalIsExactWithoutTrailingZeros) {
    const unsigned __int128 max = (static_cast<unsigned __int128>(1) << 96) - 1;
    EXPECT_EQ(narrow(formatDecimal(dec(10, 1))), "1");
    EXPECT_EQ(narrow(formatDecimal(dec(150, 2))), "1.5");
    EXPECT_EQ(narrow(formatDecimal(dec(15, 1, true))), "-1.5");
    EXPECT_EQ(narrow(formatDecimal(dec(9000, 7))), "0.0009");
    EXPECT_EQ(narrow(formatDecimal(dec(1, 10))), "0.0000000001");
    EXPECT_EQ(narrow(formatDecimal(dec(0, 3, true))), "0");
    EXPECT_EQ(narrow(formatDecimal(dec(max, 0))), "79228162514264337593543950335");
    EXPECT_EQ(narrow(formatDecimal(dec(max, 28))), "7.9228162514264337593543950335");
    EXPECT_EQ(narrow(formatDecimal(dec(max, 10, true))), "-7922816251426433759.3543950335");
}

TEST(NumberFormat, TextReadsBackToTheSameValue) {
    // CStr of a 15-digit value parses back exactly; the shortest forms always do.
    for (double v : {0.1, 1.0 / 3, 123456.789, 1e-7, 6.02214076e23, 5e-324, DBL_MAX}) {
        const std::string text = shortestDouble(v);
        double back = 0;
        ASSERT_EQ(parseDouble(std::u16string(text.begin(), text.end()), back), 0);
        EXPECT_EQ(back, v) << text;
    }
    double back = 0;
    ASSERT_EQ(parseDouble(formatDouble(123456.789), back), 0);
    EXPECT_EQ(back, 123456.789);
    EXPECT_EQ(shortestDouble(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(shortestSingle(0.1f), "0.1");
    EXPECT_EQ(shortestDouble(1e300), "1e+300");
}
