#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// One symbol, called by the system's own name, in one colour; drawn for the screen's own pixels.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(double size READ size WRITE setSize NOTIFY sizeChanged)
public:
    explicit Symbol(QQuickItem* parent = nullptr);

    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString& name);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);
    /// Side of the square it fills, in points.
    [[nodiscard]] double size() const { return m_size; }
    void setSize(double size);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void sizeChanged();

private:
    QString m_name;
    QColor m_color = Qt::black;
    double m_size = 0;
};

/// The busy mark: twelve spokes, one step a twelfth of a second, and none at all while nobody can see it.
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
    void follow();

    QColor m_color = Qt::gray;
    QBasicTimer m_timer;
    QMetaObject::Connection m_windowVisibility;
    int m_step = 0;
};

} // namespace tunedeck
