#include "platform/Command.h"

namespace platform {

CommandLine networkCommand(NetworkTask task)
{
    return windowsNetworkCommand(task);
}

} // namespace platform
