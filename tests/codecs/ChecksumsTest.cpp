#include "codecs/Checksums.h"

#include <gtest/gtest.h>

#include "frame/Conversions.h"
#include "frame/Strings.h"

using namespace qvt;

TEST(Checksum8, SumsAnsiCodesModulo256) {
    const Checksums& c = checksums();
    EXPECT_EQ(c.Checksum8(Variant(u"A")).asString(), u"A");
    EXPECT_EQ(Asc(c.Checksum8(Variant(u"AB")).asString()), 131);
    // 255 + 2 wraps to 1; the euro sign counts as its ANSI code 128.
    EXPECT_EQ(c.Checksum8(Variant(Chr(255) + Chr(2))).asString(), String(1, u'\x01'));
    EXPECT_EQ(Asc(c.Checksum8(Variant(u"\u20AC\u20AC\x01")).asString()), 1);
    EXPECT_EQ(c.Checksum8(Variant(int16_t(12))).asString(), u"c") << "a number sums its text";
}

TEST(Checksum8, FixUpFrameGivesNullForUnusableArguments) {
    const Checksums& c = checksums();
    EXPECT_TRUE(c.Checksum8(Variant::null()).isNull());
    EXPECT_TRUE(c.Checksum8(Variant::missing()).isNull());
    EXPECT_EQ(c.Checksum8(Variant()).asString(), String(1, u'\0'));
    EXPECT_EQ(c.Checksum8(Variant(u"")).asString(), String(1, u'\0'));
}
