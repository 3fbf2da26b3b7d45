#include "TunedeckMenu/Views/Windows/TaskBars.h"

#include "TunedeckCore/Support/Linux/Xcb.h"

#include <QGuiApplication>

#include <array>

namespace tunedeck {

void keepOutOfTaskBars(QWindow& window) {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || window.isVisible()) {
        return;
    }
    auto* const x = x11->connection();
    // Qt adds its own states to those that it finds when it shows the window.
    const std::array states{xcbAtom(x, "_NET_WM_STATE_SKIP_TASKBAR"), xcbAtom(x, "_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        xcbAtom(x, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32, states.size(), states.data());
}

} // namespace tunedeck
