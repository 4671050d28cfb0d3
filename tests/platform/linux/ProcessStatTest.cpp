// What the kernel writes about processes and processors, as several kernels do it, cut short and hostile.
#include "platform/linux/ProcessStat.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

using platform::procstat::parseProcess;
using platform::procstat::parseSystem;
using platform::procstat::parseTransfer;
using platform::procstat::ticksToFileTime;

constexpr const char *kTail = " S 1 77 77 0 -1 4194560 900 0 3 0 150 50 0 0 20 0 4 0 3600 23068672 "
                              "1280 18446744073709551615 1 1 0 0 0 0\n";

std::string lineOf(const std::string &command)
{
    return "77 (" + command + ")" + kTail;
}

TEST(ProcessStat, fields)
{
    const std::string line = lineOf("bash");
    const auto stat = parseProcess(line);
    ASSERT_TRUE(stat.has_value());
    EXPECT_EQ(stat->command, "bash");
    EXPECT_EQ(stat->state, 'S');
    EXPECT_EQ(stat->userTicks, 150U);
    EXPECT_EQ(stat->systemTicks, 50U);
    EXPECT_EQ(stat->startTicks, 3600U);
    EXPECT_EQ(stat->residentPages, 1280U);
    EXPECT_FALSE(stat->isKernelThread());
    EXPECT_FALSE(stat->hasEnded());
}

TEST(ProcessStat, kernelThread)
{
    const std::string line =
        "2 (kthreadd) S 0 0 0 0 -1 2129984 0 0 0 0 0 7 0 0 20 0 1 0 5 0 0 18446744073709551615\n";
    const auto stat = parseProcess(line);
    ASSERT_TRUE(stat.has_value());
    EXPECT_TRUE(stat->isKernelThread());
    EXPECT_EQ(stat->residentPages, 0U);
}

TEST(ProcessStat, ended)
{
    const std::string line = "9 (sh) Z 1 9 9 0 -1 4228108 0 0 0 0 3 1 0 0 20 0 1 0 88 0 0 0\n";
    const auto stat = parseProcess(line);
    ASSERT_TRUE(stat.has_value());
    EXPECT_TRUE(stat->hasEnded());
}

TEST(ProcessStat, commandsOfAnyKind)
{
    for (const char *command : {"",
                                " ",
                                "a b",
                                ")",
                                "((",
                                ") S 1 2 3",
                                "x) R 0 0 0 (y",
                                "tab\there",
                                "line\nbreak",
                                "\\n",
                                "\xff\xfe",
                                "<b>bold</b>"}) {
        const std::string line = lineOf(command);
        const auto stat = parseProcess(line);
        ASSERT_TRUE(stat.has_value()) << command;
        EXPECT_EQ(stat->command, command);
        EXPECT_EQ(stat->startTicks, 3600U) << command;
    }
}

TEST(ProcessStat, negativeResidentSizeCountsAsNone)
{
    const std::string line = "5 (x) R 1 5 5 0 -1 0 0 0 0 0 1 2 0 0 20 0 1 0 9 0 -3 0\n";
    const auto stat = parseProcess(line);
    ASSERT_TRUE(stat.has_value());
    EXPECT_EQ(stat->residentPages, 0U);
}

TEST(ProcessStat, everyCutIsRefusedUntilTheLastFieldIsWhole)
{
    const std::string line = lineOf("bash");
    const auto whole = line.find(" 18446744073709551615");
    for (std::size_t length = 0; length <= whole; ++length) {
        EXPECT_FALSE(parseProcess(std::string_view(line).substr(0, length)).has_value()) << length;
    }
    EXPECT_TRUE(parseProcess(std::string_view(line).substr(0, whole + 1)).has_value());
}

TEST(ProcessStat, nonsenseIsRefused)
{
    for (const char *text :
         {"", "(", ")", ")(", "77", "77 (bash", "77 bash) S 1", "\n\n\n", "77 (x) SS 1 2 3"}) {
        EXPECT_FALSE(parseProcess(text).has_value()) << text;
    }
    std::string line = lineOf("bash");
    line.replace(line.find(" 150 "), 5, " 1x0 ");
    EXPECT_FALSE(parseProcess(line).has_value());
    line = lineOf("bash");
    line.replace(line.find(" 150 "), 5, " 99999999999999999999999 ");
    EXPECT_FALSE(parseProcess(line).has_value());
}

