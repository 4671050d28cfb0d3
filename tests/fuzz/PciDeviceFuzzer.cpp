#include "fuzz/InventoryFeeds.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::feedPciDevice(fuzz::textOf(data, size));
    return 0;
}
