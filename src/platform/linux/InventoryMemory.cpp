#include "platform/linux/InventoryReaders.h"
#include "platform/linux/MemInfo.h"
#include "platform/linux/MemoryModules.h"
#include "platform/linux/SystemTree.h"

namespace platform::inventory {

namespace {

constexpr std::size_t kLongestMemInfo = 1U << 16U;
constexpr std::size_t kLongestTable = 1U << 20U;
constexpr std::size_t kLongestDatabase = 1U << 16U;

std::optional<modules::Module> firstModule(const SystemTree &tree)
{
    // The table itself is for the administrator only.
    const auto module =
        modules::firstInTable(tree.text("sys/firmware/dmi/tables/DMI", kLongestTable));
    return module ? module
                  : modules::firstInDatabase(tree.text("run/udev/data/+dmi:id", kLongestDatabase));
}

} // namespace

void readMemory(const SystemTree &tree, HardwareInventory &inventory)
{
    if (const auto memory = meminfo::parse(tree.text("proc/meminfo", kLongestMemInfo))) {
        inventory.memoryTotal = std::to_string(memory->totalBytes);
        inventory.memoryAvailable = std::to_string(memory->availableBytes);
    }
}

void readMemoryModule(const SystemTree &tree, HardwareInventory &inventory)
{
    const auto module = firstModule(tree).value_or(modules::Module{});
    inventory.memorySpeed = module.speed == 0 ? "" : std::to_string(module.speed);
    inventory.memoryType = module.type == 0 ? "" : std::to_string(module.type);
}

} // namespace platform::inventory
