#pragma once

#include "TunedeckMenu/Views/Items/HintArea.h"

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// Holds the text and position of a window's tooltip, which QML draws. One per window, above everything else.
class HintLayer : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QRectF target READ target NOTIFY targetChanged)
public:
    using QQuickItem::QQuickItem;
    /// The layer of the window that `item` is in, or null.
    static HintLayer* of(const QQuickItem& item);
    [[nodiscard]] QString text() const { return m_text; }
    /// The area that the hint belongs to, in this layer's coordinates.
    [[nodiscard]] QRectF target() const { return m_target; }
    void show(const HintArea* area);
    /// Updates the target: the focus may have scrolled the area since show().
    Q_INVOKABLE void findTarget();
    /// No-op when another area's hint is shown.
    void hide(const HintArea* area);

Q_SIGNALS:
    void changed();
    void targetChanged();

private:
    void clear();

    QPointer<const HintArea> m_area;
    QMetaObject::Connection m_areaGone;
    QString m_text;
    QRectF m_target;
};

} // namespace tunedeck
