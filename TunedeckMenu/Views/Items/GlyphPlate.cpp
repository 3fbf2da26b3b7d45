#include "TunedeckMenu/Views/Items/GlyphPlate.h"

#include <QLinearGradient>
#include <QPainter>

namespace tunedeck {

void GlyphPlate::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    // The lowest point is for the shadow.
    const QRectF plate = boundingRect().adjusted(0, 0, 0, -1);
    const double radius = plate.width() * 8 / 34;
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0, 0, 0, 31));
    painter->drawRoundedRect(plate.translated(0, 1), radius, radius);
    QLinearGradient gradient(plate.topLeft(), plate.bottomRight());
    gradient.setColorAt(0, QColor::fromRgbF(0.55F, 0.36F, 0.97F));
    gradient.setColorAt(1, QColor::fromRgbF(0.94F, 0.3F, 0.6F));
    painter->setBrush(gradient);
    painter->drawRoundedRect(plate, radius, radius);
    painter->setPen(QPen(QColor(255, 255, 255, 46), 0.5));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(plate.adjusted(0.25, 0.25, -0.25, -0.25), radius, radius);
}

} // namespace tunedeck
