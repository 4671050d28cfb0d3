// The desktop's tools, the network commands and the default route, with fake programs on PATH.
#include "platform/Command.h"
#include "platform/Shell.h"
#include "platform/linux/DefaultRoute.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <utility>

namespace {

using platform::CommandLine;
using platform::NetworkTask;
using platform::SystemPage;
namespace fs = std::filesystem;

class LinuxShellTest : public testing::Test
{
protected:
    void SetUp() override
    {
        const auto *test = testing::UnitTest::GetInstance()->current_test_info();
        root = fs::temp_directory_path() / (std::string("veltra-shell-") + test->name());
        fs::remove_all(root);
        fs::create_directories(root / "bin");
        oldPath = std::getenv("PATH");
        setenv("PATH", (root / "bin").c_str(), 1);
    }

    void TearDown() override
    {
        setenv("PATH", oldPath.c_str(), 1);
        fs::remove_all(root);
    }

    // A program that writes down its name and arguments, and then does as `rest` says.
    void fake(const std::string &name, const std::string &rest = "exit 0")
    {
        const fs::path file = root / "bin" / name;
        std::ofstream(file) << "#!/bin/sh\necho \"" << name << " $*\" >> '"
                            << (root / "calls").string() << "'\n"
                            << rest << "\n";
        fs::permissions(file, fs::perms::owner_all);
    }

