// Characters and string lists: classification, character sets, string
// arithmetic and segment lists.
#include <gtest/gtest.h>

#include <algorithm>

#include "frame/Strings.h"
#include "strings/CharacterArrays.h"
#include "strings/CharacterTypes.h"
#include "strings/StringLists.h"
#include "strings/StringNumerics.h"

namespace qvt {
namespace {

Variant S(StringView s) { return Variant(s); }
Variant L(int32_t n) { return Variant(n); }
const Variant kMissing = Variant::missing();
String str(const Variant& v) { return v.isString() ? v.asString() : u"<not text>"; }

// --- classification -----------------------------------------------------------

TEST(CharacterTypes, MasksCombineFlagsSoCompositeTestsSeeEveryClass) {
    CharacterTypes t;
    EXPECT_TRUE(t.IsSpace(S(u"\t")));      // carriage control counts as space
    EXPECT_TRUE(t.IsCntrl(S(u"\r")));      // ...and as control
    EXPECT_FALSE(t.IsPrint(S(u"\t")));
    EXPECT_TRUE(t.IsPrint(S(u" ")));
    EXPECT_FALSE(t.IsGraph(S(u" ")));
    EXPECT_TRUE(t.IsXDigit(S(u"f")));      // lower-case hex digit is a letter and a hex digit
    EXPECT_TRUE(t.IsAlpha(S(u"f")));
    EXPECT_FALSE(t.IsXDigit(S(u"g")));
    EXPECT_TRUE(t.IsAlNum(S(u"7abc")));    // the first character decides
    EXPECT_EQ(str(t.EveryCharacterOfType(L(CharTypeHexDigit))), u"0123456789ABCDEFabcdef");
    EXPECT_EQ(str(t.EveryCharacterOfType(L(CharTypeSpace))), u"\t\n\v\f\r \u00a0");
    EXPECT_EQ(str(t.EveryCharacterOfType(L(CharTypeNone))), u"");
}

TEST(CharacterTypes, ArgumentsAreCharactersOrCodesAndNothingElse) {
    CharacterTypes t;
    EXPECT_TRUE(t.IsUpper(L(65)));
    EXPECT_FALSE(t.IsUpper(L(256)));
    EXPECT_TRUE(t.IsUpper(S(u"\u0160")));  // Š is code 138 of the page
    for (const Variant& v : {S(u""), Variant(), Variant::null(), kMissing, Variant(true)}) {
        EXPECT_FALSE(t.IsAlNum(v));
        EXPECT_FALSE(t.IsNotLowerCase(v));
    }
    EXPECT_TRUE(t.IsNotLowerCase(S(u"1")));
    EXPECT_FALSE(t.IsNotUpperCase(S(u"Q")));
}

TEST(CharacterTypes, TheTableIsDataAndEachInstanceKeepsItsOwn) {
    CharacterTypes t, other;
    EXPECT_TRUE(t.IsUpper(S(u"\u00df")));   // ß as the page's table has it
    EXPECT_TRUE(t.IsPunct(S(u"\u00d8")));   // Ø likewise
    t.CType(S(u"UXQ"));
    EXPECT_TRUE(t.IsUpper(L(0)));
    EXPECT_TRUE(t.IsDigit(L(1)));
    EXPECT_FALSE(t.IsCntrl(L(2)));          // unknown letter: no class
    EXPECT_FALSE(t.IsUpper(S(u"A")));       // past the string: no class
    EXPECT_TRUE(other.IsUpper(S(u"A")));
    EXPECT_EQ(str(t.CType()), u"UXQ");
    t.CType(L(5));                          // not text: back to the page's table
    EXPECT_TRUE(t.IsUpper(S(u"A")));
    EXPECT_EQ(str(t.CType()), t.CTypeANSI());
    t.CType(S(t.CTypeUSASCII()));
    EXPECT_FALSE(t.IsAlpha(S(u"\u00e9")));
    EXPECT_TRUE(t.IsCntrl(L(127)));
}

TEST(CharacterTypes, VowelsFollowTheirOwnTable) {
    CharacterTypes t;
    EXPECT_TRUE(t.IsVowel(S(u"E")));
    EXPECT_TRUE(t.IsConsonant(S(u"y")));
    EXPECT_FALSE(t.IsVowel(S(u"1")));
    EXPECT_FALSE(t.IsConsonant(S(u"1")));
    EXPECT_TRUE(t.IsVowel(S(u"\u00e9")));
}

// --- extended characters and case ----------------------------------------------

TEST(CharacterTypes, LookAlikesAndComposition) {
    CharacterTypes t;
    EXPECT_EQ(t.NonExtendedCharacters().size(), 256u);
    EXPECT_EQ(str(t.ToNonExtended(S(u"\u00c9t\u00e9\u20ac\x01"))), u"EteE ");
    EXPECT_EQ(str(t.ToNonExtended(L(233))), u"e");
    EXPECT_TRUE(t.ToNonExtended(L(300)).isNull());
    EXPECT_EQ(str(t.ComposeCharacter(S(u"e'"))), u"\u00e9");
    EXPECT_EQ(str(t.ComposeCharacter(S(u"'e"))), u"\u00e9");  // either order
    EXPECT_EQ(str(t.ComposeCharacter(S(u"s<"))), u"\u0161");  // š from the 0x80 block
    EXPECT_EQ(str(t.ComposeCharacter(S(u"xy"))), u"");
    EXPECT_TRUE(t.ComposeCharacter(S(u"e'x")).isNull());
}

TEST(CharacterTypes, CaseMappingFollowsTheTable) {
    CharacterTypes t;
    EXPECT_EQ(str(t.ToUpper(S(u"ab\u00f8\u00ff"))), u"AB\u00f8\u0178");  // ø is not a letter in the table
    EXPECT_EQ(t.ToUpper(L(97)).asLong(), 65);
    EXPECT_EQ(str(t.SwapUpperAndLowerCase(S(u"aB1"))), u"Ab1");
    EXPECT_EQ(str(t.CapitalizeLike(S(u"hello world"), S(u"Ab"))), u"Hello world");
    EXPECT_EQ(str(t.CapitalizeLike(S(u"abcd"), S(u"a-B"))), u"abCD");
    Variant v(int32_t(12));
    t.UCaseInPlace(v);
    EXPECT_EQ(str(v), u"12");                // a number becomes its text
    Variant n = Variant::null();
    t.TrimInPlace(n);
    EXPECT_TRUE(n.isNull());
    Variant s(u"  a b  ");
    t.LTrimInPlace(s);
    EXPECT_EQ(str(s), u"a b  ");
}

TEST(CharacterTypes, DisplayTablesShowPrintableCharactersOnly) {
    CharacterTypes t;
    const String hex = str(t.CharacterTableHexadecimal(kMissing));
    EXPECT_NE(hex.find(u"40 @ A B C"), String::npos);
    EXPECT_NE(hex.find(u"\r\n00\r\n"), String::npos);  // a row of controls is blank
    const String dec = str(t.CharacterTableDecimal(S(u"|")));
    EXPECT_NE(dec.find(u"60 |<|=|>|?|@|A|B|C|D|E"), String::npos);
    const String alnum = str(t.CharacterTableAlphanumeric(kMissing));
    EXPECT_NE(alnum.find(u"A    65  41"), String::npos);
    EXPECT_EQ(alnum.find(u"_"), String::npos);
}

// --- character sets --------------------------------------------------------------

TEST(CharacterArrays, SetsAndMultisets) {
    CharacterArrays a;
    EXPECT_EQ(str(a.UsedCharacters(S(u"banana"))), u"abn");
    EXPECT_EQ(str(a.UniqueCharacters(S(u"banana"))), u"ban");
    EXPECT_EQ(str(a.IntersectCharacters(S(u"banana"), S(u"nnax"))), u"ann");
    EXPECT_EQ(str(a.DifferenceCharacters(S(u"banana"), S(u"nnax"))), u"baa");
    EXPECT_EQ(a.CharactersNotInString(S(u"")).asString().size(), 256u);
    EXPECT_EQ(str(a.KeepCharacters(S(u"Hello"), S(u"LH"), L(1))), u"Hll");
    EXPECT_EQ(str(a.StripCharacters(S(u"Hello"), S(u"LH"), kMissing)), u"ello");
    EXPECT_EQ(str(a.KeepRangeOfCharacters(S(u"a1b2"), L(48), S(u"9"))), u"12");
    EXPECT_TRUE(a.StripRangeOfCharacters(S(u"a1"), S(u""), S(u"9")).isNull());
    EXPECT_TRUE(a.MaxAsc(S(u"")).isNull());
    EXPECT_EQ(a.MinAsc(S(u"cab")).asInteger(), 97);
    EXPECT_TRUE(a.UsedCharacters(Variant::null()).isNull());
}

TEST(CharacterArrays, SortsAndPermutations) {
    CharacterArrays a;
    EXPECT_EQ(str(a.SortCharactersBinary(S(u"b\u20aca"))), u"ab\u20ac");  // € sorts as code 128
    EXPECT_EQ(str(a.SortCharacters(S(u"bBaA"), L(1))).size(), 4u);
    EXPECT_EQ(StrComp(str(a.SortCharacters(S(u"bBaA"), L(1))), u"aabb", vbTextCompare), 0);
    EXPECT_EQ(str(a.SortCharacters(S(u"bBaA"), kMissing)), u"ABab");
    EXPECT_EQ(str(a.SortCharactersByFrequency(S(u"banana"))), u"aaannb");
    EXPECT_EQ(str(a.SortUsedCharacters(S(u"bBaA"), kMissing)), u"ABab");
    EXPECT_EQ(str(a.InversePermutation(S(u"bca"))), u"cab");
    EXPECT_EQ(str(a.InversePermutation(a.InversePermutation(S(u"dbca")))), u"dbca");
    EXPECT_TRUE(a.InversePermutation(S(u"abb")).isNull());
    EXPECT_TRUE(a.InversePermutation(S(u"ac")).isNull());
    String shuffled = str(a.ShuffleString(S(u"abcdefgh")));
    std::sort(shuffled.begin(), shuffled.end());
    EXPECT_EQ(shuffled, u"abcdefgh");
}

TEST(CharacterArrays, VectorsOfCodes) {
    CharacterArrays a;
    Variant v;
    ASSERT_TRUE(a.StringAscToIntegerVector(v, S(u"AB")));
    EXPECT_EQ(v.vt(), vbArray | vbInteger);
    EXPECT_EQ(v.asArray().lbound(), 1);
    EXPECT_EQ(str(a.IntegerVectorToStringAsc(v)), u"AB");
    EXPECT_TRUE(a.IntegerVectorToStringAsc(Variant::vector({L(65), L(256)})).isNull());
    EXPECT_TRUE(a.IntegerVectorToStringAsc(S(u"AB")).isNull());
    Variant counts;
    ASSERT_TRUE(a.CharacterCountsToVariantVector(counts, S(u"aab")));
    EXPECT_EQ(counts.asArray().at(97).asLong(), 2);
    EXPECT_EQ(counts.asArray().ubound(), 255);
    EXPECT_FALSE(a.CharacterCountsToVariantVector(counts, Variant::null()));
}

// --- string arithmetic -----------------------------------------------------------

TEST(StringNumerics, Suffixes) {
    StringNumerics n;
    const std::pair<int32_t, const char16_t*> cases[] = {
        {1, u"st"}, {2, u"nd"}, {3, u"rd"}, {4, u"th"}, {11, u"th"}, {12, u"th"}, {13, u"th"},
        {21, u"st"}, {111, u"th"}, {112, u"th"}, {122, u"nd"}, {0, u"th"}, {-1, u"th"}};
    for (auto [x, suffix] : cases) EXPECT_EQ(str(n.NumberSuffix(L(x))), suffix) << x;
    EXPECT_EQ(str(n.NumberAndSuffix(S(u"22"))), u"22nd");
    EXPECT_TRUE(n.NumberSuffix(S(u"x")).isNull());
}

TEST(StringNumerics, IncrementsCarryLikeNumbers) {
    StringNumerics n;
    EXPECT_EQ(str(n.IncrementString(S(u"abc"), kMissing, kMissing)), u"abd");
    EXPECT_EQ(str(n.IncrementString(S(u"199"), S(u"0"), S(u"9"))), u"200");
    EXPECT_EQ(str(n.IncrementString(S(u"99"), S(u"0"), L(57))), u"100");
    EXPECT_EQ(str(n.IncrementString(S(u" "), S(u"0"), S(u"9"))), u"0");  // below the digits
    EXPECT_TRUE(n.IncrementString(S(u"1"), S(u"9"), S(u"0")).isNull());
    EXPECT_EQ(str(n.IncrementStringWithinCharacterSet(S(u"ZZ"), S(u"AZ"))), u"ZAA");
    EXPECT_EQ(str(n.IncrementStringWithinCharacterSet(S(u"AZ"), S(u"AZ"))), u"ZA");
    EXPECT_EQ(str(n.IncrementStringWithinCharacterSet(S(u"A8"), kMissing)), u"A9");
    EXPECT_EQ(str(n.IncrementStringWithinCharacterSet(S(u"a"), kMissing)), u"!");  // not in the set
    EXPECT_TRUE(n.IncrementStringWithinCharacterSet(S(u"a"), S(u"")).isNull());
}

TEST(StringNumerics, CodesPositionByPosition) {
    StringNumerics n;
    EXPECT_EQ(str(n.AddStringCharacters(S(u"\u00ff"), S(u"\x02xy"), kMissing)), u"\u00ffxy");  // stops at 255
    EXPECT_EQ(str(n.AddStringCharacters(S(u"\u00ff"), S(u"\x02"), Variant(true))), u"\x01");
    EXPECT_EQ(str(n.AverageStrings(S(u"a"), S(u"c"), kMissing)), u"b");
    EXPECT_EQ(str(n.AverageStrings(S(u"\u00fe"), S(u"\x02"), Variant(true))), String(1, u'\0'));
    EXPECT_EQ(str(n.StringCharactersBitwiseOrNumber(S(u"A"), L(256 + 32))), u"a");
    EXPECT_EQ(str(n.StringCharactersBitwiseXorNumber(S(u"aB"), L(32))), u"Ab");
    EXPECT_TRUE(n.StringCharactersBitwiseAndNumber(S(u"a"), S(u"x")).isNull());
}

TEST(StringNumerics, HexadecimalPairs) {
    StringNumerics n;
    EXPECT_EQ(str(n.StringToHexadecimalPairs(S(u"\n\u00ff\u20ac"))), u"0AFF80");
    EXPECT_EQ(str(n.HexadecimalPairsToString(S(u"0aff80"))), u"\n\u00ff\u20ac");
    EXPECT_EQ(str(n.HexadecimalPairsToString(S(u"414"))), u"A\x04");  // an odd last digit stands alone
    EXPECT_EQ(str(n.HexadecimalHiLoStringsToString(S(u"44"), S(u"12"))), u"AB");
    EXPECT_EQ(str(n.HexadecimalHiLoStringsToString(S(u"4"), S(u"1A"))), u"A\x0a");
}

TEST(StringNumerics, VersionsCompareNumbersAsNumbersAndTheRestAsText) {
    StringNumerics n;
    auto cmp = [&](const char16_t* a, const char16_t* b) { return n.VersionNumberCompare(S(a), S(b)).asInteger(); };
    EXPECT_EQ(cmp(u"2.10", u"2.9"), 1);
    EXPECT_EQ(cmp(u"1.2", u"1.10"), -1);
    EXPECT_EQ(cmp(u"1.0", u"1.0"), 0);
    EXPECT_EQ(cmp(u"1.0", u"1"), 1);       // an empty part is text, below "0"
    EXPECT_EQ(cmp(u"1.b", u"1.a"), 1);
    EXPECT_EQ(cmp(u"1.40000", u"1.5"), -1);  // beyond Integer: compared as text
    EXPECT_TRUE(n.VersionNumberCompare(Variant::null(), S(u"1")).isNull());
}

// --- segment lists ----------------------------------------------------------------

TEST(StringLists, SegmentsByNumber) {
    StringLists l;
    EXPECT_EQ(str(l.StringSegmentXOfLengthY(S(u"abcdef"), L(2), L(3))), u"def");
    EXPECT_EQ(str(l.StringSegmentXOfLengthY(S(u"abcde"), L(3), L(2))), u"e");  // cut short
    EXPECT_EQ(str(l.StringSegmentXOfLengthY(S(u"abc"), L(2), kMissing)), u"b");
    EXPECT_TRUE(l.StringSegmentXOfLengthY(S(u"abcdef"), L(4), L(2)).isNull());
    EXPECT_TRUE(l.StringSegmentXOfLengthY(S(u"abcdef"), L(0), L(2)).isNull());
    EXPECT_TRUE(l.StringSegmentXOfLengthY(S(u"abcdef"), L(1), L(0)).isNull());
}

TEST(StringLists, SearchesPadTheKeyAndHonourTheCompareMode) {
    StringLists l;
    const Variant points(u"N  NNENE ENEE  ESESE SSE");
    EXPECT_EQ(l.SearchStringSegments(points, S(u"ne"), L(3), L(1)).asLong(), 3);
    EXPECT_EQ(l.SearchStringSegments(points, S(u"ne"), L(3), kMissing).asLong(), 0);
    EXPECT_EQ(l.SearchStringSegments(points, S(u"NNEx"), L(3), kMissing).asLong(), 0);
    const Variant sorted(u"  ( A C I S T a b c d e f h i l m n o p r s t w ");
    for (int32_t k = 1; k <= 24; ++k)
        EXPECT_EQ(l.SearchSortedStringSegments(sorted, S(Mid(sorted.asString(), 2 * k - 1, 2)), L(2), kMissing).asLong(), k);
    EXPECT_EQ(l.SearchSortedStringSegments(sorted, S(u" B"), L(2), kMissing).asLong(), 0);
    EXPECT_TRUE(l.SearchStringSegments(points, S(u"N"), L(0), kMissing).isNull());
}

TEST(StringLists, SortingAndShufflingMoveWholeSegments) {
    StringLists l;
    EXPECT_EQ(str(l.SortStringSegments(S(u"cc bb aa "), L(3), kMissing, kMissing)), u"aa bb cc ");
    EXPECT_EQ(str(l.SortStringSegments(S(u"a3b1c2"), L(2), kMissing, L(2))), u"b1c2a3");
    EXPECT_EQ(str(l.SortStringSegments(S(u"bbaac"), L(2), kMissing, kMissing)), u"aabbc");  // tail stays
    const String many = u"jjiihhggffeeddccbbaa";
    EXPECT_EQ(str(l.SortStringSegments(S(many), L(2), kMissing, kMissing)), u"aabbccddeeffgghhiijj");
    const String shuffled = str(l.ShuffleStringSegments(S(many), L(2)));
    EXPECT_EQ(str(l.SortStringSegments(S(shuffled), L(2), kMissing, kMissing)), u"aabbccddeeffgghhiijj");
}

TEST(StringLists, DelimitedTextAndVectors) {
    StringLists l;
    Variant width;
    EXPECT_EQ(str(l.StringToStringSegments(S(u"a,bbb,,cc"), kMissing, kMissing, width)), u"a  bbb   cc ");
    EXPECT_EQ(width.asLong(), 3);
    EXPECT_EQ(str(l.StringToStringSegments(S(u"aXbxc"), S(u"x"), L(1), width)), u"abc");
    EXPECT_TRUE(l.StringToStringSegments(S(u"a"), S(u""), kMissing, width).isNull());
    Variant v;
    ASSERT_TRUE(l.StringSegmentsToVariantVector(v, S(u"a  bbb"), L(3)));
    EXPECT_EQ(v.asArray().ubound(), 1);
    EXPECT_EQ(str(v.asArray().at(0)), u"a");
    EXPECT_FALSE(l.StringSegmentsToVariantVector(v, S(u""), L(3)));
}

}  // namespace
}  // namespace qvt
