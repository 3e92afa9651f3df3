#include "numerics/MathReals.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "frame/Comparisons.h"
#include "automation/TypeLibrary.h"
#include "frame/Frame.h"
#include "numerics/NumericArguments.h"
#include "numerics/VariantArithmetic.h"

namespace qvt {

using namespace arithmetic;
using numeric::mand;
using numeric::maybe;

namespace {

// How the quotient of a remainder is made whole.
enum class Quotient { Truncated, Floored, Nearest };

double wholeQuotient(double q, Quotient how) {
    switch (how) {
        case Quotient::Truncated: return std::trunc(q);
        case Quotient::Floored: return std::floor(q);
        case Quotient::Nearest: return std::floor(checkedDouble(q + 0.5));
    }
    return q;
}

Variant wholeQuotient(const Variant& q, Quotient how) {
    switch (how) {
        case Quotient::Truncated: return Fix(q);
        case Quotient::Floored: return Int(q);
        case Quotient::Nearest: return Int(q + D(0.5));
    }
    return q;
}

double remainder(double x, double y, Quotient how) {
    return checkedDouble(x - checkedDouble(y * wholeQuotient(divide(x, y), how)));
}

// Integer, Long and Double operands give a Double remainder by the same
// steps in Double arithmetic as in Variant arithmetic, so those take the
// short way; other types (Single, Currency, Decimal, Date...) keep their
// own promotions.
bool plainNumber(const Variant& v) noexcept {
    return v.vt() == vbDouble || v.vt() == vbLong || v.vt() == vbInteger;
}

double plainValue(const Variant& v) noexcept {
    switch (v.vt()) {
        case vbInteger: return v.asInteger();
        case vbLong: return v.asLong();
        default: return v.asDouble();
    }
}

// X - Y * whole(X / Y), both arguments Maybe.
Variant modulus(Variant vX, Variant vY, Quotient how) {
    return fixUpFrame(maybe(vX, vY), [&] {
        if (plainNumber(vX) && plainNumber(vY)) return Variant(remainder(plainValue(vX), plainValue(vY), how));
        return vX - vY * wholeQuotient(vX / vY, how);
    });
}

// Whether `candidate` is strictly beyond `best` (above for direction 1,
// below for -1) by plain Variant comparison; Null is never beyond.
bool beyond(const Variant& candidate, const Variant& best, int direction) {
    bool isNull = false;
    int c = compareVariants(candidate, best, vbBinaryCompare, &isNull, CompareSite::Variants);
    return !isNull && c * direction > 0;
}

Variant extreme(std::span<const Variant> values, int direction) {
    if (values.empty()) return Variant::null();
    Variant best = values[0];
    for (const Variant& v : values.subspan(1))
        if (beyond(v, best, direction)) best = v;
    return best;
}

Variant extremeLike(std::span<const Variant> values, const Variant& vCompare, int direction) {
    Variant best = values[0];
    for (const Variant& v : values.subspan(1))
        if (comparisons().CompareLikeDataType(v, best, vCompare) == direction) best = v;
    return best;
}

double log10Floor(const Variant& x) { return std::floor(divide(Log(CDbl(Abs(x))), Log(10.0))); }

}  // namespace

double modStd(double x, double y) { return remainder(x, y, Quotient::Truncated); }

// ---------------------------------------------------------------- constants

double MathReals::Deg() const { return Atn(1) / 45; }
double MathReals::E() const { return Exp(1); }
double MathReals::EulerGamma() const noexcept { return std::bit_cast<double>(uint64_t(0x3FE2788CFC6FB61A)); }
double MathReals::PI() const { return Atn(1) * 4; }
double MathReals::RPC() const { return Atn(1) + Atn(1); }

// ---------------------------------------------------------------- remainders

Variant MathReals::ModStd(Variant vX, Variant vY) const { return modulus(vX, vY, Quotient::Truncated); }
Variant MathReals::ModAlt(Variant vX, Variant vY) const { return modulus(vX, vY, Quotient::Floored); }
Variant MathReals::ModSym(Variant vX, Variant vY) const { return modulus(vX, vY, Quotient::Nearest); }

Variant MathReals::ModOffsetByOne(Variant vX, Variant vY) const {
    return fixUpFrame(maybe(vX, vY), [&] {
        if (vX == I(0)) return vY;
        Variant s = Sgn(vX);
        return ModStd(vX - s, vY) + s;
    });
}

// ---------------------------------------------------------------- rounding

Variant MathReals::Ceiling(Variant vNumber, Variant vPrecision) const {
    return fixUpFrame(maybe(vNumber), [&] {
        Variant p = numeric::positiveStep(vPrecision);
        Variant t = p * Int(vNumber / p);
        return vNumber == t ? vNumber : p + t;
    });
}

Variant MathReals::Floor(Variant vNumber, Variant vPrecision) const {
    return fixUpFrame(maybe(vNumber), [&] {
        Variant p = numeric::positiveStep(vPrecision);
        return p * Int(vNumber / p);
    });
}

Variant MathReals::RoundToPrecision(Variant vNumber, Variant vPrecision) const {
    return fixUpFrame(maybe(vNumber), [&] {
        fixUps().FixUpVariantToDoubleMandSub(vPrecision, I(1));
        Variant p = Abs(vPrecision);
        return p * Int(vNumber / p + D(0.5));
    });
}

Variant MathReals::RoundToDigits(Variant vNumber, Variant vDigits) const {
    return fixUpFrame(maybe(vNumber), [&] {
        fixUps().FixUpVariantToIntegerMandSub(vDigits, I(0));
        return guarded([&] {
            Variant f = opPow(D(10.0), vDigits);
            return Int(vNumber * f + D(0.5)) / f;
        });
    });
}

Variant MathReals::FixReal(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return Fix(vX); });
}
Variant MathReals::IntegerPart(Variant vNumber) const { return FixReal(vNumber); }
Variant MathReals::IntReal(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return Int(vX); });
}
Variant MathReals::FractionalPart(Variant vNumber) const {
    return fixUpFrame(maybe(vNumber), [&] { return vNumber - Fix(vNumber); });
}

