// The parsers of the hardware inventory, with mutations of the fuzzers' seeds.
#include "fuzz/InventoryFeeds.h"
#include "fuzz/MutationTest.h"

namespace {

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

TEST(InventoryMutation, pciDevice)
{
    mutate("pci-device", fuzz::feedPciDevice);
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
