// The wall clock of this program, which jumps at will.
#pragma once

#include <chrono>

// Linking this puts it in the place of the system's functions for the wall clock, for all libraries, too. What measures
// intervals is left as it is, as on a machine whose clock is set. Any thread.
namespace shiftedclock {

void setShift(std::chrono::seconds ahead); // of the system's; from now on

std::chrono::system_clock::time_point now(); // what this program must take for the present time

} // namespace shiftedclock
