#include "structures/ArrayManipulations.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "TestSupport.h"
#include "frame/Random.h"

using namespace qvt;
using qvt::test::L;
using qvt::test::S;

namespace {

const Variant kMissing = Variant::missing();

Variant vec(std::initializer_list<Variant> items) { return Variant::vector(items); }

// All elements, LBound to UBound, by CStr ("" for Empty).
String all(const Variant& v) {
    String out;
    for (const Variant& e : v.asArray().elements()) out += e.isEmpty() ? u"_" : CStr(e);
    return out;
}

// A matrix(1 To columns, 1 To rows) whose cell (c, r) holds c * 10 + r.
Variant numbered(int32_t columns, int32_t rows) {
    Variant m = Variant::array(vbVariant, {ArrayBound{1, columns}, ArrayBound{1, rows}});
    SafeArray& a = m.arrayForWrite();
    for (int32_t r = 1; r <= rows; ++r)
        for (int32_t c = 1; c <= columns; ++c) {
            const int32_t at[] = {c, r};
            a.at(at) = L(c * 10 + r);
        }
    return m;
}

int32_t at(const Variant& m, int32_t c, int32_t r) {
    const int32_t s[] = {c, r};
    return CLng(m.asArray().at(s));
}

const ArrayManipulations& am() { return arrayManipulations(); }

}  // namespace

TEST(ArrayManipulations, ReDimPreserveKeepsTheCommonPartOfEveryDimension) {
    Variant m = numbered(3, 3);
    ASSERT_TRUE(am().ReDimPreserveVariantMatrix(m, L(2), L(4), L(0), L(2)));
    EXPECT_EQ(m.asArray().lbound(1), 2);
    EXPECT_EQ(m.asArray().ubound(1), 4);
    EXPECT_EQ(m.asArray().lbound(2), 0);
    EXPECT_EQ(at(m, 2, 1), 21);
    EXPECT_EQ(at(m, 3, 2), 32);
    const int32_t fresh[] = {4, 0};
    EXPECT_TRUE(m.asArray().at(fresh).isEmpty());
    Variant c;
    EXPECT_FALSE(am().ReDimPreserveVariantCube(c, L(1), L(2)));  // not dimensioned: every bound needed
    EXPECT_TRUE(am().ReDimPreserveVariantCube(c, L(1), L(2), L(1), L(1), L(0), L(3)));
    EXPECT_EQ(c.asArray().dimensions(), 3);
    Variant v = vec({L(1), L(2)});
    EXPECT_FALSE(am().ReDimPreserveVariantVector(v, L(3), L(2)));
    EXPECT_EQ(all(v), u"12");
}

TEST(ArrayManipulations, CopiesCheckTheShapeAndOffsetsMoveTheBounds) {
    Variant m = numbered(2, 2), to = S(u"kept");
    EXPECT_FALSE(am().CopyVariantVector(to, m));
    EXPECT_EQ(CStr(to), u"kept");
    EXPECT_TRUE(am().CopyVariantArray(to, m));
    EXPECT_EQ(at(to, 2, 1), 21);
    Variant shifted;
    ASSERT_TRUE(am().OffsetVariantMatrix(shifted, m, L(-1), kMissing));  // the second offset defaults to 1
    EXPECT_EQ(shifted.asArray().lbound(1), 0);
    EXPECT_EQ(shifted.asArray().lbound(2), 2);
    EXPECT_EQ(at(shifted, 1, 2), 21);
    Variant target = vec({L(0), L(0), L(0)});
    ASSERT_TRUE(am().OverlayVariantVector(target, vec({L(7), L(8), L(9)}), L(1)));
    EXPECT_EQ(all(target), u"078");  // 9 would land past the end
}

TEST(ArrayManipulations, SetGrowsTheArrayToReachTheElement) {
    Variant m = numbered(2, 2);
    ASSERT_TRUE(am().SetVariantMatrix(m, L(0), L(3), S(u"x")));
    EXPECT_EQ(m.asArray().lbound(1), 0);
    EXPECT_EQ(m.asArray().ubound(2), 3);
    EXPECT_EQ(at(m, 2, 2), 22);
    Variant fresh;
    ASSERT_TRUE(am().SetVariantCube(fresh, L(1), L(2), L(3), L(5)));
    EXPECT_EQ(fresh.asArray().lbound(3), 3);
    Variant scalar = L(4);
    EXPECT_FALSE(am().SetVariantVector(scalar, L(1), L(1)));
    Variant typed = Variant::array(vbLong, {ArrayBound{1, 1}});
    ASSERT_TRUE(am().SetVariantVector(typed, L(3), S(u"42")));  // the element type stays and converts
    EXPECT_EQ(typed.asArray().at(3).vt(), vbLong);
    EXPECT_EQ(typed.asArray().at(2).asLong(), 0);
}

