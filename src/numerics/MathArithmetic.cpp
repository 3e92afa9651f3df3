#include "numerics/MathArithmetic.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstdint>
#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/Frame.h"
#include "frame/Strings.h"
#include "numerics/MathReals.h"
#include "numerics/NumericArguments.h"
#include "numerics/VariantArithmetic.h"

namespace qvt {

using namespace arithmetic;
using numeric::maybe;

namespace {

// The grid P*k - O: the member above X, and the member below X (a value on
// the grid moves one step down). Even numbers are P = 2, O = 0; odd numbers
// P = 2, O = 1.
Variant gridNext(const Variant& x, const Variant& p, const Variant& o) { return p * Int((x + o) / p) + p - o; }
Variant gridPrevious(const Variant& x, const Variant& p, const Variant& o) {
    Variant t = p * Int((x + o) / p) - o;
    return x == t ? x - p : t;
}

// Trial division by 3, 5, 7, ... up to Int(Sqr(n)) of an odd n > 2.
bool hasNoOddDivisor(double n) {
    const double limit = std::floor(Sqr(n));
    for (double d = 3; d <= limit; d += 2)
        if (modStd(n, d) == 0) return false;
    return true;
}

bool isPrimeMagnitude(double n) {
    if (n <= 1) return false;
    if (n == 2) return true;
    if (modStd(n, 2) == 0) return false;
    return hasNoOddDivisor(n);
}

// From an odd candidate, moving by step until one passes: divisors 3, 5, ...
// while i*i stays below the signed candidate, so a negative candidate meets
// only 3.
double scanForPrime(double c, double step) {
    for (;; c += step) {
        double i = 3;
        while (i * i < c && modStd(c, i) != 0) i += 2;
        if (modStd(c, i) != 0) return c;
    }
}

String numberText(const Variant& v) { return CStr(v); }

const SafeArray& arrayOf(const Variant& v) {
    if (!v.isArray()) raiseError(errTypeMismatch);
    return v.asArray();
}

const Variant& element(const SafeArray& a, int32_t row, int32_t column) {
    const std::array<int32_t, 2> at{row, column};
    return a.at(at);
}

int16_t wholeCell(double v) {
    int16_t cell = 0;
    check(doubleToInteger(std::floor(v), cell));
    return cell;
}

}  // namespace

// ---------------------------------------------------------------- sequences

Variant MathArithmetic::ContinuedFraction(Variant vB, Variant vA, Variant vX, Variant vN) const {
    return fixUpFrame(maybe(vB, vA, vX), [&] {
        fixUps().FixUpVariantToLongMandSub(vN, Variant(int32_t(1)));
        const int32_t n = CLng(vN);
        double t = CDbl(vX);
        for (int32_t i = 1; i <= n; ++i) t = CDbl(vB + vA / D(t));
        return D(t);
    });
}

Variant MathArithmetic::Fibonacci(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] {
        return guardedFrame([&] {
            if (vX < I(1)) return D(0);
            if (vX > I(1476)) return Variant::null();
            const int16_t n = CInt(vX);
            double previous = 0, current = 1;
            for (int16_t i = 2; i <= n; ++i) {
                const double next = checkedDouble(previous + current);
                previous = current;
                current = next;
            }
            return D(current);
        });
    });
}

Variant MathArithmetic::GeneratePi(Variant vIterations) const {
    fixUps().FixUpVariantToLongMandSub(vIterations, Variant(int32_t(1024)));
    const int32_t count = CLng(vIterations);
    double p = 2.0;
    for (int32_t i = 1; i <= count; ++i) {
        // i + (i Mod 2) and (i + 1) Mod 2 + i leave the Long range here.
        if (i == INT32_MAX) raiseError(errOverflow);
        p = p * double(i + i % 2) / double((i + 1) % 2 + i);
    }
    return D(p);
}

// ---------------------------------------------------------------- divisors

Variant MathArithmetic::GreatestCommonDivisor(Variant vX, Variant vY) const {
    return fixUpFrame(maybe(vX, vY), [&] {
        Variant x = Abs(vX), y = Abs(vY);
        Variant r = mathReals().ModStd(x, y);
        while (r > I(0)) {
            x = y;
            y = r;
            r = mathReals().ModStd(x, y);
        }
        return y;
    });
}