// ---------------------------------------------------------------- comparisons

Variant MathReals::Approx(Variant vX, Variant vY, double vEpsilon) const {
    Variant x = vX, y = vY;
    // Both fix-ups run, as a non-short-circuit And would run them.
    const bool xFixed = mand(x);
    const bool yFixed = mand(y);
    if (!(xFixed && yFixed)) return Variant(comparisons().EqualLikeDataType(vX, vY, Variant(int32_t(0))));
    double a = x.asDouble(), b = y.asDouble();
    if (b == 0) return Variant(std::fabs(a) < vEpsilon);
    return Variant(std::fabs(divide(b - a, b)) < vEpsilon);
}

Variant MathReals::Chi(Variant vA, Variant vX, Variant vB) const {
    return fixUpFrame(maybe(vA, vX, vB), [&] {
        if (vA < vX && vX < vB) return I(1);
        if (vX < vA || vX > vB) return I(0);
        return D(0.5);
    });
}

Variant MathReals::StepFn(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] {
        if (vX > I(0)) return I(1);
        if (vX < I(0)) return I(0);
        return D(0.5);
    });
}

Variant MathReals::Max2Real(const Variant& vX, const Variant& vY) const { return beyond(vY, vX, 1) ? vY : vX; }
Variant MathReals::Min2Real(const Variant& vX, const Variant& vY) const { return beyond(vY, vX, -1) ? vY : vX; }
Variant MathReals::Max3Real(const Variant& vNum1, const Variant& vNum2, const Variant& vNum3) const {
    return extreme({{vNum1, vNum2, vNum3}}, 1);
}
Variant MathReals::Min3Real(const Variant& vNum1, const Variant& vNum2, const Variant& vNum3) const {
    return extreme({{vNum1, vNum2, vNum3}}, -1);
}
Variant MathReals::MaxReal(std::span<const Variant> vArgs) const { return extreme(vArgs, 1); }
Variant MathReals::MinReal(std::span<const Variant> vArgs) const { return extreme(vArgs, -1); }

Variant MathReals::Max2Variant(const Variant& vX, const Variant& vY, const Variant& vCompare) const {
    return extremeLike({{vX, vY}}, vCompare, 1);
}
Variant MathReals::Min2Variant(const Variant& vX, const Variant& vY, const Variant& vCompare) const {
    return extremeLike({{vX, vY}}, vCompare, -1);
}
Variant MathReals::Max3Variant(const Variant& vValue1, const Variant& vValue2, const Variant& vValue3,
                               const Variant& vCompare) const {
    return extremeLike({{vValue1, vValue2, vValue3}}, vCompare, 1);
}
Variant MathReals::Min3Variant(const Variant& vValue1, const Variant& vValue2, const Variant& vValue3,
                               const Variant& vCompare) const {
    return extremeLike({{vValue1, vValue2, vValue3}}, vCompare, -1);
}

