#include "TunedeckMenu/Platform/Linux/Instance/ActivationToken.h"

#include "TunedeckCore/Support/Linux/Xcb.h"

#include <QtGui/private/qtx11extras_p.h>

#include <algorithm>
#include <cstring>

namespace tunedeck {
namespace {

constexpr auto waylandVariable = "XDG_ACTIVATION_TOKEN";
constexpr auto x11Variable = "DESKTOP_STARTUP_ID";

bool isPlausible(const QByteArray& token) {
    return !token.isEmpty() && token.size() <= 256 &&
           std::ranges::all_of(token, [](char c) { return c > ' ' && c < 127; });
}

/// Sends a message of the startup notification protocol, zero-terminated and in pieces, from a new window.
void broadcast(xcb_connection_t* x, xcb_window_t root, const QByteArray& message) {
    const auto window = xcb_generate_id(x);
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = xcbAtom(x, "_NET_STARTUP_INFO_BEGIN");
    constexpr qsizetype pieceSize = sizeof event.data.data8;
    for (qsizetype sent = 0; sent <= message.size(); sent += pieceSize) {
        const auto piece = message.mid(sent, pieceSize).leftJustified(pieceSize, '\0');
        std::memcpy(event.data.data8, piece.constData(), pieceSize);
        xcb_send_event(x, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE, reinterpret_cast<const char*>(&event));
        event.type = xcbAtom(x, "_NET_STARTUP_INFO");
    }
    xcb_destroy_window(x, window);
    xcb_flush(x);
}

} // namespace

QByteArray ownActivationToken() {
    auto token = qgetenv(waylandVariable);
    if (token.isEmpty()) {
        token = qgetenv(x11Variable);
    }
    return token;
}

void useActivationToken(const QByteArray& token) {
    if (isPlausible(token)) {
        qputenv(waylandVariable, token);
        qputenv(x11Variable, token);
        QX11Info::setNextStartupId(token);
    }
}

void endActivation() {
    const auto token = QX11Info::nextStartupId(); // of the environment, at first; empty when Qt has ended it
    if (!token.isEmpty()) {
        QX11Info::setNextStartupId({});
        broadcast(QX11Info::connection(), QX11Info::appRootWindow(), "remove: ID=" + token);
    }
}

} // namespace tunedeck
