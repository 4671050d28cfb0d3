#include "platform/HardwareInventory.h"

#include "platform/linux/InventoryReaders.h"
#include "platform/linux/SystemTree.h"

namespace platform {

HardwareInventory queryHardware()
{
    const SystemTree tree("/");
    HardwareInventory inventory;
    inventory::readProcessor(tree, inventory);
    inventory::readGraphics(tree, inventory);
    inventory::readMemory(tree, inventory);
    inventory::readMemoryModule(tree, inventory);
    inventory::readBoard(tree, inventory);
    return inventory;
}

std::string operatingSystemType()
{
    return SystemTree("/").line("proc/sys/kernel/ostype");
}

} // namespace platform
