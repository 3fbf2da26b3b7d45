#include "TunedeckMenu/Views/Items/FileIcon.h"

#include "TunedeckMenu/Views/Edge/SystemStyle.h"

#include <QPainter>
#include <QQmlEngine>
#include <QQuickWindow>

namespace tunedeck {

void FileIcon::componentComplete() {
    QQuickPaintedItem::componentComplete();
    load();
}

void FileIcon::setPath(const QString& path) {
    if (m_path != path) {
        m_path = path;
        load();
    }
}

void FileIcon::load() {
    QQmlEngine* const engine = qmlEngine(this);
    if (isComponentComplete() && engine != nullptr) {
        m_icon = m_path.isEmpty() ? QIcon() : SystemStyle::create(engine, nullptr)->fileIcon(m_path);
        // Without an icon theme the desktop returns icons that are not null but empty.
        if (m_icon.availableSizes().isEmpty() && m_icon.pixmap(32).isNull()) {
            m_icon = {};
        }
        Q_EMIT pathChanged();
        update();
    }
}

void FileIcon::paint(QPainter* painter) {
    if (window() != nullptr && !m_icon.isNull()) {
        const QPixmap pixmap = m_icon.pixmap(size().toSize(), window()->effectiveDevicePixelRatio());
        painter->drawPixmap(boundingRect(), pixmap, pixmap.rect());
    }
}

} // namespace tunedeck
