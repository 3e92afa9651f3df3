#include "frame/FixUps.h"

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "frame/Conversions.h"

using namespace qvt;

namespace {

const FixUps& fx = fixUps();
const Variant kMissing = Variant::missing();

Variant str(const char16_t* s) { return Variant(s); }

}  // namespace

TEST(FixUpsMand, NumbersAndNumericTextBecomeTheTarget) {
    Variant v = str(u"42");
    EXPECT_TRUE(fx.FixUpVariantToLongMandFn(v));
    EXPECT_EQ(v.vt(), vbLong);
    EXPECT_EQ(v.asLong(), 42);

    v = Variant(2.5);  // half to even
    EXPECT_TRUE(fx.FixUpVariantToIntegerMandFn(v));
    EXPECT_EQ(v.asInteger(), 2);

    v = Variant(true);
    EXPECT_TRUE(fx.FixUpVariantToDoubleMandFn(v));
    EXPECT_EQ(v.asDouble(), -1.0);
}

TEST(FixUpsMand, EmptyIsZeroButNullMissingAndTextFail) {
    Variant v;
    EXPECT_TRUE(fx.FixUpVariantToLongMandFn(v));
    EXPECT_EQ(v.vt(), vbLong);
    EXPECT_EQ(v.asLong(), 0);

    for (Variant bad : {Variant::null(), kMissing, str(u""), str(u"abc"), str(u"True"), CVErr(5),
                        Variant::vector({Variant(int16_t(1))})}) {
        const auto before = bad.vt();
        EXPECT_FALSE(fx.FixUpVariantToLongMandFn(bad));
        EXPECT_EQ(bad.vt(), before) << "a failed fix-up leaves the argument alone";
    }
}

TEST(FixUpsMand, OutOfRangeFailsAndLeavesTheArgument) {
    Variant v(1e300);
    EXPECT_FALSE(fx.FixUpVariantToLongMandFn(v));
    EXPECT_EQ(v.asDouble(), 1e300);
    Variant b(int16_t(-1));
    EXPECT_FALSE(fx.FixUpVariantToByteMandFn(b));
    b = Variant(int16_t(256));
    EXPECT_FALSE(fx.FixUpVariantToByteMandFn(b));
    Variant d(1e10);
    EXPECT_FALSE(fx.FixUpVariantToDateMandFn(d)) << "beyond the last day";
}

TEST(FixUpsMand, DatesGoThroughTheDayCount) {
    Variant v = str(u"1/2/2000");
    EXPECT_TRUE(fx.FixUpVariantToLongMandFn(v));
    EXPECT_EQ(v.asLong(), 36527);

    v = Variant::date(36527.75);  // rounds to the next day
    EXPECT_TRUE(fx.FixUpVariantToLongMandFn(v));
    EXPECT_EQ(v.asLong(), 36528);

    v = str(u"12/30/1899");  // day 0 is False
    EXPECT_TRUE(fx.FixUpVariantToBooleanMandFn(v));
    EXPECT_FALSE(v.asBoolean());

    v = str(u"1/2/2000");  // through Integer: too big for a Byte and an Integer
    EXPECT_FALSE(fx.FixUpVariantToByteMandFn(v));
    EXPECT_FALSE(fx.FixUpVariantToIntegerMandFn(v));

    v = str(u"36527");  // a number, not a date: the numeric path to Date
    EXPECT_TRUE(fx.FixUpVariantToDateMandFn(v));
    EXPECT_EQ(v.vt(), vbDate);
    EXPECT_EQ(v.asDate(), 36527.0);
}

TEST(FixUpsMaybe, HeldNumbersKeepTheirTypeAfterARangeTest) {
    Variant v(int16_t(5));
    EXPECT_TRUE(fx.FixUpVariantToDoubleMaybeFn(v));
    EXPECT_EQ(v.vt(), vbInteger);

    v = Variant(1.5);
    EXPECT_TRUE(fx.FixUpVariantToLongMaybeFn(v));
    EXPECT_EQ(v.vt(), vbDouble);

    v = Variant(1e300);
    EXPECT_FALSE(fx.FixUpVariantToLongMaybeFn(v));
    v = Variant(int16_t(300));
    EXPECT_FALSE(fx.FixUpVariantToByteMaybeFn(v));
    EXPECT_EQ(v.asInteger(), 300);

    v = str(u"5");
    EXPECT_TRUE(fx.FixUpVariantToDoubleMaybeFn(v));
    EXPECT_EQ(v.vt(), vbDouble);
    v = Variant();
    EXPECT_TRUE(fx.FixUpVariantToIntegerMaybeFn(v));
    EXPECT_EQ(v.vt(), vbInteger);
}