// ---------------------------------------------------------------- formulas

Variant MathReals::DegreesToRadians(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return (vX / I(180)) * D(PI()); });
}
Variant MathReals::RadiansToDegrees(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return (vX / D(PI())) * I(180); });
}

Variant MathReals::DivideOnErrRtnZero(const Variant& vDividend, const Variant& vDivisor) const {
    try {
        return vDividend / vDivisor;
    } catch (const RuntimeError&) {
        return I(0);
    }
}

Variant MathReals::DivideOffsetByOne(Variant vOne, Variant vTwo) const {
    return fixUpFrame(maybe(vOne, vTwo), [&] {
        return Sgn(vTwo) * Sgn(vOne) * (I(1) + Fix((Abs(vOne) - I(1)) / Abs(vTwo)));
    });
}

Variant MathReals::ExponentPart(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] { return D(log10Floor(vX)); });
}

Variant MathReals::Mantissa(Variant vX) const {
    return fixUpFrame(maybe(vX), [&] {
        if (vX == I(0)) return vX;
        return Abs(vX / opPow(I(10), D(log10Floor(vX))));
    });
}

bool MathReals::IsPentiumFlawed() const {
    volatile double x = 4195835.0, y = 3145727.0;
    return (x / y) * y != 4195835.0;
}

bool MathReals::IsPentiumFlawedAlt() const {
    volatile double y = 3221224323.0;
    return (1.0 / y) * y != 1.0;
}

Variant MathReals::LogNReal(Variant vX, Variant vY) const {
    return fixUpFrame(maybe(vX, vY), [&] { return D(divide(Log(CDbl(vX)), Log(CDbl(vY)))); });
}

Variant MathReals::Percent(Variant vX, Variant vY) const {
    return fixUpFrame(maybe(vX, vY), [&] { return (vX / I(100)) * vY; });
}

Variant MathReals::PercentChange(Variant vX, Variant vY) const {
    return fixUpFrame(maybe(vX, vY), [&] {
        if (vX == I(0)) return Variant::null();
        return ((vY - vX) * I(100)) / vX;
    });
}

Variant MathReals::PercentOfTotal(Variant vX, Variant vY) const {
    return fixUpFrame(maybe(vX, vY), [&] {
        if (vY == I(0)) return Variant::null();
        return (vX * I(100)) / vY;
    });
}

void MathReals::Set1stIfNeg2ndIfPos(Variant vExpr, Variant& rSetIfNeg, Variant& rSetIfPos) const {
    if (!maybe(vExpr)) return;
    if (vExpr < I(0)) {
        rSetIfNeg = Abs(vExpr);
        rSetIfPos = I(0);
    } else {
        rSetIfNeg = I(0);
        rSetIfPos = vExpr;
    }
}

MathReals& mathReals() noexcept { return globalInstance<MathReals>(); }

