#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "TestSupport.h"

#include "numerics/MathArithmetic.h"

using namespace qvt;
using namespace qvt::test;

namespace {

const MathArithmetic& arith() { return mathArithmetic(); }

constexpr int kSieveLimit = 100000;

// Eratosthenes, as an independent judge of the trial-division members.
const std::vector<bool>& sieve() {
    static const std::vector<bool> composite = [] {
        std::vector<bool> c(kSieveLimit + 200, false);
        c[0] = c[1] = true;
        for (size_t i = 2; i * i < c.size(); ++i)
            if (!c[i])
                for (size_t j = i * i; j < c.size(); j += i) c[j] = true;
        return c;
    }();
    return composite;
}
bool sievePrime(int n) { return !sieve()[size_t(n)]; }

const Variant& cell(const Variant& matrix, int32_t row, int32_t column) {
    const std::array<int32_t, 2> at{row, column};
    return matrix.asArray().at(at);
}

}  // namespace

TEST(MathArithmeticPrimes, IsPrimeAgreesWithASieveOnBothSides) {
    for (int n = -kSieveLimit; n <= kSieveLimit; ++n)
        ASSERT_EQ(arith().IsPrime(L(n)), sievePrime(n < 0 ? -n : n)) << n;
    EXPECT_TRUE(arith().IsPrime(D(7.9)));  // judged on Fix
    EXPECT_TRUE(arith().IsPrime(S(u"13")));
    EXPECT_FALSE(arith().IsPrime(Variant::null()));
    EXPECT_TRUE(arith().IsPrime(L(2147483647)));
}

TEST(MathArithmeticPrimes, NextAndPreviousPrimeAgreeWithASieve) {
    int next = 5, previous = 3;  // beyond the ladders near zero
    for (int x = 3; x <= kSieveLimit; ++x) {
        while (next <= x || !sievePrime(next)) ++next;
        ASSERT_EQ(CDbl(arith().NextPrime(L(x))), next) << x;
    }
    for (int x = 6; x <= kSieveLimit; ++x) {
        if (sievePrime(x - 1)) previous = x - 1;
        ASSERT_EQ(CDbl(arith().PreviousPrime(L(x))), previous) << x;
    }
}

TEST(MathArithmeticPrimes, NthPrimeAgreesWithASieve) {
    // Every count up to 2,000, then every 97th up to the last prime below
    // 100,000 (each call scans from the start, so all 9,592 would be slow).
    std::vector<int> primes;
    for (int n = 2; n <= kSieveLimit; ++n)
        if (sievePrime(n)) primes.push_back(n);
    for (size_t k = 1; k <= primes.size(); k += k < 2000 ? 1 : 97)
        ASSERT_EQ(CDbl(arith().NthPrime(L(int32_t(k)))), primes[k - 1]) << k;
    EXPECT_EQ(CDbl(arith().NthPrime(L(int32_t(primes.size())))), primes.back());
    expectNumber(arith().NthPrime(I(1)), vbInteger, 2);
    expectNumber(arith().NthPrime(I(3)), vbDouble, 5);
    EXPECT_TRUE(arith().NthPrime(I(0)).isNull());
}

TEST(MathArithmeticPrimes, LaddersNearZeroSkipOneZeroAndMinusOne) {
    const int next[][2] = {{-5, -3}, {-4, -3}, {-3, -2}, {-2, 2}, {-1, 2}, {0, 2}, {1, 2}, {2, 3}};
    for (auto [x, p] : next) expectNumber(arith().NextPrime(I(x)), vbInteger, p);
    const int previous[][2] = {{5, 3}, {4, 3}, {3, 2}, {2, -2}, {0, -2}, {-1, -2}, {-2, -3}};
    for (auto [x, p] : previous) expectNumber(arith().PreviousPrime(I(x)), vbInteger, p);
    expectNumber(arith().PreviousPrime(I(-3)), vbDouble, -5);
    expectNumber(arith().PreviousPrime(I(-7)), vbDouble, -11);
    // A negative candidate is tried against 3 alone.
    expectNumber(arith().NextPrime(I(-26)), vbDouble, -25);
}

