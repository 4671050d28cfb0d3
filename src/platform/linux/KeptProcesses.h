// The files of many processes, kept from one pass over all of them to the next.
// Thread: one at a time.
#pragma once

#include "platform/linux/ProcessFiles.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform {

// A pass asks for the processes by rising identifiers, and gives each one's files back before it asks for the next. What a
// pass did not ask for is closed.
class KeptProcesses
{
public:
    // At most `mostFiles` files are kept open; the others are closed when they are given back.
    explicit KeptProcesses(std::size_t mostFiles)
        : limit(mostFiles)
    { }

    void beginPass();
    void endPass();

    // The files of that process, or of one that had its identifier before; none open when nothing was kept.
    ProcessFiles take(std::uint32_t id);
    void giveBack(ProcessFiles &&files);

    void clear();
    std::size_t openFiles() const { return openCount; } // of those that are not taken

private:
    void skipTo(std::uint32_t id);

    std::size_t limit;
    std::size_t openCount = 0;
    std::size_t position = 0; // in `before`: the first that this pass has not come to
    std::vector<ProcessFiles> before; // by identifier
    std::vector<ProcessFiles> now; // likewise
};

} // namespace platform
