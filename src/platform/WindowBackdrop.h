// Blur of what lies behind a translucent window, done by the desktop's compositor.
#pragma once

#include <cstdint>

namespace platform {

// The window's handle in the window system that the program draws with: an HWND, or an X11 window. 0 means none.
using NativeWindow = std::uintptr_t;

// Asks for the blur, or for its end. Best effort: a desktop that offers none is left alone and nothing is reported.
// Thread: the one that owns the window.
void setBackdropBlur(NativeWindow window, bool enabled);

} // namespace platform
