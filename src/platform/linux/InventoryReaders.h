// The parts of the hardware inventory, each read from the files of one machine. What a machine does not tell stays empty.
#pragma once

#include "platform/HardwareInventory.h"

namespace platform {

class SystemTree;

namespace inventory {

void readProcessor(const SystemTree &tree, HardwareInventory &inventory);
void readGraphics(const SystemTree &tree, HardwareInventory &inventory);
void readMemory(const SystemTree &tree, HardwareInventory &inventory); // total and available
void readMemoryModule(const SystemTree &tree, HardwareInventory &inventory); // speed and type
void readBoard(const SystemTree &tree, HardwareInventory &inventory);

} // namespace inventory
} // namespace platform
