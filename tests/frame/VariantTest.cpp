#include <gtest/gtest.h>

#include "TestSupport.h"

#include "frame/Conversions.h"
#include "frame/Error.h"
#include "frame/Variant.h"

using namespace qvt;
using qvt::test::errorOf;

namespace {


struct Probe : Object {
    static inline int alive = 0;
    Probe() { ++alive; }
    ~Probe() override { --alive; }
    std::u16string_view className() const noexcept override { return u"Probe"; }
};

}  // namespace

TEST(Variant, CopiesOfStringsAreIndependentValues) {
    Variant a(u"hello");
    Variant b = a;
    EXPECT_EQ(a.payloadIdentity(), b.payloadIdentity());  // shared until written
    b.stringForWrite()[0] = u'j';
    EXPECT_EQ(a.asString(), u"hello");
    EXPECT_EQ(b.asString(), u"jello");
    Variant empty{String()};
    EXPECT_EQ(empty.vt(), vbString);
    EXPECT_TRUE(empty.asString().empty());
}

TEST(Variant, SpecialValuesAreDistinct) {
    EXPECT_TRUE(Variant().isEmpty());
    EXPECT_TRUE(Variant::null().isNull());
    Variant m = Variant::missing();
    EXPECT_TRUE(m.isMissing());
    EXPECT_EQ(m.vt(), vbError);
    EXPECT_EQ(m.asErrorCode(), -2147352572);
    EXPECT_FALSE(Variant::error(5).isMissing());
    EXPECT_TRUE(Variant::nothing().isNothing());
    EXPECT_EQ(Variant(true).asInteger(), -1);
}

TEST(Variant, DecimalKeepsEveryFieldInSixteenBytes) {
    Decimal d;
    d.lo = 0xFFFFFFFFFFFFFFFFull;
    d.hi = 0xFFFFFFFFu;
    d.scale = 28;
    d.negative = true;
    Variant v(d);
    Variant copy = v;
    Decimal back = copy.asDecimal();
    EXPECT_EQ(copy.vt(), vbDecimal);
    EXPECT_EQ(back.lo, d.lo);
    EXPECT_EQ(back.hi, d.hi);
    EXPECT_EQ(back.scale, 28);
    EXPECT_TRUE(back.negative);
}

TEST(Variant, ObjectsAreSharedAndReleased) {
    {
        Variant a(static_cast<Object*>(new Probe));
        Variant b = a;
        EXPECT_EQ(a.asObject(), b.asObject());
        EXPECT_EQ(a.asObject()->refCount(), 2u);
        a.clear();
        EXPECT_EQ(Probe::alive, 1);
    }
    EXPECT_EQ(Probe::alive, 0);
}

TEST(Arrays, BoundsAndSubscripts) {
    Variant a = Variant::array(vbVariant, {{1, 3}, {-2, 0}});
    const SafeArray& arr = a.asArray();
    EXPECT_EQ(arr.dimensions(), 2);
    EXPECT_EQ(arr.lbound(2), -2);
    EXPECT_EQ(arr.ubound(1), 3);
    EXPECT_EQ(arr.size(), 9u);
    EXPECT_EQ(errorOf([&] { arr.ubound(3); }), errSubscript);
    int32_t out[] = {4, 0};
    EXPECT_EQ(errorOf([&] { arr.at(out); }), errSubscript);
    int32_t wrongCount[] = {1};
    EXPECT_EQ(errorOf([&] { arr.at(wrongCount); }), errSubscript);
    // First subscript fastest.
    SafeArray& w = a.arrayForWrite();
    int32_t s[] = {2, -2};
    w.at(s) = Variant(int32_t(7));
    EXPECT_EQ(w.elements()[1].asLong(), 7);
}

TEST(Arrays, UnallocatedArrayRaisesNine) {
    Variant u = Variant::unallocatedArray(vbVariant);
    EXPECT_TRUE(u.isArray());
    EXPECT_EQ(u.vt(), vbArray | vbVariant);
    EXPECT_EQ(errorOf([&] { u.asArray().lbound(); }), errSubscript);
}

TEST(Arrays, CopyOnAssignmentCopiesElements) {
    Variant a = Variant::vector({Variant(int16_t(1)), Variant(u"two")});
    Variant b = a;
    b.arrayForWrite().at(0) = Variant(u"changed");
    EXPECT_EQ(a.asArray().at(0).asInteger(), 1);
    EXPECT_EQ(b.asArray().at(0).asString(), u"changed");
}

TEST(Arrays, TypedArraysConvertOnStore) {
    Variant a = Variant::array(vbInteger, {{0, 2}});
    SafeArray& w = a.arrayForWrite();
    EXPECT_EQ(w.at(0).vt(), vbInteger);  // zero value of the element type
    w.set(1, Variant(u"12"));
    EXPECT_EQ(w.at(1).vt(), vbInteger);
    EXPECT_EQ(w.at(1).asInteger(), 12);
    EXPECT_EQ(errorOf([&] { w.set(2, Variant(u"x")); }), errTypeMismatch);
    EXPECT_EQ(errorOf([&] { w.set(2, Variant(40000.0)); }), errOverflow);
    EXPECT_EQ(errorOf([&] { w.set(2, Variant::null()); }), errInvalidUseOfNull);
    Variant s = Variant::array(vbString, {{0, 0}});
    EXPECT_EQ(s.asArray().at(0).vt(), vbString);
}

TEST(Arrays, ReDimPreserveGrowsOnlyTheLastDimension) {
    Variant a = Variant::array(vbVariant, {{0, 1}, {0, 1}});
    SafeArray& w = a.arrayForWrite();
    int32_t s[] = {1, 1};
    w.at(s) = Variant(u"kept");
    ArrayBound grow[] = {{0, 1}, {0, 3}};
    w.redimPreserve(grow);
    EXPECT_EQ(w.at(s).asString(), u"kept");
    EXPECT_EQ(w.size(), 8u);
    ArrayBound firstChanged[] = {{0, 2}, {0, 3}};
    EXPECT_EQ(errorOf([&] { w.redimPreserve(firstChanged); }), errSubscript);
    ArrayBound lowerChanged[] = {{0, 1}, {1, 3}};
    EXPECT_EQ(errorOf([&] { w.redimPreserve(lowerChanged); }), errSubscript);
    ArrayBound plain[] = {{5, 6}};
    w.redim(plain);
    EXPECT_EQ(w.lbound(), 5);
    EXPECT_TRUE(w.at(5).isEmpty());
    w.erase();
    EXPECT_FALSE(w.allocated());
}

TEST(Errors, DescriptionsAndResumeNext) {
    EXPECT_EQ(errorText(13), u"Type mismatch");
    EXPECT_EQ(errorText(9999), u"Application-defined or object-defined error");
    ErrNo n = onErrorResumeNext([] { raiseError(11); });
    EXPECT_EQ(n, 11);
    EXPECT_EQ(Err().Number, 11);
    EXPECT_EQ(Err().Description, u"Division by zero");
    Err().Clear();
    EXPECT_EQ(onErrorResumeNext([] {}), 0);
    EXPECT_TRUE(guarded([]() -> Variant { raiseError(6); }).isNull());
}
