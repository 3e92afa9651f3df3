#include "frame/DecimalMath.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "frame/NumberFormat.h"
#include "frame/NumberParse.h"

using namespace qvt;

namespace {

Decimal D(const char16_t* text) {
    Decimal d;
    EXPECT_EQ(parseDecimal(text, d), 0);
    return d;
}

std::string S(const Decimal& d) {
    const std::u16string s = formatDecimal(d);
    return std::string(s.begin(), s.end());
}

const char16_t* const kMax = u"79228162514264337593543950335";

using Op = int (*)(const Decimal&, const Decimal&, Decimal&) noexcept;

std::string apply(Op op, const char16_t* a, const char16_t* b) {
    Decimal r;
    const int e = op(D(a), D(b), r);
    return e ? "error " + std::to_string(e) : S(r);
}

}  // namespace

TEST(Decimal, AddAndSubtractExactly) {
    EXPECT_EQ(apply(decimalAdd, u"0.1", u"0.2"), "0.3");
    Decimal sum;
    ASSERT_EQ(decimalAdd(D(u"0.1"), D(u"0.2"), sum), 0);
    EXPECT_EQ(decimalCompare(sum, D(u"0.3")), 0);
    EXPECT_EQ(apply(decimalAdd, u"-1.25", u"0.5"), "-0.75");
    EXPECT_EQ(apply(decimalSub, u"1", u"1"), "0");
    Decimal zero;
    ASSERT_EQ(decimalSub(D(u"1"), D(u"1"), zero), 0);
    EXPECT_FALSE(zero.negative);
    EXPECT_EQ(apply(decimalAdd, u"0.0000000000000000000000000001", u"1"), "1.0000000000000000000000000001");
    // Past 96 bits the scale gives way, rounding half-even.
    EXPECT_EQ(apply(decimalAdd, kMax, u"0.4"), "79228162514264337593543950335");
    EXPECT_EQ(apply(decimalAdd, kMax, u"0.5"), "error 6");  // ...335 is odd: up, to 2^96
    EXPECT_EQ(apply(decimalAdd, u"79228162514264337593543950334", u"0.5"), "79228162514264337593543950334");
    EXPECT_EQ(apply(decimalAdd, kMax, u"1"), "error 6");
    EXPECT_EQ(apply(decimalSub, u"-79228162514264337593543950335", u"1"), "error 6");
    EXPECT_EQ(apply(decimalAdd, u"7.9228162514264337593543950335", u"0.0000000000000000000000000005"),
              "7.922816251426433759354395034");
}

TEST(Decimal, MultiplyAndDivide) {
    EXPECT_EQ(apply(decimalMul, u"1.5", u"1.5"), "2.25");
    EXPECT_EQ(apply(decimalMul, u"-0.5", u"4"), "-2");
    EXPECT_EQ(apply(decimalMul, kMax, u"2"), "error 6");
    EXPECT_EQ(apply(decimalMul, u"0.00000000000001", u"0.00000000000001"), "0.0000000000000000000000000001");
    EXPECT_EQ(apply(decimalMul, u"0.00000000000001", u"0.000000000000001"), "0");  // below scale 28
    EXPECT_EQ(apply(decimalMul, u"0.3333333333333333333333333333", u"3"), "0.9999999999999999999999999999");

    EXPECT_EQ(apply(decimalDiv, u"1", u"3"), "0.3333333333333333333333333333");
    EXPECT_EQ(apply(decimalDiv, u"2", u"3"), "0.6666666666666666666666666667");
    EXPECT_EQ(apply(decimalDiv, u"-2", u"3"), "-0.6666666666666666666666666667");
    EXPECT_EQ(apply(decimalDiv, u"100", u"3"), "33.333333333333333333333333333");
    EXPECT_EQ(apply(decimalDiv, u"10", u"4"), "2.5");
    EXPECT_EQ(apply(decimalDiv, u"1", u"0.0001"), "10000");
    EXPECT_EQ(apply(decimalDiv, kMax, u"1"), "79228162514264337593543950335");
    EXPECT_EQ(apply(decimalDiv, kMax, u"0.1"), "error 6");
    EXPECT_EQ(apply(decimalDiv, u"5", u"0"), "error 11");
    EXPECT_EQ(apply(decimalDiv, u"0", u"0"), "error 11");
    EXPECT_EQ(apply(decimalDiv, u"0", u"-7"), "0");
}

