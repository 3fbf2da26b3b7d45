#pragma once

#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// Words that are read out to the user of a screen reader as soon as they are there, wherever the keyboard is.
class Alert : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
public:
    using QQuickItem::QQuickItem;
    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString& text);

Q_SIGNALS:
    void textChanged();

protected:
    void componentComplete() override;

private:
    void announce();

    QString m_text;
};

} // namespace tunedeck
