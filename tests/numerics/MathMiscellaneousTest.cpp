#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "TestSupport.h"

#include "numerics/MathMiscellaneous.h"

using namespace qvt;
using namespace qvt::test;

namespace {

const MathMiscellaneous& misc() { return mathMiscellaneous(); }

}  // namespace

TEST(MathMiscellaneousRoman, RoundTripsAndCaseOfThousands) {
    for (int32_t n = 1; n <= 12000; ++n) {
        const Variant roman = misc().ArabicToRoman(L(n));
        ASSERT_EQ(CLng(misc().RomanToArabic(roman)), n) << n;
    }
    EXPECT_EQ(misc().ArabicToRoman(I(1994)).asString(), u"MCMXCIV");
    EXPECT_EQ(misc().ArabicToRoman(I(4000)).asString(), u"Mv");
    EXPECT_EQ(misc().ArabicToRoman(L(3162277)).asString(), u"mmmclxMMCCLXXVII");
    EXPECT_EQ(misc().ArabicDigitToRoman(I(9), I(3)).asString(), u"Mx");
    EXPECT_EQ(misc().ArabicToRoman(Variant::date(36527)).asString(), u"MM");  // its year
}

TEST(MathMiscellaneousRoman, RangesAndBadLetters) {
    EXPECT_EQ(misc().ArabicToRoman(I(0)).asString(), u"");
    EXPECT_EQ(misc().ArabicToRoman(L(4000000)).asString(), u"");
    // The digit count is rounded up into power 7, which has no letters.
    EXPECT_EQ(errorOf([] { misc().ArabicToRoman(L(3162278)); }), errInvalidUseOfNull);
    EXPECT_TRUE(misc().ArabicDigitToRoman(I(5), I(7)).isNull());
    EXPECT_TRUE(misc().RomanToArabic(S(u"iv")).isNull());
    EXPECT_EQ(CLng(misc().RomanToArabic(S(u"IIII"))), 4);  // not checked for form
    EXPECT_EQ(misc().RomanToArabic(S(u"")).vt(), vbLong);
    EXPECT_EQ(errorOf([] { misc().RomanToArabic(S(u"X\u0100")); }), errSubscript);
}

TEST(MathMiscellaneousBases, RoundTripsInEveryBase) {
    for (int base = 2; base <= 36; ++base)
        for (double n : {0.0, 1.0, 35.0, 255.0, 123456789.0, -2147483647.0}) {
            const Variant text = misc().NumberToBaseX(D(n), I(base));
            ASSERT_EQ(CDbl(misc().BaseXToNumber(text, I(base))), n) << base << " " << n;
            if (n >= 0) {
                ASSERT_EQ(misc().BaseXToLong(text.asString(), uint8_t(base)), int32_t(n));
            }
        }
}

TEST(MathMiscellaneousBases, EdgesOfTheConversions) {
    EXPECT_EQ(misc().BaseXToLong(u"ff", 16), 255);
    EXPECT_EQ(misc().BaseXToLong(u"1G1", 16), 17);  // G is passed over
    EXPECT_EQ(misc().BaseXToLong(u"12", 1), 1);     // base 2
    EXPECT_EQ(misc().BaseXToLong(u"ZZZZZZZ", 36), -1);
    EXPECT_EQ(CDbl(misc().BaseXToNumber(S(u"ZZZZZZZ"), I(36))), 78364164095.0);
    EXPECT_EQ(errorOf([] { misc().NumberToBaseX(D(3e9), I(16)); }), errOverflow);
    EXPECT_EQ(errorOf([] { misc().NumberToBaseX(I(5), I(1)); }), 14);
    EXPECT_TRUE(misc().NumberToBaseX(Variant::null()).isNull());
}

TEST(MathMiscellaneousCompass, PointsRoundTripAndRoundToEven) {
    const char16_t* points[] = {u"N",  u"NNE", u"NE", u"ENE", u"E",  u"ESE", u"SE", u"SSE",
                                u"S",  u"SSW", u"SW", u"WSW", u"W",  u"WNW", u"NW", u"NNW"};
    for (int k = 0; k < 16; ++k) {
        EXPECT_EQ(misc().DegreesToDirection(D(k * 22.5), I(3)).asString(), points[k]);
        EXPECT_EQ(CDbl(misc().DirectionToDegrees(S(points[k]))), k * 22.5);
    }
    EXPECT_EQ(misc().DegreesToDirection(I(350), I(1)).asString(), u"N");
    EXPECT_EQ(misc().DegreesToDirection(I(45), I(1)).asString(), u"N");   // 0.5 rounds to 0
    EXPECT_EQ(misc().DegreesToDirection(I(135), I(1)).asString(), u"S");  // 1.5 rounds to 2
    EXPECT_EQ(misc().DegreesToDirection(I(-90)).asString(), u"W");
    EXPECT_EQ(misc().DegreesToDirection(I(315), I(9)).asString(), u"NW");  // clamped to 3
    EXPECT_EQ(CDbl(misc().DirectionToDegrees(S(u"nne"))), 22.5);
    EXPECT_EQ(misc().DirectionToDegrees(S(u"XYZ")).asInteger(), -1);
}

