#include "TunedeckMenu/Views/Windows/PopoverWindow.h"

#include "TunedeckMenu/Views/Windows/PopoverPlace.h"
#include "TunedeckMenu/Views/Windows/TaskBars.h"
#include "TunedeckMenu/Views/Windows/WindowPresence.h"
#include "TunedeckMenu/Views/Windows/WindowSize.h"
#include "TunedeckMenu/Views/Windows/WindowSizeWatch.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace tunedeck {

PopoverWindow::PopoverWindow(const WindowFactory& factory, PanelActions& actions)
    : m_factory(factory), m_actions(actions) {
    // A click on the empty desktop or on a bar may take no focus.
    connect(&m_presses, &ButtonPresses::pressed, this, [this] {
        if (isShown() && !m_window->geometry().contains(QCursor::pos()) && QGuiApplication::modalWindow() == nullptr) {
            dismiss();
        }
    });
    // When a window manager shows a window again, it may add the size of a frame that it doesn't draw.
    m_settling.setSingleShot(true);
    m_settling.setInterval(300);
    // Delayed: window managers may take the focus away for a moment while they map a new window.
    m_dismissIfUnfocused.setSingleShot(true);
    m_dismissIfUnfocused.setInterval(120);
    connect(&m_dismissIfUnfocused, &QTimer::timeout, this, [this] {
        if (isShown() && !m_window->isActive() && QGuiApplication::modalWindow() == nullptr) {
            dismiss();
        }
    });
}

PopoverWindow::~PopoverWindow() = default;

void PopoverWindow::show(const QRect& anchor) {
    // A click on the icon of the open popover first dismisses it, as any click elsewhere: don't reopen it.
    constexpr int clickMilliseconds = 400;
    constexpr int clickDistance = 4;
    const bool sameClick = m_dismissed.isValid() && m_dismissed.elapsed() < clickMilliseconds &&
                           (QCursor::pos() - m_dismissedAt).manhattanLength() <= clickDistance;
    m_dismissed.invalidate();
    if (sameClick) {
        return;
    }
    if (m_window == nullptr) {
        create();
    }
    m_anchor = anchor;
    place();
    keepOutOfTaskBars(*m_window);
    bringToFront(*m_window);
    m_presses.start();
    m_settling.start();
}

void PopoverWindow::create() {
    m_window = m_factory.create(u"Frames/Popover.qml"_s);
    onPresenceChanged(*m_window,
                      [this](bool present) { present ? m_actions.panelAppeared() : m_actions.panelDisappeared(); });
    const auto* watch = new WindowSizeWatch(*m_window, 0);
    connect(watch, &WindowSizeWatch::changed, this, [this] {
        if (isShown()) {
            place();
        }
    });
    const auto settle = [this] {
        if (m_settling.isActive()) {
            m_settling.stop(); // once: the window manager may insist
            QMetaObject::invokeMethod(this, &PopoverWindow::place, Qt::QueuedConnection);
        }
    };
    connect(m_window.get(), &QWindow::xChanged, this, settle);
    connect(m_window.get(), &QWindow::yChanged, this, settle);
    connect(m_window.get(), SIGNAL(dismissed()), this, SLOT(close()));
    connect(m_window.get(), &QWindow::activeChanged, this,
            [this] { m_window->isActive() ? m_dismissIfUnfocused.stop() : m_dismissIfUnfocused.start(); });
}

void PopoverWindow::place() {
    const QScreen* screen = m_anchor.isEmpty() ? nullptr : QGuiApplication::screenAt(m_anchor.center());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen != nullptr) {
        m_window->setGeometry(
            popoverPlace(m_anchor, wantedSize(*m_window), screen->geometry(), screen->availableGeometry()));
    }
}

void PopoverWindow::close() {
    if (m_window != nullptr) {
        m_presses.stop();
        m_dismissIfUnfocused.stop();
        m_window->hide();
    }
}

void PopoverWindow::dismiss() {
    m_dismissed.start();
    m_dismissedAt = QCursor::pos();
    close();
}

bool PopoverWindow::isShown() const {
    return m_window != nullptr && m_window->isVisible();
}

} // namespace tunedeck
