#include "TunedeckMenu/Views/Items/FileIcon.h"

#include "TunedeckMenu/Views/Edge/SystemStyle.h"

#include <QPainter>
#include <QQmlEngine>
#include <QQuickWindow>

namespace tunedeck {

void FileIcon::setPath(const QString& path) {
    if (m_path == path) {
        return;
    }
    m_path = path;
    m_icon = SystemStyle::create(qmlEngine(this), nullptr)->fileIcon(path);
    // Without an icon theme the desktop returns icons that are not null but empty.
    if (m_icon.availableSizes().isEmpty() && m_icon.pixmap(32).isNull()) {
        m_icon = {};
    }
    Q_EMIT pathChanged();
    update();
}

void FileIcon::paint(QPainter* painter) {
    if (window() != nullptr && !m_icon.isNull()) {
        const QPixmap pixmap = m_icon.pixmap(size().toSize(), window()->effectiveDevicePixelRatio());
        painter->drawPixmap(boundingRect(), pixmap, pixmap.rect());
    }
}

} // namespace tunedeck
