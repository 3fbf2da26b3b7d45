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
    // Once it is in its window and its name follows the text. Qt 6.4 tells the desktop nothing of an alert as such:
    // a screen reader hears of one by its coming into sight.
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
