#include "TunedeckMenu/Views/Items/Alert.h"

#include <QAccessible>

namespace tunedeck {

void Alert::setText(const QString& text) {
    if (m_text == text) {
        return;
    }
    m_text = text;
    Q_EMIT textChanged();
    // Queued: first the item must be in its window and its name updated. Qt 6.4 doesn't forward Alert events to AT-SPI,
    // but screen readers also react to an alert that is shown.
    const auto announce = [this] {
        if (!m_text.isEmpty() && isVisible()) {
            for (const auto kind : {QAccessible::Alert, QAccessible::ObjectShow}) {
                QAccessibleEvent event(this, kind);
                QAccessible::updateAccessibility(&event);
            }
        }
    };
    QMetaObject::invokeMethod(this, announce, Qt::QueuedConnection);
}

} // namespace tunedeck