TEST(Decimal, CompareAcrossScalesAndSigns) {
    EXPECT_EQ(decimalCompare(D(u"1.0"), D(u"1")), 0);
    EXPECT_EQ(decimalCompare(D(u"-0"), D(u"0.000")), 0);
    EXPECT_EQ(decimalCompare(D(u"-1"), D(u"0.5")), -1);
    EXPECT_EQ(decimalCompare(D(u"-1"), D(u"-2")), 1);
    EXPECT_EQ(decimalCompare(D(kMax), D(u"7.9228162514264337593543950335")), 1);
    EXPECT_EQ(decimalCompare(D(u"0.0000000000000000000000000001"), D(u"0")), 1);
    EXPECT_EQ(decimalCompare(decimalNegate(D(u"3")), D(u"-3")), 0);
}

TEST(Decimal, RoundingToIntegers) {
    const struct { const char16_t* text; int64_t rounded; const char* fix; const char* floor; } cases[] = {
        {u"2.5", 2, "2", "2"},   {u"3.5", 4, "3", "3"},       {u"-2.5", -2, "-2", "-3"},
        {u"-2.7", -3, "-2", "-3"}, {u"-2", -2, "-2", "-2"},  {u"0.4999999999999999999999999999", 0, "0", "0"},
    };
    for (const auto& c : cases) {
        int64_t v = 99;
        EXPECT_EQ(decimalToInt64(D(c.text), v), 0);
        EXPECT_EQ(v, c.rounded);
        EXPECT_EQ(S(decimalFix(D(c.text))), c.fix);
        EXPECT_EQ(S(decimalInt(D(c.text))), c.floor);
    }
    int64_t v;
    EXPECT_EQ(decimalToInt64(D(u"9223372036854775807.5"), v), 6);
    EXPECT_EQ(decimalToInt64(D(u"-9223372036854775808.4"), v), 0);
    EXPECT_EQ(v, INT64_MIN);
    Decimal r;
    ASSERT_EQ(decimalRound(D(u"1.2345"), 3, r), 0);
    EXPECT_EQ(S(r), "1.234");
    ASSERT_EQ(decimalRound(D(u"1.2355"), 3, r), 0);
    EXPECT_EQ(S(r), "1.236");
    EXPECT_EQ(decimalRound(D(u"1"), -1, r), 5);
}

TEST(Decimal, DoubleConversions) {
    Decimal d;
    ASSERT_EQ(decimalFromDouble(0.1, d), 0);
    EXPECT_TRUE(d.lo == 1 && d.scale == 1);  // 15 digits, not the binary expansion
    ASSERT_EQ(decimalFromDouble(1.0 / 3, d), 0);
    EXPECT_EQ(S(d), "0.333333333333333");
    ASSERT_EQ(decimalFromDouble(-1234567.5, d), 0);
    EXPECT_EQ(S(d), "-1234567.5");
    ASSERT_EQ(decimalFromDouble(1e-30, d), 0);
    EXPECT_TRUE(decimalIsZero(d));
    EXPECT_EQ(decimalFromDouble(1e29, d), 6);
    EXPECT_EQ(decimalFromDouble(std::numeric_limits<double>::quiet_NaN(), d), 6);

    EXPECT_EQ(decimalToDouble(D(u"0.1")), 0.1);
    EXPECT_EQ(decimalToDouble(D(u"-7.9228162514264337593543950335")), -7.9228162514264337593543950335);
    EXPECT_EQ(decimalToDouble(D(kMax)), 79228162514264337593543950335.0);
}

