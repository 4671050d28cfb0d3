#include "platform/Shell.h"

#include "platform/Command.h"

#include <algorithm>

namespace platform {

namespace {

using Tools = std::vector<CommandLine>;

constexpr std::chrono::milliseconds
    kAnswerLimit(1000); // an opener answers at once; a tool goes on running
constexpr const char *kClearDataPage =
    "chrome://settings/clearBrowserData"; // the same in all of this family

// What the usual desktops have for the job, the most fitting first.
Tools toolsFor(SystemPage page)
{
    switch (page) {
    case SystemPage::Storage:
        return {{"baobab", {}}, {"filelight", {}}, {"gnome-disks", {}}, {"partitionmanager", {}}};
    case SystemPage::StartupApps:
        return {{"gnome-session-properties", {}},
                {"kcmshell6", {"kcm_autostart"}},
                {"kcmshell5", {"kcm_autostart"}},
                {"xfce4-session-settings", {}},
                {"mate-session-properties", {}},
                {"cinnamon-settings", {"startup"}},
                {"gnome-tweaks", {}}};
    case SystemPage::Security:
        return {{"gnome-control-center", {"privacy"}},
                {"firewall-config", {}},
                {"gufw", {}},
                {"cinnamon-settings", {"privacy"}}};
    case SystemPage::EdgeClearData:
        return {{"microsoft-edge", {"edge://settings/clearBrowserData"}},
                {"microsoft-edge-stable", {"edge://settings/clearBrowserData"}}};
    case SystemPage::ChromeClearData:
        return {{"google-chrome", {kClearDataPage}},
                {"google-chrome-stable", {kClearDataPage}},
                {"chromium", {kClearDataPage}},
                {"chromium-browser", {kClearDataPage}}};
    }
    return {};
}

bool opens(const CommandLine &command)
{
    const RunOutcome outcome = runHidden(command, kAnswerLimit);
    return outcome == RunOutcome::Succeeded || outcome == RunOutcome::StillRunning;
}

} // namespace

bool openSystemPage(SystemPage page)
{
    const Tools tools = toolsFor(page);
    return std::any_of(tools.begin(), tools.end(), opens);
}

bool openFolder(const std::filesystem::path &folder)
{
    std::error_code error;
    if (!folder.is_absolute() || !std::filesystem::is_directory(folder, error)) {
        return false; // an opener would take it for an address, or complain in a window of its own
    }
    return opens({"xdg-open", {folder.string()}});
}

} // namespace platform
