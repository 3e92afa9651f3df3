// Helpers shared by the unit tests.
#pragma once
#include <gtest/gtest.h>

#include "frame/Conversions.h"
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt::test {

// The number of the run-time error f raises, 0 if none.
template <class F>
ErrNo errorOf(F&& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

// Values as a Basic literal types them: Integer, Long, Double, String.
inline Variant I(int v) { return Variant(int16_t(v)); }
inline Variant L(int32_t v) { return Variant(v); }
inline Variant D(double v) { return Variant(v); }
inline Variant S(const char16_t* s) { return Variant(s); }

// The text a member returned, or a marker that cannot be mistaken for one.
inline String textOf(const Variant& v) { return v.isString() ? v.asString() : u"<not text>"; }

// A number of the given VarType and value.
inline void expectNumber(const Variant& v, VarType type, double value) {
    ASSERT_EQ(v.vt(), type);
    EXPECT_DOUBLE_EQ(CDbl(v), value);
}

}  // namespace qvt::test
