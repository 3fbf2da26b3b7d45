#include "TunedeckMenu/Views/Items/Symbol.h"

#include <QFile>
#include <QPainter>
#include <QQuickWindow>
#include <QSvgRenderer>
#include <QTimerEvent>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck {

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent) {}

void Symbol::setName(const QString& name) {
    if (m_name != name) {
        m_name = name;
        Q_EMIT nameChanged();
        update();
    }
}

void Symbol::setColor(const QColor& color) {
    if (m_color != color) {
        m_color = color;
        Q_EMIT colorChanged();
        update();
    }
}

void Symbol::setSize(double size) {
    // Even, so that it is a whole number of pixels at one and a half times the size too.
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
        qWarning("no drawing for the symbol %s", qPrintable(m_name));
        return;
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", m_color.name().toLatin1());
    QSvgRenderer renderer(drawing);
    painter->setOpacity(m_color.alphaF());
    const double side = qMin(width(), height());
    renderer.render(painter, QRectF((width() - side) / 2, (height() - side) / 2, side, side));
}

Spinner::Spinner(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setImplicitSize(14, 14);
    setAntialiasing(true);
    connect(this, &Spinner::colorChanged, this, [this] { update(); });
}

void Spinner::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    const double radius = qMin(width(), height()) / 2;
    painter->translate(width() / 2, height() / 2);
    QPen pen(m_color, radius * 0.2, Qt::SolidLine, Qt::RoundCap);
    constexpr int spokes = 12;
    painter->rotate(m_step * 360.0 / spokes);
    for (int i = 0; i < spokes; ++i) {
        QColor colour = m_color;
        colour.setAlphaF(0.15F + 0.85F * static_cast<float>(i) / (spokes - 1));
        pen.setColor(colour);
        painter->setPen(pen);
        painter->drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius * 0.9));
        painter->rotate(360.0 / spokes);
    }
}

void Spinner::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickPaintedItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        disconnect(m_windowVisibility);
        if (data.window != nullptr) {
            m_windowVisibility = connect(data.window, &QWindow::visibilityChanged, this, &Spinner::follow);
        }
    }
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        follow();
    }
}

void Spinner::follow() {
    const bool seen =
        isVisible() && window() != nullptr && window()->isVisible() && window()->visibility() != QWindow::Minimized;
    if (seen && !m_timer.isActive()) {
        m_timer.start(83, this);
    } else if (!seen) {
        m_timer.stop();
    }
}

void Spinner::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_timer.timerId()) {
        m_step = (m_step + 1) % 12;
        update();
    }
}

} // namespace tunedeck
