// Every operation on a scripted machine: what is asked of the platform, what is announced, what is returned.
#include "core/OptimizerCore.h"

#include "fakes/ScriptedPlatform.h"

#include <atomic>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using platform::SystemPage;

struct Announcement
{
    std::string title;
    std::string text;
    bool running = false;
    bool success = false;

    bool operator==(const Announcement &) const = default;
};

class OptimizerCoreTest : public testing::Test
{
protected:
    void SetUp() override
    {
        machine = {};
        OptimizerCore::setToastCallback(
            [this](const std::string &title, const std::string &text, bool running, bool success) {
                heard.push_back({title, text, running, success});
            });
    }

    void TearDown() override { OptimizerCore::setToastCallback({}); }

    fakes::ScriptedPlatform &machine = fakes::scriptedPlatform();
    std::vector<Announcement> heard;
};

TEST_F(OptimizerCoreTest, cleanTempTakesBothFoldersInOrder)
{
    machine.temporaryFolder = "/t";
    machine.systemFolder = "/w";
    machine.cleaned["/t"] = {2, 1000};
    machine.cleaned["/w/Temp"] = {3, 24};
    const TempCleanResult result = OptimizerCore::cleanTemp();
    EXPECT_EQ(result.removedCount, 5);
    EXPECT_EQ(result.bytesFreed, 1024U);
    EXPECT_EQ(machine.cleanedFolders, (std::vector<std::string>{"/t", "/w/Temp"}));
    EXPECT_EQ(heard,
              (std::vector<Announcement>{{"Clean Temp", "Running...", true, true},
                                         {"Clean Temp", "Done", false, true}}));
}

TEST_F(OptimizerCoreTest, cleanTempWithoutTemp)
{
    machine.systemFolder = "/w";
    OptimizerCore::cleanTemp();
    EXPECT_EQ(machine.cleanedFolders, std::vector<std::string>{"/w/Temp"});
}

TEST_F(OptimizerCoreTest, cleanTempWithNothingAtAll)
{
    const TempCleanResult result = OptimizerCore::cleanTemp();
    EXPECT_EQ(result.removedCount, 0);
    EXPECT_EQ(result.bytesFreed, 0U);
    EXPECT_TRUE(machine.cleanedFolders.empty());
    EXPECT_EQ(heard.back(), (Announcement{"Clean Temp", "Done", false, true}));
}

TEST_F(OptimizerCoreTest, sameFolderTwiceIsNotCompared)
{
    machine.temporaryFolder = "/w/Temp";
    machine.systemFolder = "/w";
    OptimizerCore::cleanTemp();
    EXPECT_EQ(machine.cleanedFolders.size(), 2U);
}

TEST_F(OptimizerCoreTest, cleanTempLetsTheExceptionOut)
{
    machine.temporaryFolder = "/loop";
    machine.systemFolder = "/w";
    machine.cleaningThrows = "/loop";
    EXPECT_THROW(OptimizerCore::cleanTemp(), std::filesystem::filesystem_error);
    EXPECT_EQ(heard, (std::vector<Announcement>{{"Clean Temp", "Running...", true, true}}));
    EXPECT_EQ(machine.cleanedFolders.size(), 1U);
}

TEST_F(OptimizerCoreTest, recycleBinPassesTheAnswerOn)
{
    for (const bool answer : {true, false}) {
        heard.clear();
        machine.binSucceeds = answer;
        EXPECT_EQ(OptimizerCore::emptyRecycleBin(), answer);
        EXPECT_EQ(heard,
                  (std::vector<Announcement>{
                      {"Recycle Bin", "Running...", true, true},
                      {"Recycle Bin", answer ? "Done" : "Failed", false, answer}}));
    }
}

TEST_F(OptimizerCoreTest, flushDnsAnnouncesItsOutcome)
{
    using platform::RunOutcome;
    for (const auto outcome : {RunOutcome::Succeeded,
                               RunOutcome::Failed,
                               RunOutcome::NotStarted,
                               RunOutcome::StillRunning}) {
        heard.clear();
        machine.hiddenOutcome = outcome;
        const bool success = outcome == RunOutcome::Succeeded;
        EXPECT_EQ(OptimizerCore::flushDns(), success);
        EXPECT_EQ(heard,
                  (std::vector<Announcement>{
                      {"Flush DNS", "Running...", true, true},
                      {"Flush DNS", success ? "Done" : "Failed", false, success}}));
    }
}

