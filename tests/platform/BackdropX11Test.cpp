// The blur hint on a real X server: set only where a compositor says that it can blur, and taken back.
#include "platform/WindowBackdrop.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

namespace {

constexpr const char *kProperty = "_KDE_NET_WM_BLUR_BEHIND_REGION";

class BackdropX11 : public testing::Test
{
protected:
    void SetUp() override
    {
        connection = xcb_connect(nullptr, nullptr);
        ASSERT_EQ(xcb_connection_has_error(connection), 0) << "this test needs an X server";
        screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        window = xcb_generate_id(connection);
        xcb_create_window(connection,
                          XCB_COPY_FROM_PARENT,
                          window,
                          screen->root,
                          0,
                          0,
                          10,
                          10,
                          0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          screen->root_visual,
                          0,
                          nullptr);
        const auto cookie = xcb_intern_atom(
            connection, 0, static_cast<std::uint16_t>(std::strlen(kProperty)), kProperty);
        auto *reply = xcb_intern_atom_reply(connection, cookie, nullptr);
        property = reply->atom;
        std::free(reply);
    }

    void TearDown() override
    {
        if (xcb_connection_has_error(connection) != 0) {
            xcb_disconnect(connection);
            return;
        }
        xcb_delete_property(connection, screen->root, property);
        settle(); // or the next test may still meet it
        xcb_disconnect(connection);
    }

    void announceCompositor()
    {
        xcb_change_property(connection,
                            XCB_PROP_MODE_REPLACE,
                            screen->root,
                            property,
                            XCB_ATOM_CARDINAL,
                            32,
                            0,
                            nullptr);
        settle();
    }

    void settle()
    {
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    }

    bool windowHasHint()
    {
        const auto cookie =
            xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
        auto *reply = xcb_get_property_reply(connection, cookie, nullptr);
        const bool has = reply != nullptr && reply->type != XCB_ATOM_NONE;
        std::free(reply);
        return has;
    }

    xcb_connection_t *connection = nullptr;
    xcb_screen_t *screen = nullptr;
    xcb_window_t window = 0;
    xcb_atom_t property = 0;
};

TEST_F(BackdropX11, followsTheRequestWhereItIsOffered)
{
    announceCompositor();
    platform::setBackdropBlur(window, true);
    EXPECT_TRUE(windowHasHint());
    platform::setBackdropBlur(window, false);
    EXPECT_FALSE(windowHasHint());
}

TEST_F(BackdropX11, leavesOtherDesktopsAlone)
{
    settle();
    platform::setBackdropBlur(window, true);
    EXPECT_FALSE(windowHasHint());
}

TEST_F(BackdropX11, windowThatIsGoneIsHarmless)
{
    announceCompositor();
    xcb_destroy_window(connection, window);
    settle();
    platform::setBackdropBlur(window, true);
}

} // namespace
