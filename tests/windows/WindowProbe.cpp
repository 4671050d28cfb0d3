// Looks at a running program's window from outside, as another program sees it, and closes it.
//
//   WindowProbe expect TITLE WIDTH HEIGHT SECONDS   waits for the visible window; prints its place, 0 when all is as said
//   WindowProbe close TITLE SECONDS                 asks it to close and waits until it is gone
#include <array>
#include <cstdio>
#include <cwchar>
#include <span>
#include <string>
#include <windows.h>

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kBadUsage = 2;

constexpr DWORD kPollMilliseconds = 50;

// Tries `condition` until it holds or the time is up.
template<typename Condition>
bool waitFor(Condition condition, double seconds)
{
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds * 1000);
    while (!condition()) {
        if (GetTickCount64() >= end) {
            return false;
        }
        Sleep(kPollMilliseconds);
    }
    return true;
}

std::wstring titleOf(HWND window)
{
    std::array<wchar_t, 256> buffer{};
    const int length = GetWindowTextW(window, buffer.data(), static_cast<int>(buffer.size()));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

HWND findVisible(const std::wstring &title)
{
    HWND window = FindWindowW(nullptr, title.c_str());
    return window != nullptr && IsWindowVisible(window) ? window : nullptr;
}

int expect(const std::wstring &title, long width, long height, double seconds)
{
    HWND window = nullptr;
    if (!waitFor([&] { return (window = findVisible(title)) != nullptr; }, seconds)) {
        std::fwprintf(stderr, L"no visible window \"%ls\"\n", title.c_str());
        return kFailure;
    }
    RECT place{};
    const std::wstring found = titleOf(window); // the search itself does not tell cases apart
    if (found != title || GetWindowRect(window, &place) == 0) {
        std::fwprintf(stderr, L"the window is called \"%ls\"\n", found.c_str());
        return kFailure;
    }
    const long foundWidth = place.right - place.left;
    const long foundHeight = place.bottom - place.top;
    std::printf("%ldx%ld%+ld%+ld\n", foundWidth, foundHeight, place.left, place.top);
    return foundWidth == width && foundHeight == height ? kSuccess : kFailure;
}

int close(const std::wstring &title, double seconds)
{
    HWND window = findVisible(title);
    if (window == nullptr || PostMessageW(window, WM_CLOSE, 0, 0) == 0) {
        std::fwprintf(stderr, L"no visible window \"%ls\"\n", title.c_str());
        return kFailure;
    }
    if (!waitFor([window] { return !IsWindow(window); }, seconds)) {
        std::fwprintf(stderr, L"the window \"%ls\" stays\n", title.c_str());
        return kFailure;
    }
    return kSuccess;
}

} // namespace

int wmain(int argc, wchar_t **argv)
{
    const std::span<wchar_t *> words(argv, static_cast<std::size_t>(argc));
    if (words.size() == 6 && std::wstring(words[1]) == L"expect") {
        return expect(words[2],
                      std::wcstol(words[3], nullptr, 10),
                      std::wcstol(words[4], nullptr, 10),
                      std::wcstod(words[5], nullptr));
    }
    if (words.size() == 4 && std::wstring(words[1]) == L"close") {
        return close(words[2], std::wcstod(words[3], nullptr));
    }
    std::fputs("usage: WindowProbe expect TITLE WIDTH HEIGHT SECONDS | close TITLE SECONDS\n",
               stderr);
    return kBadUsage;
}
