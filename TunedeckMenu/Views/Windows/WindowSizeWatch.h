#pragma once

#include <QMetaObject>
#include <QObject>
#include <QQuickWindow>
#include <QTimer>

#include <array>

namespace tunedeck {

/// Notices that a window may need another size or place: its content or text size changed, or its screen, or the
/// screen's free area or scale, or it was shown.
class WindowSizeWatch : public QObject {
    Q_OBJECT
public:
    /// `delay`: how long the wanted size may not change before changed() is emitted, in milliseconds; 0 emits it at
    /// once. Becomes the window's child.
    WindowSizeWatch(QQuickWindow& window, int delay);

Q_SIGNALS:
    void changed();

private:
    void watchScreen(QScreen* screen);
    Q_SLOT void wantedSizeChanged();

    QTimer m_timer;
    int m_delay;
    std::array<QMetaObject::Connection, 3> m_ofScreen;
};

} // namespace tunedeck
