#include "frame/ConvertValues.h"

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "frame/Conversions.h"
#include "structures/ArrayConversions.h"

using namespace qvt;

namespace {

const ConvertValues& cv = convertValues();
Variant i(int v) { return Variant(int16_t(v)); }
Variant s(const char16_t* t) { return Variant(t); }

}  // namespace

TEST(ConvertValues, CapabilityTable) {
    EXPECT_EQ(cv.MostCapableDataType(Variant(true), Variant(uint8_t(1))), vbInteger);
    EXPECT_EQ(cv.MostCapableDataType(Variant(int32_t(1)), Variant(1.0f)), vbDouble);
    EXPECT_EQ(cv.MostCapableDataType(Variant::null(), Variant()), vbEmpty);
    EXPECT_EQ(cv.MostCapableDataType(Variant::date(1), i(1)), vbDouble);
    EXPECT_EQ(cv.MostCapableDataType(Variant::date(1), Variant()), vbDate);
    EXPECT_EQ(cv.MostCapableDataType(Variant::nothing(), i(1)), 0);
    EXPECT_EQ(test::errorOf([] { cv.MostCapableDataType(Variant::vector({i(1)}), i(1)); }), errSubscript);

    Variant one(true), two(uint8_t(3));
    EXPECT_TRUE(cv.PromoteToMostCapableDataType(one, two));
    EXPECT_EQ(one.vt(), vbInteger);
    EXPECT_EQ(one.asInteger(), -1);
    EXPECT_EQ(two.vt(), vbInteger);
    one = i(1);
    two = s(u"x");
    cv.PromoteToMostCapableDataType(one, two);
    EXPECT_EQ(one.asString(), u"1");
}

TEST(ConvertValues, SubstitutionsAndIgnErr) {
    EXPECT_TRUE(cv.BlankToNull(s(u"")).isNull());
    EXPECT_EQ(cv.BlankToNull(i(5)).asInteger(), 5);
    EXPECT_EQ(cv.BlankToValue(Variant::null(), i(7)).asInteger(), 7);
    EXPECT_TRUE(cv.NullToValue(Variant(), s(u"n")).isEmpty());
    EXPECT_EQ(cv.ReplaceValue(i(5), Variant(5.0), s(u"x")).asString(), u"x");
    EXPECT_EQ(cv.ReplaceValueOfType(i(5), Variant(5.0), s(u"x")).vt(), vbInteger);
    EXPECT_TRUE(cv.ReplaceValue(Variant::null(), Variant::null(), s(u"x")).isNull());
    EXPECT_EQ(cv.ReplaceVarTypeWithValue(s(u"a"), i(8), s(u"s")).asString(), u"s");

    EXPECT_EQ(cv.CByteIgnErr(i(300)), 0);
    EXPECT_EQ(cv.CIntIgnErr(Variant(2.5)), 2);
    EXPECT_EQ(cv.CSngIgnErr(Variant(2.5)), 2) << "a Single through a Long result";
    EXPECT_EQ(cv.CSngIgnErr(Variant(1e20)), 0);
    EXPECT_TRUE(cv.CDecIgnErr(s(u"x")).isEmpty());
    EXPECT_EQ(cv.CVDateIgnErr(s(u"1/2/2000")), 36527);
}

TEST(ConvertValues, SourceTextOfValues) {
    EXPECT_EQ(cv.EqualQuotedValue(Variant(uint8_t(5))).asString(), u"= 5%");
    EXPECT_EQ(cv.EqualQuotedValue(Variant::date(36527)).asString(), u"= #1/2/2000#");
    EXPECT_EQ(cv.EqualQuotedValue(s(u"a\"b")).asString(), u"= \"a\"\"b\"");
    EXPECT_TRUE(cv.EqualQuotedValue(CDec(i(1))).isEmpty());
    EXPECT_EQ(cv.VariantToVBConstExpression(Variant()), u"Null");
    EXPECT_EQ(cv.VariantToVBConstExpression(Variant(1.5f)), u"1.5!");
    EXPECT_EQ(cv.VariantToVBConstExpression(s(u"a\"b")), u"\"a\"\"b\"");
    EXPECT_EQ(cv.VariantToVBEvalExpression(s(u"a")), u"\"\"a\"\"");
    EXPECT_EQ(cv.VariantToVBEvalExpression(Variant(uint8_t(5))), u"CByte(5)");
    EXPECT_EQ(cv.VariantToVBEvalExpression(CVErr(5)), u"");
}