TEST(MathArithmeticFactors, MatrixHoldsFactorsAndPowersFromColumnOne) {
    Variant fc;
    ASSERT_TRUE(arith().FactorNumberToVariantMatrix(fc, I(360)));
    ASSERT_EQ(fc.asArray().ubound(1), 2);
    ASSERT_EQ(fc.asArray().ubound(2), 3);
    EXPECT_TRUE(cell(fc, 0, 1).isEmpty());
    EXPECT_TRUE(cell(fc, 1, 0).isEmpty());
    const int expected[][2] = {{2, 3}, {3, 2}, {5, 1}};
    for (int c = 1; c <= 3; ++c) {
        EXPECT_EQ(CDbl(cell(fc, 1, c)), expected[c - 1][0]);
        EXPECT_EQ(CDbl(cell(fc, 2, c)), expected[c - 1][1]);
    }
    EXPECT_EQ(arith().FactorMatrixToExpr(fc), u"2^3*3^2*5");
    EXPECT_EQ(arith().FactorNumberToExpr(L(2147483646)).asString(), u"2*3^2*7*11*31*151*331");
    EXPECT_EQ(arith().FactorNumberToExpr(I(1)).asString(), u"");
}

TEST(MathArithmeticFactors, FailuresAndNegatives) {
    Variant fc = S(u"old");
    EXPECT_FALSE(arith().FactorNumberToVariantMatrix(fc, S(u"abc")));
    EXPECT_EQ(fc.asArray().ubound(1), 2);
    EXPECT_EQ(fc.asArray().ubound(2), 0);
    EXPECT_EQ(errorOf([&] { arith().FactorNumberToVariantMatrix(fc, I(-5)); }), errInvalidCall);
    EXPECT_TRUE(arith().FactorNumberToExpr(D(1e300)).isNull());
}

TEST(MathArithmeticFractions, FloatToFractionReducesAndCarries) {
    EXPECT_EQ(arith().FloatToFraction(D(1.75), I(8)).asString(), u"1 3/4");
    EXPECT_EQ(arith().FloatToFraction(D(-0.5), I(2)).asString(), u"1/2");  // sign lost
    EXPECT_EQ(arith().FloatToFraction(D(-2.5), I(4)).asString(), u"-2 1/2");
    EXPECT_EQ(arith().FloatToFraction(D(0.999), I(4)).asString(), u"1");
    EXPECT_EQ(arith().FloatToFraction(D(-1.999), I(4)).asString(), u"-2");
    EXPECT_EQ(arith().FloatToFraction(I(0), I(8)).asString(), u"");
}

TEST(MathArithmeticFractions, RationalPartsKeepFourteenDigits) {
    Variant n = S(u"u"), a = S(u"v"), b = S(u"w");
    ASSERT_TRUE(arith().RationalToFraction(n, a, b, D(3.25)));
    expectNumber(n, vbDouble, 3);
    expectNumber(a, vbDouble, 1);
    expectNumber(b, vbDouble, 4);
    ASSERT_TRUE(arith().RationalToFraction(n, a, b, I(3)));
    expectNumber(a, vbInteger, 0);
    expectNumber(b, vbInteger, 1);
    EXPECT_FALSE(arith().RationalToFraction(n, a, b, S(u"x")));
    expectNumber(n, vbInteger, 3);
    EXPECT_EQ(arith().RationalToFractionString(D(-3.25)).asString(), u"-3-1/4");
    EXPECT_EQ(arith().RationalToFractionString(D(0.5)).asString(), u"0+1/2");
    EXPECT_EQ(arith().RationalToFractionString(I(3)).asString(), u"3+0/1");
    EXPECT_EQ(arith().RationalToFractionString(D(0.1)).asString(), u"0+1/10");
    EXPECT_TRUE(arith().RationalDivisor(Variant::null()).isNull());
}

TEST(MathArithmetic, DivisorsInFloatingPoint) {
    EXPECT_EQ(CDbl(arith().GreatestCommonDivisor(I(-12), I(18))), 6);
    EXPECT_EQ(CDbl(arith().GreatestCommonDivisor(D(1.5), D(0.5))), 0.5);
    EXPECT_EQ(CDbl(arith().LeastCommonMultiple(I(-4), I(6))), 12);
    EXPECT_EQ(errorOf([] { arith().GreatestCommonDivisor(I(7), I(0)); }), errDivisionByZero);
}

