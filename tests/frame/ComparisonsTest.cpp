#include "frame/Comparisons.h"

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "frame/Conversions.h"
#include "frame/Strings.h"

using namespace qvt;

namespace {

const Comparisons& cmp = comparisons();
const Variant kMissing = Variant::missing();
const Variant kNull = Variant::null(), kEmpty;
Variant i(int v) { return Variant(int16_t(v)); }
Variant s(const char16_t* t) { return Variant(t); }

}  // namespace

TEST(Comparisons, ThreeOrdersOfMixedValues) {
    EXPECT_EQ(cmp.CompareCoerceDataType(i(1), s(u"1"), kMissing), 0);
    EXPECT_EQ(cmp.CompareCoerceDataType(i(10), s(u"9"), kMissing), -1) << "as text";
    EXPECT_EQ(cmp.CompareLikeDataType(i(1), s(u"1"), kMissing), -1);
    EXPECT_EQ(cmp.CompareExactDataType(i(5), Variant(int32_t(1)), kMissing), -1) << "by VarType first";
    EXPECT_EQ(cmp.CompareExactDataType(s(u"a"), s(u"A"), i(1)), 0);
    // Empty below Null below everything else.
    EXPECT_EQ(cmp.CompareLikeDataType(kEmpty, kNull, kMissing), -1);
    EXPECT_EQ(cmp.CompareCoerceDataType(kNull, kEmpty, kMissing), 1);
    EXPECT_EQ(cmp.CompareCoerceDataType(i(-5), kNull, kMissing), 1);
    // The fast form has no ranks: Null meets a number as equal.
    EXPECT_EQ(cmp.CompareLikeDataTypeFast(kNull, i(1), 0), 0);
    EXPECT_EQ(cmp.CompareLikeDataTypeFast(s(u"b"), i(1), 0), 1);
}

TEST(Comparisons, EqualTwins) {
    EXPECT_TRUE(cmp.EqualCoerceDataType(kNull, kNull, kMissing));
    EXPECT_FALSE(cmp.EqualCoerceDataType(kNull, kEmpty, kMissing));
    EXPECT_FALSE(cmp.EqualExactDataType(i(1), Variant(int32_t(1)), kMissing));
    EXPECT_TRUE(cmp.EqualLikeDataType(i(1), Variant(1.0), kMissing));
    EXPECT_FALSE(cmp.EqualLikeDataTypeFast(i(1), s(u"1"), 0));
    EXPECT_EQ(test::errorOf([] { cmp.EqualLikeDataTypeFast(kNull, i(1), 0); }), errInvalidUseOfNull);
}

TEST(Comparisons, BetweenAndTruthWords) {
    EXPECT_TRUE(cmp.IsBetween(i(5), i(1), kNull, kMissing).isNull());
    EXPECT_TRUE(cmp.IsBetween(i(10), i(1), i(10), kMissing).asBoolean());
    EXPECT_FALSE(cmp.IsBetween(s(u"B"), s(u"a"), s(u"c"), kMissing).asBoolean());
    EXPECT_TRUE(cmp.IsBetween(s(u"B"), s(u"a"), s(u"c"), i(1)).asBoolean());
    EXPECT_FALSE(cmp.IsBetween(i(5), s(u"a"), s(u"z"), kMissing).asBoolean()) << "numbers before text";

    EXPECT_TRUE(cmp.IsOn(s(u"YES")));
    EXPECT_TRUE(cmp.IsOff(i(0)));
    EXPECT_TRUE(cmp.IsFalse(s(u"banana")));
    EXPECT_FALSE(cmp.IsOff(s(u"banana")));
    EXPECT_TRUE(cmp.IsFalse(kNull));
    EXPECT_FALSE(cmp.IsOff(kNull));
}

