#include "frame/Strings.h"

#include <gtest/gtest.h>

#include "TestSupport.h"

#include <chrono>

namespace qvt {
namespace {

using qvt::test::errorOf;


TEST(Strings, PiecesClampPastTheEndAndRejectBadArguments) {
    EXPECT_EQ(Mid(u"abc", 4), u"");
    EXPECT_EQ(Mid(u"abc", 2, 9), u"bc");
    EXPECT_EQ(Mid(u"abc", 3, 0), u"");
    EXPECT_EQ(Left(u"abc", 9), u"abc");
    EXPECT_EQ(Right(u"abc", 9), u"abc");
    EXPECT_EQ(Mid(StringView(u"a\0b\0", 4), 2), StringView(u"\0b\0", 3));  // NUL is ordinary
    EXPECT_EQ(errorOf([] { Mid(u"abc", 0); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Mid(u"abc", 1, -1); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Left(u"abc", -1); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Right(u"abc", -1); }), errInvalidCall);
}

TEST(Strings, MidStatementOverwritesWithoutChangingLength) {
    String s = u"abcdef";
    MidAssign(s, 2, -1, u"XY");
    EXPECT_EQ(s, u"aXYdef");
    MidAssign(s, 5, 1, u"QRS");
    EXPECT_EQ(s, u"aXYdQf");
    MidAssign(s, 6, -1, u"123");
    EXPECT_EQ(s, u"aXYdQ1");
    EXPECT_EQ(errorOf([&] { MidAssign(s, 7, -1, u"z"); }), errInvalidCall);
}

TEST(Strings, TrimCaseAndFill) {
    EXPECT_EQ(Trim(u"  a b  "), u"a b");
    EXPECT_EQ(RTrim(u"  a  "), u"  a");
    EXPECT_EQ(Trim(u"\ta\t"), u"\ta\t");
    // The page's own letters: é, š, œ, ÿ/Ÿ; ß has no single upper case.
    EXPECT_EQ(UCase(u"abC1\u00e9\u0161\u0153\u00ff\u00df"), u"ABC1\u00c9\u0160\u0152\u0178\u00df");
    EXPECT_EQ(LCase(u"ABc1\u00c9\u0160\u0178"), u"abc1\u00e9\u0161\u00ff");
    EXPECT_EQ(StringOf(3, u"xy"), u"xxx");
    EXPECT_EQ(StringOfCode(2, 65), u"AA");
    EXPECT_EQ(StringOfCode(1, 128 + 256), u"\u20ac");  // codes wrap Mod 256
    EXPECT_EQ(LSet(u"abc", 5), u"abc  ");
    EXPECT_EQ(LSet(u"abcdef", 4), u"abcd");
    EXPECT_EQ(errorOf([] { Space(-1); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { StringOf(2, u""); }), errInvalidCall);
}

TEST(Strings, InStrPositionConventions) {
    EXPECT_EQ(InStr(1, u"abc", u""), 1);
    EXPECT_EQ(InStr(3, u"abc", u""), 3);
    EXPECT_EQ(InStr(4, u"abc", u""), 0);
    EXPECT_EQ(InStr(1, u"", u""), 0);
    EXPECT_EQ(InStr(4, u"abcabc", u"c"), 6);
    EXPECT_EQ(InStr(5, u"abcabc", u"abc"), 0);
    EXPECT_EQ(InStr(1, u"xABC", u"bc", vbTextCompare), 3);
    EXPECT_EQ(InStr(1, u"\u00c9T\u00c9", u"\u00e9t\u00e9", vbTextCompare), 1);
    EXPECT_EQ(errorOf([] { InStr(0, u"abc", u"a"); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { InStr(1, u"abc", u"a", 3); }), errInvalidCall);
}

TEST(Strings, InStrRevKeepsTheWholeMatchBeforeStart) {
    EXPECT_EQ(InStrRev(u"abcabc", u"b", 4), 2);
    EXPECT_EQ(InStrRev(u"abcabc", u"bc", 5), 2);  // "bc" at 5 would end past 5
    EXPECT_EQ(InStrRev(u"abcABC", u"ab", -1, vbTextCompare), 4);
    EXPECT_EQ(InStrRev(u"abc", u""), 3);
    EXPECT_EQ(InStrRev(u"abc", u"", 2), 2);
    EXPECT_EQ(InStrRev(u"abc", u"c", 9), 0);
    EXPECT_EQ(InStrRev(u"", u""), 0);
    EXPECT_EQ(errorOf([] { InStrRev(u"abc", u"a", 0); }), errInvalidCall);
}

TEST(Strings, ReplaceIsLeftToRightAndNonOverlapping) {
    EXPECT_EQ(Replace(u"aaa", u"aa", u"b"), u"ba");
    EXPECT_EQ(Replace(u"aXax", u"x", u"-", 1, -1, vbTextCompare), u"a-a-");
    EXPECT_EQ(Replace(u"a.b.c", u".", u"::"), u"a::b::c");
    EXPECT_EQ(Replace(u"a.b.c.d", u".", u"-", 1, 2), u"a-b-c.d");
    EXPECT_EQ(Replace(u"a.b.c", u".", u"-", 3), u"b-c");  // text before start is dropped
    EXPECT_EQ(Replace(u"abc", u"", u"x"), u"abc");
    EXPECT_EQ(Replace(u"abc", u"b", u"x", 4), u"");
    EXPECT_EQ(errorOf([] { Replace(u"abc", u"b", u"x", 0); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Replace(u"abc", u"b", u"x", 1, -2); }), errInvalidCall);
}

TEST(Strings, StrCompOrdersByUnitOrByTextKey) {
    EXPECT_EQ(StrComp(u"a", u"A"), 1);
    EXPECT_EQ(StrComp(u"B", u"a"), -1);
    EXPECT_EQ(StrComp(u"B", u"a", vbTextCompare), 1);
    EXPECT_EQ(StrComp(u"ab", u"AB", vbDatabaseCompare), 0);
    EXPECT_EQ(StrComp(u"ab", u"abc", vbTextCompare), -1);
    EXPECT_EQ(StrComp(u"\uffff", u"a"), 1);  // units compare unsigned
    EXPECT_EQ(errorOf([] { StrComp(u"a", u"b", 3); }), errInvalidCall);
}

TEST(Strings, LikeWildcardsAndLists) {
    EXPECT_TRUE(Like(u"", u"*"));
    EXPECT_FALSE(Like(u"", u"?"));
    EXPECT_TRUE(Like(u"abcbc", u"a*bc"));
    EXPECT_FALSE(Like(u"abcb", u"a*bc"));
    EXPECT_TRUE(Like(u"a1", u"a#"));
    EXPECT_FALSE(Like(u"ab", u"a#"));
    EXPECT_TRUE(Like(u"xQ9", u"[a-z][A-CP-R][!a-z]"));
    EXPECT_TRUE(Like(u"*?#[", u"[*][?][#][[]"));
    EXPECT_TRUE(Like(u"-", u"[a-]"));
    EXPECT_TRUE(Like(u"a]", u"a]"));
    EXPECT_TRUE(Like(u"ab", u"a[]b"));
    EXPECT_TRUE(Like(u"B", u"[a-c]", vbTextCompare));
    EXPECT_FALSE(Like(u"B", u"[a-c]", vbBinaryCompare));
    EXPECT_TRUE(Like(u"\u00c9T\u00c9", u"\u00e9t*", vbTextCompare));
}

TEST(Strings, LikeRejectsMalformedPatternsAndStaysLinear) {
    EXPECT_EQ(errorOf([] { Like(u"a", u"[a"); }), 93);
    EXPECT_EQ(errorOf([] { Like(u"x", u"a[z-a]"); }), 93);  // raised even when the match fails first

    // Classic blow-up case for a backtracking matcher.
    const String text(20000, u'a');
    const String pattern = u"*a*a*a*a*a*a*a*a*a*a*b";
    const auto t0 = std::chrono::steady_clock::now();
    EXPECT_FALSE(Like(text, pattern));
    EXPECT_TRUE(Like(text + u"b", pattern));
    EXPECT_LT(std::chrono::steady_clock::now() - t0, std::chrono::seconds(2));
}

TEST(Strings, AnsiAndWideCharacterCodes) {
    for (int code = 0; code < 256; ++code) EXPECT_EQ(Asc(Chr(code)), code);
    EXPECT_EQ(Chr(128), u"\u20ac");
    EXPECT_EQ(Asc(u"\u0153"), 0x9C);
    EXPECT_EQ(Asc(u"\u3042"), '?');
    EXPECT_EQ(AscW(u"\u20ac"), 0x20AC);
    EXPECT_EQ(AscW(u"\u8000"), -32768);
    EXPECT_EQ(AscW(u"\uffff"), -1);
    EXPECT_EQ(ChrW(-1), u"\uffff");
    EXPECT_EQ(errorOf([] { Asc(u""); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { Chr(256); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { ChrW(65536); }), errInvalidCall);
}

TEST(Strings, StrConvCaseAndAnsiPacking) {
    EXPECT_EQ(StrConv(u"hello WORLD", 3), u"Hello World");
    EXPECT_EQ(StrConv(u"o'NEIL-smith\tjr\u00e9", 3), u"O'neil-smith\tJr\u00e9");
    // Two ANSI bytes to a unit, low byte first; an odd count pads with 0.
    EXPECT_EQ(StrConv(u"AB\u20ac", 128), StringView(u"\u4241\u0080", 2));
    EXPECT_EQ(StrConv(u"\u4241\u0080", 64), StringView(u"AB\u20ac\0", 4));
    EXPECT_EQ(StrConv(StrConv(u"abcd", 128), 64), u"abcd");
    EXPECT_EQ(StrConv(u"ab", 128 + 1), u"\u4241");  // case first, then packing
    EXPECT_EQ(StrConv(u"\u6261", 64 + 1), u"AB");   // unpacking first, then case
    EXPECT_EQ(errorOf([] { StrConv(u"a", 4); }), errInvalidCall);
    EXPECT_EQ(errorOf([] { StrConv(u"a", 64 + 128); }), errInvalidCall);
}

TEST(Strings, StrHexOctOfNumberVariants) {
    EXPECT_EQ(Str(Variant(int16_t(5))), u" 5");
    EXPECT_EQ(Str(Variant(int32_t(-5))), u"-5");
    EXPECT_EQ(Str(Variant(1.5)), u" 1.5");
    EXPECT_EQ(Str(Variant(-0.25)), u"-.25");
    EXPECT_EQ(Str(Variant(true)), u"-1");
    EXPECT_EQ(Str(Variant()), u" 0");
    EXPECT_EQ(errorOf([] { Str(Variant::null()); }), errInvalidUseOfNull);

    EXPECT_EQ(Hex(Variant()), u"0");
    EXPECT_EQ(Hex(Variant(int16_t(-1))), u"FFFF");
    EXPECT_EQ(Hex(Variant(true)), u"FFFF");
    EXPECT_EQ(Hex(Variant(int32_t(-1))), u"FFFFFFFF");
    EXPECT_EQ(Hex(Variant(-1.0)), u"FFFFFFFF");
    EXPECT_EQ(Hex(Variant(2.5)), u"2");  // half to even
    EXPECT_EQ(Hex(Variant(u"4096")), u"1000");
    EXPECT_EQ(Oct(Variant(int16_t(-1))), u"177777");
    EXPECT_EQ(Oct(Variant(int32_t(-1))), u"37777777777");
    EXPECT_EQ(errorOf([] { Hex(Variant::null()); }), errInvalidUseOfNull);
    EXPECT_EQ(errorOf([] { Hex(Variant(4294967296.0)); }), errOverflow);
}

TEST(Strings, LenOfVariants) {
    EXPECT_TRUE(Len(Variant::null()).isNull());
    EXPECT_EQ(Len(Variant(int32_t(-123))).asLong(), 4);
    EXPECT_EQ(Len(Variant(StringView(u"a\0\0", 3))).asLong(), 3);
}

}  // namespace
}  // namespace qvt
