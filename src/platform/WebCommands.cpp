#include "platform/WebHosts.h"
#include "platform/WebQuery.h"

namespace platform {

namespace {

constexpr const char *kConnectSeconds = "10";
constexpr const char *kMostSeconds = "30";
constexpr const char *kMostBytes = "1048576"; // the weather takes some 50,000
constexpr const char *kMostRedirects = "3";

std::string powershellScript(WebTopic topic, const std::string &address)
{
    if (topic == WebTopic::Location) {
        return "$i=Invoke-RestMethod '" + address
            + "'; \"$($i.city)|$($i.regionName)|$($i.country)\"";
    }
    return "$w=Invoke-RestMethod '" + address
        + "'; $c=$w.current_condition[0]; \"$($c.temp_C)C, $($c.weatherDesc[0].value)\"";
}

} // namespace

std::string webAddress(WebTopic topic, const std::string &host)
{
    return topic == WebTopic::Location ? "http://" + host + "/json"
                                       : "https://" + host + "/?format=j1";
}

std::string webHost(WebTopic topic)
{
    return topic == WebTopic::Location ? kLocationHost : kWeatherHost;
}

WebQuery powershellWebQuery(WebTopic topic, const std::string &address)
{
    const CommandLine command{
        "powershell",
        {"-NoProfile", "-ExecutionPolicy", "Bypass", "-Command", powershellScript(topic, address)}};
    return {command, WebOutput::Line};
}

// An address that begins with https is never left for a protocol that can be read on the way. A refusal prints nothing.
WebQuery curlWebQuery(const std::string &address)
{
    const char *protocols = address.starts_with("https:") ? "=https" : "=http,https";
    const CommandLine command{"curl",
                              {"--silent",
                               "--fail",
                               "--location",
                               "--max-redirs",
                               kMostRedirects,
                               "--proto",
                               protocols,
                               "--proto-redir",
                               protocols,
                               "--connect-timeout",
                               kConnectSeconds,
                               "--max-time",
                               kMostSeconds,
                               "--max-filesize",
                               kMostBytes,
                               "--url",
                               address}};
    return {command, WebOutput::Json};
}

} // namespace platform
