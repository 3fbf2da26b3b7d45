#include "TunedeckMenu/Views/Windows/TaskBars.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace tunedeck {

namespace {

xcb_atom_t atom(xcb_connection_t* x, std::string_view name) {
    const auto request = xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(x, request, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

void keepOutOfTaskBars(QWindow& window) {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || window.isVisible()) {
        return;
    }
    auto* const x = x11->connection();
    // Qt adds its own states to those that it finds when it shows the window.
    const std::array states{atom(x, "_NET_WM_STATE_SKIP_TASKBAR"), atom(x, "_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()), atom(x, "_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, states.size(), states.data());
}

} // namespace tunedeck
