#include <gtest/gtest.h>

#include "TestSupport.h"

#include "frame/Conversions.h"

using namespace qvt;
using qvt::test::errorOf;

namespace {


Variant S(const char16_t* s) { return Variant(s); }

}  // namespace

TEST(Conversions, IntegersRoundHalfToEven) {
    EXPECT_EQ(CInt(Variant(2.5)), 2);
    EXPECT_EQ(CInt(Variant(3.5)), 4);
    EXPECT_EQ(CInt(Variant(-2.5)), -2);
    EXPECT_EQ(CLng(Variant(-0.5)), 0);
    EXPECT_EQ(CLng(Variant(1.5)), 2);
    EXPECT_EQ(CByte(Variant(254.5)), 254);
    EXPECT_EQ(CLng(S(u" 2.5 ")), 2);
    EXPECT_EQ(CLng(Variant::currency(25000)), 2);   // 2.5 as Currency
    EXPECT_EQ(CLng(Variant::currency(35000)), 4);
    EXPECT_EQ(CInt(Variant(true)), -1);
    EXPECT_EQ(CLng(Variant()), 0);
    EXPECT_EQ(CLng(Variant::date(36527.5)), 36528);
}

TEST(Conversions, RangeAndTypeErrors) {
    EXPECT_EQ(errorOf([] { CByte(Variant(int16_t(256))); }), errOverflow);
    EXPECT_EQ(errorOf([] { CByte(Variant(int16_t(-1))); }), errOverflow);
    EXPECT_EQ(errorOf([] { CInt(Variant(32767.5)); }), errOverflow);
    EXPECT_EQ(errorOf([] { CInt(Variant(int32_t(32768))); }), errOverflow);
    EXPECT_EQ(errorOf([] { CLng(Variant(1e300)); }), errOverflow);
    EXPECT_EQ(errorOf([] { CSng(Variant(1e300)); }), errOverflow);
    EXPECT_EQ(errorOf([] { CCur(Variant(1e15)); }), errOverflow);
    EXPECT_EQ(errorOf([] { CInt(S(u"12x")); }), errTypeMismatch);
    EXPECT_EQ(errorOf([] { CDbl(S(u"")); }), errTypeMismatch);
    EXPECT_EQ(errorOf([] { CDbl(Variant::null()); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([] { CStr(Variant::null()); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([] { CDbl(Variant::missing()); }), errTypeMismatch);
    EXPECT_EQ(errorOf([] { CStr(Variant::vector({})); }), errTypeMismatch);
    EXPECT_EQ(errorOf([] { CDate(Variant(2958466.0)); }), errOverflow);
    EXPECT_EQ(errorOf([] { CDate(Variant(-657435.0)); }), errOverflow);
}

TEST(Conversions, TextThroughTheNumberParser) {
    EXPECT_DOUBLE_EQ(CDbl(S(u"1e3")), 1000);
    EXPECT_DOUBLE_EQ(CDbl(S(u"1D3")), 1000);
    EXPECT_DOUBLE_EQ(CDbl(S(u"(12)")), -12);
    EXPECT_DOUBLE_EQ(CDbl(S(u"12-")), -12);
    EXPECT_DOUBLE_EQ(CDbl(S(u"$1,234.5")), 1234.5);
    EXPECT_DOUBLE_EQ(CDbl(S(u"&HFF")), 255);
    EXPECT_DOUBLE_EQ(CDbl(S(u"&O17")), 15);
    EXPECT_EQ(CCur(S(u"1.23456")).asCurrency(), 12346);
    EXPECT_EQ(CCur(S(u"1.23455")).asCurrency(), 12346);  // half-even at the fourth decimal
    EXPECT_EQ(CCur(S(u"1.23445")).asCurrency(), 12344);
}

TEST(Conversions, BooleanWordsAndNumbers) {
    EXPECT_TRUE(CBool(S(u"True")));
    EXPECT_TRUE(CBool(S(u"true")));
    EXPECT_FALSE(CBool(S(u"False")));
    EXPECT_TRUE(CBool(S(u"-2")));
    EXPECT_FALSE(CBool(S(u"0")));
    EXPECT_TRUE(CBool(Variant(0.1)));
    EXPECT_EQ(errorOf([] { CBool(S(u"yes")); }), errTypeMismatch);
}

TEST(Conversions, CStrOfEveryType) {
    EXPECT_EQ(CStr(Variant()), u"");
    EXPECT_EQ(CStr(Variant(true)), u"True");
    EXPECT_EQ(CStr(Variant(false)), u"False");
    EXPECT_EQ(CStr(Variant(int16_t(-5))), u"-5");
    EXPECT_EQ(CStr(Variant(1.0 / 3.0)), u"0.333333333333333");
    EXPECT_EQ(CStr(Variant(0.1 + 0.2)), u"0.3");
    EXPECT_EQ(CStr(Variant(1e15)), u"1E+15");
    EXPECT_EQ(CStr(Variant(123456789012345.0)), u"123456789012345");
    EXPECT_EQ(CStr(Variant(2.5f)), u"2.5");
    EXPECT_EQ(CStr(Variant(1.0f / 3.0f)), u"0.3333333");
    EXPECT_EQ(CStr(Variant::currency(15000)), u"1.5");
    EXPECT_EQ(CStr(Variant::date(36527)), u"1/2/2000");
    EXPECT_EQ(CStr(Variant::date(36527.5)), u"1/2/2000 12:00:00 PM");
    EXPECT_EQ(CStr(Variant::error(5)), u"Error 5");
    EXPECT_EQ(CStr(Variant(uint8_t(200))), u"200");
}

TEST(Conversions, IsNumericAndIsDate) {
    EXPECT_TRUE(IsNumeric(Variant()));
    EXPECT_TRUE(IsNumeric(Variant(true)));
    EXPECT_TRUE(IsNumeric(S(u" 1,000.5 ")));
    EXPECT_TRUE(IsNumeric(S(u"&HFF")));
    EXPECT_FALSE(IsNumeric(S(u"")));
    EXPECT_FALSE(IsNumeric(S(u"1.2.3")));
    EXPECT_FALSE(IsNumeric(Variant::date(1)));
    EXPECT_FALSE(IsNumeric(Variant::null()));
    EXPECT_FALSE(IsNumeric(Variant::missing()));
    EXPECT_TRUE(IsDate(S(u"1/2/2000")));
    EXPECT_TRUE(IsDate(S(u"January 2, 2000")));
    EXPECT_TRUE(IsDate(Variant::date(0)));
    EXPECT_FALSE(IsDate(S(u"12")));
    EXPECT_FALSE(IsDate(Variant()));
    EXPECT_FALSE(IsDate(Variant(int16_t(5))));
}

TEST(Conversions, DatesAndDecimals) {
    EXPECT_DOUBLE_EQ(CDate(S(u"1/2/2000")).asDate(), 36527);
    EXPECT_DOUBLE_EQ(CDate(Variant()).asDate(), 0);
    // Text goes through the date parser only; a number is a day count.
    EXPECT_EQ(errorOf([] { CDate(S(u"0")); }), errTypeMismatch);
    EXPECT_EQ(errorOf([] { CDate(S(u"12")); }), errTypeMismatch);
    EXPECT_DOUBLE_EQ(CDate(Variant(int16_t(12))).asDate(), 12);
    EXPECT_DOUBLE_EQ(CDate(S(u" 12:00 ")).asDate(), 0.5);
    // Currency from a Double is rounded once, from the Double's exact value.
    EXPECT_EQ(CCur(Variant(-922337203685476.0)).asCurrency(), -9223372036854760000);
    EXPECT_EQ(CCur(Variant(922337203685477.0)).asCurrency(), 9223372036854770000);
    EXPECT_EQ(errorOf([] { CCur(Variant(922337203685478.0)); }), errOverflow);
    EXPECT_DOUBLE_EQ(CDbl(Variant::date(36527.25)), 36527.25);
    Variant d = CDec(S(u"79228162514264337593543950335"));
    EXPECT_EQ(d.vt(), vbDecimal);
    EXPECT_EQ(CStr(d), u"79228162514264337593543950335");
    EXPECT_EQ(CStr(CDec(Variant(0.1))), u"0.1");
    EXPECT_EQ(TypeName(Variant::vector({})), u"Variant()");
    EXPECT_EQ(typeNameOf(vbArray | vbString), u"String Array");
    EXPECT_EQ(TypeName(Variant::nothing()), u"Nothing");
}
