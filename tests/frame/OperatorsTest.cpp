#include <gtest/gtest.h>

#include "TestSupport.h"

#include "frame/Conversions.h"
#include "frame/Operators.h"

using namespace qvt;
using qvt::test::errorOf;

namespace {


Variant I(int v) { return Variant(int16_t(v)); }
Variant L(int32_t v) { return Variant(v); }
Variant D(double v) { return Variant(v); }
Variant S(const char16_t* s) { return Variant(s); }

}  // namespace

TEST(Arithmetic, ResultTypeFollowsTheMoreCapableOperand) {
    EXPECT_EQ(opAdd(I(1), I(2)).vt(), vbInteger);
    EXPECT_EQ(opAdd(I(1), L(2)).vt(), vbLong);
    EXPECT_EQ(opAdd(Variant(uint8_t(1)), Variant(uint8_t(2))).vt(), vbByte);
    EXPECT_EQ(opAdd(Variant(1.0f), L(2)).vt(), vbDouble);  // Single with Long
    EXPECT_EQ(opAdd(Variant(1.0f), I(2)).vt(), vbSingle);
    EXPECT_EQ(opAdd(D(1.5), Variant::currency(10000)).vt(), vbCurrency);
    EXPECT_EQ(opAdd(Variant(true), Variant(true)).asInteger(), -2);
    EXPECT_EQ(opAdd(Variant(), Variant()).vt(), vbInteger);
    EXPECT_EQ(opAdd(Variant(), L(4)).vt(), vbLong);
    // Empty takes the other operand's type, down to Byte and Single.
    const Variant b5 = opAdd(Variant(uint8_t(5)), Variant());
    EXPECT_EQ(b5.vt(), vbByte);
    EXPECT_EQ(b5.asByte(), 5);
    EXPECT_EQ(opMul(Variant(), Variant(uint8_t(3))).vt(), vbByte);
    EXPECT_EQ(opSub(Variant(), Variant(uint8_t(3))).asInteger(), -3);  // a Byte result overflowing
    EXPECT_EQ(opAdd(Variant(), Variant(1.5f)).vt(), vbSingle);
    EXPECT_EQ(opMul(Variant(), S(u"2")).vt(), vbDouble);
    Variant numText = opAdd(S(u"2"), I(3));
    EXPECT_EQ(numText.vt(), vbDouble);
    EXPECT_EQ(numText.asDouble(), 5);
    EXPECT_EQ(opAdd(S(u"2"), S(u"3")).asString(), u"23");
    EXPECT_EQ(errorOf([] { opAdd(S(u"x"), I(3)); }), errTypeMismatch);
}

TEST(Arithmetic, OverflowPromotesOrRaises) {
    Variant r = opAdd(I(32767), I(1));
    EXPECT_EQ(r.vt(), vbLong);
    EXPECT_EQ(r.asLong(), 32768);
    EXPECT_EQ(opSub(Variant(uint8_t(1)), Variant(uint8_t(2))).vt(), vbInteger);
    EXPECT_EQ(opMul(L(2147483647), L(2)).vt(), vbDouble);
    EXPECT_EQ(opMul(Variant(3e38f), Variant(10.0f)).vt(), vbDouble);
    EXPECT_EQ(errorOf([] { opMul(D(1e308), D(10)); }), errOverflow);
    EXPECT_EQ(errorOf([] { opMul(Variant::currency(9223372036854775807LL), I(2)); }), errOverflow);
    EXPECT_EQ(opNeg(I(-32768)).vt(), vbLong);
    EXPECT_EQ(Abs(I(-32768)).asLong(), 32768);
}

