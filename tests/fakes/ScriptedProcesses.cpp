#include "fakes/ScriptedProcesses.h"

#include <algorithm>

namespace fakes {

namespace {

const std::thread::id mainThread = std::this_thread::get_id();

} // namespace

bool isMainThread()
{
    return std::this_thread::get_id() == mainThread;
}

std::mutex &processesMutex()
{
    static std::mutex mutex;
    return mutex;
}

ScriptedProcesses &processesUnlocked()
{
    static auto &instance = *new ScriptedProcesses; // a sampler may outlive main()
    return instance;
}

} // namespace fakes

namespace platform {

std::optional<SystemTimes> querySystemTimes()
{
    return fakes::processes([](auto &script) { return script.systemTimes; });
}

class ProcessReader::Pass
{
public:
    std::vector<fakes::ScriptedProcess> list;
    std::size_t next = 0;

    const fakes::ScriptedProcess &current() const { return list.at(next - 1); }
};

ProcessReader::ProcessReader()
    : pass(std::make_unique<Pass>())
{ }

ProcessReader::~ProcessReader() = default;

bool ProcessReader::begin()
{
    const auto during = fakes::processes([](auto &script) {
        ++script.passes;
        return script.duringReading;
    });
    if (during) {
        during();
    }
    return fakes::processes([this](auto &script) {
        pass->next = 0;
        pass->list = script.list;
        return script.listSucceeds;
    });
}

bool ProcessReader::next()
{
    if (pass->next == pass->list.size()) {
        return false;
    }
    ++pass->next;
    return true;
}

std::uint32_t ProcessReader::id() const
{
    return pass->current().id;
}

std::string_view ProcessReader::name() const
{
    return pass->current().name;
}

bool ProcessReader::open()
{
    if (const auto between =
            fakes::processes([](auto &script) { return script.betweenQuestions; })) {
        between();
    }
    return pass->current().opens;
}

std::optional<std::uint64_t> ProcessReader::residentBytes()
{
    return pass->current().residentBytes;
}

std::optional<ProcessTimes> ProcessReader::times()
{
    return pass->current().times;
}

std::optional<std::uint64_t> ProcessReader::transferredBytes()
{
    return pass->current().transferredBytes;
}

EndOutcome endProcess(std::uint32_t id, const std::function<bool(const ProcessIdentity &)> &isMeant)
{
    const auto found =
        fakes::processes([id](auto &script) -> std::optional<fakes::ScriptedProcess> {
            script.endRequests.push_back({id, false});
            const auto process = std::find_if(script.list.begin(),
                                              script.list.end(),
                                              [id](const auto &one) { return one.id == id; });
            return process != script.list.end() ? std::optional(*process) : std::nullopt;
        });
    if (!found || !found->opens) {
        return EndOutcome::Unavailable;
    }
    const auto created = found->times.value_or(ProcessTimes{}).created;
    if (!isMeant({.name = found->name, .created = created})) {
        return EndOutcome::Unavailable;
    }
    return fakes::processes([](auto &script) {
        script.endRequests.back().reachedKill = true;
        return script.endOutcome;
    });
}

} // namespace platform
