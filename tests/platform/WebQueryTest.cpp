// The exact command lines that ask the web, and which of them is chosen. Nothing is run.
#include "platform/WebQuery.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace {

using platform::WebOutput;
using platform::WebTopic;
using Arguments = std::vector<std::string>;
namespace fs = std::filesystem;

TEST(WebAddress, IsTheServicesOwn)
{
    EXPECT_EQ(platform::webAddress(WebTopic::Location, "place.example"),
              "http://place.example/json");
    EXPECT_EQ(platform::webAddress(WebTopic::Weather, "sky.example:8443"),
              "https://sky.example:8443/?format=j1");
}

TEST(WebAddress, HostsAreTheConfiguredOnes)
{
    EXPECT_EQ(platform::webHost(WebTopic::Location), VELTRA_LOCATION_HOST);
    EXPECT_EQ(platform::webHost(WebTopic::Weather), VELTRA_WEATHER_HOST);
}

TEST(PowershellQuery, Location)
{
    const auto query =
        platform::powershellWebQuery(WebTopic::Location, "http://place.example/json");
    EXPECT_EQ(query.command.program, "powershell");
    EXPECT_EQ(query.output, WebOutput::Line);
    const std::string script = "$i=Invoke-RestMethod 'http://place.example/json'; "
                               "\"$($i.city)|$($i.regionName)|$($i.country)\"";
    const Arguments expected{"-NoProfile", "-ExecutionPolicy", "Bypass", "-Command", script};
    EXPECT_EQ(query.command.arguments, expected);
}

TEST(PowershellQuery, Weather)
{
    const auto query =
        platform::powershellWebQuery(WebTopic::Weather, "https://sky.example/?format=j1");
    EXPECT_EQ(query.command.program, "powershell");
    EXPECT_EQ(query.output, WebOutput::Line);
    const std::string script =
        "$w=Invoke-RestMethod 'https://sky.example/?format=j1'; $c=$w.current_condition[0]; "
        "\"$($c.temp_C)C, $($c.weatherDesc[0].value)\"";
    const Arguments expected{"-NoProfile", "-ExecutionPolicy", "Bypass", "-Command", script};
    EXPECT_EQ(query.command.arguments, expected);
}

TEST(CurlQuery, HasLimits)
{
    const auto query = platform::curlWebQuery("http://place.example/json");
    EXPECT_EQ(query.command.program, "curl");
    EXPECT_EQ(query.output, WebOutput::Json);
    const Arguments expected{"--silent",
                             "--fail",
                             "--location",
                             "--max-redirs",
                             "3",
                             "--proto",
                             "=http,https",
                             "--proto-redir",
                             "=http,https",
                             "--connect-timeout",
                             "10",
                             "--max-time",
                             "30",
                             "--max-filesize",
                             "1048576",
                             "--url",
                             "http://place.example/json"};
    EXPECT_EQ(query.command.arguments, expected);
}

TEST(CurlQuery, StaysEncryptedOnceItIs)
{
    const auto arguments =
        platform::curlWebQuery("https://sky.example/?format=j1").command.arguments;
    for (const char *option : {"--proto", "--proto-redir"}) {
        const auto found = std::find(arguments.begin(), arguments.end(), option);
        ASSERT_NE(found, arguments.end());
        EXPECT_EQ(*(found + 1), "=https");
    }
    EXPECT_EQ(arguments.back(), "https://sky.example/?format=j1");
}

#ifdef VELTRA_ON_WINDOWS

TEST(WebQuery, IsAlwaysPowershell)
{
    for (const WebTopic topic : {WebTopic::Location, WebTopic::Weather}) {
        const auto address = platform::webAddress(topic, platform::webHost(topic));
        EXPECT_EQ(platform::webQuery(topic), platform::powershellWebQuery(topic, address));
    }
}

#else

class WebQueryChoice : public testing::Test
{
protected:
    void SetUp() override
    {
        folder = fs::temp_directory_path() / "veltra-web-query";
        fs::remove_all(folder);
        fs::create_directories(folder);
        oldPath = std::getenv("PATH");
        setenv("PATH", folder.c_str(), 1);
    }

    void TearDown() override
    {
        setenv("PATH", oldPath.c_str(), 1);
        fs::remove_all(folder);
    }

    void plant(const std::string &program)
    {
        std::ofstream(folder / program) << "#!/bin/false\n";
        fs::permissions(folder / program, fs::perms::owner_all);
    }

    static void expect(const std::string &program)
    {
        for (const WebTopic topic : {WebTopic::Location, WebTopic::Weather}) {
            const auto address = platform::webAddress(topic, platform::webHost(topic));
            EXPECT_EQ(platform::webQuery(topic),
                      program == "curl" ? platform::curlWebQuery(address)
                                        : platform::powershellWebQuery(topic, address));
        }
    }

private:
    fs::path folder;
    std::string oldPath;
};

TEST_F(WebQueryChoice, PowershellWhereThereIsOne)
{
    plant("powershell");
    plant("curl");
    expect("powershell");
}

TEST_F(WebQueryChoice, CurlWhereThereIsNoPowershell)
{
    plant("curl");
    expect("curl");
}

TEST_F(WebQueryChoice, PowershellWhereThereIsNeither)
{
    expect("powershell");
}

#endif

} // namespace