    std::string calls() const
    {
        std::ifstream file(root / "calls");
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    fs::path root;
    std::string oldPath;
};

TEST_F(LinuxShellTest, withoutToolsNothingOpens)
{
    for (const auto page : {SystemPage::Storage,
                            SystemPage::StartupApps,
                            SystemPage::Security,
                            SystemPage::EdgeClearData,
                            SystemPage::ChromeClearData}) {
        EXPECT_FALSE(platform::openSystemPage(page));
    }
    EXPECT_FALSE(platform::openFolder(root));
}

TEST_F(LinuxShellTest, firstInstalledToolIsTaken)
{
    fake("filelight");
    fake("gnome-disks");
    EXPECT_TRUE(platform::openSystemPage(SystemPage::Storage));
    EXPECT_EQ(calls(), "filelight \n");
}

TEST_F(LinuxShellTest, failingToolIsPassedOver)
{
    fake("kcmshell5", "exit 1");
    fake("cinnamon-settings");
    EXPECT_TRUE(platform::openSystemPage(SystemPage::StartupApps));
    EXPECT_EQ(calls(), "kcmshell5 kcm_autostart\ncinnamon-settings startup\n");
}

// As a program started by some session managers and scripts finds it: the kernel forgets its children when they end.
TEST_F(LinuxShellTest, endOfAToolIsNoticedWhereItsSignalIsIgnored)
{
    fake("tool");
    fake("broken", "exit 1");
    for (const auto &[program, outcome] : {std::pair("tool", platform::RunOutcome::Succeeded),
                                           std::pair("broken", platform::RunOutcome::Failed)}) {
        auto *const before = std::signal(SIGCHLD, SIG_IGN);
        const auto found = platform::runHidden({program, {}}, std::chrono::seconds(20));
        std::signal(SIGCHLD, before);
        EXPECT_EQ(found, outcome);
    }
}

TEST_F(LinuxShellTest, toolThatGoesOnRunningHasOpened)
{
    fake("gufw", "exec /bin/sleep 3");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(platform::openSystemPage(SystemPage::Security));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST_F(LinuxShellTest, browsers)
{
    fake("chromium");
    EXPECT_FALSE(platform::openSystemPage(SystemPage::EdgeClearData));
    EXPECT_TRUE(platform::openSystemPage(SystemPage::ChromeClearData));
    EXPECT_EQ(calls(), "chromium chrome://settings/clearBrowserData\n");
}

TEST_F(LinuxShellTest, foldersAreOpenedByTheirPath)
{
    fake("xdg-open");
    EXPECT_TRUE(platform::openFolder(root));
    EXPECT_EQ(calls(), "xdg-open " + root.string() + "\n");
    EXPECT_FALSE(platform::openFolder(root / "missing"));
    EXPECT_FALSE(platform::openFolder("relative"));
    EXPECT_FALSE(platform::openFolder("http://example.invalid/"));
    EXPECT_FALSE(platform::openFolder(root / "bin" / "xdg-open")); // a file
    fake("xdg-open", "exit 4");
    EXPECT_FALSE(platform::openFolder(root));
}

TEST_F(LinuxShellTest, dnsCommand)
{
    EXPECT_EQ(platform::networkCommand(NetworkTask::FlushDns),
              (CommandLine{"ipconfig", {"/flushdns"}}));
    fake("resolvectl");
    EXPECT_EQ(platform::networkCommand(NetworkTask::FlushDns),
              (CommandLine{"resolvectl", {"flush-caches"}}));
    fake("ipconfig");
    EXPECT_EQ(platform::networkCommand(NetworkTask::FlushDns),
              (CommandLine{"ipconfig", {"/flushdns"}}));
}

TEST_F(LinuxShellTest, leaseCommand)
{
    const CommandLine windows{"ipconfig", {"/renew"}};
    EXPECT_EQ(platform::networkCommand(NetworkTask::RenewLease), windows);
    std::ifstream file("/proc/net/route");
    std::ostringstream text;
    text << file.rdbuf();
    const std::string device = platform::route::defaultDevice(text.str());
    fake("networkctl");
    EXPECT_EQ(platform::networkCommand(NetworkTask::RenewLease),
              device.empty() ? windows : (CommandLine{"networkctl", {"renew", device}}));
    fake("nmcli");
    EXPECT_EQ(platform::networkCommand(NetworkTask::RenewLease),
              device.empty() ? windows : (CommandLine{"nmcli", {"device", "reapply", device}}));
    fake("ipconfig");
    EXPECT_EQ(platform::networkCommand(NetworkTask::RenewLease), windows);
}

TEST_F(LinuxShellTest, socketsCannotBeResetHere)
{
    EXPECT_EQ(platform::networkCommand(NetworkTask::ResetSockets),
              (CommandLine{"netsh", {"winsock", "reset"}}));
}

constexpr const char *kHeader =
    "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n";

TEST(DefaultRoute, smallestMetricWins)
{
    const std::string text = std::string(kHeader)
        + "wlan0\t00000000\t0101A8C0\t0003\t0\t0\t600\t00000000\t0\t0\t0\n"
        + "eth0\t00000000\t0101A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0\n"
        + "eth0\t0001A8C0\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n";
    EXPECT_EQ(platform::route::defaultDevice(text), "eth0");
}

TEST(DefaultRoute, whatIsNoUsableDefault)
{
    const std::string header = kHeader;
    EXPECT_EQ(platform::route::defaultDevice(""), "");
    EXPECT_EQ(platform::route::defaultDevice(header), "");
    EXPECT_EQ(
        platform::route::defaultDevice(header + "eth0\t0001A8C0\t0\t0001\t0\t0\t0\t00FFFFFF\t0\n"),
        "");
    EXPECT_EQ(
        platform::route::defaultDevice(header + "eth0\t00000000\t0\t0002\t0\t0\t0\t00000000\t0\n"),
        ""); // down
    EXPECT_EQ(
        platform::route::defaultDevice(header + "eth0\t00000000\t0\t0003\t0\t0\tx\t00000000\t0\n"),
        "");
    EXPECT_EQ(platform::route::defaultDevice(header + "eth0\t00000000\t0\t0003\t0\n"), ""); // cut
    EXPECT_EQ(platform::route::defaultDevice(header + "eth0\t00000000\t0\t0003\t0\t0\t0\t00000000"),
              "eth0"); // no end
}

} // namespace
