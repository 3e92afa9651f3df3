#include <gtest/gtest.h>

#include <cmath>

#include "TestSupport.h"

#include "numerics/MathReals.h"

using namespace qvt;
using namespace qvt::test;

namespace {

const MathReals& reals() { return mathReals(); }

}  // namespace

TEST(MathReals, RemaindersFollowTheirSignRule) {
    expectNumber(reals().ModStd(I(-7), I(3)), vbDouble, -1);
    expectNumber(reals().ModStd(I(7), I(-3)), vbDouble, 1);
    expectNumber(reals().ModAlt(I(-7), I(3)), vbDouble, 2);
    expectNumber(reals().ModAlt(I(7), I(-3)), vbDouble, -2);
    expectNumber(reals().ModSym(I(5), I(3)), vbDouble, -1);
    expectNumber(reals().ModSym(I(4), I(3)), vbDouble, 1);
    expectNumber(reals().ModStd(D(5.5), I(2)), vbDouble, 1.5);  // no truncation of the arguments
    expectNumber(reals().ModStd(S(u"7"), S(u"3")), vbDouble, 1);
}

TEST(MathReals, ModOffsetByOneCountsFromOne) {
    expectNumber(reals().ModOffsetByOne(I(6), I(3)), vbDouble, 3);
    expectNumber(reals().ModOffsetByOne(I(4), I(3)), vbDouble, 1);
    expectNumber(reals().ModOffsetByOne(I(-1), I(3)), vbDouble, -1);
    // Zero gives the divisor back as it came.
    expectNumber(reals().ModOffsetByOne(I(0), I(3)), vbInteger, 3);
}

TEST(MathReals, RemaindersOfOtherTypesKeepVariantPromotion) {
    // Currency minus a Double product stays Currency; a Single quotient
    // keeps the whole formula in Single.
    expectNumber(reals().ModStd(Variant::currency(70000), I(3)), vbCurrency, 1);
    expectNumber(reals().ModStd(Variant(7.5f), I(2)), vbSingle, 1.5);
    expectNumber(reals().ModAlt(Variant(-7.5f), I(2)), vbSingle, 0.5);
}

TEST(MathReals, RemainderErrorsAndBadArguments) {
    EXPECT_EQ(errorOf([] { reals().ModStd(I(7), I(0)); }), errDivisionByZero);
    EXPECT_EQ(errorOf([] { reals().ModStd(I(0), I(0)); }), errOverflow);
    EXPECT_EQ(errorOf([] { reals().ModSym(Variant::currency(10000), I(0)); }), errDivisionByZero);
    EXPECT_TRUE(reals().ModStd(Variant::null(), I(3)).isNull());
    EXPECT_TRUE(reals().ModAlt(I(3), S(u"x")).isNull());
    EXPECT_TRUE(reals().ModOffsetByOne(Variant::missing(), I(3)).isNull());
}

TEST(MathReals, CeilingAndFloorUseThePrecisionsMagnitude) {
    expectNumber(reals().Floor(D(-1.5)), vbDouble, -2);
    expectNumber(reals().Ceiling(D(-1.5)), vbDouble, -1);
    expectNumber(reals().Ceiling(D(1.1), D(-0.25)), vbDouble, 1.25);
    expectNumber(reals().Floor(D(-1.1), D(0.25)), vbDouble, -1.25);
    expectNumber(reals().Ceiling(D(1.1), S(u"x")), vbDouble, 2);  // an unusable precision is 1
    expectNumber(reals().Ceiling(I(2)), vbInteger, 2);            // a value on the grid is itself
    EXPECT_EQ(errorOf([] { reals().Ceiling(D(1.1), I(0)); }), errDivisionByZero);
    EXPECT_TRUE(reals().Floor(S(u"x")).isNull());
}

TEST(MathReals, RoundingSendsHalvesUp) {
    expectNumber(reals().RoundToPrecision(D(2.5)), vbDouble, 3);
    expectNumber(reals().RoundToPrecision(D(-2.5)), vbDouble, -2);
    expectNumber(reals().RoundToPrecision(I(8), I(-5)), vbDouble, 10);
    EXPECT_NEAR(CDbl(reals().RoundToDigits(D(1.26), I(1))), 1.3, 1e-12);
    expectNumber(reals().RoundToDigits(I(1234), I(-2)), vbDouble, 1200);
    expectNumber(reals().RoundToDigits(D(-2.5)), vbDouble, -2);
    EXPECT_EQ(errorOf([] { reals().RoundToPrecision(D(2.5), I(0)); }), errDivisionByZero);
    // RoundToDigits catches its own overflow.
    EXPECT_TRUE(reals().RoundToDigits(D(1e300), I(10)).isNull());
    EXPECT_TRUE(reals().RoundToDigits(I(1), I(400)).isNull());
}

TEST(MathReals, WholeAndFractionalPartsKeepTheArgumentsType) {
    expectNumber(reals().FixReal(I(7)), vbInteger, 7);
    expectNumber(reals().FixReal(D(-1.5)), vbDouble, -1);
    expectNumber(reals().IntReal(D(-1.5)), vbDouble, -2);
    expectNumber(reals().FractionalPart(D(-2.75)), vbDouble, -0.75);
    expectNumber(reals().ExponentPart(D(0.05)), vbDouble, -2);
    EXPECT_NEAR(CDbl(reals().Mantissa(D(-0.05))), 5, 1e-12);
    expectNumber(reals().Mantissa(I(0)), vbInteger, 0);
    EXPECT_EQ(errorOf([] { reals().ExponentPart(I(0)); }), errInvalidCall);
}

