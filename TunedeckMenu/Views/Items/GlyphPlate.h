#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// The coloured plate of the application's mark, one point higher than wide for its shadow. Painted, because the
/// software renderer gives the corners of a gradient no smooth edge.
class GlyphPlate : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
public:
    using QQuickPaintedItem::QQuickPaintedItem;
    void paint(QPainter* painter) override;
};

} // namespace tunedeck
