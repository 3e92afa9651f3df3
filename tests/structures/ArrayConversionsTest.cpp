#include "structures/ArrayConversions.h"

#include <gtest/gtest.h>

#include "TestSupport.h"

using namespace qvt;
using qvt::test::L;
using qvt::test::S;

namespace {

const Variant kMissing = Variant::missing();

String cellText(const Variant& m, int32_t c, int32_t r) {
    const int32_t at[] = {c, r};
    const Variant& v = m.asArray().at(at);
    return v.isEmpty() ? u"_" : CStr(v);
}

const ArrayConversions& ac() { return arrayConversions(); }

}  // namespace

TEST(ArrayConversions, SplittingKeepsEveryPartAndRefusesAnEmptySeparator) {
    Variant v;
    ASSERT_TRUE(ac().StringToVariantVector(v, S(u"a\r\nb"), kMissing, kMissing));  // CR LF by default
    EXPECT_EQ(v.asArray().ubound(), 1);
    Variant kept = S(u"kept");
    EXPECT_FALSE(ac().StringToVariantVector(kept, S(u"a,b"), S(u""), kMissing));
    EXPECT_FALSE(ac().StringToVariantVector(kept, Variant::null(), S(u","), kMissing));
    EXPECT_EQ(CStr(kept), u"kept");
    const Variant one = splitToOneBased(u"x,,y", u",", vbBinaryCompare);
    EXPECT_EQ(one.asArray().ubound(), 3);
    EXPECT_TRUE(one.asArray().at(0).isEmpty());
    EXPECT_EQ(CStr(one.asArray().at(2)), u"");
}

TEST(ArrayConversions, MatrixTextRoundTripsOverTheOneBasedCells) {
    Variant m;
    ASSERT_TRUE(ac().StringToVariantMatrix(m, S(u"a;b;c|d"), S(u";"), S(u"|"), kMissing));
    EXPECT_EQ(m.asArray().ubound(1), 3);  // as wide as the widest row
    EXPECT_EQ(m.asArray().ubound(2), 2);
    EXPECT_EQ(cellText(m, 1, 2), u"d");
    EXPECT_EQ(cellText(m, 3, 2), u"_");
    EXPECT_EQ(ac().VariantMatrixToString(m, S(u";"), S(u"|")), u"a;b;c|d;;");
    const Variant v = Variant::vector({S(u"skip"), Variant::null(), L(3)});
    EXPECT_EQ(ac().VariantVectorToString(v, S(u"+")), u"+3");
    EXPECT_EQ(ac().VariantVectorToString(S(u"not an array"), S(u"+")), u"");
}

TEST(ArrayConversions, ElementCopiesKeepBoundsAndChangeTheType) {
    Variant strings;
    Variant from = Variant::array(vbVariant, {ArrayBound{2, 3}, ArrayBound{1, 1}});
    from.arrayForWrite().elements()[0] = Variant::null();
    from.arrayForWrite().elements()[1] = Variant(1.5);
    ASSERT_TRUE(ac().VariantMatrixToStringMatrix(strings, from));
    EXPECT_EQ(strings.elementType(), vbString);
    EXPECT_EQ(strings.asArray().lbound(1), 2);
    EXPECT_EQ(strings.asArray().elements()[0].asString(), u"");
    Variant back;
    ASSERT_TRUE(ac().StringMatrixToVariantMatrix(back, strings));
    EXPECT_EQ(back.elementType(), vbVariant);
    EXPECT_FALSE(ac().StringVectorToVariantVector(back, strings));  // a matrix is not a vector
}

TEST(ArrayConversions, RowsAndColumnsMoveBetweenMatrixAndVector) {
    Variant m;
    ac().StringToVariantMatrix(m, S(u"a,b|c,d|e,f"), S(u","), S(u"|"), kMissing);
    Variant column, row;
    ASSERT_TRUE(ac().VariantMatrixColumnToVector(column, m, L(2)));
    EXPECT_EQ(CStr(column.asArray().at(3)), u"f");
    EXPECT_EQ(column.asArray().ubound(), 3);
    ASSERT_TRUE(ac().VariantMatrixRowToVector(row, m, L(3)));
    EXPECT_EQ(CStr(row.asArray().at(1)), u"e");
    EXPECT_FALSE(ac().VariantMatrixRowToVector(row, m, L(4)));
    // Overlay as far as both reach: element 0 has no row, element 4 neither.
    const Variant v = Variant::vector({S(u"0"), S(u"1"), S(u"2"), S(u"3"), S(u"4")});
    ASSERT_TRUE(ac().VariantVectorToMatrixColumn(m, v, L(1)));
    EXPECT_EQ(cellText(m, 1, 1) + cellText(m, 1, 3) + cellText(m, 2, 3), u"13f");
    ASSERT_TRUE(ac().VariantVectorToMatrixRow(m, v, L(2)));
    EXPECT_EQ(cellText(m, 1, 2) + cellText(m, 2, 2), u"12");
}
