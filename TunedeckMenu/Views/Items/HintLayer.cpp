#include "TunedeckMenu/Views/Items/HintLayer.h"

#include <QQuickWindow>

namespace tunedeck {

HintLayer* HintLayer::of(const QQuickItem& item) {
    return item.window() != nullptr ? item.window()->findChild<HintLayer*>() : nullptr;
}

void HintLayer::show(const HintArea* area) {
    m_area = area;
    m_text = area->hint();
    m_target = mapRectFromItem(area, area->boundingRect());
    Q_EMIT changed();
}

void HintLayer::hide(const HintArea* area) {
    if (m_area == area) {
        m_area = nullptr;
        m_text.clear();
        Q_EMIT changed();
    }
}

} // namespace tunedeck
