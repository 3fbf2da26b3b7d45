// Build-time tool that paints the tray's masks and the application's icon, so that the application needs no SVG
// renderer.
//
//   tunedeck-paint-icons mask OUTPUT_FOLDER NAME=FILE.svg… -- SIZE…
//   tunedeck-paint-icons app OUTPUT_FOLDER GLYPH.svg -- SIZE…
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// A symbol in `colour` on a transparent square of `size` pixels, with a margin of this share of the size on each side.
QImage painted(const QString& file, int size, double margin, QColor colour) {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray text = source.readAll();
    text.replace("currentColor", colour.name().toLatin1());
    QSvgRenderer renderer(text);
    if (!renderer.isValid()) {
        return {};
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const double inset = size * margin;
    renderer.render(&painter, QRectF(inset, inset, size - 2 * inset, size - 2 * inset));
    return image;
}

QImage appIcon(const QString& glyph, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double edge = size / 16.0;
    const QRectF plate(edge, edge, size - 2 * edge, size - 2 * edge);
    QLinearGradient gradient(plate.topLeft(), plate.bottomRight());
    gradient.setColorAt(0, QColor::fromRgbF(0.55F, 0.36F, 0.97F));
    gradient.setColorAt(1, QColor::fromRgbF(0.94F, 0.3F, 0.6F));
    painter.setBrush(gradient);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(plate, plate.width() * 8 / 34, plate.width() * 8 / 34);
    painter.drawImage(0, 0, painted(glyph, size, 0.28, Qt::white));
    return image;
}

bool save(const QImage& image, const QString& file) {
    if (!image.isNull() && image.save(file, "PNG")) {
        return true;
    }
    std::fprintf(stderr, "couldn't paint %s\n", qPrintable(file));
    return false;
}

} // namespace

int main(int argc, char** argv) {
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    const qsizetype split = words.indexOf(u"--"_s);
    if (split < 3) {
        std::fputs("tunedeck-paint-icons mask|app FOLDER SOURCE… -- SIZE…\n", stderr);
        return 2;
    }
    bool good = true;
    for (const QString& size : words.mid(split + 1)) {
        const QString folder = words[1] + u'/';
        if (words[0] == "app"_L1) {
            good &= save(appIcon(words[2], size.toInt()), folder + u"tunedeck-"_s + size + u".png"_s);
            continue;
        }
        for (const QString& source : words.mid(2, split - 2)) {
            const qsizetype equals = source.indexOf(u'=');
            const QImage mask = painted(source.mid(equals + 1), size.toInt(), 1.5 / 16, Qt::black);
            good &= save(mask.convertToFormat(QImage::Format_ARGB32),
                         folder + source.left(equals) + u'-' + size + u".png"_s);
        }
    }
    return good ? 0 : 1;
}
