// The real platform, whichever it is: plausible figures, and the ones that the system itself tells.
#include "platform/SpecialFolders.h"
#include "platform/SystemDisk.h"
#include "platform/SystemMemory.h"
#include "platform/TickCount.h"
#include "platform/WindowBackdrop.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace {

TEST(SystemMemory, isPlausible)
{
    const auto memory = platform::queryMemory();
    ASSERT_TRUE(memory.has_value());
    EXPECT_GT(memory->totalBytes, 64ULL << 20);
    EXPECT_LE(memory->availableBytes, memory->totalBytes);
    EXPECT_LE(memory->loadPercent, 100U);
}

TEST(SystemMemory, loadFitsTheFigures)
{
    const auto memory = platform::queryMemory();
    ASSERT_TRUE(memory.has_value());
    const double used = static_cast<double>(memory->totalBytes - memory->availableBytes);
    EXPECT_NEAR(memory->loadPercent, used * 100 / static_cast<double>(memory->totalBytes), 2);
}

TEST(SystemDisk, isWhatTheFileSystemLibrarySays)
{
    const auto disk = platform::querySystemDisk();
    ASSERT_TRUE(disk.has_value());
    EXPECT_LE(disk->freeBytes, disk->totalBytes);
    const auto name = platform::systemDiskName();
    const auto space = std::filesystem::space(name == "C:" ? "C:\\" : name);
    EXPECT_EQ(disk->totalBytes, space.capacity);
    const double drift = static_cast<double>(disk->freeBytes) - static_cast<double>(space.free);
    EXPECT_LT(std::abs(drift), 2e9); // others write meanwhile
}

TEST(TickCount, runsWithTheClock)
{
    const auto before = platform::tickCountMilliseconds();
    ASSERT_GT(before, 0U);
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    const auto passed = platform::tickCountMilliseconds() - before;
    EXPECT_GE(passed, 100U);
    EXPECT_LT(passed, 20000U);
}

TEST(WindowBackdrop, noWindowIsHarmless)
{
    platform::setBackdropBlur(0, true);
    platform::setBackdropBlur(0, false);
}

} // namespace