TEST(Currency, ConversionsRoundHalfEven) {
    int64_t cy = 0;
    EXPECT_EQ(currencyFromDouble(2.5, cy), 0);
    EXPECT_EQ(cy, 25000);
    // Exact halves of a ten-thousandth go to the even neighbour...
    EXPECT_EQ(currencyFromDouble(0.03125, cy), 0);
    EXPECT_EQ(cy, 312);
    EXPECT_EQ(currencyFromDouble(-0.09375, cy), 0);
    EXPECT_EQ(cy, -938);
    // ...while the Double nearest -0.00005 lies just beyond the half.
    EXPECT_EQ(currencyFromDouble(-0.00005, cy), 0);
    EXPECT_EQ(cy, -1);
    // Scaled without loss above 2^53 ten-thousandths.
    EXPECT_EQ(currencyFromDouble(-922337203685476.0, cy), 0);
    EXPECT_EQ(cy, -9223372036854760000);
    EXPECT_EQ(currencyFromDouble(123456789012.3457, cy), 0);
    EXPECT_EQ(cy, 1234567890123457);
    EXPECT_EQ(currencyFromDouble(4.9e-324, cy), 0);
    EXPECT_EQ(cy, 0);
    EXPECT_EQ(currencyFromDouble(922337203685477.0, cy), 0);
    EXPECT_EQ(currencyFromDouble(1e15, cy), 6);
    EXPECT_EQ(currencyFromDouble(-1e15, cy), 6);
    EXPECT_EQ(currencyFromDouble(std::numeric_limits<double>::infinity(), cy), 6);
    EXPECT_EQ(currencyToDouble(INT64_MAX), 922337203685477.5807);
    EXPECT_EQ(currencyToDouble(-15000), -1.5);
    EXPECT_EQ(currencyRoundToInt64(25000), 2);
    EXPECT_EQ(currencyRoundToInt64(35000), 4);
    EXPECT_EQ(currencyRoundToInt64(-25001), -3);
    EXPECT_EQ(currencyRoundToInt64(INT64_MIN), -922337203685478);

    EXPECT_EQ(currencyFromDecimal(D(u"1.23455"), cy), 0);
    EXPECT_EQ(cy, 12346);
    EXPECT_EQ(currencyFromDecimal(D(u"-922337203685477.58084"), cy), 0);
    EXPECT_EQ(cy, INT64_MIN);
    EXPECT_EQ(currencyFromDecimal(D(u"922337203685477.58075"), cy), 6);
    EXPECT_EQ(S(decimalFromCurrency(-15000)), "-1.5");
    EXPECT_EQ(currencyFromInt64(922337203685478, cy), 6);
}

TEST(Currency, ArithmeticIsExact) {
    using CyOp = int (*)(int64_t, int64_t, int64_t&) noexcept;
    const struct { CyOp op; int64_t a, b; int error; int64_t value; } cases[] = {
        {currencyMul, 15000, 15000, 0, 22500},  // 1.5 * 1.5
        {currencyMul, 1, 5000, 0, 0},           // 0.00005: to even
        {currencyMul, 3, 5000, 0, 2},
        {currencyMul, -3, 5000, 0, -2},
        {currencyMul, INT64_MIN, 10000, 0, INT64_MIN},
        {currencyMul, INT64_MAX, 20000, 6, 0},
        {currencyDiv, 10000, 30000, 0, 3333},
        {currencyDiv, -20000, 30000, 0, -6667},
        {currencyDiv, INT64_MAX, 1, 6, 0},
        {currencyDiv, 1, 0, 11, 0},
        {currencyAdd, INT64_MAX, 1, 6, 0},
        {currencySub, INT64_MIN, 1, 6, 0},
    };
    for (const auto& c : cases) {
        int64_t cy = 0;
        EXPECT_EQ(c.op(c.a, c.b, cy), c.error) << c.a << ' ' << c.b;
        if (c.error == 0) {
            EXPECT_EQ(cy, c.value) << c.a << ' ' << c.b;
        }
    }
}
