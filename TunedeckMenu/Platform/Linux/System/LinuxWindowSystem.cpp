#include "TunedeckMenu/Platform/Linux/System/LinuxWindowSystem.h"

#include "TunedeckCore/Support/Linux/Xcb.h"

#include <QDir>
#include <QLibraryInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr auto platformVariable = "QT_QPA_PLATFORM";
constexpr auto inputMethodVariable = "QT_IM_MODULE";
constexpr auto waylandVariable = "WAYLAND_DISPLAY";

bool reachesX11() {
    const XcbConnection x(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(x.get()) == 0;
}

} // namespace

WindowSystem windowSystemFor(const DisplayVariables& variables, const std::function<bool()>& reachesX11) {
    WindowSystem chosen;
    bool native = variables.platform.startsWith("wayland");
    if (!variables.platform.isEmpty()) {
        chosen.reason = u"QT_QPA_PLATFORM is set"_s;
    } else if (variables.wayland.isEmpty()) {
        chosen.reason = u"this session doesn't use Wayland"_s;
    } else if (!variables.x11.isEmpty() && reachesX11()) {
        chosen.environment.emplace_back(platformVariable, "xcb");
        chosen.reason = u"XWayland is running, and can show the panel at the icon"_s;
    } else {
        native = true;
        chosen.environment.emplace_back(platformVariable, "wayland");
        chosen.reason = u"this Wayland session has no XWayland; the icon opens the window"_s;
    }
    if (native && variables.inputMethod.isEmpty()) {
        // Without a keyboard, Qt 6.4 crashes in the input method of the compositor. No view takes text.
        chosen.environment.emplace_back(inputMethodVariable, "compose");
    }
    return chosen;
}

WindowSystem chooseWindowSystem() {
    return windowSystemFor({.platform = qgetenv(platformVariable),
                            .wayland = qgetenv(waylandVariable),
                            .x11 = qgetenv("DISPLAY"),
                            .inputMethod = qgetenv(inputMethodVariable)},
                           reachesX11);
}

QString missingDisplay(const QString& standard) {
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/platforms"_s);
    const bool hasPlugin = !plugins.entryList({u"libqwayland*.so"_s}, QDir::Files).isEmpty();
    return qEnvironmentVariableIsEmpty(waylandVariable) || hasPlugin
               ? standard
               : u"this Wayland session can't be used without the package qt6-wayland (or XWayland, the package xwayland)"_s;
}

} // namespace tunedeck
