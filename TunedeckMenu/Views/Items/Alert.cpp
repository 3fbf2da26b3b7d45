#include "TunedeckMenu/Views/Items/Alert.h"

#include <QAccessible>

namespace tunedeck {

void Alert::setText(const QString& text) {
    if (m_text != text) {
        m_text = text;
        Q_EMIT textChanged();
        if (isComponentComplete()) {
            announce();
        }
    }
}

void Alert::componentComplete() {
    QQuickItem::componentComplete();
    announce();
}

void Alert::announce() {
    // Queued: first the item must be in its window and its name updated. Qt 6.4 doesn't forward Alert events to AT-SPI,
    // but screen readers also react to an alert that is shown.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_text.isEmpty() && isVisible()) {
                for (const auto kind : {QAccessible::Alert, QAccessible::ObjectShow}) {
                    QAccessibleEvent event(this, kind);
                    QAccessible::updateAccessibility(&event);
                }
            }
        },
        Qt::QueuedConnection);
}

} // namespace tunedeck