TEST(FixUpsMaybe, DatesBecomeDatesForEveryTarget) {
    Variant v = str(u"1/2/2000");
    EXPECT_TRUE(fx.FixUpVariantToBooleanMaybeFn(v));
    EXPECT_EQ(v.vt(), vbDate);
    v = Variant::date(36527);
    EXPECT_TRUE(fx.FixUpVariantToByteMaybeFn(v)) << "no range test on the date path";
    EXPECT_EQ(v.vt(), vbDate);
}

TEST(FixUpsSub, DefaultIsAssignedAsItStands) {
    for (Variant bad : {kMissing, Variant::null(), str(u"x"), Variant(1e300)}) {
        fx.FixUpVariantToLongMandSub(bad, Variant(int16_t(7)));
        EXPECT_EQ(bad.vt(), vbInteger);
        EXPECT_EQ(bad.asInteger(), 7);
    }
    Variant e;
    fx.FixUpVariantToLongMandSub(e, Variant(int16_t(7)));
    EXPECT_EQ(e.vt(), vbLong) << "Empty is numeric: 0, not the default";
    Variant n = Variant::null();
    fx.FixUpVariantToDoubleMandSub(n, str(u"a"));
    EXPECT_EQ(n.asString(), u"a");
    Variant m = str(u"abc");
    fx.FixUpVariantToDoubleMaybeSub(m, Variant(int16_t(9)));
    EXPECT_EQ(m.vt(), vbInteger);
}

TEST(FixUpsString, FnFailsOnErrorValuesWhereSubWritesThem) {
    Variant v;
    EXPECT_TRUE(fx.FixUpVariantToStringFn(v));
    EXPECT_EQ(v.asString(), u"");
    v = Variant(int16_t(12));
    EXPECT_TRUE(fx.FixUpVariantToStringFn(v));
    EXPECT_EQ(v.asString(), u"12");

    Variant err = CVErr(5);
    EXPECT_FALSE(fx.FixUpVariantToStringFn(err));
    fx.FixUpVariantToStringSub(err, str(u"d"));
    EXPECT_EQ(err.asString(), u"Error 5");

    Variant missing = kMissing;
    fx.FixUpVariantToStringSub(missing, str(u"d"));
    EXPECT_EQ(missing.asString(), u"d");
    Variant arr = Variant::vector({Variant(int16_t(1))});
    EXPECT_FALSE(fx.FixUpVariantToStringFn(arr));
    fx.FixUpVariantToStringSub(arr, str(u"d"));
    EXPECT_EQ(arr.asString(), u"d");
}

TEST(FixUpsString, RecursiveConvertsInPlaceAndStopsAtTheFirstFailure) {
    Variant a = Variant::vector({Variant(int16_t(1)), Variant::vector({Variant(int16_t(2))}), CVErr(5)});
    EXPECT_TRUE(fx.FixUpVariantToStringFnRecursive(a));
    EXPECT_EQ(a.asArray().at(0).asString(), u"1");
    EXPECT_EQ(a.asArray().at(1).asArray().at(0).asString(), u"2");
    EXPECT_EQ(a.asArray().at(2).asString(), u"Error 5");

    Variant b = Variant::vector({Variant(int16_t(1)), Variant::null(), Variant(int16_t(2))});
    const Variant original = b;
    EXPECT_FALSE(fx.FixUpVariantToStringFnRecursive(b));
    EXPECT_TRUE(b.asArray().at(0).isString());
    EXPECT_EQ(b.asArray().at(2).vt(), vbInteger);
    EXPECT_EQ(original.asArray().at(0).vt(), vbInteger) << "the caller's copy is not touched";

    Variant m = Variant::array(vbVariant, {ArrayBound{1, 2}, ArrayBound{1, 2}});
    EXPECT_FALSE(fx.FixUpVariantToStringFnRecursive(m));
    Variant nothing = Variant::nothing();
    EXPECT_FALSE(fx.FixUpVariantToStringFnRecursive(nothing));
}

TEST(FixUpsOthers, CompareIsALongAndRaisesOnlyOnOverflow) {
    Variant c = str(u"1");
    fx.FixUpVariantCompare(c);
    EXPECT_EQ(c.vt(), vbLong);
    EXPECT_EQ(c.asLong(), 1);
    for (Variant other : {kMissing, Variant::null(), str(u"abc")}) {
        fx.FixUpVariantCompare(other);
        EXPECT_EQ(other.vt(), vbLong);
        EXPECT_EQ(other.asLong(), 0);
    }
    Variant big(1e10);
    EXPECT_EQ(test::errorOf([&] { fx.FixUpVariantCompare(big); }), errOverflow);
}

