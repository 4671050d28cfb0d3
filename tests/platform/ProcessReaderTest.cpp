// This process and others, read through the real platform.
#include "platform/ProcessReader.h"
#include "platform/EndProcess.h"
#include "platform/SystemTimes.h"

#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <string>
#ifdef VELTRA_ON_WINDOWS
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

namespace {

const auto ownId = static_cast<std::uint32_t>(getpid());

TEST(SystemTimes, idleIsPartOfKernelTimeAndTimePasses)
{
    const auto before = platform::querySystemTimes();
    ASSERT_TRUE(before.has_value());
    EXPECT_LE(before->idle, before->kernel);
    EXPECT_GT(before->user, 0U);
    const auto start = std::chrono::steady_clock::now();
    std::optional<platform::SystemTimes> after;
    do {
        after = platform::querySystemTimes();
    } while (after && after->kernel + after->user == before->kernel + before->user
             && std::chrono::steady_clock::now() - start < std::chrono::seconds(5));
    ASSERT_TRUE(after.has_value());
    EXPECT_GT(after->kernel + after->user, before->kernel + before->user);
}

TEST(ProcessReaderHere, findsThisProcessOnce)
{
    platform::ProcessReader reader;
    for (int pass = 0; pass < 3; ++pass) {
        std::map<std::uint32_t, int> listed;
        ASSERT_TRUE(reader.begin());
        while (reader.next()) {
            ++listed[reader.id()];
            if (reader.id() != ownId) {
                continue;
            }
            EXPECT_NE(reader.name().find("ProcessReader"), std::string_view::npos) << reader.name();
            ASSERT_TRUE(reader.open());
            EXPECT_GT(reader.residentBytes().value_or(0), 100'000U);
            const auto times = reader.times();
            ASSERT_TRUE(times.has_value());
            EXPECT_GT(times->created, 0U);
            EXPECT_TRUE(reader.transferredBytes().has_value());
        }
        EXPECT_EQ(listed[ownId], 1);
        for (const auto &[id, count] : listed) {
            EXPECT_EQ(count, 1) << id;
        }
    }
}

TEST(ProcessReaderHere, hasNothingOutsideAPass)
{
    platform::ProcessReader reader;
    EXPECT_FALSE(reader.next());
    ASSERT_TRUE(reader.begin());
    while (reader.next()) { }
    EXPECT_FALSE(reader.next());
}

TEST(ProcessReaderHere, startsOverInTheMiddle)
{
    platform::ProcessReader reader;
    ASSERT_TRUE(reader.begin());
    ASSERT_TRUE(reader.next());
    const auto first = reader.id();
    reader.next();
    ASSERT_TRUE(reader.begin());
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.id(), first);
}

TEST(EndProcessHere, identifiersOfNobodyAreNeverAsked)
{
    for (const std::uint32_t id : {0U, std::numeric_limits<std::uint32_t>::max()}) {
        bool wasAsked = false;
        const auto isMeant = [&wasAsked](const platform::ProcessIdentity & /*found*/) {
            wasAsked = true;
            return true;
        };
        EXPECT_EQ(platform::endProcess(id, isMeant), platform::EndOutcome::Unavailable);
        EXPECT_FALSE(wasAsked);
    }
}

TEST(EndProcessHere, otherThanMeantLivesOn)
{
    std::string name;
    std::uint64_t created = 0;
    const auto isMeant = [&](const platform::ProcessIdentity &found) {
        name = std::string(found.name);
        created = found.created;
        return false;
    };
    EXPECT_EQ(platform::endProcess(ownId, isMeant), platform::EndOutcome::Unavailable);
    platform::ProcessReader reader;
    reader.begin();
    while (reader.next() && reader.id() != ownId) { }
    EXPECT_EQ(name, reader.name());
    ASSERT_TRUE(reader.open());
    EXPECT_EQ(created, reader.times()->created);
}

} // namespace
