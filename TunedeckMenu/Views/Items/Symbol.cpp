#include "TunedeckMenu/Views/Items/Symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck {

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &Symbol::drawingChanged, this, [this] { update(); });
}

void Symbol::setSize(double size) {
    // Even, so that it is a whole number of pixels at 1.5x as well.
    size = 2 * std::round(size / 2);
    if (m_size != size) {
        m_size = size;
        setImplicitSize(size, size);
        Q_EMIT sizeChanged();
    }
}

void Symbol::paint(QPainter* painter) {
    if (m_name.isEmpty()) {
        return;
    }
    QFile file(u":/tunedeck/symbols/"_s + m_name + u".svg"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("no drawing of symbol %s", qPrintable(m_name));
        return;
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", m_color.name().toLatin1());
    QSvgRenderer renderer(drawing);
    painter->setOpacity(m_color.alphaF());
    const double side = qMin(width(), height());
    renderer.render(painter, QRectF((width() - side) / 2, (height() - side) / 2, side, side));
}

} // namespace tunedeck
