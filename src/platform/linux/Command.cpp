#include "platform/Command.h"

#include "platform/linux/DefaultRoute.h"

#include <fstream>
#include <iterator>

namespace platform {

namespace {

bool isOnPath(const std::string &program)
{
    return findOnPath(program).has_value();
}

std::string defaultDevice()
{
    std::ifstream file("/proc/net/route");
    const std::string text((std::istreambuf_iterator<char>(file)),
                           std::istreambuf_iterator<char>());
    return route::defaultDevice(text);
}

// Applies the device's settings anew, lease included.
std::optional<CommandLine> ownLeaseRenewal()
{
    const std::string device = defaultDevice();
    if (device.empty()) {
        return std::nullopt;
    }
    if (isOnPath("nmcli")) {
        return CommandLine{"nmcli", {"device", "reapply", device}};
    }
    if (isOnPath("networkctl")) {
        return CommandLine{"networkctl", {"renew", device}};
    }
    return std::nullopt;
}

std::optional<CommandLine> ownCommand(NetworkTask task)
{
    switch (task) {
    case NetworkTask::FlushDns:
        return isOnPath("resolvectl") ? std::optional(CommandLine{"resolvectl", {"flush-caches"}})
                                      : std::nullopt;
    case NetworkTask::RenewLease:
        return ownLeaseRenewal();
    case NetworkTask::ResetSockets:
        break; // nothing of the kind exists here
    }
    return std::nullopt;
}

} // namespace

CommandLine networkCommand(NetworkTask task)
{
    const CommandLine windows = windowsNetworkCommand(task);
    return isOnPath(windows.program) ? windows : ownCommand(task).value_or(windows);
}

} // namespace platform