Variant MathArithmetic::LeastCommonMultiple(Variant vX, Variant vY) const {
    return fixUpFrame(maybe(vX, vY), [&] { return (Abs(vX) / GreatestCommonDivisor(vX, vY)) * Abs(vY); });
}

bool MathArithmetic::FactorNumberToVariantMatrix(Variant& rFC, Variant vX) const {
    if (!fixUps().FixUpVariantToLongMandFn(vX)) {
        rFC = Variant::array(vbVariant, {{0, 2}, {0, 0}});
        return false;
    }
    Variant fc = Variant::array(vbVariant, {{0, 2}, {0, 128}});
    SafeArray& a = fc.arrayForWrite();
    auto cell = [&a](int32_t row, int32_t column) -> Variant& {
        const std::array<int32_t, 2> at{row, column};
        return a.at(at);
    };
    int32_t count = 0;
    Variant x = vX;
    for (int32_t f = 2;; f = f == 2 ? 3 : f + 2) {
        if (Sqr(CDbl(x)) < f) {
            if (x > I(1)) {
                ++count;
                cell(1, count) = x;
                cell(2, count) = I(1);
            }
            break;
        }
        if (modStd(CDbl(x), f) != 0) continue;
        if (count == a.ubound(2)) {
            const std::array<ArrayBound, 2> grown{{{0, 2}, {0, 2 * a.ubound(2)}}};
            a.redimPreserve(grown);
        }
        ++count;
        cell(1, count) = Variant(f);
        do {
            cell(2, count) = cell(2, count) + I(1);
            x = x / Variant(f);
        } while (modStd(CDbl(x), f) == 0);
    }
    const std::array<ArrayBound, 2> cut{{{0, 2}, {a.lbound(2), count}}};
    a.redimPreserve(cut);
    rFC = std::move(fc);
    return true;
}

String MathArithmetic::FactorMatrixToExpr(const Variant& vFC) const {
    const SafeArray& a = arrayOf(vFC);
    String expr;
    for (int32_t column = 1, last = a.ubound(2); column <= last; ++column) {
        if (column > 1) expr += u"*";
        expr += numberText(element(a, 1, column));
        const Variant& power = element(a, 2, column);
        if (power != I(1)) expr.append(u"^").append(numberText(power));
    }
    return expr;
}

Variant MathArithmetic::FactorNumberToExpr(Variant vX) const {
    return fixUpFrame(fixUps().FixUpVariantToLongMandFn(vX), [&] {
        Variant fc;
        FactorNumberToVariantMatrix(fc, vX);
        return Variant(FactorMatrixToExpr(fc));
    });
}

// ---------------------------------------------------------------- primes

bool MathArithmetic::IsPrime(Variant vNumber) const {
    if (!maybe(vNumber)) return false;
    return isPrimeMagnitude(CDbl(Abs(Fix(vNumber))));
}

Variant MathArithmetic::NextPrime(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] {
        if (vX >= I(-5) && vX < I(3)) {
            if (vX >= I(2)) return I(3);
            if (vX >= I(-2)) return I(2);
            if (vX >= I(-3)) return I(-2);
            return I(-3);
        }
        return D(scanForPrime(CDbl(gridNext(vX, I(2), I(1))), 2));
    });
}

Variant MathArithmetic::PreviousPrime(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] {
        if (vX > I(-3) && vX <= I(5)) {
            if (vX > I(3)) return I(3);
            if (vX > I(2)) return I(2);
            if (vX > I(-2)) return I(-2);
            return I(-3);
        }
        return D(scanForPrime(CDbl(gridPrevious(vX, I(2), I(1))), -2));
    });
}

Variant MathArithmetic::NthPrime(Variant vNumber) const {
    return fixUpFrame(fixUps().FixUpVariantToLongMandFn(vNumber), [&] {
        const int32_t n = vNumber.asLong();
        if (n < 1) return Variant::null();
        if (n == 1) return I(2);
        if (n == 2) return I(3);
        // 2 is counted; 3 has no divisor to try and counts at once.
        int32_t count = 1;
        double c = 3;
        while (true) {
            if (hasNoOddDivisor(c) && ++count >= n) return D(c);
            c += 2;
        }
    });
}

// ---------------------------------------------------------------- grids

