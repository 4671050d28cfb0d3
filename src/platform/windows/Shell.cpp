#include "platform/Shell.h"

#include <windows.h>

#include <shellapi.h> // needs the one above

namespace platform {

namespace {

const wchar_t *addressOf(SystemPage page)
{
    switch (page) {
    case SystemPage::Storage:
        return L"ms-settings:storagesense";
    case SystemPage::StartupApps:
        return L"ms-settings:startupapps";
    case SystemPage::Security:
        return L"windowsdefender:";
    case SystemPage::EdgeClearData:
        return L"msedge://settings/clearBrowserData";
    case SystemPage::ChromeClearData:
        break;
    }
    return L"chrome://settings/clearBrowserData";
}

bool open(const wchar_t *target)
{
    constexpr INT_PTR kLargestError = 32;
    HINSTANCE result = ShellExecuteW(nullptr, L"open", target, nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > kLargestError;
}

} // namespace

bool openSystemPage(SystemPage page)
{
    return open(addressOf(page));
}

bool openFolder(const std::filesystem::path &folder)
{
    return open(folder.c_str());
}

} // namespace platform
