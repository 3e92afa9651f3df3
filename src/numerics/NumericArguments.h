// The two argument conventions of the real-number classes.
//
// maybe: FixUpVariantToDoubleMaybeFn. The value must be a number or a date;
// numeric text and Empty become a Double, a number already held in another
// numeric type keeps that type, so the formula that follows decides its
// result type by Variant promotion.
//
// mand: FixUpVariantToDoubleMandFn. The value becomes a Double.
//
// positiveStep: the precision of Ceiling, Floor, NextNumber and friends.
//
// Several arguments are fixed up left to right and the first failure ends
// the test, as the fix-up frame joins them.
#pragma once
#include "frame/FixUps.h"
#include "frame/Operators.h"
#include "frame/Variant.h"

namespace qvt::numeric {

inline bool maybe(Variant& v) noexcept { return fixUps().FixUpVariantToDoubleMaybeFn(v); }
inline bool mand(Variant& v) noexcept { return fixUps().FixUpVariantToDoubleMandFn(v); }

template <class... Vs>
bool maybe(Variant& first, Vs&... rest) noexcept {
    return maybe(first) && maybe(rest...);
}
template <class... Vs>
bool mand(Variant& first, Vs&... rest) noexcept {
    return mand(first) && mand(rest...);
}

// A step or precision argument: fixed up as Maybe with the default 1.0 when
// it cannot be used, then made positive.
inline Variant positiveStep(Variant vPrecision) {
    fixUps().FixUpVariantToDoubleMaybeSub(vPrecision, Variant(1.0));
    return Abs(vPrecision);
}

}  // namespace qvt::numeric
