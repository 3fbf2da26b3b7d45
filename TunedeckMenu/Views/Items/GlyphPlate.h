#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// The gradient background of the application's logo, one point higher than wide for the shadow. Painted here because
/// the software renderer doesn't antialias the rounded corners of a gradient.
class GlyphPlate : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
public:
    using QQuickPaintedItem::QQuickPaintedItem;
    void paint(QPainter* painter) override;
};

} // namespace tunedeck
