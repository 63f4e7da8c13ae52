#include "platform/os_version.h"

#include <gtest/gtest.h>

TEST(OsVersion, NoTargetIsOfTheWindows95Family) { EXPECT_FALSE(os::IsWindows9x()); }
