// Ending a process that somebody else started.
// Thread: any.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace platform {

struct ProcessIdentity
{
    std::string_view name; // as in ProcessReader; empty when not known
    std::uint64_t created = 0; // likewise; 0: not known
};

enum class EndOutcome {
    Ended, // or is about to: the system does it in its own time
    Unavailable, // no such process, not the expected one, no right to end it, or protected by the system
    Failed // the system did not do it
};

// Ends the process of that identifier, without asking it, if it is the one that the caller means: `isMeant` is asked with
// the process already held, so that whoever gets the identifier next cannot be hit. 0 and 4294967295 are nobody's.
EndOutcome endProcess(std::uint32_t id,
                      const std::function<bool(const ProcessIdentity &)> &isMeant);

} // namespace platform
