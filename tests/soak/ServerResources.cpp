#include "soak/ServerResources.h"

#include <QGuiApplication>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace {

constexpr std::uint8_t kCountOfClient = 2; // the extension's request for the number of each kind
constexpr std::size_t kHeaderBytes = 32;
constexpr std::size_t kKindsAt = 8;
constexpr std::size_t kKindBytes = 8; // its name's atom, and how many there are

struct Request
{
    std::uint8_t extension = 0; // both filled in when it is sent
    std::uint8_t kind = 0;
    std::uint16_t length = 0;
    std::uint32_t client = 0; // any identifier of its range
};

std::uint32_t numberAt(const char *reply, std::size_t place)
{
    std::uint32_t number = 0;
    std::memcpy(&number, reply + place, sizeof number);
    return number;
}

} // namespace

int serverResources()
{
    static xcb_extension_t extension{"X-Resource", 0};
    auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) {
        return -1;
    }
    xcb_connection_t *connection = x11->connection();
    const auto *known = xcb_get_extension_data(connection, &extension);
    if (known == nullptr || known->present == 0) {
        return -1;
    }
    Request request{.client = xcb_get_setup(connection)->resource_id_base};
    // The library wants two free places before the first part.
    std::array<struct iovec, 3> parts{{{}, {}, {&request, sizeof request}}};
    const xcb_protocol_request_t protocol{1, &extension, kCountOfClient, 0};
    const auto sent = xcb_send_request(connection, XCB_REQUEST_CHECKED, &parts[2], &protocol);
    xcb_generic_error_t *error = nullptr;
    const std::unique_ptr<void, decltype(&std::free)> answer(
        xcb_wait_for_reply(connection, sent, &error), &std::free);
    std::free(error);
    if (!answer) {
        return -1;
    }
    const auto *reply = static_cast<const char *>(answer.get());
    int resources = 0;
    for (std::uint32_t kind = 0; kind < numberAt(reply, kKindsAt); ++kind) {
        resources += static_cast<int>(
            numberAt(reply, kHeaderBytes + kind * kKindBytes + sizeof(std::uint32_t)));
    }
    return resources;
}
