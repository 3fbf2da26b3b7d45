#include "TunedeckMenu/Views/Windows/KeyRepeats.h"

#include <QGuiApplication>

namespace tunedeck {

KeyRepeats::KeyRepeats() {
    qGuiApp->installEventFilter(this);
}

bool KeyRepeats::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if ((type != QEvent::KeyPress && type != QEvent::KeyRelease) || !watched->isWindowType()) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (type == QEvent::KeyRelease) {
        m_released = key.timestamp();
        m_key = key.key();
        return false;
    }
    if (key.isAutoRepeat() || m_released == 0 || key.key() != m_key || key.timestamp() != m_released) {
        return false;
    }
    QKeyEvent repeat(type, key.key(), key.modifiers(), key.nativeScanCode(), key.nativeVirtualKey(),
                     key.nativeModifiers(), key.text(), true, static_cast<quint16>(key.count()));
    repeat.setTimestamp(key.timestamp());
    QCoreApplication::sendEvent(watched, &repeat);
    return true;
}

} // namespace tunedeck
