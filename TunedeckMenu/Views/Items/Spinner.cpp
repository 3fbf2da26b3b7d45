#include "TunedeckMenu/Views/Items/Spinner.h"

#include <QPainter>
#include <QQuickWindow>
#include <QTimerEvent>

namespace tunedeck {

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
            m_windowVisibility = connect(data.window, &QWindow::visibilityChanged, this, &Spinner::updateTimer);
        }
    }
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        updateTimer();
    }
}

void Spinner::updateTimer() {
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
