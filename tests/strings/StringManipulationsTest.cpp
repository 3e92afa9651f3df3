// Hashing, markers, truncation, pieces, rotation and repetition of strings.
#include <gtest/gtest.h>

#include <random>

#include "TestSupport.h"
#include "strings/StringManipulations.h"

namespace qvt {
namespace {

using test::D;
using test::errorOf;
using test::I;
using test::L;
using test::S;
constexpr auto str = test::textOf;

const Variant kMissing = Variant::missing();

StringManipulations& sm() { return stringManipulations(); }

// --- the hash -----------------------------------------------------------------------

TEST(StringManipulations, BothHashesRunTheSameRecurrenceOnAnsiCodes) {
    // ((67 * 91 + 97) * 91 + 116) mod 16777213, with the default prime.
    EXPECT_DOUBLE_EQ(CDbl(sm().HashString(S(u"Cat"))), (67.0 * 91 + 97) * 91 + 116);
    for (const char16_t* s : {u"", u"x", u"hash table", u"\u20ac\u00e9"}) {
        const double h = CDbl(sm().HashString(S(s), L(1009)));
        EXPECT_EQ(sm().HashStringFast(s, 1009), int32_t(h)) << std::string(s, s + 1);
    }
    EXPECT_DOUBLE_EQ(CDbl(sm().HashString(S(u"\u20ac"))), 128.0);  // the euro sign is ANSI 128
    EXPECT_DOUBLE_EQ(CDbl(sm().HashString(L(7), S(u"not a prime"))), 55.0);
    EXPECT_EQ(sm().HashString(L(7)).vt(), vbDouble);
}

// The remainder is taken without a division: check it against one.
TEST(StringManipulations, FastHashAgreesWithPlainRemainders) {
    std::mt19937 rng(91);
    for (int round = 0; round < 20000; ++round) {
        int32_t prime = int32_t(rng() % 23000000) + 1;
        if (round % 3 == 0) prime = int32_t(rng() % 50) + 1;
        if (round % 5 == 0) prime = -prime;
        String symbol(rng() % 6, u'a');
        for (char16_t& c : symbol) c = char16_t(1 + rng() % 127);  // ANSI codes equal to the units
        int64_t h = 0;
        bool overflow = false;
        for (char16_t c : symbol) {
            const int64_t t = h * 91 + c;
            if (t > 2147483647) {
                overflow = true;
                break;
            }
            h = t % prime;
        }
        if (overflow) EXPECT_EQ(errorOf([&] { sm().HashStringFast(symbol, prime); }), errOverflow);
        else EXPECT_EQ(sm().HashStringFast(symbol, prime), h) << "prime " << prime;
    }
    EXPECT_EQ(sm().HashStringFast(u"\x7f\x7f\x7f", -2147483647 - 1), (127 * 91 + 127) * 91 + 127);
}

TEST(StringManipulations, FastHashRaisesOnOverflowAndZeroPrime) {
    // "zzzz" stays below 2^31 - 1; a fifth character takes h * 91 past it.
    EXPECT_EQ(sm().HashStringFast(u"", 0), 0);
    EXPECT_EQ(errorOf([] { sm().HashStringFast(u"a", 0); }), errDivisionByZero);
    EXPECT_EQ(errorOf([] { sm().HashStringFast(u"zzzzz", 2147483647); }), errOverflow);
    EXPECT_EQ(errorOf([] { sm().HashStringFast(u"zzzz", 2147483647); }), 0);
    EXPECT_EQ(errorOf([] { sm().HashString(S(u"a"), D(0)); }), errDivisionByZero);
}

// --- patterns and markers ---------------------------------------------------------------

TEST(StringManipulations, GrepAnchorsBecomeLikeStars) {
    EXPECT_EQ(str(sm().GrepToLike(S(u"^a\\$"))), u"a$");
    EXPECT_EQ(str(sm().GrepToLike(S(u"\\^$"))), u"*^");
    EXPECT_EQ(str(sm().GrepToLike(S(u""))), u"**");
}

TEST(StringManipulations, MarkersResolveLikeCharacterArguments) {
    EXPECT_EQ(str(sm().DifferenceString(S(u"ab"), S(u"aB"), L(0), L(43), S(u""))), u"+ ");  // "" falls back to a blank
    EXPECT_EQ(str(sm().DifferenceString(S(u""), S(u"ab"), kMissing, S(u"="), S(u"!"))), u"!!");
    EXPECT_EQ(str(sm().ContrastStrings(S(u"aB"), S(u"Ab"), L(1))), u"aB\r\n  \r\nAb");
    EXPECT_TRUE(sm().CompareStrings(Variant::null(), S(u"a")).isNull());
}

TEST(StringManipulations, CompressSpacesUsesTheSpaceClass) {
    EXPECT_EQ(str(sm().CompressSpaces(S(u"\ta\u00a0\f b\r\n"))), u" a b ");
    EXPECT_EQ(str(sm().CompressSpaces(S(u""))), u"");
}

TEST(StringManipulations, EllipsesCutAtBlanks) {
    EXPECT_EQ(str(sm().TruncateLeftWithEllipse(S(u"one two three"), L(9))), u"... three");
    EXPECT_EQ(str(sm().TruncateRightWithEllipse(S(u"one two three"), L(9))), u"one ....");
    EXPECT_EQ(str(sm().TruncateRightWithEllipse(S(u"one two three"), L(3))), u"...");
    EXPECT_TRUE(sm().TruncateLeftWithEllipse(S(u"abc"), S(u"x")).isNull());
}

TEST(StringManipulations, QuotingDoublesOnlyASingleCharacterQuote) {
    EXPECT_EQ(str(sm().QuoteString(L(5), S(u"'"))), u"'5'");
    EXPECT_EQ(sm().DoubleQuoteString(kMissing), u"\"\"");
    EXPECT_EQ(str(sm().StripDoubleQuotes(S(u"\"a\"\"b\""))), u"a\"\"b");
    EXPECT_EQ(sm().StripDoubleQuotes(I(7)).vt(), vbInteger);
}

// --- pieces ---------------------------------------------------------------------------------

TEST(StringManipulations, MidFormsClipToTheString) {
    EXPECT_EQ(str(sm().MidString(S(u"abcdef"), L(-2))), u"abcdef");
    EXPECT_EQ(str(sm().MidString(S(u"abcdef"), S(u"x"), L(2))), u"ab");  // a bad start is 1
    EXPECT_EQ(str(sm().MidReverse(S(u"abcdef"), kMissing, L(2))), u"fe");
    EXPECT_EQ(str(sm().OverlayString(S(u"abc"), S(u"WXYZ"), L(-2))), u"YZc");
    EXPECT_EQ(str(sm().OverlayString(S(u"abc"), S(u"XY"), L(-5))), u"abc");
}

TEST(StringManipulations, RotationsAndShifts) {
    EXPECT_EQ(str(sm().RotateStringRight(S(u"abcde"), L(-7))), u"cdeab");
    EXPECT_EQ(str(sm().RotateString(S(u"abcdefgh"), L(3))), u"defabc");  // the tail goes
    EXPECT_EQ(str(sm().ShiftStringRight(S(u"abc"), L(5))), u"");
    EXPECT_EQ(errorOf([] { sm().ShiftStringLeft(S(u"abc"), L(-1)); }), errInvalidCall);
    Variant v = L(123);
    EXPECT_EQ(sm().StringShiftRight(v), int16_t(51));
    EXPECT_EQ(str(v), u"12");
    Variant empty = S(u"");
    EXPECT_EQ(errorOf([&] { sm().StringRotateLeft(empty); }), errInvalidCall);  // Asc of ""
    Variant null = Variant::null();
    EXPECT_EQ(sm().StringRotateLeft(null), 0);
}

TEST(StringManipulations, DeleteAndInsertInPlace) {
    Variant s = S(u"abcdef");
    sm().StrDel(s, L(5), L(10));
    EXPECT_EQ(str(s), u"abcd");
    sm().StrIns(s, S(u"-"), D(2.5));  // an Integer position: 2.5 rounds to 2
    EXPECT_EQ(str(s), u"a-bcd");
    Variant n = Variant::null();
    sm().StrIns(n, Variant::null());
    EXPECT_TRUE(n.isNull());
    EXPECT_EQ(str(sm().InsertString(S(u"ab"), Variant::null(), L(2))), u"ab");
}

TEST(StringManipulations, EveryNthWalks) {
    EXPECT_EQ(str(sm().CharacterEveryNthCharacter(S(u"abcdef"), L(5), L(-2))), u"eca");
    EXPECT_EQ(errorOf([] { sm().CharacterEveryNthCharacter(S(u"abc"), L(0), L(1)); }), errInvalidCall);
    EXPECT_EQ(str(sm().StringEveryNthCharacter(S(u"abcdefg"), L(6), L(2), L(-3))), u"fgcd");
    EXPECT_EQ(str(sm().StringEveryNthCharRepeated(S(u"abcdefg"), L(3))), u"adgbecf");
    EXPECT_EQ(str(sm().StringEveryNthCharRepeated(S(u"abcdefg"), L(3), Variant(true))), u"adbecf");
    EXPECT_EQ(str(sm().SeparateCharactersIntoNGroups(S(u"abcde"), L(2), S(u"|"))), u"ace|bd");
    EXPECT_EQ(str(sm().SeparateCharactersIntoNGroups(S(u"ab"), L(9), S(u"|"))), u"a|b");
}

TEST(StringManipulations, RepetitionReversalAndMerging) {
    EXPECT_EQ(str(sm().RepeatStringToLength(L(0), S(u"ab"))), u"");
    EXPECT_EQ(str(sm().RepeatString(L(2), D(65.4))), u"AA");
    EXPECT_TRUE(sm().RepeatString(L(2), Variant::missing()).isNull());
    EXPECT_EQ(str(sm().RepeatStringCharacters(S(u"ab"), L(3))), u"aaabbb");
    EXPECT_EQ(str(sm().ReverseEveryNCharacters(S(u"abcdefg"), L(3))), u"cbafedg");
    Variant odd, even;
    ASSERT_TRUE(sm().SplitStrings(odd, even, S(u"abcdefg")));
    EXPECT_EQ(str(sm().MergeStrings(odd, even)), u"abcdefg");
    EXPECT_EQ(str(sm().MergeStrings(S(u"a"), S(u"bcd"))), u"abcd");
    EXPECT_FALSE(sm().SplitStrings(odd, even, Variant::null()));
}

TEST(StringManipulations, CatFollowsConcatenationOfNull) {
    Variant to = Variant::null();
    sm().Cat(to, S(u"x"));
    EXPECT_EQ(str(to), u"x");
    sm().CatLine(to, Variant::null());
    EXPECT_EQ(str(to), u"x\r\n");
    Variant n = I(5);
    sm().CatLine(n, S(u"y"));
    EXPECT_EQ(str(n), u"5\r\ny");
}

}  // namespace
}  // namespace qvt
