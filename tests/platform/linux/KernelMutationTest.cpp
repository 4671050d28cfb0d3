// The parsers of what the kernel tells, with mutations of the fuzzers' seeds.
#include "fuzz/MutationTest.h"
#include "fuzz/ProcessFeeds.h"
#include "fuzz/TreeFeeds.h"

namespace {

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