TEST(FixUpsOthers, BoundsDefaultToOneAndUBound) {
    const Variant a = Variant::array(vbVariant, {ArrayBound{0, 4}});
    Variant lo = kMissing, hi = kMissing;
    EXPECT_TRUE(fx.FixUpVariantBounds(a, lo, hi, kMissing));
    EXPECT_EQ(CLng(lo), 1);
    EXPECT_EQ(CLng(hi), 4);

    lo = Variant(int16_t(4));
    hi = Variant(int16_t(2));
    EXPECT_FALSE(fx.FixUpVariantBounds(a, lo, hi, kMissing));

    Variant unallocated = Variant::unallocatedArray(vbVariant);
    lo = hi = Variant(int16_t(1));
    EXPECT_EQ(test::errorOf([&] { fx.FixUpVariantBounds(unallocated, lo, hi, kMissing); }), errSubscript);
    EXPECT_EQ(test::errorOf([&] { fx.FixUpVariantBounds(Variant(int16_t(5)), lo, hi, kMissing); }), errTypeMismatch);
}

TEST(FixUpsOthers, ToTypeUsesTheTargetsFormAndZeroOnFailure) {
    auto to = [](Variant v, int t) { return fx.FixUpToType(v, Variant(int16_t(t))); };
    EXPECT_EQ(to(str(u"12"), vbLong).asLong(), 12);
    const Variant zero = to(str(u"abc"), vbLong);
    EXPECT_EQ(zero.vt(), vbLong);
    EXPECT_EQ(zero.asLong(), 0);
    EXPECT_TRUE(to(Variant(int16_t(1)), 8192).isNull());
    EXPECT_EQ(to(Variant(int16_t(300)), vbByte).asByte(), 0);
    EXPECT_EQ(to(Variant::null(), vbString).asString(), u"");
    EXPECT_EQ(to(Variant(int16_t(5)), vbError).asErrorCode(), 5);
    EXPECT_TRUE(to(Variant(int16_t(1)), vbDataObject).isNothing());
    EXPECT_EQ(to(Variant(int16_t(1)), vbVariant).vt(), vbInteger);
    EXPECT_TRUE(fx.FixUpToType(Variant(int16_t(1)), str(u"x")).isNull());
}

TEST(FixUpsOthers, ComplexAndFractionalText) {
    Variant re, im;
    EXPECT_TRUE(fx.ComplexStringToReals(re, im, str(u" 1 | -2 "), kMissing));
    EXPECT_EQ(re.asDouble(), 1.0);
    EXPECT_EQ(im.asDouble(), -2.0);
    EXPECT_TRUE(fx.ComplexStringToReals(re, im, Variant(int16_t(7)), kMissing));
    EXPECT_EQ(re.vt(), vbInteger) << "a held number keeps its type";
    re = str(u"u");
    EXPECT_FALSE(fx.ComplexStringToReals(re, im, str(u"1|x"), kMissing));
    EXPECT_EQ(re.asString(), u"u");
    EXPECT_FALSE(fx.ComplexStringToReals(re, im, str(u"3|"), kMissing));
    EXPECT_FALSE(fx.ComplexStringToReals(re, im, str(u"1/2/2000"), kMissing));
    EXPECT_TRUE(fx.ComplexStringToReals(re, im, str(u"1/2/2000"), Variant(true)));
    EXPECT_EQ(re.asDouble(), 36527.0);
    EXPECT_FALSE(fx.ComplexStringToReals(re, im, Variant::date(36527), Variant(true)));

    struct Case { const char16_t* text; bool ok; double value; };
    for (const Case& c : {Case{u"3/4", true, 0.75}, Case{u"5/", true, 5}, Case{u" 3 / 4 ", true, 0.75},
                          Case{u"3/0", false, 0}, Case{u"x/4", false, 0}, Case{u"/4", false, 0},
                          Case{u"1/2/99", false, 0}}) {
        Variant v = str(c.text);
        EXPECT_EQ(fx.FractionalToReal(v, kMissing), c.ok) << std::string(c.text, c.text + 3);
        if (c.ok) {
            EXPECT_EQ(v.asDouble(), c.value);
        } else {
            EXPECT_TRUE(v.isString());
        }
    }
    Variant d = str(u"1/2/99");
    EXPECT_TRUE(fx.FractionalToReal(d, Variant(true)));
    EXPECT_EQ(d.asDouble(), 36162.0);
}
