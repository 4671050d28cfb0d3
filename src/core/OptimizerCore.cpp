#include "core/OptimizerCore.h"

#include "platform/Command.h"
#include "platform/FolderCleaner.h"
#include "platform/RecycleBin.h"
#include "platform/Shell.h"
#include "platform/SpecialFolders.h"
#include "platform/SystemMemory.h"

#include <chrono>
#include <mutex>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr auto kFlushDnsLimit = 9000ms;
constexpr auto kRenewIpLimit = 15000ms;
constexpr auto kResetWinsockLimit = 15000ms;

std::mutex callbackLock;
OptimizerCore::ToastCallback toastCallback;

void announce(const char *title, const char *text, bool running, bool success)
{
    const std::lock_guard lock(callbackLock);
    if (toastCallback) {
        toastCallback(title, text, running, success);
    }
}

bool announceOutcome(const char *title, bool success)
{
    announce(title, success ? "Done" : "Failed", false, success);
    return success;
}

bool runHiddenCommand(platform::NetworkTask task, std::chrono::milliseconds limit)
{
    return platform::runHidden(platform::networkCommand(task), limit)
        == platform::RunOutcome::Succeeded;
}

std::vector<std::filesystem::path> temporaryFolders()
{
    std::vector<std::filesystem::path> folders;
    if (auto folder = platform::temporaryFolder(); !folder.empty()) {
        folders.push_back(std::move(folder));
    }
    if (const auto system = platform::systemFolder(); !system.empty()) {
        folders.push_back(system / "Temp");
    }
    return folders;
}

} // namespace

void OptimizerCore::setToastCallback(ToastCallback callback)
{
    const std::lock_guard lock(callbackLock);
    toastCallback = std::move(callback);
}

TempCleanResult OptimizerCore::cleanTemp()
{
    announce("Clean Temp", "Running...", true, true);
    TempCleanResult result;
    for (const auto &folder : temporaryFolders()) {
        const auto cleaned = platform::emptyFolder(folder);
        result.removedCount += cleaned.removedCount;
        result.bytesFreed += cleaned.bytesFreed;
    }
    announce("Clean Temp", "Done", false, true);
    return result;
}

bool OptimizerCore::emptyRecycleBin()
{
    announce("Recycle Bin", "Running...", true, true);
    return announceOutcome("Recycle Bin", platform::emptyRecycleBin());
}

bool OptimizerCore::flushDns()
{
    announce("Flush DNS", "Running...", true, true);
    return announceOutcome("Flush DNS",
                           runHiddenCommand(platform::NetworkTask::FlushDns, kFlushDnsLimit));
}

bool OptimizerCore::renewIp()
{
    return runHiddenCommand(platform::NetworkTask::RenewLease, kRenewIpLimit);
}

bool OptimizerCore::resetWinsock()
{
    return runHiddenCommand(platform::NetworkTask::ResetSockets, kResetWinsockLimit);
}

bool OptimizerCore::openStorageSense()
{
    return platform::openSystemPage(platform::SystemPage::Storage);
}

bool OptimizerCore::openTempFolder()
{
    const auto folder = platform::temporaryFolder();
    return !folder.empty() && platform::openFolder(folder);
}

bool OptimizerCore::openPrefetchFolder()
{
    const auto system = platform::systemFolder();
    return !system.empty() && platform::openFolder(system / "Prefetch");
}

bool OptimizerCore::openStartupAppsSettings()
{
    return platform::openSystemPage(platform::SystemPage::StartupApps);
}

bool OptimizerCore::openWindowsSecurity()
{
    return platform::openSystemPage(platform::SystemPage::Security);
}

bool OptimizerCore::openBrowserClearCachePages()
{
    const bool edge = platform::openSystemPage(platform::SystemPage::EdgeClearData);
    const bool chrome = platform::openSystemPage(platform::SystemPage::ChromeClearData);
    return edge || chrome;
}

MemoryPressureInfo OptimizerCore::getMemoryPressureInfo()
{
    const auto memory = platform::queryMemory();
    return memory
        ? MemoryPressureInfo{memory->totalBytes, memory->availableBytes, memory->loadPercent}
        : MemoryPressureInfo{};
}
