#include "TunedeckMenu/Views/Items/FileIcon.h"

#include "TunedeckMenu/Views/Edge/Surroundings.h"

#include <QPainter>
#include <QQmlEngine>
#include <QQuickWindow>

namespace tunedeck {

void FileIcon::componentComplete() {
    QQuickPaintedItem::componentComplete();
    find();
}

void FileIcon::setPath(const QString& path) {
    if (m_path != path) {
        m_path = path;
        find();
    }
}

void FileIcon::find() {
    QQmlEngine* const engine = qmlEngine(this);
    if (isComponentComplete() && engine != nullptr) {
        m_icon = m_path.isEmpty() ? QIcon() : Surroundings::create(engine, nullptr)->fileIcon(m_path);
        // A desktop without an icon theme hands out icons of nothing.
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
