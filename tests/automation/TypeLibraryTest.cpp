#include <gtest/gtest.h>
#include "automation/TypeLibrary.h"
TEST(TypeLibrary, Builds) { EXPECT_NE(qvt::TypeLibrary::global().runtime(), nullptr); }
