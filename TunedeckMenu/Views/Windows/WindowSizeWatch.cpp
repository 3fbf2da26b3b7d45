#include "TunedeckMenu/Views/Windows/WindowSizeWatch.h"

#include "TunedeckMenu/Views/Windows/WindowPresence.h"

#include <QScreen>

namespace tunedeck {

namespace {

/// A change of screen is mostly the user dragging the window there, who shall finish first. Soon after a window is
/// shown, it has its frame and the place that the window manager gives it.
constexpr int screenDelay = 300;

} // namespace

WindowSizeWatch::WindowSizeWatch(QQuickWindow& window, int delay) : QObject(&window), m_delay(delay) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &WindowSizeWatch::changed);
    // Signals of properties that only QML declares.
    connect(&window, SIGNAL(wantedHeightChanged()), this, SLOT(wantedSizeChanged()));
    connect(&window, SIGNAL(wantedWidthChanged()), this, SLOT(wantedSizeChanged()));
    watchScreen(window.screen());
    connect(&window, &QWindow::visibilityChanged, this,
            [this, &window] { isOnScreen(&window) ? m_timer.start(screenDelay) : m_timer.stop(); });
    connect(&window, &QWindow::screenChanged, this, [this](QScreen* screen) {
        watchScreen(screen);
        m_timer.start(screenDelay);
    });
}

void WindowSizeWatch::wantedSizeChanged() {
    if (m_delay == 0) {
        Q_EMIT changed();
    } else {
        m_timer.start(m_delay);
    }
}

void WindowSizeWatch::watchScreen(QScreen* screen) {
    for (auto& connection : m_ofScreen) {
        disconnect(connection);
    }
    if (screen != nullptr) {
        const auto restart = [this] { m_timer.start(screenDelay); };
        m_ofScreen = {connect(screen, &QScreen::availableGeometryChanged, this, restart),
                      connect(screen, &QScreen::geometryChanged, this, restart),
                      connect(screen, &QScreen::logicalDotsPerInchChanged, this, restart)};
    }
}

} // namespace tunedeck
