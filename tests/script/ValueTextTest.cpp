// The machine output of the script host: a stable interface.
#include <gtest/gtest.h>

#include <limits>

#include "script/ValueText.h"

namespace qvt {
namespace {

class Thing : public Object {
public:
    std::u16string_view className() const noexcept override { return u"Units"; }
};

TEST(Json, Scalars) {
    EXPECT_EQ(toJson(Variant()), R"({"type":"Empty"})");
    EXPECT_EQ(toJson(Variant::null()), R"({"type":"Null"})");
    EXPECT_EQ(toJson(Variant(int16_t(-5))), R"({"type":"Integer","value":-5})");
    EXPECT_EQ(toJson(Variant(int32_t(-2147483647 - 1))), R"({"type":"Long","value":-2147483648})");
    EXPECT_EQ(toJson(Variant(uint8_t(255))), R"({"type":"Byte","value":255})");
    EXPECT_EQ(toJson(Variant(true)), R"({"type":"Boolean","value":true})");
    EXPECT_EQ(toJson(Variant::error(2042)), R"({"type":"Error","value":2042})");
    EXPECT_EQ(toJson(Variant::missing()), R"({"type":"Error","value":-2147352572})");
}

TEST(Json, FloatsAreShortestRoundTripInTheirOwnType) {
    EXPECT_EQ(toJson(Variant(0.1 + 0.2)), R"({"type":"Double","value":0.30000000000000004})");
    EXPECT_EQ(toJson(Variant(2.365882365)), R"({"type":"Double","value":2.365882365})");
    EXPECT_EQ(toJson(Variant(1e300)), R"({"type":"Double","value":1e+300})");
    EXPECT_EQ(toJson(Variant(0.1f)), R"({"type":"Single","value":0.1})");
    EXPECT_EQ(toJson(Variant(1.0f / 3.0f)), R"({"type":"Single","value":0.33333334})");
    EXPECT_EQ(toJson(Variant(std::numeric_limits<double>::denorm_min())),
              R"({"type":"Double","value":5e-324})");
}

TEST(Json, CurrencyAndDecimalAreExactText) {
    EXPECT_EQ(toJson(Variant::currency(15000)), R"({"type":"Currency","value":"1.5"})");
    EXPECT_EQ(toJson(Variant::currency(-1)), R"({"type":"Currency","value":"-0.0001"})");
    EXPECT_EQ(toJson(Variant::currency(std::numeric_limits<int64_t>::min())),
              R"({"type":"Currency","value":"-922337203685477.5808"})");
    EXPECT_EQ(toJson(Variant::currency(0)), R"({"type":"Currency","value":"0"})");
    Decimal d;
    d.lo = 15;
    d.scale = 1;
    EXPECT_EQ(toJson(Variant(d)), R"({"type":"Decimal","value":"1.5"})");
    d.lo = ~uint64_t(0);
    d.hi = ~uint32_t(0);
    d.scale = 28;
    d.negative = true;
    EXPECT_EQ(toJson(Variant(d)), R"({"type":"Decimal","value":"-7.9228162514264337593543950335"})");
    d = Decimal{};
    d.lo = 5;
    d.scale = 3;
    EXPECT_EQ(toJson(Variant(d)), R"({"type":"Decimal","value":"0.005"})");
    d.lo = 500;
    EXPECT_EQ(toJson(Variant(d)), R"({"type":"Decimal","value":"0.5"})");
}

TEST(Json, StringsKeepEveryUnit) {
    EXPECT_EQ(toJson(Variant(u"a\"b\\c\n\t")), R"({"type":"String","value":"a\"b\\c\n\t"})");
    EXPECT_EQ(toJson(Variant(String(u"a\0b", 3))), R"({"type":"String","value":"a\u0000b"})");
    EXPECT_EQ(toJson(Variant(u"\u00e9\u20ac")), "{\"type\":\"String\",\"value\":\"\xc3\xa9\xe2\x82\xac\"}");
    EXPECT_EQ(toJson(Variant(u"\U0001F600")), "{\"type\":\"String\",\"value\":\"\xf0\x9f\x98\x80\"}");
    String lone = {0xD800, u'x', 0xDC00};
    EXPECT_EQ(toJson(Variant(lone)), R"({"type":"String","value":"\ud800x\udc00"})");
}

TEST(Json, ObjectsAndArrays) {
    EXPECT_EQ(toJson(Variant::nothing()), R"({"type":"Object","value":null})");
    EXPECT_EQ(toJson(Variant(static_cast<Object*>(new Thing()))), R"({"type":"Object","class":"Units"})");
    EXPECT_EQ(toJson(Variant::vector({})), R"({"type":"Variant Array","bounds":[[0,-1]],"value":[]})");
    EXPECT_EQ(toJson(Variant::unallocatedArray(vbString)), R"({"type":"String Array","bounds":[],"value":[]})");
    // Two dimensions nest by the first: value[i][j] is element (i, j).
    Variant m = Variant::array(vbInteger, {ArrayBound{1, 2}, ArrayBound{0, 1}});
    int32_t subs[2];
    for (int i = 1; i <= 2; ++i)
        for (int k = 0; k <= 1; ++k) {
            subs[0] = i;
            subs[1] = k;
            m.arrayForWrite().at(subs) = Variant(int16_t(i * 10 + k));
        }
    EXPECT_EQ(toJson(m),
              R"({"type":"Integer Array","bounds":[[1,2],[0,1]],"value":[[{"type":"Integer","value":10},)"
              R"({"type":"Integer","value":11}],[{"type":"Integer","value":20},{"type":"Integer","value":21}]]})");
    EXPECT_EQ(toPrintText(m), "{{10, 11}, {20, 21}}");
}

TEST(Json, Errors) {
    RuntimeError e(13, u"VBA.CInt", u"Type mismatch");
    EXPECT_EQ(errorToJson(e), R"({"error":13,"description":"Type mismatch","source":"VBA.CInt"})");
}

TEST(Utf8, BadBytesBecomeReplacementCharacters) {
    EXPECT_EQ(fromUtf8("a\xff" "b"), String(u"a\uFFFDb"));
    EXPECT_EQ(fromUtf8("\xc3"), String(u"\uFFFD"));
    EXPECT_EQ(fromUtf8("\xc0\x80"), String(u"\uFFFD\uFFFD")) << "overlong forms are refused";
    EXPECT_EQ(fromUtf8("\xed\xa0\x80"), String(u"\uFFFD\uFFFD\uFFFD")) << "encoded surrogates are refused";
    EXPECT_EQ(toUtf8(fromUtf8("\xf0\x9f\x98\x80 \xc3\xa9")), "\xf0\x9f\x98\x80 \xc3\xa9");
}

}  // namespace
}  // namespace qvt
