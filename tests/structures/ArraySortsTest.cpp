#include "structures/ArraySorts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "TestSupport.h"
#include "frame/Comparisons.h"
#include "frame/Conversions.h"

using namespace qvt;
using qvt::test::errorOf;

namespace {

Variant vec(std::initializer_list<Variant> items) { return Variant::vector(items); }
Variant L(int32_t v) { return Variant(v); }
Variant S(const char16_t* s) { return Variant(s); }

// Elements lo to UBound joined by CStr with commas.
String joined(const Variant& v, int32_t lo = 1) {
    String out;
    const SafeArray& a = v.asArray();
    for (int32_t i = lo; i <= a.ubound(); ++i) out += (i > lo ? u"," : u"") + CStr(a.at(i));
    return out;
}

// A matrix(1 To columns, 1 To rows) filled row by row.
Variant matrix(int32_t columns, std::vector<std::vector<Variant>> rows) {
    Variant m = Variant::array(vbVariant, {ArrayBound{1, columns}, ArrayBound{1, int32_t(rows.size())}});
    SafeArray& a = m.arrayForWrite();
    for (int32_t r = 1; r <= int32_t(rows.size()); ++r)
        for (int32_t c = 1; c <= columns; ++c) {
            const int32_t at[] = {c, r};
            a.at(at) = rows[size_t(r - 1)][size_t(c - 1)];
        }
    return m;
}
const Variant& cell(const Variant& m, int32_t c, int32_t r) {
    const int32_t at[] = {c, r};
    return m.asArray().at(at);
}

}  // namespace

TEST(SortVariantVector, SortsOneToUBoundWhateverTheLowerBound) {
    const ArraySorts& s = arraySorts();
    Variant a = vec({L(9), L(3), L(1)});
    EXPECT_TRUE(s.SortVariantVector(a));
    EXPECT_EQ(joined(a, 0), u"9,1,3") << "element 0 takes no part";

    Variant one = Variant::array(vbVariant, {ArrayBound{1, 1}});
    EXPECT_TRUE(s.SortVariantVector(one));
    Variant single = vec({L(5)});
    EXPECT_FALSE(s.SortVariantVector(single));
    Variant none = vec({});
    EXPECT_FALSE(s.SortVariantVector(none));

    Variant from2 = Variant::array(vbVariant, {ArrayBound{2, 4}});
    EXPECT_EQ(errorOf([&] { s.SortVariantVector(from2, L(0), Variant(true)); }), 9);
    Variant unallocated = Variant::unallocatedArray(vbVariant);
    EXPECT_EQ(errorOf([&] { s.SortVariantVector(unallocated); }), 9);
}

TEST(SortVariantVector, NumbersBeforeStringsUnderEitherCompareMode) {
    const ArraySorts& s = arraySorts();
    Variant a = vec({Variant(), L(2), S(u"a"), L(1), S(u"B")});
    Variant b = a;
    s.SortVariantVector(a, L(0));
    s.SortVariantVector(b, L(1));
    EXPECT_EQ(joined(a), u"1,2,B,a");
    EXPECT_EQ(joined(b), u"1,2,a,B");
    Variant objects = vec({L(0), Variant::vector({}), L(1)});
    EXPECT_EQ(errorOf([&] { s.SortVariantVector(objects, L(0), Variant(true)); }), 13);
}

TEST(SortVariantVector, StableFlagGivesARepeatableOrder) {
    const ArraySorts& s = arraySorts();
    const Variant input = vec({L(0), S(u"b"), S(u"A"), S(u"a"), S(u"B"), S(u"a"), S(u"A")});
    Variant first = input, second = input;
    s.SortVariantVector(first, L(1), Variant(true));
    s.SortVariantVector(second, L(1), Variant(true));
    EXPECT_EQ(joined(first), joined(second));
}