Variant MathArithmetic::NextEven(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return gridNext(vX, I(2), I(0)); });
}
Variant MathArithmetic::PreviousEven(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return gridPrevious(vX, I(2), I(0)); });
}
Variant MathArithmetic::NextOdd(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return gridNext(vX, I(2), I(1)); });
}
Variant MathArithmetic::PreviousOdd(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return gridPrevious(vX, I(2), I(1)); });
}

Variant MathArithmetic::NextNumber(Variant vX, Variant vPrecision, Variant vOffset) const {
    return fixUpFrame(maybe(vX), [&] {
        Variant p = numeric::positiveStep(vPrecision);
        fixUps().FixUpVariantToDoubleMaybeSub(vOffset, D(0.0));
        return gridNext(vX, p, vOffset);
    });
}

Variant MathArithmetic::PreviousNumber(Variant vX, Variant vPrecision, Variant vOffset) const {
    return fixUpFrame(maybe(vX), [&] {
        Variant p = numeric::positiveStep(vPrecision);
        fixUps().FixUpVariantToDoubleMaybeSub(vOffset, D(0.0));
        return gridPrevious(vX, p, vOffset);
    });
}

// ---------------------------------------------------------------- comparisons

Variant MathArithmetic::IsWithinPlusOrMinusOf(Variant vCheck, Variant vVariance, Variant vTarget) const {
    return fixUpFrame(maybe(vCheck, vVariance, vTarget), [&] {
        return Variant(!(vCheck < vTarget - vVariance || vCheck > vTarget + vVariance));
    });
}

Variant MathArithmetic::NumComp(Variant vA, Variant vB) const {
    return fixUpFrame(maybe(vA, vB), [&] { return I(vA < vB ? -1 : vA == vB ? 0 : 1); });
}

Variant MathArithmetic::RangeComp(Variant vA, Variant vX, Variant vB) const {
    return fixUpFrame(maybe(vA, vX, vB), [&] { return I(vX < vA ? -1 : vX > vB ? 1 : 0); });
}

// ---------------------------------------------------------------- fractions

Variant MathArithmetic::FloatToFraction(Variant vX, Variant vPrecision) const {
    return fixUpFrame(maybe(vX, vPrecision), [&] {
        Variant whole = D(CDbl(Fix(vX)));
        Variant n = Abs(Int(vPrecision * (vX - whole) + D(0.5)));
        if (n == vPrecision) {
            whole = whole < I(0) ? whole - I(1) : whole + I(1);
            n = I(0);
        }
        String s = whole != I(0) ? numberText(whole) : String();
        if (n != I(0)) {
            if (!s.empty()) s += u" ";
            Variant g = GreatestCommonDivisor(n, vPrecision);
            s += numberText(n / g) + u"/" + numberText(vPrecision / g);
        }
        return Variant(std::move(s));
    });
}

bool MathArithmetic::RationalToFraction(Variant& rNumber, Variant& rDividend, Variant& rDivisor,
                                        Variant vRational) const {
    if (!maybe(vRational)) return false;
    rNumber = Fix(vRational);
    if (Fix(vRational) == vRational) {
        rDividend = I(0);
        rDivisor = I(1);
        return true;
    }
    const MathReals& reals = mathReals();
    Variant fraction = Abs(vRational - Fix(vRational));
    // Decimal places that keep fourteen significant digits.
    Variant places = I(CInt(I(14) - reals.Ceiling(reals.LogNReal(Abs(vRational), I(10)), I(1))));
    Variant scale = opPow(D(10.0), places);
    Variant numerator = Fix(fraction * scale + D(0.5));
    Variant g = GreatestCommonDivisor(numerator, scale);
    rDividend = Sgn(vRational) * (numerator / g);
    rDivisor = scale / g;
    return true;
}

namespace {

enum class RationalPart { Number, Dividend, Divisor };

Variant rationalPart(const MathArithmetic& m, const Variant& vRational, RationalPart part) {
    Variant number, dividend, divisor;
    if (!m.RationalToFraction(number, dividend, divisor, vRational)) return Variant::null();
    switch (part) {
        case RationalPart::Number: return number;
        case RationalPart::Dividend: return dividend;
        case RationalPart::Divisor: return divisor;
    }
    return Variant::null();
}

}  // namespace

Variant MathArithmetic::RationalDividend(Variant vRational) const {
    return rationalPart(*this, vRational, RationalPart::Dividend);
}
Variant MathArithmetic::RationalDivisor(Variant vRational) const {
    return rationalPart(*this, vRational, RationalPart::Divisor);
}
Variant MathArithmetic::RationalNumber(Variant vRational) const {
    return rationalPart(*this, vRational, RationalPart::Number);
}

