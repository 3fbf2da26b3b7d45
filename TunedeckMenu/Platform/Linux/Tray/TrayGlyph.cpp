#include "TunedeckMenu/Platform/Linux/Tray/TrayGlyph.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPixmap>

#include <png.h>

#include <cstddef>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr qreal plateOpacity = 0.75;
constexpr qreal plateRounding = 0.22; ///< radius of the plate's corners, as a share of its size

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
    QImage image(mask.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tone == GlyphTone::Dark ? light : dark);
    painter.setOpacity(plateOpacity);
    painter.drawRoundedRect(image.rect(), image.width() * plateRounding, image.height() * plateRounding);
    painter.setOpacity(1);
    const auto glyph = coloured(mask, tone == GlyphTone::Dark ? dark : light);
    painter.drawImage(0, 0, glyph);
    painter.drawImage(0, 0, glyph); // again: at small sizes, thin strokes are mostly half transparent
    painter.end();
    return QPixmap::fromImage(image);
}

/// Reads a PNG file. QImageReader would load all image plug-ins first, which takes longer than the rest of the icon.
QImage readPng(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const auto bytes = file.readAll();
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&png, bytes.constData(), static_cast<std::size_t>(bytes.size())) == 0) {
        return {};
    }
    png.format = PNG_FORMAT_RGBA;
    QImage image(static_cast<int>(png.width), static_cast<int>(png.height), QImage::Format_RGBA8888);
    const bool read = !image.isNull() && png_image_finish_read(&png, nullptr, image.bits(),
                                                               static_cast<int>(image.bytesPerLine()), nullptr) != 0;
    return read ? image : QImage();
}

} // namespace

QIcon trayGlyph(const QString& symbol, GlyphTone tone) {
    QIcon icon;
    const QDir glyphs(u":/tunedeck/tray"_s);
    // A name filter would load Qt's regular expressions.
    for (const auto& file : glyphs.entryList(QDir::Files)) {
        const auto mask = file.startsWith(symbol + u'-') ? readPng(glyphs.filePath(file)) : QImage();
        if (!mask.isNull()) {
            icon.addPixmap(drawn(mask, tone));
        }
    }
    return icon;
}

} // namespace tunedeck
