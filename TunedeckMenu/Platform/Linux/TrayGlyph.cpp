#include "TunedeckMenu/Platform/Linux/TrayGlyph.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QPixmap>

namespace tunedeck {
namespace {

constexpr qreal edgeOpacity = 0.3;

QImage coloured(const QImage& mask, const QColor& colour) {
    QImage image = mask.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour);
    return image;
}

QPixmap drawn(const QImage& mask, GlyphTone tone) {
    const QColor dark(0x1f, 0x1f, 0x24);
    const QColor light(0xf7, 0xf7, 0xf8);
    const auto edge = coloured(mask, tone == GlyphTone::dark ? light : dark);
    QImage image(mask.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(edgeOpacity);
    const qreal width = mask.width() / 24.0;
    for (const auto& offset : {QPointF(-width, 0), QPointF(width, 0), QPointF(0, -width), QPointF(0, width)}) {
        painter.drawImage(offset, edge);
    }
    painter.setOpacity(1);
    painter.drawImage(0, 0, coloured(mask, tone == GlyphTone::dark ? dark : light));
    painter.end();
    return QPixmap::fromImage(image);
}

} // namespace

QIcon trayGlyph(const QString& symbol, GlyphTone tone, const QString& folder) {
    QIcon icon;
    for (const auto& file : QDir(folder).entryInfoList({symbol + QStringLiteral("-*.png")}, QDir::Files)) {
        const QImage mask(file.filePath());
        if (!mask.isNull()) {
            icon.addPixmap(drawn(mask, tone));
        }
    }
    return icon;
}

} // namespace tunedeck
