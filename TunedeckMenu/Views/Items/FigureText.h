#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QTextLayout;

namespace tunedeck {

/// A line of text whose digits are equally wide, so that it keeps its place while a number in it changes. Many fonts
/// have such digits only as an option, which Qt 6.4 can't select.
class FigureText : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY changed)
public:
    explicit FigureText(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    void layOut(QTextLayout& layout) const;
    void measure();

    QString m_text;
    QColor m_color;
    QFont m_font;
};

} // namespace tunedeck