TEST(Arithmetic, DivisionTraps) {
    EXPECT_EQ(opDiv(Variant(), Variant(2.0f)).vt(), vbSingle);  // Empty counts as an Integer
    EXPECT_EQ(opDiv(Variant(), L(2)).vt(), vbDouble);
    EXPECT_EQ(errorOf([] { opDiv(I(1), I(0)); }), errDivisionByZero);
    EXPECT_EQ(errorOf([] { opDiv(I(0), I(0)); }), errOverflow);
    EXPECT_EQ(errorOf([] { opIntDiv(I(1), I(0)); }), errDivisionByZero);
    EXPECT_EQ(errorOf([] { opMod(I(1), Variant()); }), errDivisionByZero);
    EXPECT_EQ(opDiv(I(1), I(2)).vt(), vbDouble);
    EXPECT_EQ(opDiv(Variant(1.0f), I(2)).vt(), vbSingle);
    EXPECT_EQ(opDiv(Variant(1.0f), L(2)).vt(), vbDouble);
    EXPECT_EQ(opIntDiv(D(7.5), I(2)).asLong(), 4);  // 7.5 rounds to 8 first
    EXPECT_EQ(opMod(I(-7), I(3)).asInteger(), -1);   // sign of the dividend
    EXPECT_EQ(opMod(I(7), I(-3)).asInteger(), 1);
    EXPECT_EQ(opPow(I(2), I(10)).asDouble(), 1024);
    EXPECT_EQ(errorOf([] { opPow(D(-8), D(1.0 / 3)); }), errInvalidCall);
    EXPECT_EQ(opPow(D(-8), I(3)).asDouble(), -512);
    EXPECT_EQ(errorOf([] { Sqr(-1); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Log(0); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Exp(710); }), errOverflow);
}

TEST(Arithmetic, DatesAndCurrency) {
    Variant d = opAdd(Variant::date(36527), I(1));
    EXPECT_EQ(d.vt(), vbDate);
    EXPECT_EQ(d.asDate(), 36528);
    Variant diff = opSub(Variant::date(36528), Variant::date(36527));
    EXPECT_EQ(diff.vt(), vbDouble);
    EXPECT_EQ(diff.asDouble(), 1);
    Variant c = opAdd(Variant::currency(10000), D(1.5));
    EXPECT_EQ(c.asCurrency(), 25000);
    EXPECT_EQ(opMul(Variant::currency(15000), Variant::currency(15000)).asCurrency(), 22500);
}

TEST(NullRules, PropagationAndConcatenation) {
    EXPECT_TRUE(opAdd(Variant::null(), I(1)).isNull());
    EXPECT_TRUE(opDiv(Variant::null(), I(0)).isNull());
    EXPECT_TRUE(opNeg(Variant::null()).isNull());
    EXPECT_EQ(opConcat(S(u"a"), Variant::null()).asString(), u"a");
    EXPECT_TRUE(opConcat(Variant::null(), Variant::null()).isNull());
    EXPECT_EQ(opConcat(S(u"a"), D(1.5)).asString(), u"a1.5");
    EXPECT_TRUE(opCompare(CompareOp::Eq, Variant::null(), Variant::null()).isNull());
    EXPECT_EQ(opAnd(Variant::null(), Variant(false)).vt(), vbBoolean);
    EXPECT_FALSE(opAnd(Variant::null(), Variant(false)).asBoolean());
    EXPECT_TRUE(opAnd(Variant::null(), Variant(true)).isNull());
    EXPECT_TRUE(opOr(Variant::null(), Variant(true)).asBoolean());
    EXPECT_TRUE(opOr(Variant::null(), Variant(false)).isNull());
    EXPECT_TRUE(opNot(Variant::null()).isNull());
}

TEST(Logic, BitwiseOnIntegersLogicalOnBooleans) {
    EXPECT_EQ(opAnd(I(5), I(3)).asInteger(), 1);
    EXPECT_EQ(opOr(I(5), I(3)).asInteger(), 7);
    EXPECT_EQ(opXor(I(5), I(3)).asInteger(), 6);
    EXPECT_EQ(opNot(I(0)).asInteger(), -1);
    EXPECT_EQ(opNot(Variant(uint8_t(0))).asByte(), 255);
    EXPECT_EQ(opNot(Variant(true)).vt(), vbBoolean);
    EXPECT_EQ(opAnd(L(-1), I(255)).vt(), vbLong);
    EXPECT_EQ(opAnd(D(6.5), I(3)).asLong(), 2);  // 6.5 rounds to 6
    EXPECT_TRUE(opImp(Variant(false), Variant(false)).asBoolean());
    EXPECT_FALSE(opEqv(Variant(true), Variant(false)).asBoolean());
}