// Thousands of random mixed vectors: the result is ordered under the mode
// and holds exactly the values it was given.
TEST(SortVariantVector, PropertyOrderedPermutationOfRandomMixedVectors) {
    const ArraySorts& s = arraySorts();
    std::mt19937 rng(20261122);
    const char16_t* words[] = {u"a", u"A", u"b", u"B", u"ab", u"Ab", u"", u"z", u"10", u"\u00e9"};
    // Exact identity of a value, for the permutation check.
    auto identity = [](const Variant& v) { return std::make_pair(int(v.vt()), CStr(v)); };
    for (int round = 0; round < 4000; ++round) {
        const int32_t n = int32_t(rng() % 40);
        Variant a = Variant::array(vbVariant, {ArrayBound{0, n}});
        for (Variant& e : a.arrayForWrite().elements()) {
            switch (rng() % 5) {
                case 0: e = Variant(); break;
                case 1: e = Variant(int32_t(rng() % 7) - 3); break;
                case 2: e = Variant(double(int32_t(rng() % 13) - 6) / 4.0); break;
                default: e = Variant(words[rng() % std::size(words)]); break;
            }
        }
        const int32_t compare = round % 2;
        const bool stable = round % 4 >= 2;
        std::vector<std::pair<int, String>> before, after;
        for (const Variant& e : a.asArray().elements().subspan(1)) before.push_back(identity(e));
        const Variant element0 = a.asArray().at(0);

        ASSERT_EQ(s.SortVariantVector(a, L(compare), Variant(stable)), n >= 1);
        const SafeArray& r = a.asArray();
        EXPECT_EQ(identity(r.at(0)), identity(element0));
        for (int32_t i = 2; i <= n; ++i)
            ASSERT_LE(comparisons().CompareLikeDataTypeFast(r.at(i - 1), r.at(i), compare), 0)
                << "round " << round << " at " << i;
        for (const Variant& e : r.elements().subspan(1)) after.push_back(identity(e));
        std::sort(before.begin(), before.end());
        std::sort(after.begin(), after.end());
        ASSERT_EQ(before, after) << "round " << round;
        EXPECT_TRUE(s.IsVariantVectorSorted(a, L(compare)));
    }
}

TEST(SortVariantVector, PresortedAndEqualInputOfSomeSize) {
    const ArraySorts& s = arraySorts();
    for (bool stable : {false, true}) {
        Variant ascending = Variant::array(vbVariant, {ArrayBound{1, 3000}});
        Variant equal = ascending;
        for (int32_t i = 1; i <= 3000; ++i) {
            ascending.arrayForWrite().at(i) = Variant(3001 - i);
            equal.arrayForWrite().at(i) = Variant(u"same");
        }
        EXPECT_TRUE(s.SortVariantVector(ascending, L(0), Variant(stable)));
        EXPECT_TRUE(s.SortVariantVector(equal, L(0), Variant(stable)));
        for (int32_t i = 1; i <= 3000; ++i) ASSERT_EQ(ascending.asArray().at(i).asLong(), i);
    }
}

TEST(IsVariantVectorSorted, WalksOneToUBound) {
    const ArraySorts& s = arraySorts();
    EXPECT_TRUE(s.IsVariantVectorSorted(vec({L(9), L(1), L(2)})));
    EXPECT_FALSE(s.IsVariantVectorSorted(vec({L(0), S(u"a"), L(5)})));
    EXPECT_FALSE(s.IsVariantVectorSorted(vec({S(u""), S(u"a"), S(u"B")})));
    EXPECT_TRUE(s.IsVariantVectorSorted(vec({S(u""), S(u"a"), S(u"B")}), L(1)));
    EXPECT_TRUE(s.IsVariantVectorSorted(vec({})));
    EXPECT_FALSE(s.IsVariantVectorSorted(Variant::array(vbVariant, {ArrayBound{-1, 0}})));
}

TEST(PartitionVariantVector, PutsThePivotInItsFinalPlace) {
    const ArraySorts& s = arraySorts();
    Variant a = vec({L(0), L(5), L(8), L(1), L(9), L(2), L(4)});
    const Variant p = s.PartitionVariantVector(a, L(1), L(6));
    ASSERT_EQ(p.vt(), vbLong);
    EXPECT_EQ(p.asLong(), 3);
    EXPECT_EQ(a.asArray().at(3).asLong(), 4);
    for (int32_t i = 1; i < 3; ++i) EXPECT_LT(a.asArray().at(i).asLong(), 4);
    for (int32_t i = 4; i <= 6; ++i) EXPECT_GT(a.asArray().at(i).asLong(), 4);
    EXPECT_TRUE(s.PartitionVariantVector(a, S(u"x"), L(3)).isNull());
}

TEST(SortKeys, GenerateAndReverse) {
    const ArraySorts& s = arraySorts();
    Variant k;
    EXPECT_TRUE(s.SortGenerateKeys(k));
    EXPECT_EQ(k.asArray().lbound(), 1);
    EXPECT_EQ(k.asArray().ubound(), 1);
    EXPECT_EQ(k.asArray().at(1).vt(), vbLong);
    EXPECT_FALSE(s.SortGenerateKeys(k, L(3), L(2)));
    EXPECT_EQ(k.asArray().ubound(), 1) << "untouched on failure";

    Variant keys = Variant::array(vbVariant, {ArrayBound{1, 3}}), revs;
    for (int32_t i = 1; i <= 3; ++i) keys.arrayForWrite().at(i) = L(i % 3 + 1);  // 2, 3, 1
    EXPECT_TRUE(s.SortGenerateReverseKeys(revs, keys));
    EXPECT_EQ(joined(revs), u"3,1,2");
    Variant outOfRange = vec({L(0), L(7)});
    EXPECT_EQ(errorOf([&] { s.SortGenerateReverseKeys(revs, outOfRange); }), 9);
}

