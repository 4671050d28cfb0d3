// /proc/meminfo as several kernels write it, cut short, and hostile.
#include "platform/linux/MemInfo.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

using platform::meminfo::parse;

constexpr std::uint64_t kKiB = 1024;

constexpr const char *kModern = "MemTotal:       24599556 kB\n"
                                "MemFree:        21113680 kB\n"
                                "MemAvailable:   23906588 kB\n"
                                "Buffers:          116524 kB\n"
                                "Cached:          2790768 kB\n"
                                "SwapCached:            0 kB\n"
                                "HugePages_Total:       0\n";

TEST(MemInfo, modernKernel)
{
    const auto memory = parse(kModern);
    ASSERT_TRUE(memory.has_value());
    EXPECT_EQ(memory->totalBytes, 24599556 * kKiB);
    EXPECT_EQ(memory->availableBytes, 23906588 * kKiB);
    EXPECT_EQ(memory->loadPercent, 2U); // 2.8 rounded down
}

TEST(MemInfo, kernelWithoutMemAvailable)
{
    const auto memory =
        parse("MemTotal: 1000 kB\nMemFree: 100 kB\nBuffers: 50 kB\nCached: 250 kB\n");
    ASSERT_TRUE(memory.has_value());
    EXPECT_EQ(memory->availableBytes, 400 * kKiB);
    EXPECT_EQ(memory->loadPercent, 60U);
}

TEST(MemInfo, orderAndBlanksDoNotMatter)
{
    const auto memory =
        parse("Cached: 7 kB\nMemAvailable:\t 250 kB\nXMemTotal: 9 kB\nMemTotal:1000 kB\n");
    ASSERT_TRUE(memory.has_value());
    EXPECT_EQ(memory->totalBytes, 1000 * kKiB);
    EXPECT_EQ(memory->loadPercent, 75U);
}

TEST(MemInfo, loadIsRoundedDown)
{
    EXPECT_EQ(parse("MemTotal: 1000 kB\nMemAvailable: 1 kB\n")->loadPercent, 99U);
    EXPECT_EQ(parse("MemTotal: 1000 kB\nMemAvailable: 0 kB\n")->loadPercent, 100U);
    EXPECT_EQ(parse("MemTotal: 1000 kB\nMemAvailable: 991 kB\n")->loadPercent, 0U);
    EXPECT_EQ(parse("MemTotal: 1000 kB\nMemAvailable: 990 kB\n")->loadPercent, 1U);
}

TEST(MemInfo, moreAvailableThanThereIs)
{
    const auto memory = parse("MemTotal: 1000 kB\nMemAvailable: 5000 kB\n");
    ASSERT_TRUE(memory.has_value());
    EXPECT_EQ(memory->availableBytes, memory->totalBytes);
    EXPECT_EQ(memory->loadPercent, 0U);
}

TEST(MemInfo, largestMachine)
{
    const auto memory =
        parse("MemTotal: 18014398509481983 kB\nMemAvailable: 9007199254740991 kB\n");
    ASSERT_TRUE(memory.has_value());
    EXPECT_EQ(memory->loadPercent, 50U);
}

class MemInfoFailure : public testing::TestWithParam<const char *>
{ };

TEST_P(MemInfoFailure, isReported)
{
    EXPECT_FALSE(parse(GetParam()).has_value());
}

INSTANTIATE_TEST_SUITE_P(
    Hostile,
    MemInfoFailure,
    testing::Values("",
                    "\n",
                    "MemTotal",
                    "MemTotal:",
                    "MemTotal:\n",
                    "MemTotal: kB\nMemAvailable: 1 kB\n",
                    "MemTotal: 1000 kB\n",
                    "MemAvailable: 1000 kB\n",
                    "MemTotal: 0 kB\nMemAvailable: 0 kB\n",
                    "MemTotal: -5 kB\nMemAvailable: 1 kB\n",
                    "MemTotal: 99999999999999999999999 kB\nMemAvailable: 1 kB\n",
                    "MemTotal: 18446744073709551615 kB\nMemAvailable: 1 kB\n",
                    "MemTotal: 1000 kB\nMemAvailable: 10", // cut in the middle of a number
                    "memtotal: 1000 kB\nmemavailable: 1 kB\n"));

TEST(MemInfo, everyPrefixIsSafe)
{
    constexpr std::string_view kText = kModern;
    for (std::size_t length = 0; length < kText.size(); ++length) {
        const auto memory = parse(kText.substr(0, length));
        if (memory) {
            EXPECT_EQ(memory->totalBytes, 24599556 * kKiB);
        }
    }
}

TEST(MemInfo, noiseIsSafe)
{
    std::mt19937 random(1);
    const std::string alphabet = "MemTotal:Available0123456789 \n\t-kB";
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto i = random() % 120; i > 0; --i) {
            text += random() % 50 == 0 ? static_cast<char>(random())
                                       : alphabet[random() % alphabet.size()];
        }
        const auto memory = parse(text);
        if (memory) {
            EXPECT_LE(memory->loadPercent, 100U);
            EXPECT_LE(memory->availableBytes, memory->totalBytes);
        }
    }
}

} // namespace
