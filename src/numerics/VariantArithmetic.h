// Operator spelling of Variant arithmetic for the numeric classes.
//
// The formulas of the real-number helpers are written on Variant operands
// and owe their result types to Variant promotion: an Integer argument keeps
// its type through Fix, Int and Abs, "/" gives a Double, and so on. These
// operators forward to the value model (opAdd, opMul, ...) so that a formula
// reads as it is meant, e.g. `y * Fix(x / y)`.
//
// A comparison here is a comparison used as a condition: it is False when
// either side is Null. Literals are written with the helpers I (an Integer
// literal such as 2) and D (a Double literal such as 0.5), as Basic types
// them.
#pragma once
#include <cmath>
#include <cstdint>

#include "frame/Conversions.h"
#include "frame/Error.h"
#include "frame/Operators.h"
#include "frame/Variant.h"

namespace qvt::arithmetic {

inline Variant I(int16_t v) noexcept { return Variant(v); }
inline Variant D(double v) noexcept { return Variant(v); }

inline Variant operator+(const Variant& a, const Variant& b) { return opAdd(a, b); }
inline Variant operator-(const Variant& a, const Variant& b) { return opSub(a, b); }
inline Variant operator*(const Variant& a, const Variant& b) { return opMul(a, b); }
inline Variant operator/(const Variant& a, const Variant& b) { return opDiv(a, b); }
inline Variant operator-(const Variant& a) { return opNeg(a); }

inline bool holds(CompareOp op, const Variant& a, const Variant& b) {
    bool isNull = false;
    int c = compareVariants(a, b, vbBinaryCompare, &isNull, CompareSite::NumericLiteral);
    if (isNull) return false;
    switch (op) {
        case CompareOp::Eq: return c == 0;
        case CompareOp::Ne: return c != 0;
        case CompareOp::Lt: return c < 0;
        case CompareOp::Le: return c <= 0;
        case CompareOp::Gt: return c > 0;
        case CompareOp::Ge: return c >= 0;
    }
    return false;
}
inline bool operator==(const Variant& a, const Variant& b) { return holds(CompareOp::Eq, a, b); }
inline bool operator!=(const Variant& a, const Variant& b) { return holds(CompareOp::Ne, a, b); }
inline bool operator<(const Variant& a, const Variant& b) { return holds(CompareOp::Lt, a, b); }
inline bool operator<=(const Variant& a, const Variant& b) { return holds(CompareOp::Le, a, b); }
inline bool operator>(const Variant& a, const Variant& b) { return holds(CompareOp::Gt, a, b); }
inline bool operator>=(const Variant& a, const Variant& b) { return holds(CompareOp::Ge, a, b); }

// Double division with the floating traps: x/0 raises 11, 0/0 and an
// overflow raise 6.
inline double divide(double x, double y) {
    if (y == 0) raiseError(x == 0 ? errOverflow : errDivisionByZero);
    return checkedDouble(x / y);
}

}  // namespace qvt::arithmetic
