#include "TunedeckMenu/Views/Items/HintLayer.h"

#include <QQuickWindow>

namespace tunedeck {

HintLayer* HintLayer::of(const QQuickItem& item) {
    return item.window() != nullptr ? item.window()->findChild<HintLayer*>() : nullptr;
}

void HintLayer::show(const HintArea* area) {
    disconnect(m_areaGone);
    m_area = area;
    m_areaGone = connect(area, &QObject::destroyed, this, &HintLayer::clear);
    m_text = area->hint();
    findTarget();
    Q_EMIT changed();
}

void HintLayer::findTarget() {
    if (m_area != nullptr) {
        m_target = mapRectFromItem(m_area, m_area->boundingRect());
        Q_EMIT targetChanged();
    }
}

void HintLayer::hide(const HintArea* area) {
    if (m_area == area) {
        clear();
    }
}

void HintLayer::clear() {
    disconnect(m_areaGone);
    m_area.clear();
    m_text.clear();
    Q_EMIT changed();
}

} // namespace tunedeck