TEST(SortMatrixRows, KeysOnlyBreaksTiesByRowAndMovesNothing) {
    const ArraySorts& s = arraySorts();
    const Variant m = matrix(2, {{L(5), S(u"x")}, {L(5), S(u"y")}, {L(1), S(u"z")}, {L(5), S(u"w")}});
    Variant k;
    EXPECT_TRUE(s.SortVariantMatrixRowsKeysOnly(k, m, L(0), vec({L(0), L(1)})));
    EXPECT_EQ(joined(k), u"3,1,2,4");
    EXPECT_TRUE(s.SortVariantMatrixRowsKeysOnlyFast(k, m, L(0), vec({L(0), L(2)})));
    EXPECT_EQ(joined(k), u"4,1,2,3");
    EXPECT_EQ(errorOf([&] { s.SortVariantMatrixRowsKeysOnly(k, m, L(0), vec({L(0), L(3)})); }), 9);
}

TEST(SortMatrixRows, StableKeepsEqualRowsInOrderAndUnstableStillSorts) {
    const ArraySorts& s = arraySorts();
    std::mt19937 rng(7);
    std::vector<std::vector<Variant>> rows;
    for (int32_t r = 1; r <= 500; ++r) rows.push_back({L(int32_t(rng() % 10)), L(r)});
    for (bool stable : {true, false}) {
        Variant m = matrix(2, rows);
        EXPECT_TRUE(s.SortVariantMatrixRows(m, L(0), vec({L(0), L(1)}), Variant(stable)));
        for (int32_t r = 2; r <= 500; ++r) {
            ASSERT_LE(cell(m, 1, r - 1).asLong(), cell(m, 1, r).asLong());
            if (stable && cell(m, 1, r - 1).asLong() == cell(m, 1, r).asLong()) {
                ASSERT_LT(cell(m, 2, r - 1).asLong(), cell(m, 2, r).asLong()) << "row " << r;
            }
        }
    }
    Variant rowZero = Variant::array(vbVariant, {ArrayBound{1, 1}, ArrayBound{0, 0}});
    EXPECT_FALSE(s.SortVariantMatrixRows(rowZero, L(0), vec({L(0), L(1)})));
}

TEST(SortMatrixRows, ToKeyOrderAppliesAnyPermutation) {
    const ArraySorts& s = arraySorts();
    std::mt19937 rng(11);
    for (int round = 0; round < 50; ++round) {
        const int32_t n = 1 + int32_t(rng() % 30);
        std::vector<int32_t> perm(static_cast<size_t>(n));
        for (int32_t i = 0; i < n; ++i) perm[size_t(i)] = i + 1;
        std::shuffle(perm.begin(), perm.end(), rng);
        std::vector<std::vector<Variant>> rows;
        for (int32_t r = 1; r <= n; ++r) rows.push_back({L(r * 10)});
        Variant m = matrix(1, rows);
        Variant keys = Variant::array(vbVariant, {ArrayBound{1, n}});
        for (int32_t i = 1; i <= n; ++i) keys.arrayForWrite().at(i) = L(perm[size_t(i - 1)]);
        ASSERT_TRUE(s.SortVariantMatrixRowsToKeyOrder(m, keys));
        for (int32_t i = 1; i <= n; ++i) {
            ASSERT_EQ(cell(m, 1, i).asLong(), perm[size_t(i - 1)] * 10);
            ASSERT_EQ(keys.asArray().at(i).asLong(), i);
        }
    }
}

TEST(SortUniqueVariantVector, CopiesSortsAndDropsRepeats) {
    const ArraySorts& s = arraySorts();
    const Variant from = vec({S(u"z"), L(3), L(1), L(3), S(u"a"), S(u"A")});
    Variant to;
    EXPECT_TRUE(s.SortUniqueVariantVector(to, from, L(1)));
    // "a" and "A" are one value under text compare; which one stays depends
    // on the shuffle before the sort.
    String got = joined(to, 0);
    EXPECT_TRUE(got == u"z,1,3,a" || got == u"z,1,3,A");
    EXPECT_EQ(joined(from, 0), u"z,3,1,3,a,A") << "the source stays";
}