TEST(ProcessTransfer, sumOfBoth)
{
    constexpr const char *kText =
        "rchar: 9\nwchar: 8\nsyscr: 7\nsyscw: 6\nread_bytes: 4096\nwrite_bytes: 1000\n"
        "cancelled_write_bytes: 12\n";
    EXPECT_EQ(parseTransfer(kText), 5096U);
}

TEST(ProcessTransfer, incompleteIsRefused)
{
    for (const char *text : {"",
                             "read_bytes: 1\n",
                             "write_bytes: 1\n",
                             "read_bytes: 1\nwrite_bytes: 2",
                             "read_bytes: \nwrite_bytes: 2\n",
                             "read_bytes: x\nwrite_bytes: 2\n",
                             "xread_bytes: 1\nxwrite_bytes: 2\n"}) {
        EXPECT_FALSE(parseTransfer(text).has_value()) << text;
    }
}

TEST(SystemTimes, sums)
{
    const auto times = parseSystem("cpu  10 20 30 400 50 6 7 8 9 10\ncpu0 1 2 3\n", 100);
    ASSERT_TRUE(times.has_value());
    EXPECT_EQ(times->idle, 450U * 100'000);
    EXPECT_EQ(times->kernel, (450U + 30 + 6 + 7 + 8) * 100'000);
    EXPECT_EQ(times->user, 30U * 100'000); // guest time is in user time already
}

TEST(SystemTimes, oldKernelsHaveFewerFields)
{
    const auto times = parseSystem("cpu  10 20 30 400\n", 100);
    ASSERT_TRUE(times.has_value());
    EXPECT_EQ(times->idle, 400U * 100'000);
    EXPECT_EQ(times->kernel, 430U * 100'000);
}

TEST(SystemTimes, nonsenseIsRefused)
{
    for (const char *text : {"",
                             "\n",
                             "cpu\n",
                             "cpu 1 2 3\n",
                             "cpu0 1 2 3 4\n",
                             "cpu 1 2 3 4",
                             "cpu a b c d\n",
                             "cpu 1 2 3 4 x\n"}) {
        EXPECT_FALSE(parseSystem(text, 100).has_value()) << text;
    }
    EXPECT_FALSE(parseSystem("cpu 1 2 3 4\n", 0).has_value());
}

TEST(Ticks, convert)
{
    EXPECT_EQ(ticksToFileTime(1, 100), 100'000U);
    EXPECT_EQ(ticksToFileTime(3, 1024), 29'296U);
    EXPECT_EQ(ticksToFileTime(250, 250), 10'000'000U);
    EXPECT_EQ(ticksToFileTime(5, 0), 0U);
    EXPECT_EQ(ticksToFileTime(1'000'000'000'000ULL, 100), 100'000'000'000'000'000ULL);
}

// Random damage to good texts: whatever comes of it, no parser leaves the text.
TEST(ProcessText, damagedAtRandom)
{
    std::mt19937 random(20); // NOLINT(cert-msc51-cpp) the same damage every time
    const std::string good =
        lineOf("some (name)") + "cpu  1 2 3 4 5\nread_bytes: 1\nwrite_bytes: 2\n";
    constexpr std::string_view kFavourites = "()\n -0123456789:\\";
    for (int round = 0; round < 20000; ++round) {
        std::string text = good;
        for (unsigned i = 0; i < 1 + random() % 6; ++i) {
            const auto place = random() % text.size();
            text[place] = random() % 2 == 0 ? static_cast<char>(random())
                                            : kFavourites[random() % kFavourites.size()];
        }
        text.resize(random() % (text.size() + 1));
        const auto offset = std::min<std::size_t>(random() % 100, text.size());
        const std::string_view whole = text;
        const std::string_view part = whole.substr(offset);
        if (const auto stat = parseProcess(part)) {
            EXPECT_GE(stat->command.data(), part.data());
            EXPECT_LE(stat->command.data() + stat->command.size(), part.data() + part.size());
        }
        parseTransfer(part);
        parseSystem(part, 100);
    }
}

} // namespace
