#include "fuzz/ProcessFeeds.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::feedProcessTransfer(fuzz::textOf(data, size));
    return 0;
}
