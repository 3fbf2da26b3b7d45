#pragma once

#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// Makes screen readers read out its text as soon as it appears or changes, wherever the focus is.
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

private:
    QString m_text;
};

} // namespace tunedeck
