// Replacing, stripping and translating.
#include <gtest/gtest.h>

#include <random>

#include "TestSupport.h"
#include "frame/Strings.h"
#include "strings/StringReplacements.h"

namespace qvt {
namespace {

using test::errorOf;
using test::L;
using test::S;
constexpr auto str = test::textOf;

const Variant kMissing = Variant::missing();

StringReplacements& sr() { return stringReplacements(); }

// Random words over a small alphabet, so that matches are frequent.
struct RandomWords {
    std::mt19937 rng;
    StringView alphabet;
    String operator()(size_t minLen, size_t maxLen) {
        String w(minLen + rng() % (maxLen - minLen + 1), u'a');
        for (char16_t& c : w) c = alphabet[rng() % alphabet.size()];
        return w;
    }
};

// --- the Replace family ----------------------------------------------------------

TEST(StringReplacements, CountsAndInPlaceForm) {
    EXPECT_EQ(str(sr().ReplaceStringNTimes(S(u"xxxx"), S(u"x"), S(u"y"))), u"yxxx");  // default count 1
    EXPECT_EQ(str(sr().ReplaceStringNTimes(S(u"xxxx"), S(u"x"), S(u"y"), kMissing, S(u"3"))), u"yyyx");
    EXPECT_EQ(errorOf([] { sr().ReplaceStringNTimes(S(u"x"), S(u"x"), S(u"y"), kMissing, L(-2)); }), errInvalidCall);
    EXPECT_EQ(str(sr().ReplaceString(L(1010), L(0), kMissing)), u"11");  // numbers as their text
    Variant line = L(123);
    sr().StrRep(line, S(u"2"), S(u"-"));
    EXPECT_EQ(str(line), u"1-3");
    sr().StrRep(line, Variant::null());
    EXPECT_TRUE(line.isNull());
    EXPECT_EQ(sr().ReplaceStringFast(u"aBab", u"AB", u"-", vbTextCompare), u"--");
}

// A plain oracle: replace the first occurrence and search again from 1.
String recursiveOracle(String line, StringView find, StringView with, int32_t compare) {
    for (int32_t p; (p = InStr(1, line, find, compare)) != 0;) line.replace(size_t(p - 1), find.size(), with);
    return line;
}

TEST(StringReplacements, RecursiveReplacementRescansFromTheStart) {
    // Each replacement makes a match that begins before it.
    EXPECT_EQ(str(sr().ReplaceStringRecursively(S(u"aaaab"), S(u"ab"), S(u"b"))), u"b");
    EXPECT_EQ(str(sr().ReplaceStringRecursively(S(u"xyz"), S(u"q"), S(u"qq"))), u"");  // guard, no match needed
    EXPECT_EQ(str(sr().ReplaceStringRecursively(S(u"abc"), S(u""), S(u"zz"))), u"abc");
    RandomWords word{std::mt19937(7), u"abA"};
    for (int round = 0; round < 2000; ++round) {
        const String line = word(0, 24), find = word(1, 3), with = word(0, 2);
        const int32_t compare = round % 2;
        if (InStr(1, with, find, compare) != 0) continue;
        EXPECT_EQ(str(sr().ReplaceStringRecursively(S(line.c_str()), S(find.c_str()), S(with.c_str()), L(compare))),
                  recursiveOracle(line, find, with, compare))
            << "line " << round;
    }
}

// --- one pass with many pairs -------------------------------------------------------

TEST(StringReplacements, MultipleReplacementPairListEdges) {
    // A trailing separator makes no empty pair; an unpaired find deletes.
    EXPECT_EQ(str(sr().ReplaceStringMultiple(S(u"abc"), S(u"a,1,"), S(u","))), u"1bc");
    EXPECT_EQ(str(sr().ReplaceStringMultiple(S(u"abc"), S(u"a,1,c"), S(u","))), u"1b");
    // An empty find could never advance: it is passed over.
    EXPECT_EQ(str(sr().ReplaceStringMultiple(S(u"aa"), S(u",x,a,b"), S(u","))), u"bb");
    EXPECT_EQ(str(sr().ReplaceStringMultiple(S(u"aa"), S(u""), S(u","))), u"aa");
    EXPECT_EQ(str(sr().ReplaceStringMultiple(S(u"a::b"), S(u"a::b::b::a"), S(u"::"))), u"b::a");
    EXPECT_TRUE(sr().ReplaceStringMultiple(S(u"a"), S(u"a,b"), Variant::null()).isNull());
}

// Property: replaced text is never scanned again. Running the pairs with
// stand-in characters for the replacements, then putting the replacements
// in, must give the same text, although every replacement holds a find
// string that a rescan would replace.
TEST(StringReplacements, MultipleReplacementNeverRescansReplacedText) {
    RandomWords word{std::mt19937(20240611), u"abAB"};
    std::mt19937& rng = word.rng;
    for (int round = 0; round < 3000; ++round) {
        const size_t n = 1 + rng() % 4;
        std::vector<String> finds(n), withs(n);
        for (size_t k = 0; k < n; ++k) finds[k] = word(1, 3);
        for (size_t k = 0; k < n; ++k) withs[k] = word(0, 2) + finds[rng() % n] + word(0, 2);
        String pairs, standIns;
        for (size_t k = 0; k < n; ++k) {
            pairs += finds[k] + u"," + withs[k] + u",";
            standIns += finds[k] + u"," + char16_t(0xE000 + k) + u",";
        }
        const String text = word(0, 40);
        const Variant compare = L(round % 2);
        String expected = str(sr().ReplaceStringMultiple(S(text.c_str()), S(standIns.c_str()), S(u","), compare));
        for (size_t k = 0; k < n; ++k) expected = Replace(expected, String(1, char16_t(0xE000 + k)), withs[k]);
        ASSERT_EQ(str(sr().ReplaceStringMultiple(S(text.c_str()), S(pairs.c_str()), S(u","), compare)), expected)
            << "text " << std::string(text.begin(), text.end()) << " pairs " << std::string(pairs.begin(), pairs.end());
    }
}

// --- Like patterns and characters ------------------------------------------------------

TEST(StringReplacements, LikeReplacementTakesShortestMatchesAndSkipsOne) {
    EXPECT_EQ(str(sr().ReplaceLikeString(S(u"a1b2c3"), S(u"?#"), S(u"<>"))), u"<>b2<>");
    EXPECT_EQ(str(sr().ReplaceLikeString(S(u"xaybyc"), S(u"a*y"), S(u"-"))), u"x-byc");  // shortest
    EXPECT_EQ(str(sr().ReplaceLikeString(S(u"Ab"), S(u"[a-b]"), S(u"."), L(1))), u".b");
    EXPECT_EQ(errorOf([] { sr().ReplaceLikeString(S(u"abc"), S(u"[b"), S(u"x")); }), 93);
}

TEST(StringReplacements, CharacterArgumentsAreCharactersOrCodes) {
    EXPECT_EQ(str(sr().ReplaceCharacter(S(u"a.b.c"), L(46), S(u"/"))), u"a/b/c");
    EXPECT_EQ(str(sr().ReplaceCharacter(S(u"\u20ac1"), L(128), S(u"E"))), u"E1");  // code 128 is the euro sign
    EXPECT_TRUE(sr().ReplaceCharacter(S(u"abc"), Variant::missing(), S(u"x")).isNull());
    EXPECT_EQ(errorOf([] { sr().ReplaceCharacter(S(u"abc"), L(300), S(u"x")); }), errInvalidCall);
}

// --- stripping and translating ------------------------------------------------------------

TEST(StringReplacements, StripMembersCutOnlyWhatIsThere) {
    EXPECT_EQ(str(sr().StripLastMatch(S(u"aXbxc"), S(u"x"), L(1))), u"aXbc");
    EXPECT_EQ(str(sr().StripLastMatch(S(u"abc"), S(u""))), u"abc");
    EXPECT_EQ(sr().StripMatchingBeginLineFast(u"PreFix", u"pre", vbTextCompare), u"Fix");
    EXPECT_EQ(sr().StripMatchingEndLineFast(u"ab", u"xab", vbBinaryCompare), u"ab");
    EXPECT_EQ(str(sr().StripNilCharacterForward(S(u""))), u"");
}

TEST(StringReplacements, TranslationsMapEachCharacterOnce) {
    EXPECT_EQ(str(sr().TranslateString(S(u"abba"), S(u"ab"), S(u"ba"))), u"baab");  // a swap, not a chain
    EXPECT_EQ(str(sr().TranslateStringUsingCharacterPairs(S(u"aAb"), S(u"axay"), L(1))), u"xxb");
    String table(129, u'.');
    table[128] = u'E';
    EXPECT_EQ(str(sr().TranslateStringUsingTable(S(u"\u20acz"), Variant(table))), u"E.");
    EXPECT_EQ(str(sr().TranslateStringUsingTable(S(u"\u00ff"), Variant(table))), u"\u00ff");  // past the table
}

}  // namespace
}  // namespace qvt