TEST(ConvertValues, VariantStringsAndCStrings) {
    for (Variant v : {i(258), Variant(1.5), Variant::date(36527), Variant::currency(10000), s(u"ab"), Variant(),
                      Variant::null(), Variant(true)}) {
        const Variant back = cv.VariantStringToVariant(Variant(cv.VariantToVariantString(v)));
        EXPECT_EQ(back.vt(), v.vt());
        EXPECT_EQ(TypeName(back), TypeName(v));
        if (!v.isEmpty() && !v.isNull()) {
            EXPECT_EQ(CStr(back), CStr(v));
        }
    }
    EXPECT_TRUE(cv.VariantStringToVariant(Variant(cv.VariantToVariantString(CDec(i(5))))).isNull());

    EXPECT_EQ(cv.VariantToFixedCString(s(u"abc"), i(2)), String(u"a\0", 2));
    EXPECT_EQ(cv.VariantToFixedCString(s(u"abc"), i(6)), String(u"abc\0\0\0", 6));
    EXPECT_EQ(cv.VariantToFixedCString(s(u"abc"), i(0)), String(1, u'\0'));
    EXPECT_EQ(cv.VariantToFixedCString(Variant::missing(), Variant::missing()).size(), 255u);
    EXPECT_EQ(cv.VariantToCString(Variant::null()), String(1, u'\0'));
}

TEST(ConvertValues, LengthsZeroValuesAndSwaps) {
    EXPECT_EQ(cv.LengthOfType(s(u"abc")), 3);
    EXPECT_EQ(cv.LengthOfType(Variant::vector({i(1)})), 0);
    EXPECT_EQ(cv.VariantOfType(i(8205)).vt(), vbArray | vbObject);
    EXPECT_EQ(test::errorOf([] { cv.VariantOfType(i(8204)).asArray().ubound(); }), errSubscript);
    EXPECT_EQ(cv.VariantOfType(i(10)).asErrorCode(), 0);
    EXPECT_TRUE(cv.VariantOfType(s(u"x")).isNull());

    Variant a = i(1), b = s(u"x");
    cv.SwapNonObjects(a, b);
    EXPECT_EQ(a.asString(), u"x");
    Variant n = Variant::nothing();
    EXPECT_EQ(test::errorOf([&] { cv.SwapNonObjects(a, n); }), errObjectVariableNotSet);
    cv.SwapVariants(a, n);
    EXPECT_TRUE(a.isNothing());
}

TEST(SplitToOneBased, EveryPartFromSubscriptOne) {
    const Variant v = splitToOneBased(u"x,y,", u",", 0);
    const SafeArray& a = v.asArray();
    EXPECT_EQ(a.lbound(), 0);
    EXPECT_EQ(a.ubound(), 3);
    EXPECT_TRUE(a.at(0).isEmpty());
    EXPECT_EQ(a.at(1).asString(), u"x");
    EXPECT_EQ(a.at(3).asString(), u"");
    EXPECT_EQ(splitToOneBased(u"", u",", 0).asArray().ubound(), 1) << "an empty line is one empty part";
    EXPECT_EQ(splitToOneBased(u"a,b", u"", 0).asArray().at(1).asString(), u"a,b");
    EXPECT_EQ(splitParts(u"aXbxc", u"x", 1).size(), 3u) << "found under the compare mode";
}
