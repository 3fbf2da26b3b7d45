#include "TunedeckMenu/Views/Items/QRCodeItem.h"

#include <QPainter>
#include <QQuickWindow>

#include <cmath>

namespace tunedeck {

void QRCodeItem::setText(const QString& text) {
    if (m_text == text) {
        return;
    }
    m_text = text;
    m_code = text.isEmpty() ? std::nullopt : QRCode::image(text);
    Q_EMIT textChanged();
    update();
}

void QRCodeItem::paint(QPainter* painter) {
    if (!m_code || window() == nullptr) {
        return;
    }
    const double ratio = window()->effectiveDevicePixelRatio();
    const double pixels = std::floor(std::min(width(), height()) * ratio / m_code->size);
    const double module = pixels / ratio;
    const int side = m_code->size;
    const double left = std::round((width() - module * side) / 2 * ratio) / ratio;
    const double top = std::round((height() - module * side) / 2 * ratio) / ratio;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            if (m_code->isDark(x, y)) {
                painter->fillRect(QRectF(left + x * module, top + y * module, module, module), Qt::black);
            }
        }
    }
}

} // namespace tunedeck
