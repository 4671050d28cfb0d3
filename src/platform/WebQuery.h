// What is asked of the web, and the program that asks it: this program opens no connection of its own.
// Thread: any. All text is UTF-8.
#pragma once

#include "platform/Command.h"

#include <string>

namespace platform {

enum class WebTopic {
    Location, // where this machine's public address is
    Weather, // and the weather there
};

enum class WebOutput {
    Line, // the answer as one line: "city|region|country", or "12C, Partly cloudy"
    Json, // the service's own answer
};

struct WebQuery
{
    CommandLine command;
    WebOutput output = WebOutput::Line; // what the command prints

    bool operator==(const WebQuery &) const = default;
};

// The query that works here: through PowerShell, or, on a system that is not its home and where it is not on PATH,
// through curl. Where there is neither, PowerShell all the same, whose start will fail.
WebQuery webQuery(WebTopic topic);

// The service's full address on a host ("host" or "host:port").
std::string webAddress(WebTopic topic, const std::string &host);

// The host that this program was built with.
std::string webHost(WebTopic topic);

// The queries of an address, whether their programs exist here or not.
WebQuery powershellWebQuery(WebTopic topic, const std::string &address);
WebQuery curlWebQuery(const std::string &address);

} // namespace platform
