#include "structures/ArrayOthers.h"

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "structures/ArrayConversions.h"

using namespace qvt;
using qvt::test::errorOf;
using qvt::test::L;
using qvt::test::S;

namespace {

const Variant kMissing = Variant::missing();

Variant vec(std::initializer_list<Variant> items) { return Variant::vector(items); }

// A matrix(1 To columns, 1 To rows) of the cells, given row by row.
Variant grid(int32_t columns, std::initializer_list<Variant> cells) {
    const int32_t rows = int32_t(cells.size()) / columns;
    Variant m = Variant::array(vbVariant, {ArrayBound{1, columns}, ArrayBound{1, rows}});
    std::copy(cells.begin(), cells.end(), m.arrayForWrite().elements().begin());
    return m;
}

Variant table(const char16_t* text) {
    Variant t;
    arrayOthers().LookupStringToVariantMatrix(t, S(text), S(u","));
    return t;
}

const ArrayOthers& ao() { return arrayOthers(); }

}  // namespace

TEST(ArrayOthers, FirstAtomicElementSearchesDepthFirstPastEmptyArrays) {
    const Variant nested = vec({Variant::unallocatedArray(vbVariant), vec({vec({}), L(5)}), L(6)});
    EXPECT_EQ(CLng(ao().FirstAtomicArrayElement(nested)), 5);
    const Variant objects = vec({Variant::nothing(), S(u"s")});
    EXPECT_TRUE(ao().FirstAtomicArrayElement(objects).isNothing());
    EXPECT_EQ(CStr(ao().FirstAtomicNonObjectArrayElement(objects)), u"s");
    EXPECT_TRUE(ao().FirstAtomicArrayElement(vec({})).isNull());
}

TEST(ArrayOthers, FormatVariantMatrixAlignsColumnsAndSplitsCellLines) {
    const Variant m = grid(3, {S(u"name"), S(u"n"), Variant::null(),  //
                               S(u"a"), L(12345), S(u"two\r\nlines")});
    EXPECT_EQ(CStr(ao().FormatVariantMatrix(m, S(u"|"), S(u"/"), S(u"<>^"))),
              u"name|    n|/a   |12345| two/    |     |lines");
    // A vector prints as one column; trailing blanks go.
    EXPECT_EQ(CStr(ao().FormatVariantMatrix(vec({S(u"abc"), L(1)}), kMissing, kMissing, S(u">"))), u"abc\r\n  1");
    EXPECT_TRUE(ao().FormatVariantMatrix(S(u"text")).isNull());
}

TEST(ArrayOthers, GroupCountsEachDistinctValueOfElementsOneUp) {
    Variant g;
    ASSERT_TRUE(ao().GroupVariantVector(g, vec({S(u"x"), L(2), S(u"B"), L(2), S(u"b"), L(1)}), L(1)));
    ASSERT_EQ(g.asArray().ubound(2), 3);  // 1, 2 and "b" under text compare; element 0 left out
    const auto e = g.asArray().elements();
    EXPECT_EQ(CLng(e[0]), 1);
    EXPECT_EQ(CLng(e[3]), 2);  // count of 2
    EXPECT_EQ(CLng(e[5]), 2);  // count of "B" and "b"
    EXPECT_FALSE(ao().GroupVariantVector(g, vec({L(1)})));
}

TEST(ArrayOthers, LookupsFindKeysLinearlyAndByBinarySearch) {
    Variant t = table(u"a,alpha,b,beta,d,delta,e");
    EXPECT_EQ(t.asArray().ubound(2), 4);
    const int32_t lastValue[] = {2, 4};
    EXPECT_TRUE(t.asArray().at(lastValue).isEmpty());
    for (const char16_t* key : {u"a", u"b", u"d"})
        EXPECT_EQ(CStr(ao().LookupSorted(t, S(key))), CStr(ao().LookupValue(t, S(key), L(1), L(2))));
    EXPECT_TRUE(ao().LookupSorted(t, S(u"c")).isNull());
    EXPECT_TRUE(ao().LookupValue(t, S(u"c"), L(1), L(2)).isNull());
    EXPECT_EQ(CStr(ao().LookupValue(t, S(u"beta"), L(2), L(1))), u"b");
    EXPECT_EQ(qvt::test::errorOf([&] { ao().LookupValue(S(u"x"), S(u"a"), L(1), L(2)); }), errTypeMismatch);
    EXPECT_EQ(CStr(ao().LookupMultiple(t, S(u"bxa"))), u"betaxalpha");
    EXPECT_EQ(CStr(ao().LookupSortedMultiple(t, S(u"bxa"))), u"betaxalpha");

    Variant added;
    ASSERT_TRUE(ao().LookupAdd(added, S(u"k"), S(u"2.5")));
    ASSERT_TRUE(ao().LookupAdd(added, L(7), L(3)));
    EXPECT_EQ(added.asArray().ubound(2), 2);
    EXPECT_EQ(CStr(ao().LookupValue(added, S(u"7"), L(1), L(2))), u"3");
    EXPECT_FALSE(ao().LookupAdd(added, S(u"k"), S(u"not a number")));
}

TEST(ArrayOthers, ElementLengthsUseTheTextFormOverTheRange) {
    const Variant v = vec({Variant::null(), S(u"abcd"), Variant(1.25), S(u"")});
    EXPECT_EQ(ao().MaxLengthVariantVectorElement(v), 4);
    EXPECT_EQ(ao().MinLengthVariantVectorElement(v), 0);
    EXPECT_EQ(ao().MinLengthVariantVectorElement(v, L(1), L(2)), 4);
    EXPECT_EQ(ao().MaxLengthVariantVectorElement(v, L(2), L(9)), 0);  // outside the bounds
}