TEST_F(OptimizerCoreTest, commandsAndTheirLimits)
{
    EXPECT_TRUE(OptimizerCore::flushDns());
    EXPECT_TRUE(OptimizerCore::renewIp());
    EXPECT_TRUE(OptimizerCore::resetWinsock());
    machine.hiddenOutcome = platform::RunOutcome::StillRunning;
    EXPECT_FALSE(OptimizerCore::renewIp());
    EXPECT_FALSE(OptimizerCore::resetWinsock());
    using Run = std::pair<platform::CommandLine, std::chrono::milliseconds>;
    const Run flush{{"ipconfig", {"/flushdns"}}, 9000ms};
    const Run renew{{"ipconfig", {"/renew"}}, 15000ms};
    const Run reset{{"netsh", {"winsock", "reset"}}, 15000ms};
    EXPECT_EQ(machine.hiddenRuns, (std::vector<Run>{flush, renew, reset, renew, reset}));
    EXPECT_EQ(heard.size(), 2U); // only flushDns announces
}

TEST_F(OptimizerCoreTest, opensPages)
{
    machine.availablePages = {SystemPage::Storage, SystemPage::Security};
    EXPECT_TRUE(OptimizerCore::openStorageSense());
    EXPECT_FALSE(OptimizerCore::openStartupAppsSettings());
    EXPECT_TRUE(OptimizerCore::openWindowsSecurity());
    EXPECT_EQ(machine.openedPages,
              (std::vector<SystemPage>{
                  SystemPage::Storage, SystemPage::StartupApps, SystemPage::Security}));
    EXPECT_TRUE(heard.empty());
}

TEST_F(OptimizerCoreTest, bothBrowserPagesAreTried)
{
    const std::vector<SystemPage> both{SystemPage::EdgeClearData, SystemPage::ChromeClearData};
    for (const auto &available : {std::vector<SystemPage>{}, {both[0]}, {both[1]}, both}) {
        machine.openedPages.clear();
        machine.availablePages = available;
        EXPECT_EQ(OptimizerCore::openBrowserClearCachePages(), !available.empty());
        EXPECT_EQ(machine.openedPages, both);
    }
}

TEST_F(OptimizerCoreTest, opensFolders)
{
    EXPECT_FALSE(OptimizerCore::openTempFolder());
    EXPECT_FALSE(OptimizerCore::openPrefetchFolder());
    EXPECT_TRUE(machine.openedFolders.empty()); // nothing was asked for
    machine.temporaryFolder = "/t";
    machine.systemFolder = "/w";
    EXPECT_TRUE(OptimizerCore::openTempFolder());
    EXPECT_TRUE(OptimizerCore::openPrefetchFolder());
    EXPECT_EQ(machine.openedFolders, (std::vector<std::string>{"/t", "/w/Prefetch"}));
    machine.foldersOpen = false;
    EXPECT_FALSE(OptimizerCore::openTempFolder());
    EXPECT_FALSE(OptimizerCore::openPrefetchFolder());
}

TEST_F(OptimizerCoreTest, memoryPressure)
{
    machine.memory = platform::MemoryStatus{1000, 400, 60};
    MemoryPressureInfo info = OptimizerCore::getMemoryPressureInfo();
    EXPECT_EQ(info.totalPhys, 1000U);
    EXPECT_EQ(info.availPhys, 400U);
    EXPECT_EQ(info.memoryLoad, 60U);
    machine.memory.reset();
    info = OptimizerCore::getMemoryPressureInfo();
    EXPECT_EQ(info.totalPhys + info.availPhys + info.memoryLoad, 0U);
}

TEST_F(OptimizerCoreTest, silentWithoutCallback)
{
    OptimizerCore::setToastCallback({});
    EXPECT_TRUE(OptimizerCore::emptyRecycleBin());
    EXPECT_TRUE(heard.empty());
}

TEST_F(OptimizerCoreTest, callbackMayBeReplacedWhileOthersAnnounce)
{
    std::atomic<int> count = 0;
    std::thread replacing([&count] {
        for (int i = 0; i < 500; ++i) {
            OptimizerCore::setToastCallback(
                [&count](const auto &, const auto &, bool, bool) { ++count; });
        }
    });
    for (int i = 0; i < 500; ++i) {
        OptimizerCore::emptyRecycleBin();
    }
    replacing.join();
    OptimizerCore::emptyRecycleBin();
    EXPECT_GE(count, 2);
}

} // namespace