TEST(MathMiscellaneous, TelevisionChannelPlan) {
    EXPECT_EQ(CDbl(misc().TelevisionFrequency(I(14))), 470);
    EXPECT_EQ(CDbl(misc().TelevisionFrequency(I(14), Variant(true))), 120);
    EXPECT_EQ(CDbl(misc().TelevisionFrequency(I(6))), 82);
    EXPECT_EQ(CDbl(misc().TelevisionFrequency(I(53), Variant(true))), 396);
    EXPECT_EQ(CDbl(misc().TelevisionFrequency(S(u"t-07"), Variant(true))), 5.75);
    EXPECT_EQ(CDbl(misc().TelevisionFrequency(I(2), Variant::missing(), S(u"Sound"))), 59.75);
    EXPECT_NEAR(CDbl(misc().TelevisionFrequency(I(2), Variant::missing(), S(u"co"))), 54 + 17.0 / 6, 1e-12);
    EXPECT_TRUE(misc().TelevisionFrequency(I(84)).isNull());
    EXPECT_TRUE(misc().TelevisionFrequency(I(54), Variant(true)).isNull());
    EXPECT_TRUE(misc().TelevisionFrequency(I(2), Variant::missing(), S(u"xx")).isNull());
}

TEST(MathMiscellaneous, PhysicalFormulas) {
    EXPECT_EQ(CDbl(misc().WindChill(I(3), I(40))), 40);
    EXPECT_NEAR(CDbl(misc().WindChill(I(10), I(40))), 28.128749378026534, 1e-10);
    EXPECT_TRUE(misc().WindChill(I(10), S(u"x")).isNull());
    // A positive frequency gives Empty; the formula only meets values whose
    // logarithm fails.
    EXPECT_TRUE(misc().FrequencyToBandNumber(L(3000000)).isEmpty());
    EXPECT_EQ(errorOf([] { misc().FrequencyToBandNumber(I(0)); }), errInvalidCall);
    for (int n = 2; n <= 6; ++n)
        EXPECT_NEAR(CDbl(misc().ChebychevT(I(n), D(0.3))), std::cos(n * std::acos(0.3)), 1e-12) << n;
    EXPECT_EQ(misc().ChebychevT(I(1), I(7)).vt(), vbInteger);
    EXPECT_EQ(CDbl(misc().ChebychevT(I(-1), D(0.5))), 1.0);
    EXPECT_TRUE(misc().ChebychevT(L(40000), D(0.5)).isNull());  // overflow caught
}

TEST(MathMiscellaneous, LimitsOfTheValueTypes) {
    EXPECT_EQ(misc().MinOfVarType(I(2)).asInteger(), -32767);
    EXPECT_EQ(misc().MaxOfVarType(I(17)).vt(), vbInteger);
    EXPECT_EQ(misc().MinOfVarType(I(3)).asLong(), -2147483647);
    EXPECT_EQ(std::bit_cast<uint32_t>(misc().MinOfVarType(I(4)).asSingle()), 0xFF7FFFFDu);
    EXPECT_EQ(std::bit_cast<uint64_t>(misc().MaxOfVarType(I(5)).asDouble()), 0x7FEFFFFFFFFFFFE2ull);
    EXPECT_EQ(misc().MaxOfVarType(I(6)).asCurrency(), INT64_MAX);
    EXPECT_EQ(misc().MinOfVarType(I(7)).asDate(), -657434);
    EXPECT_TRUE(misc().MinOfVarType(I(14)).asDecimal().negative);
    EXPECT_FALSE(misc().MaxOfVarType(I(11)).asBoolean());
    EXPECT_TRUE(misc().MaxOfVarType(I(8)).isNull());
    EXPECT_TRUE(misc().MaxOfVarType(S(u"x")).isNull());
}
