// MathArithmetic: number theory, continued fractions, fractions, waves and
// the text plot.
//
// A global class reached through mathArithmetic(). Numeric arguments are
// fixed up as Maybe unless a member says otherwise, and a failed fix-up
// gives Null (IsPrime and RationalToFraction give False, TextPlot ""). Only
// Fibonacci catches errors of the runtime; elsewhere they rise.
//
// Primes live on both sides of zero here: the sequence runs ... -7, -5, -3,
// -2, 2, 3, 5, 7 ..., and IsPrime judges |Fix(X)|.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class MathArithmetic final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"MathArithmetic"; }

    // B + A/t applied vN times (default 1) from t = X.
    Variant ContinuedFraction(Variant vB, Variant vA, Variant vX, Variant vN = Variant::missing()) const;

    // Prime factors of a Long in rows 1 (factor) and 2 (power) of a
    // (0 To 2, 0 To count) matrix; row 0 and column 0 stay empty.
    bool FactorNumberToVariantMatrix(Variant& rFC, Variant vX) const;
    // "2^3*3^2*5" from such a matrix.
    String FactorMatrixToExpr(const Variant& vFC) const;
    Variant FactorNumberToExpr(Variant vX) const;

    // The Xth of 1, 1, 2, 3, 5, ...; 0 below 1, Null beyond 1476.
    Variant Fibonacci(Variant vX) const;
    // Whole part and the fraction over the denominator vPrecision, reduced:
    // "1 3/4".
    Variant FloatToFraction(Variant vX, Variant vPrecision) const;
    // The Wallis product with vIterations factors (default 1024).
    Variant GeneratePi(Variant vIterations = Variant::missing()) const;
    Variant GreatestCommonDivisor(Variant vX, Variant vY) const;
    Variant LeastCommonMultiple(Variant vX, Variant vY) const;
    bool IsPrime(Variant vNumber) const;
    Variant IsWithinPlusOrMinusOf(Variant vCheck, Variant vVariance, Variant vTarget) const;

    // The next and previous members of a grid: even numbers, odd numbers,
    // or multiples of |vPrecision| (default 1) shifted by -vOffset
    // (default 0). A value on the grid moves on to its neighbour.
    Variant NextEven(Variant vX) const;
    Variant PreviousEven(Variant vX) const;
    Variant NextOdd(Variant vX) const;
    Variant PreviousOdd(Variant vX) const;
    Variant NextNumber(Variant vX, Variant vPrecision = Variant::missing(), Variant vOffset = Variant::missing()) const;
    Variant PreviousNumber(Variant vX, Variant vPrecision = Variant::missing(),
                           Variant vOffset = Variant::missing()) const;

    Variant NextPrime(Variant vX) const;
    Variant PreviousPrime(Variant vX) const;
    Variant NthPrime(Variant vNumber) const;

    // -1, 0 or 1 as Integers.
    Variant NumComp(Variant vA, Variant vB) const;
    Variant RangeComp(Variant vA, Variant vX, Variant vB) const;

    // A real as whole part and fraction to fourteen significant digits:
    // 3.25 gives 3 and 1/4; -3.25 gives -3 and -1/4.
    bool RationalToFraction(Variant& rNumber, Variant& rDividend, Variant& rDivisor, Variant vRational) const;
    Variant RationalDividend(Variant vRational) const;
    Variant RationalDivisor(Variant vRational) const;
    Variant RationalNumber(Variant vRational) const;
    // "3+1/4", "-3-1/4", and "3+0/1" for a whole number.
    Variant RationalToFractionString(Variant vRational) const;

    // A triangle wave of period |vCycle| peaking at half a cycle.
    Variant SawtoothWave(Variant vNumber, Variant vCycle) const;
    // 1 on even unit intervals, -1 on odd ones.
    Variant SquareWave(Variant vX) const;

    // Points (row 1 X, row 2 Y, columns from 1) plotted in a grid of text
    // with axes; rows top down, CR LF between them.
    String TextPlot(const Variant& vNums, Variant vRows = Variant::missing(), Variant vCols = Variant::missing()) const;
};

MathArithmetic& mathArithmetic() noexcept;

}  // namespace qvt
