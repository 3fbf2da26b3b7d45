#pragma once

#include "TunedeckCore/QRCode.h"

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// Draws the QR code of a text; each module is a whole number of device pixels.
class QRCodeItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(bool drawable READ isDrawable NOTIFY textChanged)
public:
    using QQuickPaintedItem::QQuickPaintedItem;
    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString& text);
    /// False if there is no text or it is too long for a QR code.
    [[nodiscard]] bool isDrawable() const { return m_code.has_value(); }
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void textChanged();

private:
    QString m_text;
    std::optional<QRCode::Image> m_code;
};

} // namespace tunedeck
