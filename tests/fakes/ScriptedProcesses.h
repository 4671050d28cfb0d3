// The processes of the scripted platform. They are read on the sampler's thread, so the script is only touched with its
// lock held: fakes::processes([](auto &script) { ... }).
#pragma once

#include "platform/EndProcess.h"
#include "platform/ProcessReader.h"
#include "platform/SystemMemory.h"
#include "platform/SystemTimes.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace fakes {

struct ScriptedProcess
{
    std::uint32_t id = 0;
    std::string name;
    bool opens = true;
    std::optional<std::uint64_t> residentBytes = 1 << 20;
    std::optional<platform::ProcessTimes> times = platform::ProcessTimes{};
    std::optional<std::uint64_t> transferredBytes = 0;
};

struct ScriptedProcesses
{
    std::optional<platform::SystemTimes> systemTimes = platform::SystemTimes{1000, 2000, 1000};
    bool listSucceeds = true;
    std::vector<ScriptedProcess> list;
    std::function<void()> duringReading; // called at the beginning of each pass, without the lock
    std::function<void()> betweenQuestions; // called when a process is opened, likewise
    int passes = 0;

    // What calls from other threads than the main one are told: that one asks ScriptedPlatform.
    std::optional<platform::MemoryStatus> memory =
        platform::MemoryStatus{16ULL << 30, 12ULL << 30, 25};
    std::uint64_t tickCount = 1000;

    struct EndRequest
    {
        std::uint32_t id = 0;
        bool reachedKill = false; // it was the process that was meant

        bool operator==(const EndRequest &) const = default;
    };
    std::vector<EndRequest> endRequests;
    platform::EndOutcome endOutcome =
        platform::EndOutcome::Ended; // of a process that is in the list and meant
};

bool isMainThread();
std::mutex &processesMutex();
ScriptedProcesses &processesUnlocked();

template<typename Function>
auto processes(const Function &function)
{
    const std::lock_guard lock(processesMutex());
    return function(processesUnlocked());
}

} // namespace fakes
