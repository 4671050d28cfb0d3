#include "platform/WebQuery.h"

namespace platform {

WebQuery webQuery(WebTopic topic)
{
    return powershellWebQuery(topic, webAddress(topic, webHost(topic)));
}

} // namespace platform
