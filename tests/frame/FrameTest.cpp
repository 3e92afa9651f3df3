#include "frame/Frame.h"

#include <gtest/gtest.h>

#include "frame/Conversions.h"
#include "frame/FixUps.h"

using namespace qvt;

namespace {

// A member in the fix-up frame: two mandatory arguments, one optional.
Variant member(Variant vText, Variant vCount, Variant vPad, int& bodyRuns) {
    const FixUps& fx = fixUps();
    return fixUpFrame(fx.FixUpVariantToStringFn(vText) && fx.FixUpVariantToLongMandFn(vCount), [&] {
        ++bodyRuns;
        fx.FixUpVariantToStringSub(vPad, Variant(u"-"));
        String s = vText.asString();
        for (int32_t i = 0; i < vCount.asLong(); ++i) s += vPad.asString();
        return Variant(s);
    });
}

}  // namespace

TEST(Frame, FixUpFrameCopiesInAndGivesNullOnFailure) {
    int runs = 0;
    Variant caller(int16_t(2));
    EXPECT_EQ(member(Variant(u"a"), caller, Variant::missing(), runs).asString(), u"a--");
    EXPECT_EQ(caller.vt(), vbInteger) << "by-value arguments are private copies";
    EXPECT_TRUE(member(Variant::null(), caller, Variant::missing(), runs).isNull());
    EXPECT_TRUE(member(Variant(u"a"), Variant(u"x"), Variant::missing(), runs).isNull());
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(fixUpFrame(false, [] { return true; }, false), false) << "typed results name their failure";
}

TEST(Frame, FixUpFrameStopsAtTheFirstFailedFixUp) {
    // A later mandatory fix-up on a ref argument does not run once an
    // earlier one has failed.
    const FixUps& fx = fixUps();
    Variant first = Variant::null(), second(u"5");
    const Variant r = fixUpFrame(fx.FixUpVariantToStringFn(first) && fx.FixUpVariantToLongMandFn(second),
                                 [] { return Variant(true); });
    EXPECT_TRUE(r.isNull());
    EXPECT_TRUE(second.isString());
}

TEST(Frame, GuardedFrameTurnsRuntimeErrorsIntoNull) {
    EXPECT_TRUE(guardedFrame([]() -> Variant { return Variant(CDbl(Variant(u"x"))); }).isNull());
    EXPECT_EQ(guardedFrame([] { return Variant(int16_t(3)); }).asInteger(), 3);
}

TEST(Frame, FileFrameCleansUpOnEveryWayOut) {
    std::vector<int> order;
    try {
        FileFrame f;
        f.atExit([&] { order.push_back(1); });
        f.atExit([&] {
            order.push_back(2);
            raiseError(errFileNotFound);  // swallowed: the first clean-up still runs
        });
        EXPECT_EQ(f.resumeNext([] { raiseError(errPathNotFound); }), errPathNotFound);
        raiseError(errOverflow);
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), errOverflow);
    }
    EXPECT_EQ(order, (std::vector<int>{2, 1}));
}

TEST(Frame, GlobalClassesHaveOneInstance) {
    EXPECT_EQ(&fixUps(), &globalInstance<FixUps>());
    EXPECT_EQ(globalFactory<FixUps>(), static_cast<Object*>(&fixUps()));
}
