#include "platform/WindowBackdrop.h"

#include "platform/windows/Accent.h"

#include <dwmapi.h>
#include <windows.h>

namespace platform {

namespace {

using SetWindowCompositionAttribute = BOOL(WINAPI *)(HWND, accent::CompositionData *);

// Not in the import libraries: looked up in the module that is loaded anyway.
SetWindowCompositionAttribute lookUpSetter()
{
    HMODULE user32 = GetModuleHandleW(L"user32.dll");
    if (user32 == nullptr) {
        return nullptr;
    }
    const FARPROC address = GetProcAddress(user32, "SetWindowCompositionAttribute");
    return reinterpret_cast<SetWindowCompositionAttribute>(reinterpret_cast<void *>(address));
}

} // namespace

void setBackdropBlur(NativeWindow window, bool enabled)
{
    const auto setAttribute = lookUpSetter();
    if (window == 0 || setAttribute == nullptr) {
        return;
    }
    HWND handle = reinterpret_cast<HWND>(window);
    accent::AccentPolicy policy = accent::policyFor(enabled);
    accent::CompositionData data{accent::kAccentPolicyAttribute, &policy, sizeof(policy)};
    setAttribute(handle, &data);

    const accent::FrameMargins margins = accent::marginsFor(enabled);
    const MARGINS frame{margins.left, margins.right, margins.top, margins.bottom};
    DwmExtendFrameIntoClientArea(handle, &frame);
}

} // namespace platform