TEST(MathArithmetic, SequencesAndProducts) {
    EXPECT_DOUBLE_EQ(CDbl(arith().Fibonacci(I(1476))), 1.3069892237633987e308);
    EXPECT_TRUE(arith().Fibonacci(I(1477)).isNull());
    expectNumber(arith().Fibonacci(I(-5)), vbDouble, 0);
    expectNumber(arith().Fibonacci(D(1.5)), vbDouble, 1);  // CInt(1.5) is 2
    expectNumber(arith().GeneratePi(I(0)), vbDouble, 2);
    EXPECT_NEAR(CDbl(arith().GeneratePi(I(3))), 32.0 / 9, 1e-14);
    EXPECT_NEAR(CDbl(arith().GeneratePi()), 3.140060543327394, 1e-12);
    EXPECT_NEAR(CDbl(arith().ContinuedFraction(I(1), I(1), I(1), I(3))), 5.0 / 3, 1e-14);
    expectNumber(arith().ContinuedFraction(I(1), I(1), I(7), I(0)), vbDouble, 7);
    expectNumber(arith().ContinuedFraction(I(1), I(1), I(5), Variant::missing()), vbDouble, 1.2);
}

TEST(MathArithmetic, GridNeighbours) {
    EXPECT_EQ(CDbl(arith().NextEven(I(-3))), -2);
    EXPECT_EQ(CDbl(arith().PreviousEven(I(4))), 2);
    EXPECT_EQ(CDbl(arith().NextOdd(I(-2))), -1);
    EXPECT_EQ(CDbl(arith().PreviousOdd(I(0))), -1);
    EXPECT_EQ(CDbl(arith().NextNumber(I(5), I(5))), 10);
    EXPECT_EQ(CDbl(arith().NextNumber(I(3), I(5), I(1))), 4);
    EXPECT_EQ(CDbl(arith().NextNumber(I(3), I(-5))), 5);
    EXPECT_EQ(CDbl(arith().PreviousNumber(I(5), I(5))), 0);
    EXPECT_EQ(CDbl(arith().PreviousNumber(D(3.5))), 3);
}

TEST(MathArithmetic, ComparisonsAndWaves) {
    expectNumber(arith().NumComp(I(1), I(2)), vbInteger, -1);
    expectNumber(arith().RangeComp(I(1), I(3), I(3)), vbInteger, 0);
    EXPECT_TRUE(arith().IsWithinPlusOrMinusOf(I(6), D(0.5), D(5.5)).asBoolean());
    EXPECT_FALSE(arith().IsWithinPlusOrMinusOf(I(5), D(0.4), D(5.5)).asBoolean());
    const int triangle[] = {0, 1, 2, 1, 0, 1};
    for (int x = 0; x < 6; ++x) EXPECT_EQ(CDbl(arith().SawtoothWave(I(x), I(4))), triangle[x]) << x;
    EXPECT_EQ(CDbl(arith().SawtoothWave(I(1), I(-4))), -1);
    expectNumber(arith().SquareWave(D(-0.5)), vbInteger, -1);
    expectNumber(arith().SquareWave(I(2)), vbInteger, 1);
}

TEST(MathArithmeticTextPlot, DrawsAxesAndPoints) {
    auto points = [](std::initializer_list<std::pair<double, double>> xy) {
        Variant a = Variant::array(vbVariant, {{1, 2}, {1, int32_t(xy.size())}});
        int32_t n = 1;
        for (auto [x, y] : xy) {
            const std::array<int32_t, 2> px{1, n}, py{2, n};
            a.arrayForWrite().at(px) = Variant(x);
            a.arrayForWrite().at(py) = Variant(y);
            ++n;
        }
        return a;
    };
    EXPECT_EQ(arith().TextPlot(points({{0, 0}, {1, 1}}), I(2), I(2)), u"|*\r\n*-");
    EXPECT_EQ(arith().TextPlot(points({{0, 0}, {2, 1}, {4, 4}}), I(4), I(4)), u"|  *\r\n|\r\n| *\r\n*---");
    EXPECT_EQ(arith().TextPlot(points({{-1, -1}, {1, 1}}), I(2), I(2)), u"-*\r\n*|");
    EXPECT_EQ(arith().TextPlot(points({{1, 1}, {3, 2}}), I(2), I(2)), u" *\r\n*");  // no axis in view
    EXPECT_EQ(arith().TextPlot(points({{0, 0}, {1, 1}}), I(0), I(2)), u"");
    EXPECT_EQ(errorOf([&] { arith().TextPlot(points({{1, 1}, {1, 2}}), I(2), I(2)); }), errDivisionByZero);
    EXPECT_EQ(arith().TextPlot(Variant::array(vbVariant, {{1, 2}, {0, 0}})), u"");
}