Variant MathArithmetic::RationalToFractionString(Variant vRational) const {
    Variant number, dividend, divisor;
    if (!RationalToFraction(number, dividend, divisor, vRational)) return Variant::null();
    String s = numberText(number);
    if (divisor == I(0)) return Variant(std::move(s));
    if (!(dividend < I(0))) s += u"+";
    s += numberText(dividend) + u"/" + numberText(divisor);
    return Variant(std::move(s));
}

// ---------------------------------------------------------------- waves

Variant MathArithmetic::SawtoothWave(Variant vNumber, Variant vCycle) const {
    return fixUpFrame(maybe(vNumber, vCycle), [&] {
        Variant half = Abs(vCycle) / I(2);
        Variant m = mathReals().ModAlt(vNumber, Abs(vCycle));
        return Sgn(vCycle) * (half - Abs(m - half));
    });
}

Variant MathArithmetic::SquareWave(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] {
        const MathReals& reals = mathReals();
        return I(reals.ModAlt(reals.Floor(vX), I(2)) == I(1) ? -1 : 1);
    });
}

// ---------------------------------------------------------------- text plot

String MathArithmetic::TextPlot(const Variant& vNums, Variant vRows, Variant vCols) const {
    const SafeArray& nums = arrayOf(vNums);
    const int32_t last = nums.ubound(2);
    if (last <= 0) return String();
    fixUps().FixUpVariantToIntegerMandSub(vRows, I(32));
    fixUps().FixUpVariantToIntegerMandSub(vCols, I(60));
    const int32_t rows = CInt(vRows), cols = CInt(vCols);
    if (rows < 1 || cols < 1) return String();

    double minX = CDbl(element(nums, 1, 1)), maxX = minX;
    double minY = CDbl(element(nums, 2, 1)), maxY = minY;
    for (int32_t n = 2; n <= last; ++n) {
        const double x = CDbl(element(nums, 1, n)), y = CDbl(element(nums, 2, n));
        minX = std::min(minX, x), maxX = std::max(maxX, x);
        minY = std::min(minY, y), maxY = std::max(maxY, y);
    }
    const double sx = divide(cols, checkedDouble(maxX - minX));
    const double sy = divide(rows, checkedDouble(maxY - minY));

    // grid[row][column], row 0 at the bottom.
    std::vector<String> grid(size_t(rows), String(size_t(cols), u' '));
    const int32_t ox = wholeCell(checkedDouble(sx * -minX)), oy = wholeCell(checkedDouble(sy * -minY));
    const bool oxInside = ox >= 0 && ox < cols, oyInside = oy >= 0 && oy < rows;
    if (oxInside)
        for (String& row : grid) row[size_t(ox)] = u'|';
    if (oyInside) {
        grid[size_t(oy)].assign(size_t(cols), u'-');
        if (oxInside) grid[size_t(oy)][size_t(ox)] = u'+';
    }
    for (int32_t n = 1; n <= last; ++n) {
        const int32_t px = wholeCell(checkedDouble(sx * checkedDouble(CDbl(element(nums, 1, n)) - minX)));
        const int32_t py = wholeCell(checkedDouble(sy * checkedDouble(CDbl(element(nums, 2, n)) - minY)));
        grid[size_t(std::clamp(py, 0, rows - 1))][size_t(std::clamp(px, 0, cols - 1))] = u'*';
    }

    String plot;
    for (int32_t row = rows - 1; row >= 0; --row) {
        plot += RTrim(grid[size_t(row)]);
        if (row > 0) plot += u"\r\n";
    }
    return plot;
}

MathArithmetic& mathArithmetic() noexcept { return globalInstance<MathArithmetic>(); }