TEST(MathReals, LogNRealRaisesOutsideItsDomain) {
    EXPECT_NEAR(CDbl(reals().LogNReal(I(8), I(2))), 3, 1e-14);
    EXPECT_EQ(errorOf([] { reals().LogNReal(I(0), I(10)); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { reals().LogNReal(I(5), I(1)); }), errDivisionByZero);
    EXPECT_EQ(errorOf([] { reals().LogNReal(I(1), I(1)); }), errOverflow);
}

TEST(MathReals, ApproxIsRelativeToTheSecondValue) {
    EXPECT_FALSE(reals().Approx(I(0), D(1e-15)).asBoolean());
    EXPECT_TRUE(reals().Approx(D(1e-15), I(0)).asBoolean());
    EXPECT_TRUE(reals().Approx(I(1), D(1.000000000000001)).asBoolean());
    EXPECT_TRUE(reals().Approx(I(1), D(1.0001), 0.001).asBoolean());
    // What is not a number compares as a value.
    EXPECT_TRUE(reals().Approx(S(u"a"), S(u"a")).asBoolean());
    EXPECT_FALSE(reals().Approx(S(u"a"), S(u"A")).asBoolean());
    EXPECT_TRUE(reals().Approx(Variant::null(), Variant::null()).asBoolean());
}

TEST(MathReals, ExtremesKeepTheEarlierValueOnATie) {
    expectNumber(reals().Max2Real(I(1), D(1)), vbInteger, 1);
    expectNumber(reals().Min3Real(D(2), I(2), I(3)), vbDouble, 2);
    EXPECT_EQ(reals().Max2Real(S(u"a"), S(u"b")).asString(), u"b");
    expectNumber(reals().Max2Real(I(1), Variant::null()), vbInteger, 1);
    EXPECT_TRUE(reals().Max2Real(Variant::null(), I(1)).isNull());
    const Variant list[] = {I(3), I(1), I(4), D(4), I(1)};
    expectNumber(reals().MaxReal(list), vbInteger, 4);
    expectNumber(reals().MinReal(list), vbInteger, 1);
    EXPECT_TRUE(reals().MaxReal({}).isNull());
}

TEST(MathReals, VariantExtremesPutNumbersBelowText) {
    EXPECT_EQ(reals().Max2Variant(I(1), S(u"a")).asString(), u"a");
    expectNumber(reals().Min2Variant(I(1), S(u"a")), vbInteger, 1);
    EXPECT_EQ(reals().Max2Variant(S(u"a"), S(u"B")).asString(), u"a");
    EXPECT_EQ(reals().Max2Variant(S(u"a"), S(u"B"), I(1)).asString(), u"B");
    EXPECT_EQ(reals().Max3Variant(I(1), S(u"b"), S(u"a")).asString(), u"b");
    EXPECT_TRUE(reals().Min2Variant(Variant::null(), I(1)).isNull());
}

TEST(MathReals, IndicatorsAndPercentages) {
    expectNumber(reals().Chi(I(1), I(2), I(3)), vbInteger, 1);
    expectNumber(reals().Chi(I(1), I(4), I(3)), vbInteger, 0);
    expectNumber(reals().Chi(I(1), I(3), I(3)), vbDouble, 0.5);
    expectNumber(reals().StepFn(I(-1)), vbInteger, 0);
    expectNumber(reals().StepFn(I(0)), vbDouble, 0.5);
    EXPECT_DOUBLE_EQ(CDbl(reals().PercentChange(I(50), I(75))), 50);
    EXPECT_TRUE(reals().PercentChange(I(0), I(5)).isNull());
    EXPECT_TRUE(reals().PercentOfTotal(I(5), I(0)).isNull());
    EXPECT_EQ(CDbl(reals().DivideOffsetByOne(I(-7), I(3))), -3);
    EXPECT_EQ(CDbl(reals().DivideOffsetByOne(I(0), I(3))), 0);
}

TEST(MathReals, DivideOnErrRtnZeroCatchesEverything) {
    expectNumber(reals().DivideOnErrRtnZero(I(1), I(0)), vbInteger, 0);
    expectNumber(reals().DivideOnErrRtnZero(S(u"a"), I(2)), vbInteger, 0);
    expectNumber(reals().DivideOnErrRtnZero(I(6), I(4)), vbDouble, 1.5);
    EXPECT_TRUE(reals().DivideOnErrRtnZero(Variant::null(), I(2)).isNull());
}

TEST(MathReals, SplitBySignWritesBothReceivers) {
    Variant neg = S(u"u"), pos = S(u"v");
    reals().Set1stIfNeg2ndIfPos(I(-5), neg, pos);
    expectNumber(neg, vbInteger, 5);
    expectNumber(pos, vbInteger, 0);
    reals().Set1stIfNeg2ndIfPos(D(2.5), neg, pos);
    expectNumber(neg, vbInteger, 0);
    expectNumber(pos, vbDouble, 2.5);
    reals().Set1stIfNeg2ndIfPos(S(u"x"), neg, pos);  // untouched
    expectNumber(pos, vbDouble, 2.5);
}

TEST(MathReals, Constants) {
    EXPECT_DOUBLE_EQ(reals().PI(), M_PI);
    EXPECT_DOUBLE_EQ(reals().RPC(), M_PI / 2);
    EXPECT_DOUBLE_EQ(reals().Deg() * 180, M_PI);
    EXPECT_DOUBLE_EQ(reals().EulerGamma(), 0.57721566490153286);
    EXPECT_FALSE(reals().IsPentiumFlawed());
    EXPECT_FALSE(reals().IsPentiumFlawedAlt());
}
