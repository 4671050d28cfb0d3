#include "platform/Command.h"

namespace platform {

CommandLine windowsNetworkCommand(NetworkTask task)
{
    switch (task) {
    case NetworkTask::FlushDns:
        return {"ipconfig", {"/flushdns"}};
    case NetworkTask::RenewLease:
        return {"ipconfig", {"/renew"}};
    case NetworkTask::ResetSockets:
        break;
    }
    return {"netsh", {"winsock", "reset"}};
}

} // namespace platform