TEST(Logic, NullOrAKnownValue) {
    // Or with a non-zero value gives that value in its own type; with zero
    // the result stays unknown.
    const Variant one = opOr(Variant::null(), I(1));
    EXPECT_EQ(one.vt(), vbInteger);
    EXPECT_EQ(one.asInteger(), 1);
    EXPECT_EQ(opOr(L(6), Variant::null()).asLong(), 6);
    EXPECT_EQ(opOr(Variant::null(), Variant(uint8_t(4))).vt(), vbByte);
    EXPECT_TRUE(opOr(Variant::null(), Variant(true)).asBoolean());
    EXPECT_TRUE(opOr(Variant::null(), I(0)).isNull());
    EXPECT_TRUE(opOr(Variant::null(), Variant(false)).isNull());
    EXPECT_TRUE(opOr(Variant::null(), Variant::null()).isNull());
    // And is known only for zero, Xor never.
    EXPECT_EQ(opAnd(Variant::null(), I(0)).asInteger(), 0);
    EXPECT_TRUE(opAnd(Variant::null(), I(1)).isNull());
    EXPECT_TRUE(opXor(Variant::null(), I(1)).isNull());
}

TEST(Comparison, MixedTypesAndModes) {
    bool isNull = false;
    EXPECT_EQ(compareVariants(I(1), D(1.0), vbBinaryCompare, &isNull), 0);
    EXPECT_EQ(compareVariants(D(1e10), S(u"1"), vbBinaryCompare, &isNull), -1);  // number below any String
    EXPECT_EQ(compareVariants(S(u"1"), D(1e10), vbBinaryCompare, &isNull), 1);
    EXPECT_EQ(compareVariants(S(u"10"), I(9), vbBinaryCompare, &isNull, CompareSite::NumericLiteral), 1);
    EXPECT_EQ(errorOf([&] { compareVariants(S(u"x"), I(9), vbBinaryCompare, &isNull, CompareSite::NumericLiteral); }),
              errTypeMismatch);
    EXPECT_EQ(compareVariants(Variant(), I(0), vbBinaryCompare, &isNull), 0);
    EXPECT_EQ(compareVariants(Variant(), S(u""), vbBinaryCompare, &isNull), 0);
    EXPECT_EQ(compareVariants(Variant(), S(u"a"), vbBinaryCompare, &isNull), -1);
    EXPECT_EQ(compareVariants(S(u"a"), S(u"A"), vbBinaryCompare, &isNull), 1);
    EXPECT_EQ(compareVariants(S(u"a"), S(u"A"), vbTextCompare, &isNull), 0);
    EXPECT_EQ(compareVariants(Variant(true), I(-1), vbBinaryCompare, &isNull), 0);
    EXPECT_EQ(compareVariants(Variant::currency(922337203685477LL * 10000 + 5807),
                              Variant::currency(922337203685477LL * 10000 + 5806), vbBinaryCompare, &isNull),
              1);
    EXPECT_EQ(errorOf([&] { compareVariants(Variant::vector({}), I(1), vbBinaryCompare, &isNull); }),
              errTypeMismatch);
    // A Decimal against a Double beyond the Decimal range still compares.
    const Variant maxDec = CDec(S(u"79228162514264337593543950335"));
    EXPECT_EQ(compareVariants(maxDec, D(1.7976931348623157e308), vbBinaryCompare, &isNull), -1);
    EXPECT_EQ(compareVariants(D(-1e300), maxDec, vbBinaryCompare, &isNull), -1);
    EXPECT_EQ(compareVariants(maxDec, D(1e20), vbBinaryCompare, &isNull), 1);
    EXPECT_EQ(compareVariants(CDec(S(u"0.1")), D(0.1), vbBinaryCompare, &isNull), 0);
}

TEST(Mathematics, KeepTypesAndRoundHalfEven) {
    EXPECT_EQ(Int(D(-1.5)).asDouble(), -2);
    EXPECT_EQ(Fix(D(-1.5)).asDouble(), -1);
    EXPECT_EQ(Int(I(7)).vt(), vbInteger);
    EXPECT_EQ(Int(Variant::currency(-15000)).asCurrency(), -20000);
    EXPECT_EQ(Int(S(u"2.5")).vt(), vbDouble);
    EXPECT_EQ(Sgn(D(-3)).asInteger(), -1);
    EXPECT_EQ(Round(D(2.5)).asDouble(), 2);
    EXPECT_EQ(Round(D(3.5)).asDouble(), 4);
    EXPECT_DOUBLE_EQ(Round(D(1.2345), 3).asDouble(), 1.234);
    EXPECT_EQ(Round(Variant::currency(12345), 3).asCurrency(), 12340);
    EXPECT_EQ(errorOf([] { Round(D(1), -1); }), errInvalidCall);
}
