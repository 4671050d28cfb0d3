#include "platform/SpecialFolders.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

TEST(TemporaryFolder, followsTheEnvironment)
{
    ASSERT_EQ(setenv("TEMP", "/sandbox/temp", 1), 0);
    ASSERT_EQ(setenv("TMPDIR", "/sandbox/tmpdir", 1), 0);
    EXPECT_EQ(platform::temporaryFolder(), "/sandbox/temp");
    ASSERT_EQ(setenv("TEMP", "", 1), 0);
    EXPECT_EQ(platform::temporaryFolder(), "/sandbox/tmpdir");
    unsetenv("TEMP");
    EXPECT_EQ(platform::temporaryFolder(), "/sandbox/tmpdir");
    unsetenv("TMPDIR");
    EXPECT_EQ(platform::temporaryFolder(), "/tmp");
}

TEST(SystemFolder, doesNotExistHere)
{
    EXPECT_TRUE(platform::systemFolder().empty());
}

} // namespace
