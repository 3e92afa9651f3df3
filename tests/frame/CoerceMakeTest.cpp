#include "frame/CoerceMake.h"

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "frame/Conversions.h"
#include "frame/GlobalConstants.h"
#include "frame/Strings.h"

using namespace qvt;
using qvt::test::errorOf;

namespace {

const CoerceMake& cm = coerceMake();

}  // namespace

TEST(CoerceMake, ImagesAreLittleEndianAnsiCharacters) {
    EXPECT_EQ(cm.MakeInteger(Variant(int16_t(258))).asString(), String(u"\x02\x01"));
    EXPECT_EQ(cm.MakeBoolean(Variant(int16_t(5))).asString(), String(u"\xFF\xFF"));
    // Byte 0x80 is the euro sign in the ANSI page: the image of 1! is 00 00 80 3F.
    EXPECT_EQ(cm.MakeSingle(Variant(int16_t(1))).asString(), String(u"\0\0\u20AC?", 4));
    EXPECT_EQ(cm.MakeDate(Variant(u"1/2/2000")).asString(), cm.MakeDateFast(36527));
    EXPECT_EQ(cm.MakeLongFast(-1).asString(), String(u"\xFF\xFF\xFF\xFF"));
}

TEST(CoerceMake, ImagesRoundTrip) {
    EXPECT_EQ(cm.CoerceToInteger(cm.MakeInteger(Variant(int16_t(-2)))).asInteger(), -2);
    EXPECT_EQ(cm.CoerceToLong(cm.MakeLong(Variant(u"1/2/2000"))).asLong(), 36527);
    EXPECT_EQ(cm.CoerceToDouble(cm.MakeDouble(Variant(GlobalConstants::MinPositiveDouble))).asDouble(),
              GlobalConstants::MinPositiveDouble);
    EXPECT_EQ(cm.CoerceToCurrency(cm.MakeCurrency(Variant(1.2345))).asCurrency(), 12345);
    EXPECT_EQ(cm.CoerceToSingle(cm.MakeSingle(Variant(1.5))).asSingle(), 1.5f);
    EXPECT_TRUE(cm.CoerceToBoolean(cm.MakeBoolean(Variant(true))).asBoolean());
    // Characters past the width are ignored; text is an image too.
    EXPECT_EQ(cm.CoerceToInteger(Variant(u"abc")).asInteger(), 0x6261);
    EXPECT_EQ(cm.CoerceToInteger(Variant(int16_t(12))).asInteger(), 0x3231);
}

TEST(CoerceMake, FailuresNullEmptyTextAndErrors) {
    EXPECT_TRUE(cm.CoerceToInteger(Variant::null()).isNull());
    EXPECT_EQ(errorOf([] { cm.CoerceToInteger(Variant(u"a")); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { cm.CoerceToByte(Variant(u"")); }), errInvalidCall);
    EXPECT_TRUE(cm.MakeInteger(Variant::null()).isNull());
    EXPECT_EQ(cm.MakeInteger(Variant(u"x")).asString(), u"");
    EXPECT_EQ(errorOf([] { cm.MakeInteger(Variant(int32_t(70000))); }), errOverflow);
    EXPECT_EQ(errorOf([] { cm.MakeByte(Variant(int16_t(256))); }), errOverflow);
}

TEST(CoerceMake, DispatchersByVarType) {
    const Variant image = cm.MakeInteger(Variant(int16_t(258)));
    EXPECT_EQ(cm.CoerceToVarType(image, Variant(int16_t(2))).asInteger(), 258);
    EXPECT_TRUE(cm.CoerceToVarType(image, Variant(int16_t(0))).isEmpty());
    EXPECT_EQ(cm.CoerceToVarType(image, Variant(int16_t(8))).asString(), image.asString());
    EXPECT_TRUE(cm.CoerceToVarType(image, Variant(int16_t(14))).isNull());
    EXPECT_TRUE(cm.CoerceToVarType(image, Variant(u"abc")).isNull());
    EXPECT_EQ(cm.MakeVarType(Variant(uint8_t(65))), u"A");
    EXPECT_EQ(cm.MakeVarType(Variant::null()), u"");
    EXPECT_EQ(cm.MakeVarType(CDec(Variant(int16_t(5)))), u"5");
}

TEST(GlobalConstants, DeliberateLimitsKeepTheirBits) {
    EXPECT_EQ(GlobalConstants::MinInteger, -32767);
    EXPECT_EQ(GlobalConstants::MinLong, -2147483647);
    EXPECT_EQ(GlobalConstants::MinCurrency, -GlobalConstants::MaxCurrency);
    EXPECT_EQ(std::bit_cast<uint64_t>(GlobalConstants::MinDouble), 0xFFEFFFFFFFFFFFE2ULL);
    EXPECT_EQ(std::bit_cast<uint64_t>(GlobalConstants::MaxNegativeDouble), 0x8000001000000001ULL);
    EXPECT_EQ(std::bit_cast<uint32_t>(GlobalConstants::MinSingle), 0xFF7FFFFDU);
    EXPECT_EQ(std::bit_cast<uint32_t>(GlobalConstants::MaxNegativeSingle), 0x80000001U);
    EXPECT_EQ(CStr(Variant::date(GlobalConstants::MaxDate)), u"12/31/9999 11:59:59 PM");
    EXPECT_EQ(CStr(globalConstants().MinDecimal()), u"-79228162514264337593543950335");
}
