// MathReals: constants, the modulus family, rounding to a precision,
// minimum and maximum, percentages.
//
// A global class: every member is callable without an object, and other
// classes reach it through mathReals(). Numeric arguments are fixed up as
// Maybe unless a member says otherwise (see NumericArguments.h); a failed
// fix-up of a mandatory argument gives Null. Errors of the runtime (division
// by zero, Log or Sqr outside their domain, overflow) rise to the caller,
// except in DivideOnErrRtnZero and RoundToDigits, which catch them.
#pragma once
#include <span>

#include "frame/Variant.h"

namespace qvt {

class MathReals final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"MathReals"; }

    // Radians per degree, e, Euler's constant, pi, and pi/2 (named radians
    // per circle, for historical reasons).
    double Deg() const;
    double E() const;
    double EulerGamma() const noexcept;
    double PI() const;
    double RPC() const;

    // Relative test |(Y-X)/Y| < vEpsilon, absolute |X| < vEpsilon when Y is
    // 0; values that are not numbers compare as values (EqualLikeDataType).
    Variant Approx(Variant vX, Variant vY, double vEpsilon = 1e-14) const;
    // To the multiple of |vPrecision| (default 1) above or below.
    Variant Ceiling(Variant vNumber, Variant vPrecision = Variant::missing()) const;
    Variant Floor(Variant vNumber, Variant vPrecision = Variant::missing()) const;
    // Indicator of the open interval (A, B): 1 inside, 0 outside, 0.5 on an end.
    Variant Chi(Variant vA, Variant vX, Variant vB) const;
    Variant DegreesToRadians(Variant vX) const;
    Variant RadiansToDegrees(Variant vX) const;
    // vDividend / vDivisor with no fix-up; any error gives Integer 0.
    Variant DivideOnErrRtnZero(const Variant& vDividend, const Variant& vDivisor) const;
    // Quotient counting from 1: how many groups of vTwo hold vOne items.
    Variant DivideOffsetByOne(Variant vOne, Variant vTwo) const;
    // Decimal exponent and mantissa.
    Variant ExponentPart(Variant vX) const;
    Variant Mantissa(Variant vX) const;
    Variant FixReal(Variant vX) const;
    Variant IntReal(Variant vX) const;
    Variant IntegerPart(Variant vNumber) const;
    Variant FractionalPart(Variant vNumber) const;
    // Whether this machine's division shows the FDIV flaw.
    bool IsPentiumFlawed() const;
    bool IsPentiumFlawedAlt() const;
    Variant LogNReal(Variant vX, Variant vY) const;

    // Plain Variant comparison, no fix-up; the earlier argument wins a tie.
    Variant Max2Real(const Variant& vX, const Variant& vY) const;
    Variant Min2Real(const Variant& vX, const Variant& vY) const;
    Variant Max3Real(const Variant& vNum1, const Variant& vNum2, const Variant& vNum3) const;
    Variant Min3Real(const Variant& vNum1, const Variant& vNum2, const Variant& vNum3) const;
    // By CompareLikeDataType: numbers below Strings; the earlier wins a tie.
    Variant Max2Variant(const Variant& vX, const Variant& vY, const Variant& vCompare = Variant::missing()) const;
    Variant Min2Variant(const Variant& vX, const Variant& vY, const Variant& vCompare = Variant::missing()) const;
    Variant Max3Variant(const Variant& vValue1, const Variant& vValue2, const Variant& vValue3,
                        const Variant& vCompare = Variant::missing()) const;
    Variant Min3Variant(const Variant& vValue1, const Variant& vValue2, const Variant& vValue3,
                        const Variant& vCompare = Variant::missing()) const;
    // Over a parameter list; Null when it is empty.
    Variant MaxReal(std::span<const Variant> vArgs) const;
    Variant MinReal(std::span<const Variant> vArgs) const;

    // Remainders in floating point. ModStd's sign follows X, ModAlt's
    // follows Y, ModSym's lies in the half-open range of width Y around 0;
    // ModOffsetByOne counts 1..Y instead of 0..Y-1.
    Variant ModStd(Variant vX, Variant vY) const;
    Variant ModAlt(Variant vX, Variant vY) const;
    Variant ModSym(Variant vX, Variant vY) const;
    Variant ModOffsetByOne(Variant vX, Variant vY) const;

    Variant Percent(Variant vX, Variant vY) const;
    Variant PercentChange(Variant vX, Variant vY) const;
    Variant PercentOfTotal(Variant vX, Variant vY) const;

    // To a multiple of |vPrecision| (default 1), halves up.
    Variant RoundToPrecision(Variant vNumber, Variant vPrecision = Variant::missing()) const;
    // To vDigits decimals (default 0), halves up; an overflow gives Null.
    Variant RoundToDigits(Variant vNumber, Variant vDigits = Variant::missing()) const;
    // Splits a value by sign into two receivers: |negative| or 0, positive or 0.
    void Set1stIfNeg2ndIfPos(Variant vExpr, Variant& rSetIfNeg, Variant& rSetIfPos) const;
    // Heaviside step: 1 above 0, 0 below, 0.5 at 0.
    Variant StepFn(Variant vX) const;
};

MathReals& mathReals() noexcept;

// The remainder X - Y*Fix(X/Y) of two Doubles, with the floating traps:
// the core of ModStd for callers that hold Doubles already.
double modStd(double x, double y);

}  // namespace qvt
