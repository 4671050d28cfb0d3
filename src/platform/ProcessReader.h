// A pass over all running processes, one after another.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace platform {

struct ProcessTimes
{
    std::uint64_t kernel = 0; // processor time in the kernel, in units of 100 ns
    std::uint64_t user = 0; // processor time of its own code, likewise
    std::uint64_t created = 0; // when it was made, on a scale of the system's own; 0: not known
};

// Reads the processes in the order in which the system lists them:
//
//     if (reader.begin()) { while (reader.next()) { ... } }
//
// What is asked between two calls of next() concerns the process that it came to. Every question may fail alone, and any
// process may end at any moment. Keeps files of the kernel open from one pass to the next where that saves time.
// Thread: one at a time. No allocation per process from its second pass on.
class ProcessReader
{
public:
    ProcessReader();
    ~ProcessReader();
    ProcessReader(const ProcessReader &) = delete;
    ProcessReader &operator=(const ProcessReader &) = delete;
    ProcessReader(ProcessReader &&) = delete;
    ProcessReader &operator=(ProcessReader &&) = delete;

    // Takes the list. False when the system does not give one.
    bool begin();

    // Goes to the first process, and then to the next. False when there is none (any more); the pass is over then.
    bool next();

    std::uint32_t id() const;

    // The executable's file name, as the system's list has it: UTF-8 on Windows, raw bytes on Linux, where it may hold
    // anything, and is "?" where it may not be read. Valid until the next call of next().
    std::string_view name() const;

    // Whether more may be asked about the process. The following answers are empty unless this was true.
    bool open();

    std::optional<std::uint64_t> residentBytes(); // physical memory that it occupies
    std::optional<ProcessTimes> times();
    std::optional<std::uint64_t> transferredBytes(); // read and written since it started

private:
    class Pass;
    std::unique_ptr<Pass> pass;
};

} // namespace platform
