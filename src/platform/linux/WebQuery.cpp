#include "platform/WebQuery.h"

namespace platform {

WebQuery webQuery(WebTopic topic)
{
    const std::string address = webAddress(topic, webHost(topic));
    const WebQuery powershell = powershellWebQuery(topic, address);
    const WebQuery curl = curlWebQuery(address);
    const bool isCurlNeeded = !findOnPath(powershell.command.program);
    return isCurlNeeded && findOnPath(curl.command.program) ? curl : powershell;
}

} // namespace platform
