#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// A symbol from the embedded set, in one colour, drawn at the screen's resolution.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY drawingChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY drawingChanged)
    Q_PROPERTY(double size READ size WRITE setSize NOTIFY sizeChanged)
public:
    explicit Symbol(QQuickItem* parent = nullptr);

    /// Side of the square, in points.
    [[nodiscard]] double size() const { return m_size; }
    void setSize(double size);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void drawingChanged();
    void sizeChanged();

private:
    QString m_name;
    QColor m_color = Qt::black;
    double m_size = 0;
};

} // namespace tunedeck
