#include "strings/FormatsJustifies.h"

#include <gtest/gtest.h>

#include "TestSupport.h"

using namespace qvt;
using qvt::test::L;
using qvt::test::S;

namespace {

String justify(const char16_t* text, int32_t width, const char16_t* codes, const char16_t* fill = u" ") {
    return CStr(formatsJustifies().JustifyText(S(text), L(width), S(codes), S(fill)));
}

}  // namespace

TEST(FormatsJustifies, AlignmentPadsWithTheFillStringRepeated) {
    EXPECT_EQ(justify(u"ab", 7, u"<", u"-="), u"ab-=-=-");
    EXPECT_EQ(justify(u"ab", 5, u">"), u"   ab");
    EXPECT_EQ(justify(u"ab", 5, u"^["), u" ab  ");
    EXPECT_EQ(justify(u"ab", 5, u"^]"), u"  ab ");
    EXPECT_EQ(justify(u"ab", 6, u"^]"), u"  ab  ");
    EXPECT_EQ(justify(u"ab", 5, u"%>"), u"ab");
    EXPECT_EQ(justify(u" ab ", 9, u"."), u" ab ");
    EXPECT_EQ(justify(u"ab", 4, u"><"), u"  ab");  // the first alignment code counts
}

TEST(FormatsJustifies, OversizedLinesAreKeptCutOrBlanked) {
    EXPECT_EQ(justify(u"abcdef", 3, u"<"), u"abcdef");
    EXPECT_EQ(justify(u"abcdef", 3, u"<!"), u"abc");
    EXPECT_EQ(justify(u"abcdef", 3, u">!"), u"def");
    EXPECT_EQ(justify(u"abcdef", 3, u"<=", u"*"), u"***");
    EXPECT_EQ(justify(u"abcdef", 0, u"!"), u"");
}

TEST(FormatsJustifies, SpreadWidensTheGapsBetweenWords) {
    EXPECT_EQ(justify(u"a bb c", 10, u"_"), u"a   bb   c");
    EXPECT_EQ(justify(u"a b c", 8, u"_"), u"a   b  c");
    EXPECT_EQ(justify(u"a b c", 8, u"_]"), u"a  b   c");
    EXPECT_EQ(justify(u"word", 6, u"_"), u"word  ");
}

TEST(FormatsJustifies, NullAndBadArgumentsGiveNull) {
    EXPECT_TRUE(formatsJustifies().JustifyText(Variant::null(), L(3)).isNull());
    EXPECT_TRUE(formatsJustifies().JustifyText(S(u"a"), S(u"wide")).isNull());
    EXPECT_EQ(CStr(formatsJustifies().JustifyText(L(42), S(u"4"))), u"42  ");
}