namespace {

using Self = MathArithmetic;
Variant self1(Call& c, Variant (Self::*f)(Variant) const) { return (c.self<Self>().*f)(c[0]); }
Variant self2(Call& c, Variant (Self::*f)(Variant, Variant) const) { return (c.self<Self>().*f)(c[0], c[1]); }
Variant self3(Call& c, Variant (Self::*f)(Variant, Variant, Variant) const) { return (c.self<Self>().*f)(c[0], c[1], c[2]); }

const ClassRegistration kMathArithmetic(u"MathArithmetic", ClassKind::Global, globalFactory<MathArithmetic>,
    u"Number theory, continued fractions, fractions, waves and a text plot.", {
    {"ContinuedFraction(vB, vA, vX, [vN]) -> Variant", [](Call& c) { return c.self<Self>().ContinuedFraction(c[0], c[1], c[2], c[3]); }},
    {"FactorNumberToVariantMatrix(ref rFC: array of Variant, vX) -> Boolean", [](Call& c) { return Variant(c.self<Self>().FactorNumberToVariantMatrix(c[0], c[1])); }},
    {"FactorMatrixToExpr(ref vFC: Variant()) -> String", [](Call& c) { return Variant(c.self<Self>().FactorMatrixToExpr(c[0])); }},
    {"FactorNumberToExpr(vX) -> Variant", [](Call& c) { return self1(c, &Self::FactorNumberToExpr); }},
    {"Fibonacci(vX) -> Variant", [](Call& c) { return self1(c, &Self::Fibonacci); }},
    {"FloatToFraction(vX, vPrecision) -> Variant", [](Call& c) { return self2(c, &Self::FloatToFraction); }},
    {"GeneratePi([vIterations]) -> Variant", [](Call& c) { return self1(c, &Self::GeneratePi); }},
    {"GreatestCommonDivisor(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::GreatestCommonDivisor); }},
    {"LeastCommonMultiple(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::LeastCommonMultiple); }},
    {"IsPrime(vNumber) -> Boolean", [](Call& c) { return Variant(c.self<Self>().IsPrime(c[0])); }},
    {"IsWithinPlusOrMinusOf(vCheck, vVariance, vTarget) -> Variant", [](Call& c) { return self3(c, &Self::IsWithinPlusOrMinusOf); }},
    {"NextEven(vX) -> Variant", [](Call& c) { return self1(c, &Self::NextEven); }},
    {"PreviousEven(vX) -> Variant", [](Call& c) { return self1(c, &Self::PreviousEven); }},
    {"NextOdd(vX) -> Variant", [](Call& c) { return self1(c, &Self::NextOdd); }},
    {"PreviousOdd(vX) -> Variant", [](Call& c) { return self1(c, &Self::PreviousOdd); }},
    {"NextNumber(vX, [vPrecision], [vOffset]) -> Variant", [](Call& c) { return self3(c, &Self::NextNumber); }},
    {"PreviousNumber(vX, [vPrecision], [vOffset]) -> Variant", [](Call& c) { return self3(c, &Self::PreviousNumber); }},
    {"NextPrime(vX) -> Variant", [](Call& c) { return self1(c, &Self::NextPrime); }},
    {"PreviousPrime(vX) -> Variant", [](Call& c) { return self1(c, &Self::PreviousPrime); }},
    {"NthPrime(vNumber) -> Variant", [](Call& c) { return self1(c, &Self::NthPrime); }},
    {"NumComp(vA, vB) -> Variant", [](Call& c) { return self2(c, &Self::NumComp); }},
    {"RangeComp(vA, vX, vB) -> Variant", [](Call& c) { return self3(c, &Self::RangeComp); }},
    {"RationalToFraction(ref rNumber, ref rDividend, ref rDivisor, vRational) -> Boolean", [](Call& c) { return Variant(c.self<Self>().RationalToFraction(c[0], c[1], c[2], c[3])); }},
    {"RationalDividend(vRational) -> Variant", [](Call& c) { return self1(c, &Self::RationalDividend); }},
    {"RationalDivisor(vRational) -> Variant", [](Call& c) { return self1(c, &Self::RationalDivisor); }},
    {"RationalNumber(vRational) -> Variant", [](Call& c) { return self1(c, &Self::RationalNumber); }},
    {"RationalToFractionString(vRational) -> Variant", [](Call& c) { return self1(c, &Self::RationalToFractionString); }},
    {"SawtoothWave(vNumber, vCycle) -> Variant", [](Call& c) { return self2(c, &Self::SawtoothWave); }},
    {"SquareWave(vX) -> Variant", [](Call& c) { return self1(c, &Self::SquareWave); }},
    {"TextPlot(ref vNums: array of Variant, [vRows], [vCols]) -> String", [](Call& c) { return Variant(c.self<Self>().TextPlot(c[0], c[1], c[2])); }},
});

}  // namespace

}  // namespace qvt
