// The parsers of the hardware inventory, with mutations of the fuzzers' seeds.
#include "fuzz/InventoryFeeds.h"
#include "fuzz/Mutations.h"

#include <gtest/gtest.h>

namespace {

constexpr int kRounds = 20000;

void mutate(const char *corpus, void (*feed)(std::string_view))
{
    const auto seeds = fuzz::seedsIn(std::filesystem::path(VELTRA_FUZZ_CORPUS) / corpus);
    ASSERT_FALSE(seeds.empty());
    EXPECT_NO_THROW(fuzz::feedMutations(seeds, kRounds, feed));
}

TEST(InventoryMutation, cpuInfo)
{
    mutate("cpuinfo", fuzz::feedCpuInfo);
}

TEST(InventoryMutation, memoryTable)
{
    mutate("memory-table", fuzz::feedMemoryTable);
}

TEST(InventoryMutation, memoryDatabase)
{
    mutate("memory-database", fuzz::feedMemoryDatabase);
}

TEST(InventoryMutation, pciIds)
{
    mutate("pci-ids", fuzz::feedPciIds);
}

TEST(InventoryMutation, addressRanges)
{
    mutate("address-ranges", fuzz::feedAddressRanges);
}

TEST(InventoryMutation, processorList)
{
    mutate("processor-list", fuzz::feedProcessorList);
}

TEST(InventoryMutation, property)
{
    mutate("property", fuzz::feedProperty);
}

} // namespace
