// StringSearches: tokens, positions, counts and pieces, in both compare
// modes, with the fix-up conventions of the plain members and the typed
// behaviour of the Fast forms.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "TestSupport.h"
#include "frame/Strings.h"
#include "strings/StringSearches.h"

namespace qvt {
namespace {

using test::errorOf;
using test::L;
using test::S;

const Variant kMissing = Variant::missing();
constexpr int32_t kBinary = vbBinaryCompare, kText = vbTextCompare;
String str(const Variant& v) { return v.isString() ? v.asString() : u"<not text>"; }
const StringSearches& ss() { return stringSearches(); }

// A found position is a Long, "not found" an Integer 0.
void expectPosition(const Variant& v, int32_t p) {
    if (p == 0) {
        ASSERT_EQ(v.vt(), vbInteger);
        EXPECT_EQ(v.asInteger(), 0);
    } else {
        ASSERT_EQ(v.vt(), vbLong);
        EXPECT_EQ(v.asLong(), p);
    }
}

// --- tokens ----------------------------------------------------------------------

TEST(GetToken, CutsTheSourceInPlaceAndEndsWithoutATrailingEmptyToken) {
    Variant s = S(u"a,,b,");
    std::vector<String> tokens;
    while (!s.asString().empty()) tokens.push_back(str(ss().GetToken(s, S(u","), kMissing)));
    EXPECT_EQ(tokens, (std::vector<String>{u"a", u"", u"b"}));
    EXPECT_EQ(str(ss().GetToken(s, S(u","), kMissing)), u"");  // an empty source gives "" again
}

TEST(GetToken, CompareModeDecidesWhetherTheSeparatorMatchesAcrossCase) {
    Variant s = S(u"aXbxc");
    EXPECT_EQ(str(ss().GetToken(s, S(u"x"), kMissing)), u"aXb");
    EXPECT_EQ(str(s), u"c");
    s = S(u"aXbxc");
    EXPECT_EQ(str(ss().GetToken(s, S(u"x"), L(kText))), u"a");
    EXPECT_EQ(str(s), u"bxc");
}

TEST(GetToken, AnUnusableArgumentGivesNullAndAFixedUpSourceStaysText) {
    Variant s = Variant::null();
    EXPECT_TRUE(ss().GetToken(s, S(u","), kMissing).isNull());
    EXPECT_TRUE(s.isNull());
    s = Variant(12.5);
    EXPECT_TRUE(ss().GetToken(s, Variant::null(), kMissing).isNull());
    EXPECT_EQ(str(s), u"12.5");  // the fix-up worked in place before the separator failed
    // The compare argument is never looked at with an empty separator.
    s = S(u"abc");
    EXPECT_EQ(str(ss().GetToken(s, S(u""), L(99))), u"abc");
    s = S(u"abc");
    EXPECT_EQ(errorOf([&] { ss().GetToken(s, S(u"b"), L(99)); }), errInvalidCall);
}

TEST(GetTokenBufferedFast, GivesTheSameTokensAsTheUnbufferedScanner) {
    std::mt19937 rng(7);
    for (int round = 0; round < 20; ++round) {
        // Tokens up to 3000 units: always shorter than the buffered text. In
        // text mode the separator is written in either case.
        const int32_t mode = round % 2 ? kText : kBinary;
        const StringView sep = u"<z>";
        String text;
        const int n = int(rng() % 200);
        for (int i = 0; i < n; ++i) {
            text.append(rng() % 3000, char16_t(u'a' + rng() % 3));
            text.append(mode == kText && rng() % 2 ? u"<Z>" : u"<z>");
        }
        if (rng() % 2) text.append(u"tail");

        String plain = text;
        std::vector<String> expected;
        while (!plain.empty()) expected.push_back(ss().GetTokenFast(plain, sep, mode));

        StringView rest = text;
        TokenBuffer buffer;
        std::vector<String> got;
        while (buffer.more(rest)) got.push_back(ss().GetTokenBufferedFast(rest, buffer, sep, mode));
        EXPECT_EQ(got, expected) << "round " << round;
    }
}

TEST(GetTokenBufferedFast, TheStringFormKeepsTheLastTokenInTheBuffer) {
    String value = u"a,b", buffer;
    EXPECT_EQ(ss().GetTokenBufferedFast(value, buffer, u",", kBinary), u"a");
    EXPECT_EQ(value, u"");
    EXPECT_EQ(buffer, u"b");
    for (int i = 0; i < 2; ++i) EXPECT_EQ(ss().GetTokenBufferedFast(value, buffer, u",", kBinary), u"b");
    EXPECT_EQ(buffer, u"b");
    // Only a block is moved to the buffer at a time, so a separator beyond
    // the buffered text is not seen: the rest comes back whole.
    value = String(20000, u'x') + u",y";
    buffer.clear();
    EXPECT_EQ(ss().GetTokenBufferedFast(value, buffer, u",", kBinary).size(), 20002u);
}

TEST(GetTokenBufferedFast, TokenizesTenMegabytesInOnePass) {
    // 10 MB of 40-unit lines. Each cut costs in proportion to its token (the
    // buffer is never recopied per token), so this finishes quickly; the
    // quadratic scanner would take minutes.
    const String line = String(39, u'q') + u"\n";
    String text;
    const size_t lines = (size_t(10) << 20) / line.size();
    text.reserve(lines * line.size());
    for (size_t i = 0; i < lines; ++i) text += line;
    StringView rest = text;
    TokenBuffer buffer;
    size_t count = 0, units = 0;
    while (buffer.more(rest)) {
        const String token = ss().GetTokenBufferedFast(rest, buffer, u"\n", kBinary);
        ++count;
        units += token.size();
    }
    EXPECT_EQ(count, lines);
    EXPECT_EQ(units, lines * 39);
}

TEST(GetTokenCharSeps, AnyOneCharacterEndsTheToken) {
    Variant s = S(u"a;B,c");
    EXPECT_EQ(str(ss().GetTokenCharSeps(s, S(u",;"), kMissing)), u"a");
    EXPECT_EQ(str(s), u"B,c");
    EXPECT_EQ(str(ss().GetTokenCharSeps(s, S(u"b"), L(kText))), u"");
    EXPECT_EQ(str(s), u",c");
}

TEST(GetTokenRuns, SkippedTextGoesAndTheTerminatorStays) {
    Variant s = S(u"  ab1-cd");
    EXPECT_EQ(str(ss().GetTokenAlphanumeric(s)), u"ab1");
    EXPECT_EQ(str(s), u"-cd");
    s = S(u"\t x\u00e9y\u00a0z");  // é is a letter of the page; no-break space is a space
    EXPECT_EQ(str(ss().GetTokenNonSpace(s)), u"x\u00e9y");
    EXPECT_EQ(str(s), u"\u00a0z");
}

TEST(GetPossiblyQuotedField, TypesUnquotedFieldsOnly) {
    Variant line = S(u"12,\"34\",1/2/2000,x");
    const Variant a = ss().GetPossiblyQuotedField(line, kMissing, kMissing, kMissing);
    const Variant b = ss().GetPossiblyQuotedField(line, kMissing, kMissing, kMissing);
    const Variant c = ss().GetPossiblyQuotedField(line, kMissing, kMissing, kMissing);
    const Variant d = ss().GetPossiblyQuotedField(line, kMissing, kMissing, kMissing);
    test::expectNumber(a, vbDouble, 12);
    EXPECT_EQ(str(b), u"34");
    ASSERT_EQ(c.vt(), vbDate);
    EXPECT_EQ(c.asDate(), 36527);
    EXPECT_EQ(str(d), u"x");
    EXPECT_EQ(str(line), u"");
}

TEST(GetPossiblyQuotedField, LongQuotesAndTextCompare) {
    // A two-unit quote, matched across case; text after the close is dropped.
    Variant line = S(u"QQa;bqqjunk;rest");
    EXPECT_EQ(str(ss().GetPossiblyQuotedField(line, S(u"qq"), S(u";"), L(kText))), u"a;b");
    EXPECT_EQ(str(line), u"rest");
    // Closed with no separator after it: the rest of the line goes too.
    line = S(u"qqabqqtail");
    EXPECT_EQ(str(ss().GetPossiblyQuotedField(line, S(u"qq"), S(u";"), kMissing)), u"ab");
    EXPECT_EQ(str(line), u"");
    // Unclosed: everything after the first unit, whatever the quote's length.
    line = S(u"qqabc");
    EXPECT_EQ(str(ss().GetPossiblyQuotedField(line, S(u"qq"), kMissing, kMissing)), u"qabc");
    EXPECT_EQ(str(line), u"");
}

// --- positions ----------------------------------------------------------------------

TEST(InStrReverse, AgreesWithAPlainBackwardWalkInBothModes) {
    const String line = u"abAB abab ABba";
    for (int32_t mode : {kBinary, kText})
        for (const char16_t* find : {u"ab", u"AB", u"b", u"abab", u"x"})
            for (int32_t start = 0; start <= int32_t(line.size()) + 2; ++start) {
                const StringView f = find;
                int32_t expected = 0;
                for (int64_t i = int64_t(start) - int64_t(f.size()) + 1; i >= 1 && expected == 0; --i)
                    if (i - 1 + f.size() <= line.size() && StrComp(StringView(line).substr(i - 1, f.size()), f, mode) == 0)
                        expected = int32_t(i);
                EXPECT_EQ(ss().InStrReverseFast(start, line, f, mode), expected) << start << " " << mode;
            }
}

TEST(InStrReverse, EmptyPatternAndDefaultStartDifferBetweenTheForms) {
    expectPosition(ss().InStrReverse(L(3), S(u"abc"), S(u""), kMissing), 3);
    EXPECT_EQ(ss().InStrReverseFast(3, u"abc", u"", kBinary), 4);
    expectPosition(ss().InStrReverse(kMissing, S(u"abcabc"), S(u"BC"), L(kText)), 5);
    expectPosition(ss().InStrReverse(S(u"x"), S(u"abcabc"), S(u"BC"), kMissing), 0);
    EXPECT_TRUE(ss().InStrReverse(L(3), S(u"abc"), Variant::null(), kMissing).isNull());
}

TEST(InStrCharacters, SetWalksInBothModesAndDirections) {
    expectPosition(ss().InStrCharacters(kMissing, S(u"HELLO"), S(u"lo"), kMissing), 0);
    expectPosition(ss().InStrCharacters(kMissing, S(u"HELLO"), S(u"lo"), L(kText)), 3);
    expectPosition(ss().InStrCharactersReverse(kMissing, S(u"hello"), S(u"HE"), L(kText)), 2);
    expectPosition(ss().InStrNotCharacters(L(2), S(u"aAb"), S(u"a"), L(kText)), 3);
    expectPosition(ss().InStrNotCharactersReverse(kMissing, S(u"abB"), S(u"b"), L(kText)), 1);
    EXPECT_EQ(str(ss().LastNonMatchingCharacter(kMissing, S(u"hello"), S(u"O"), L(kText))), u"l");
    EXPECT_EQ(str(ss().FirstMatchingCharacter(L(1), S(u"abc"), S(u"x"), kMissing)), u"");
    // A start below 1 reaches Mid; a reverse start past the end holds "".
    EXPECT_EQ(errorOf([] { ss().InStrCharacters(L(0), S(u"abc"), S(u"c"), kMissing); }), errInvalidCall);
    EXPECT_EQ(ss().InStrCharactersReverseFast(10, u"abc", u"x", kBinary), 10);
    EXPECT_EQ(ss().InStrCharactersReverseFast(10, u"abc", u"", kBinary), 0);
}

TEST(InStrCharactersBinary, MatchesTheGeneralSearchOnAnsiText) {
    std::mt19937 rng(3);
    const String alphabet = u"abcXYZ \u00e9\u00c9\u20ac,.";
    for (int round = 0; round < 200; ++round) {
        String line, set;
        for (int i = int(rng() % 40); i > 0; --i) line += alphabet[rng() % alphabet.size()];
        for (int i = int(rng() % 4); i > 0; --i) set += alphabet[rng() % alphabet.size()];
        const int32_t start = 1 + int32_t(rng() % 5);
        const Variant got = ss().InStrCharactersBinary(L(start), S(line.c_str()), Variant(set));
        EXPECT_EQ(CLng(got), ss().InStrCharactersFast(start, line, set, kBinary));
    }
}

// The set walks agree with asking InStr about each character, in both modes,
// for letters whose case pairs lie inside and outside the first 256 codes.
TEST(InStrCharacters, AgreesWithInStrOfEachCharacter) {
    std::mt19937 rng(5);
    const String alphabet = u"aAbZz \u00e9\u00c9\u0161\u0160\u0178\u00ff\u20ac\u0100";
    for (int round = 0; round < 400; ++round) {
        String line, set;
        for (int i = int(rng() % 30); i > 0; --i) line += alphabet[rng() % alphabet.size()];
        for (int i = 1 + int(rng() % 3); i > 0; --i) set += alphabet[rng() % alphabet.size()];
        const int32_t compare = round % 2 ? kText : kBinary;
        auto inSet = [&](size_t i) { return InStr(1, set, StringView(line).substr(i, 1), compare) != 0; };
        int32_t forward = 0, backward = 0;
        for (size_t i = 0; i < line.size() && !forward; ++i)
            if (inSet(i)) forward = int32_t(i + 1);
        for (size_t i = line.size(); i > 0 && !backward; --i)
            if (inSet(i - 1)) backward = int32_t(i);
        EXPECT_EQ(ss().InStrCharactersFast(1, line, set, compare), forward);
        EXPECT_EQ(ss().InStrCharactersReverseFast(int32_t(line.size()), line, set, compare), backward);
    }
}

TEST(InStrToVariantVector, PositionsFromOneWithElementZeroEmpty) {
    Variant v = Variant::vector({L(7), L(8), L(9)});
    EXPECT_TRUE(ss().InStrToVariantVector(v, S(u"aAaa"), S(u"A"), L(kText)));
    const SafeArray& a = v.asArray();
    ASSERT_EQ(a.ubound(), 4);
    EXPECT_TRUE(a.at(0).isEmpty());
    for (int32_t i = 1; i <= 4; ++i) EXPECT_EQ(a.at(i).asLong(), i);
    EXPECT_FALSE(ss().InStrToVariantVector(v, S(u"abc"), S(u""), kMissing));
    EXPECT_EQ(v.asArray().ubound(), 0);  // cut back even on failure
}

// --- counting and parts ------------------------------------------------------------------

TEST(Counting, NonOverlappingOverlappingLeadingAndTrailing) {
    auto n = [](const Variant& v) { return CLng(v); };
    EXPECT_EQ(n(ss().CountStrings(S(u"AaAaa"), S(u"aa"), L(kText))), 2);
    EXPECT_EQ(n(ss().CountStrings(S(u"AaAaa"), S(u"aa"), kMissing)), 1);
    EXPECT_EQ(n(ss().CountOverlappingMatches(S(u"AaAaa"), S(u"aa"), L(kText))), 4);
    EXPECT_EQ(n(ss().CountLeadingStrings(S(u"abABx"), S(u"ab"), L(kText))), 2);
    EXPECT_EQ(n(ss().CountTrailingStrings(S(u"xABab"), S(u"ab"), kMissing)), 1);
    EXPECT_EQ(n(ss().CountCharacters(S(u"Hello"), S(u"hl"), L(kText))), 3);
    EXPECT_EQ(n(ss().CountLines(S(u"a\r\nb\r\n"))), 2);
    EXPECT_EQ(n(ss().CountLines(S(u"\n\nx"))), 3);
    EXPECT_EQ(n(ss().CountCharacters(S(u""), Variant::null(), kMissing)), 0);
    EXPECT_TRUE(ss().CountCharacters(S(u"a"), Variant::null(), kMissing).isNull());
}

TEST(LengthsOfParts, EveryPartCountsIncludingEmptyOnes) {
    test::expectNumber(ss().AverageLengthAnyPart(S(u"abXcdxe"), S(u"x"), L(kText)), vbDouble, 5.0 / 3);
    test::expectNumber(ss().AverageLengthAnyPart(S(u"abc"), kMissing, kMissing), vbLong, 3);
    EXPECT_EQ(CLng(ss().MaxLengthAnyPart(S(u"long line\r\nx"), S(u"\r\n"), kMissing)), 9);
    EXPECT_EQ(CLng(ss().MaxLengthAnyPart(S(u"abXcdxe"), S(u"x"), L(kText))), 2);
    EXPECT_EQ(CLng(ss().MinLengthAnyPart(S(u"ab,,cd"), S(u","))), 0);
    EXPECT_EQ(CLng(ss().MinLengthAnyPart(S(u"abXc"), S(u"x"))), 4);  // always binary
}

// --- comparing, case, pieces ------------------------------------------------------------------

TEST(PositionComparison, FirstEqualAndFirstUnequal) {
    expectPosition(ss().FirstMatchingPosition(S(u"abc"), S(u"xBc"), L(kText)), 2);
    expectPosition(ss().FirstMatchingPosition(S(u"abc"), S(u"xBz"), kMissing), 0);
    expectPosition(ss().FirstNonMatchingPosition(S(u"ab"), S(u"AB"), kMissing), 1);
    expectPosition(ss().FirstNonMatchingPosition(S(u"ab"), S(u"ABc"), L(kText)), 3);
}

TEST(CaseScans, CharactersWithoutCaseAreNeitherLowerNorUpper) {
    EXPECT_EQ(str(ss().FirstLowerCaseForward(S(u"AB1\u00e9x"))), u"\u00e9x");
    EXPECT_EQ(str(ss().FirstNonLowerCaseForward(S(u"ab1c"))), u"1c");
    EXPECT_EQ(str(ss().FirstUpperCaseForward(S(u"12\u0160a"))), u"\u0160a");
    EXPECT_EQ(str(ss().FirstNonUpperCaseForward(S(u"ABC"))), u"");
}

TEST(SidesOfAMatch, LastMatchMayOverlapAndNotFoundFallsBack) {
    EXPECT_EQ(str(ss().LeftOfLastMatch(S(u"aaa"), S(u"aa"), kMissing, kMissing)), u"a");
    EXPECT_EQ(str(ss().RightOfLastMatch(S(u"xAyaz"), S(u"a"), L(kText), kMissing)), u"z");
    EXPECT_EQ(str(ss().LeftOfFirstMatch(S(u"xAyaz"), S(u"a"), kMissing, kMissing)), u"xAy");
    EXPECT_EQ(str(ss().RightOfFirstMatch(S(u"abc"), S(u"x"), kMissing, kMissing)), u"abc");
    EXPECT_EQ(str(ss().RightOfFirstMatch(S(u"abc"), S(u"x"), kMissing, Variant(int16_t(5)))), u"5");
    EXPECT_EQ(ss().LeftOfLastMatchFast(u"abc", u"x", kBinary, u""), u"");
    EXPECT_EQ(ss().RightOfFirstMatchFast(u"a=B=c", u"b", kText, u"?"), u"=c");
    EXPECT_TRUE(ss().LineEndsWithFast(u"abc", u"BC", kText));
    EXPECT_FALSE(ss().LineEndsWithFast(u"abc", u"BC", kBinary));
    EXPECT_FALSE(ss().LineBeginsWithFast(u"ab", u"abc", kText));
}

TEST(Between, SingularAndPluralTreatEmptyPatternsDifferently) {
    EXPECT_EQ(ss().StringBetweenStringsFast(u"a[B]c", u"[", u"]", kBinary), u"B");
    EXPECT_EQ(ss().StringBetweenStringsFast(u"abc", u"a", u"", kBinary), u"");
    EXPECT_EQ(ss().StringsBetweenStringsFast(u"abc", u"a", u"", u",", kBinary), u"bc");
    EXPECT_EQ(ss().StringsBetweenStringsFast(u"xAyAz", u"", u"a", u",", kText), u"x");
    EXPECT_EQ(ss().StringsBetweenStringsFast(u"<>x<A><b", u"<", u">", u"|", kBinary), u"A");
    EXPECT_EQ(str(ss().StringsBetweenStrings(S(u"(a)(B)"), S(u"("), S(u")"), S(u"+"), kMissing)), u"a+B");
    // With an empty pattern the compare argument is used as it is.
    EXPECT_EQ(errorOf([] { ss().StringsBetweenStrings(S(u"abc"), S(u"a"), S(u""), kMissing, kMissing); }),
              errTypeMismatch);
    EXPECT_EQ(str(ss().StringsBetweenStrings(S(u"aXc"), S(u""), S(u"x"), kMissing, S(u"1"))), u"a");
}

TEST(MatchesInContext, EqualPiecesWithOverlappingContext) {
    EXPECT_EQ(str(ss().MatchesInContext(S(u"abcab"), S(u"b"), kMissing, L(1), S(u"|"))), u"abc|ab ");
    EXPECT_EQ(str(ss().MatchesInContext(S(u"aBab"), S(u"b"), L(kText), L(2), S(u"|"))), u" aBab|Bab  ");
    EXPECT_EQ(errorOf([] { ss().MatchesInContext(S(u"abc"), S(u"b"), kMissing, L(-1), kMissing); }), errInvalidCall);
}

TEST(IndicateMatches, CaretsUnderNonOverlappingMatches) {
    EXPECT_EQ(str(ss().IndicateMatches(S(u"aAaab"), S(u"aa"), L(kText))), u"aAaab\r\n^^^^ ");
    EXPECT_EQ(str(ss().IndicateMatches(S(u"aAaab"), S(u"aa"), kMissing))  , u"aAaab\r\n  ^^ ");
}

TEST(CorrespondingCharacters, ExtremesPerPositionWithBlanksForShortStrings) {
    Variant list = Variant::vector({S(u"ab"), S(u"a")});
    EXPECT_EQ(str(ss().MinCorrespondingCharacters(L(0), list)), u"a ");
    list = Variant::vector({S(u"aB"), S(u"Ab")});
    EXPECT_EQ(str(ss().MaxCorrespondingCharacters(L(kBinary), list)), u"ab");
    EXPECT_EQ(str(ss().MaxCorrespondingCharacters(L(kText), list)), u"aB");  // ties stay with the first
    list = Variant::vector({L(12), S(u"3")});
    EXPECT_EQ(str(ss().MaxCorrespondingCharacters(L(0), list)), u"32");
    EXPECT_EQ(list.asArray().at(0).vt(), vbString);  // fixed up in place
    list = Variant::vector({});
    EXPECT_TRUE(ss().MaxCorrespondingCharacters(L(0), list).isNull());
}

}  // namespace
}  // namespace qvt
