#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// A busy indicator of twelve spokes, one revolution per second. Stops while its window is hidden or minimized.
class Spinner : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)
public:
    explicit Spinner(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void colorChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void updateTimer();

    QColor m_color = Qt::gray;
    QBasicTimer m_timer;
    QMetaObject::Connection m_windowVisibility;
    int m_step = 0;
};

} // namespace tunedeck
