#include "platform/linux/KeptProcesses.h"

#include <limits>
#include <utility>

namespace platform {

void KeptProcesses::beginPass()
{
    endPass(); // one that was broken off
    std::swap(before, now);
    position = 0;
}

void KeptProcesses::endPass()
{
    while (position < before.size()) {
        openCount -= static_cast<std::size_t>(before[position].openCount());
        ++position;
    }
    before.clear();
    position = 0;
}

void KeptProcesses::skipTo(std::uint32_t id)
{
    while (position < before.size() && before[position].id < id) {
        openCount -= static_cast<std::size_t>(before[position].openCount());
        before[position] = ProcessFiles();
        ++position;
    }
}

ProcessFiles KeptProcesses::take(std::uint32_t id)
{
    skipTo(id);
    ProcessFiles files;
    if (position < before.size() && before[position].id == id) {
        files = std::move(before[position]);
        openCount -= static_cast<std::size_t>(files.openCount());
        ++position;
    }
    files.id = id;
    return files;
}

void KeptProcesses::giveBack(ProcessFiles &&files)
{
    const auto count = static_cast<std::size_t>(files.openCount());
    if (openCount + count > limit) {
        const ProcessFiles closed = std::move(files);
        now.push_back({.id = closed.id, .stat = {}, .io = {}, .ioDenied = closed.ioDenied});
        return;
    }
    openCount += count;
    now.push_back(std::move(files));
}

void KeptProcesses::clear()
{
    before.clear();
    now.clear();
    position = 0;
    openCount = 0;
}

} // namespace platform