namespace {

using Self = MathReals;
Variant self2(Call& c, Variant (Self::*f)(Variant, Variant) const) { return (c.self<Self>().*f)(c[0], c[1]); }

const ClassRegistration kMathReals(u"MathReals", ClassKind::Global, globalFactory<MathReals>,
    u"Constants, remainders, rounding to a precision, minimum, maximum and percentages.", {
    {"Property Get Deg -> Double", [](Call& c) { return Variant(c.self<Self>().Deg()); }},
    {"Property Get E -> Double", [](Call& c) { return Variant(c.self<Self>().E()); }},
    {"Property Get EulerGamma -> Double", [](Call& c) { return Variant(c.self<Self>().EulerGamma()); }},
    {"Property Get PI -> Double", [](Call& c) { return Variant(c.self<Self>().PI()); }},
    {"Property Get RPC -> Double", [](Call& c) { return Variant(c.self<Self>().RPC()); }},
    {"Approx(vX, vY, [vEpsilon: Double = 0.00000000000001]) -> Variant", [](Call& c) { return c.self<Self>().Approx(c[0], c[1], c[2].asDouble()); }},
    {"Ceiling(vNumber, [vPrecision]) -> Variant", [](Call& c) { return self2(c, &Self::Ceiling); }},
    {"Floor(vNumber, [vPrecision]) -> Variant", [](Call& c) { return self2(c, &Self::Floor); }},
    {"Chi(vA, vX, vB) -> Variant", [](Call& c) { return c.self<Self>().Chi(c[0], c[1], c[2]); }},
    {"DegreesToRadians(vX) -> Variant", [](Call& c) { return c.self<Self>().DegreesToRadians(c[0]); }},
    {"RadiansToDegrees(vX) -> Variant", [](Call& c) { return c.self<Self>().RadiansToDegrees(c[0]); }},
    {"DivideOnErrRtnZero(vDividend, vDivisor) -> Variant", [](Call& c) { return c.self<Self>().DivideOnErrRtnZero(c[0], c[1]); }},
    {"DivideOffsetByOne(vOne, vTwo) -> Variant", [](Call& c) { return self2(c, &Self::DivideOffsetByOne); }},
    {"ExponentPart(vX) -> Variant", [](Call& c) { return c.self<Self>().ExponentPart(c[0]); }},
    {"Mantissa(vX) -> Variant", [](Call& c) { return c.self<Self>().Mantissa(c[0]); }},
    {"FixReal(vX) -> Variant", [](Call& c) { return c.self<Self>().FixReal(c[0]); }},
    {"IntegerPart(vNumber) -> Variant", [](Call& c) { return c.self<Self>().IntegerPart(c[0]); }},
    {"IntReal(vX) -> Variant", [](Call& c) { return c.self<Self>().IntReal(c[0]); }},
    {"FractionalPart(vNumber) -> Variant", [](Call& c) { return c.self<Self>().FractionalPart(c[0]); }},
    {"IsPentiumFlawed() -> Boolean", [](Call& c) { return Variant(c.self<Self>().IsPentiumFlawed()); }},
    {"IsPentiumFlawedAlt() -> Boolean", [](Call& c) { return Variant(c.self<Self>().IsPentiumFlawedAlt()); }},
    {"LogNReal(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::LogNReal); }},
    {"Max2Real(vX, vY) -> Variant", [](Call& c) { return c.self<Self>().Max2Real(c[0], c[1]); }},
    {"Min2Real(vX, vY) -> Variant", [](Call& c) { return c.self<Self>().Min2Real(c[0], c[1]); }},
    {"Max3Real(vNum1, vNum2, vNum3) -> Variant", [](Call& c) { return c.self<Self>().Max3Real(c[0], c[1], c[2]); }},
    {"Min3Real(vNum1, vNum2, vNum3) -> Variant", [](Call& c) { return c.self<Self>().Min3Real(c[0], c[1], c[2]); }},
    {"Max2Variant(vX, vY, [vCompare]) -> Variant", [](Call& c) { return c.self<Self>().Max2Variant(c[0], c[1], c[2]); }},
    {"Min2Variant(vX, vY, [vCompare]) -> Variant", [](Call& c) { return c.self<Self>().Min2Variant(c[0], c[1], c[2]); }},
    {"Max3Variant(vValue1, vValue2, vValue3, [vCompare]) -> Variant", [](Call& c) { return c.self<Self>().Max3Variant(c[0], c[1], c[2], c[3]); }},
    {"Min3Variant(vValue1, vValue2, vValue3, [vCompare]) -> Variant", [](Call& c) { return c.self<Self>().Min3Variant(c[0], c[1], c[2], c[3]); }},
    {"MaxReal(ref vArgs: array of Variant) -> Variant", [](Call& c) { return c.self<Self>().MaxReal(c[0].asArray().elements()); }},
    {"MinReal(ref vArgs: array of Variant) -> Variant", [](Call& c) { return c.self<Self>().MinReal(c[0].asArray().elements()); }},
    {"ModAlt(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::ModAlt); }},
    {"ModStd(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::ModStd); }},
    {"ModSym(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::ModSym); }},
    {"ModOffsetByOne(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::ModOffsetByOne); }},
    {"Percent(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::Percent); }},
    {"PercentChange(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::PercentChange); }},
    {"PercentOfTotal(vX, vY) -> Variant", [](Call& c) { return self2(c, &Self::PercentOfTotal); }},
    {"RoundToPrecision(vNumber, [vPrecision]) -> Variant", [](Call& c) { return self2(c, &Self::RoundToPrecision); }},
    {"RoundToDigits(vNumber, [vDigits]) -> Variant", [](Call& c) { return self2(c, &Self::RoundToDigits); }},
    {"Set1stIfNeg2ndIfPos(vExpr, ref rSetIfNeg, ref rSetIfPos)", [](Call& c) { c.self<Self>().Set1stIfNeg2ndIfPos(c[0], c[1], c[2]); return Variant(); }},
    {"StepFn(vX) -> Variant", [](Call& c) { return c.self<Self>().StepFn(c[0]); }},
});

}  // namespace

}  // namespace qvt