TEST(Comparisons, LikeWithCompareModesAndPatternLists) {
    EXPECT_FALSE(cmp.LikePattern(s(u"B"), s(u"[a-c]"), i(0)).asBoolean());
    EXPECT_TRUE(cmp.LikePattern(s(u"B"), s(u"[a-c]"), i(1)).asBoolean()) << "ranges upper-cased too";
    EXPECT_TRUE(cmp.LikePattern(kNull, s(u"a"), kMissing).isNull());
    // Every part of the list counts, the first one included.
    EXPECT_TRUE(cmp.LikeAnyPattern(s(u"abc"), s(u"a*,x*"), i(0), s(u",")).asBoolean());
    EXPECT_TRUE(cmp.LikeAnyPattern(s(u"abc"), s(u"x*,a*"), i(0), s(u",")).asBoolean());
    EXPECT_FALSE(cmp.LikeAnyPattern(s(u"abc"), s(u"x*,y*"), i(0), s(u",")).asBoolean());
    EXPECT_TRUE(cmp.LikeAnyPattern(s(u"abc"), s(u"a*"), i(0), s(u"")).asBoolean()) << "no separator: one pattern";
    EXPECT_TRUE(cmp.LikeAnyPattern(s(u"abc"), s(u"x*ORa*"), i(1), s(u"or")).asBoolean());
}

TEST(Comparisons, MaxMinLeftWinsAndTextMeetsText) {
    EXPECT_EQ(cmp.Max2(s(u"10"), i(9), kMissing).asString(), u"9");
    EXPECT_EQ(cmp.Max2(i(9), s(u"10"), kMissing).asString(), u"10");
    EXPECT_EQ(cmp.Max2(i(1), Variant(1.0), kMissing).vt(), vbInteger);
    EXPECT_EQ(cmp.Min2(s(u"a"), i(5), kMissing).asString(), u"5");
    EXPECT_TRUE(cmp.Min2(i(1), kNull, kMissing).isNull());
    Variant x = i(1);
    cmp.Max2EqualFast(x, i(5));
    EXPECT_EQ(x.asInteger(), 5);
    cmp.Min2EqualFast(x, kNull);
    EXPECT_EQ(x.asInteger(), 5);
}

TEST(Comparisons, CustomCollatingSequence) {
    EXPECT_EQ(cmp.StrCompCustom(s(u"a"), s(u"b"), kNull).asInteger(), -1);
    EXPECT_EQ(cmp.StrCompCustom(s(u"ab"), s(u"a"), kMissing).asInteger(), 1);
    const Variant order(StringOf(97, u'\0') + Chr(2) + Chr(1));
    EXPECT_EQ(cmp.StrCompCustom(s(u"a"), s(u"b"), order).asInteger(), 1);
    EXPECT_EQ(cmp.StrCompCustom(s(u"c"), s(u"a"), order).asInteger(), -1) << "past the sequence ranks 0";
    EXPECT_TRUE(cmp.StrCompCustom(kNull, s(u"a"), kMissing).isNull());
}

TEST(Comparisons, TypeNamesAndWidths) {
    EXPECT_EQ(cmp.VarTypeFromString(s(u"long array")).asInteger(), 8195);
    EXPECT_EQ(cmp.VarTypeFromString(s(u"byte  array")).asInteger(), 8209);
    EXPECT_TRUE(cmp.VarTypeFromString(s(u"Array")).isNull());
    EXPECT_EQ(cmp.VarTypeToString(i(8195)).asString(), u"Long Array");
    EXPECT_TRUE(cmp.VarTypeToString(i(15)).isNull());
    EXPECT_EQ(cmp.VT(Variant::vector({i(1)})), u"Variant Array");
    EXPECT_EQ(cmp.VT(Variant::nothing()), u"Object");
    EXPECT_EQ(cmp.VarTypeToLength(i(14)).asInteger(), 12);
    EXPECT_EQ(cmp.VarTypeToLength(i(8200)).asInteger(), 0);
    EXPECT_TRUE(cmp.VarTypeToLength(i(15)).isNull());
    EXPECT_TRUE(cmp.IsNumber(Variant::date(1)));
    EXPECT_FALSE(cmp.IsNumber(s(u"1")));
    EXPECT_TRUE(cmp.IsFloatingPointDataType(Variant::currency(1)));
    EXPECT_TRUE(cmp.IsWholeDataType(Variant(true)));
    EXPECT_TRUE(cmp.CanBeLong(s(u"12")));
    EXPECT_FALSE(cmp.CanBeLong(Variant(1e300)));
}
