// The parsers of what the kernel tells, with mutations of the fuzzers' seeds.
#include "fuzz/Mutations.h"
#include "fuzz/ProcessFeeds.h"
#include "fuzz/TreeFeeds.h"

#include <gtest/gtest.h>

namespace {

constexpr int kRounds = 20000;

void mutate(const char *corpus, void (*feed)(std::string_view))
{
    const auto seeds = fuzz::seedsIn(std::filesystem::path(VELTRA_FUZZ_CORPUS) / corpus);
    ASSERT_FALSE(seeds.empty());
    EXPECT_NO_THROW(fuzz::feedMutations(seeds, kRounds, feed));
}

TEST(KernelMutation, processStat)
{
    mutate("process-stat", fuzz::feedProcessStat);
}

TEST(KernelMutation, processTransfer)
{
    mutate("process-transfer", fuzz::feedProcessTransfer);
}

TEST(KernelMutation, systemStat)
{
    mutate("system-stat", fuzz::feedSystemStat);
}

TEST(KernelMutation, memInfo)
{
    mutate("meminfo", fuzz::feedMemInfo);
}

TEST(KernelMutation, mountInfo)
{
    mutate("mountinfo", fuzz::feedMountInfo);
}

TEST(KernelMutation, processMaps)
{
    mutate("process-maps", fuzz::feedProcessMaps);
}

TEST(KernelMutation, octalEscapes)
{
    mutate("octal-escapes", fuzz::feedOctalEscapes);
}

TEST(KernelMutation, defaultRoute)
{
    mutate("default-route", fuzz::feedDefaultRoute);
}

} // namespace
