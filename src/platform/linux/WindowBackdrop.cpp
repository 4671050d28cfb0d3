#include "platform/WindowBackdrop.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace platform {

namespace {

// KWin's convention, which other compositors follow: the compositor sets this property on the root window to say that
// it can blur; a client sets it on its own window to ask for it. An empty list of rectangles means the whole window.
constexpr const char *kBlurProperty = "_KDE_NET_WM_BLUR_BEHIND_REGION";

struct FreeDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};
template<typename T>
using Reply = std::unique_ptr<T, FreeDeleter>;

xcb_atom_t existingAtom(xcb_connection_t *connection, const char *name)
{
    const auto cookie =
        xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

bool compositorOffersBlur(xcb_connection_t *connection, xcb_atom_t property)
{
    const auto *screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    if (screen == nullptr) {
        return false;
    }
    const auto cookie =
        xcb_get_property(connection, 0, screen->root, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

void writeBlurProperty(xcb_connection_t *connection,
                       xcb_window_t window,
                       xcb_atom_t property,
                       bool enabled)
{
    constexpr std::uint8_t kBitsPerValue = 32;
    if (enabled) {
        xcb_change_property(connection,
                            XCB_PROP_MODE_REPLACE,
                            window,
                            property,
                            XCB_ATOM_CARDINAL,
                            kBitsPerValue,
                            0,
                            nullptr);
    } else {
        xcb_delete_property(connection, window, property);
    }
    // A round trip, so that the requests have arrived before the connection ends.
    const Reply<xcb_get_input_focus_reply_t> settled(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

} // namespace

void setBackdropBlur(NativeWindow window, bool enabled)
{
    if (window == 0) {
        return;
    }
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) == 0) {
        const xcb_atom_t property = existingAtom(connection, kBlurProperty);
        if (property != XCB_ATOM_NONE && compositorOffersBlur(connection, property)) {
            writeBlurProperty(connection, static_cast<xcb_window_t>(window), property, enabled);
        }
    }
    xcb_disconnect(connection);
}

} // namespace platform
