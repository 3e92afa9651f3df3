#include "structures/SortOrders.h"

#include <gtest/gtest.h>

#include <set>

#include "frame/Strings.h"

using namespace qvt;

namespace {
int32_t rankAt(const String& sequence, int code) { return Asc(sequence.substr(size_t(code), 1)); }
}  // namespace

TEST(SortOrderString, RanksFollowStrCompUnderTheMode) {
    const SortOrders& so = sortOrders();
    const String binary = so.SortOrderString(Variant(int32_t(0)));
    const String text = so.SortOrderString(Variant(int32_t(1)));
    ASSERT_EQ(binary.size(), 256u);
    std::set<char16_t> distinct(binary.begin(), binary.end());
    EXPECT_EQ(distinct.size(), 256u);
    EXPECT_EQ(rankAt(binary, 'A'), 'A');
    EXPECT_EQ(rankAt(text, 'a'), rankAt(text, 'A'));
    EXPECT_LT(rankAt(text, 'a'), rankAt(text, 'b'));
    EXPECT_EQ(so.SortOrderString(), binary);
    // Every pair of codes is ordered by its ranks as StrComp orders it.
    for (int a = 0; a < 256; a += 7)
        for (int b = 0; b < 256; b += 5) {
            const int32_t byRank = (rankAt(text, a) > rankAt(text, b)) - (rankAt(text, a) < rankAt(text, b));
            ASSERT_EQ(byRank, StrComp(Chr(a), Chr(b), vbTextCompare)) << a << " " << b;
        }
}

TEST(SortOrderMatchingCharacters, LowestOrHighestOfEachClass) {
    const SortOrders& so = sortOrders();
    const String low = so.SortOrderMatchingCharacters(Variant(int32_t(1)));
    const String high = so.SortOrderMatchingCharacters(Variant(int32_t(1)), Variant(true));
    EXPECT_EQ(low[size_t('a')], u'A');
    EXPECT_EQ(high[size_t('A')], u'a');
    String every;
    for (int c = 0; c < 256; ++c) every += Chr(c);
    EXPECT_EQ(so.SortOrderMatchingCharacters(Variant(int32_t(0))), every);
    EXPECT_EQ(so.SortOrderMatchingCharacterPairs(Variant(int32_t(0))), u"");
    const String pairs = so.SortOrderMatchingCharacterPairs(Variant(int32_t(1)));
    EXPECT_EQ(pairs.size() % 2, 0u);
    EXPECT_NE(pairs.find(u"Aa"), String::npos);
}

TEST(SortOrderNumbers, ListsTheModesStrCompTakes) {
    const SortOrders& so = sortOrders();
    EXPECT_EQ(so.SortOrderNumbers(), u"0, 1, 2");
    EXPECT_EQ(so.SortOrderNumbers(Variant(u";")), u"0;1;2");
}

TEST(CharacterPositionsArray, FirstOccurrenceWinsAndTheRestFollow) {
    const SortOrders& so = sortOrders();
    Variant p;
    EXPECT_TRUE(so.CharacterPositionsArray(p, Variant(u"aba")));
    ASSERT_EQ(p.vt(), vbArray | vbInteger);
    const SafeArray& a = p.asArray();
    EXPECT_EQ(a.at(97).asInteger(), 1);
    EXPECT_EQ(a.at(98).asInteger(), 2);
    EXPECT_EQ(a.at(0).asInteger(), 4);
    EXPECT_EQ(a.at(255).asInteger(), 257);
}

TEST(SortCharactersIndirect, OrdersDataByKeyRanks) {
    const SortOrders& so = sortOrders();
    EXPECT_EQ(so.SortCharactersIndirect(Variant(u"ABCDEF"), Variant(u"123456"), Variant(u"FEDCBA")).asString(), u"654321");
    EXPECT_EQ(so.SortCharactersIndirect(Variant(u"BAB"), Variant(u"123")).asString(), u"213") << "equal keys keep order";
    // Long enough for strides above 1.
    const String keys = u"zyxwvutsrqponmlkjihgfedcbaZYXWVUTSRQPONMLKJIHGFEDCBA";
    EXPECT_EQ(so.SortCharactersIndirect(Variant(keys), Variant(keys)).asString(),
              u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(so.SortCharactersIndirect(Variant(u"CBA"), Variant(u"xy")).asString().size(), 2u)
        << "short data keeps all its characters";
    EXPECT_TRUE(so.SortCharactersIndirect(Variant::null(), Variant(u"x")).isNull());
}

TEST(IsStringSorted, ByModeAndByCode) {
    const SortOrders& so = sortOrders();
    EXPECT_FALSE(so.IsStringSorted(Variant(u"aBc")).asBoolean());
    EXPECT_TRUE(so.IsStringSorted(Variant(u"aBc"), Variant(int32_t(1))).asBoolean());
    EXPECT_TRUE(so.IsStringSorted(Variant::null()).isNull());
    EXPECT_TRUE(so.IsStringSortedBinary(Variant(u"Ba")).asBoolean());
    EXPECT_FALSE(so.IsStringSortedBinary(Variant(u"ba")).asBoolean());
}