TEST(ArrayManipulations, ShufflesPermuteOnlyTheirRange) {
    setRndState(12345);
    Variant v = Variant::array(vbVariant, {ArrayBound{0, 49}});
    for (int32_t i = 0; i <= 49; ++i) v.arrayForWrite().at(i) = L(i);
    ASSERT_TRUE(am().ShuffleVariantVector(v, L(10), L(39)));
    std::vector<int32_t> seen;
    for (int32_t i = 0; i <= 49; ++i) {
        const int32_t x = CLng(v.asArray().at(i));
        if (i < 10 || i > 39) EXPECT_EQ(x, i);
        else seen.push_back(x);
    }
    std::sort(seen.begin(), seen.end());
    for (size_t k = 0; k < seen.size(); ++k) EXPECT_EQ(seen[k], int32_t(k) + 10);
    EXPECT_FALSE(am().ShuffleVariantVector(v, L(0), L(50)));

    // Columns move whole: each column keeps its own cells together.
    Variant m = numbered(5, 3);
    ASSERT_TRUE(am().ShuffleVariantMatrixColumns(m));
    for (int32_t c = 1; c <= 5; ++c)
        for (int32_t r = 1; r <= 3; ++r) EXPECT_EQ(at(m, c, r) % 10, r);
    Variant cells = numbered(4, 4);
    ASSERT_TRUE(am().ShuffleVariantMatrix(cells, L(2), L(3), L(2), L(3)));
    EXPECT_EQ(at(cells, 1, 1) + at(cells, 4, 4), 11 + 44);
    EXPECT_EQ(at(cells, 2, 2) + at(cells, 3, 2) + at(cells, 2, 3) + at(cells, 3, 3), 22 + 32 + 23 + 33);
}

TEST(ArrayManipulations, RandomIntegersCoverTheClosedRange) {
    setRndState(777);
    int hits[5] = {};
    for (int i = 0; i < 5000; ++i) {
        const int32_t x = am().RandomLongWithinRangeFast(-2, 2);
        ASSERT_GE(x, -2);
        ASSERT_LE(x, 2);
        ++hits[x + 2];
    }
    for (int h : hits) EXPECT_GT(h, 800);
    EXPECT_TRUE(am().RandomLongWithinRange(S(u"x"), L(3)).isNull());
}

TEST(ArrayManipulations, SwapsAndTranspositionMoveWholeLines) {
    Variant m = numbered(3, 2);
    ASSERT_TRUE(am().SwapVariantMatrixColumns(m, L(1), L(3)));
    EXPECT_EQ(at(m, 1, 2), 32);
    EXPECT_EQ(at(m, 3, 1), 11);
    EXPECT_FALSE(am().SwapVariantMatrixRows(m, L(1), L(3)));
    Variant t;
    ASSERT_TRUE(am().TransposeVariantMatrix(t, numbered(3, 2)));
    EXPECT_EQ(t.asArray().ubound(1), 2);
    EXPECT_EQ(t.asArray().ubound(2), 3);
    EXPECT_EQ(at(t, 2, 3), 32);
}

TEST(ArrayManipulations, DeleteInsertAndRotateEditTheVector) {
    Variant v = vec({S(u"a"), S(u"b"), S(u"a"), S(u"c")});
    ASSERT_TRUE(am().DeleteVariantVectorElementByContent(v, S(u"A"), L(1), Variant(true)));
    EXPECT_EQ(all(v), u"bc");
    Variant w = vec({S(u"a"), S(u"b"), S(u"a")});
    ASSERT_TRUE(am().DeleteVariantVectorElementByContent(w, S(u"a"), L(0), Variant(false)));
    EXPECT_EQ(all(w), u"b__");
    EXPECT_FALSE(am().DeleteVariantVectorElementByContent(w, S(u"z"), L(0), Variant(false)));
    Variant only = vec({S(u"x"), S(u"x")});
    am().DeleteVariantVectorElementByContent(only, S(u"x"), L(0), Variant(true));
    EXPECT_EQ(all(only), u"x");  // an array keeps one element

    Variant ins = vec({L(1), L(2), L(3)});
    ASSERT_TRUE(am().InsertVariantVectorElement(ins, L(0), L(9), Variant(false)));
    EXPECT_EQ(all(ins), u"912");  // the last falls off
    EXPECT_FALSE(am().InsertVariantVectorElement(ins, L(3), L(9), Variant(false)));
    ASSERT_TRUE(am().InsertVariantVectorElement(ins, L(3), L(4), Variant(true)));
    EXPECT_EQ(all(ins), u"9124");

    Variant r = vec({L(1), L(2), L(3), L(4)});
    ASSERT_TRUE(am().RotateVariantVectorDown(r, L(1), kMissing));
    EXPECT_EQ(all(r), u"1423");
    ASSERT_TRUE(am().RotateVariantVectorUp(r));
    EXPECT_EQ(all(r), u"4231");
    ASSERT_TRUE(am().ReverseVariantVector(r, L(1), L(2)));
    EXPECT_EQ(all(r), u"4321");
}
