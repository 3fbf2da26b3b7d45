#include "TunedeckMenu/Views/Items/HintArea.h"

#include "TunedeckMenu/Views/Items/HintLayer.h"

namespace tunedeck {

HintArea::HintArea(QQuickItem* parent) : QQuickItem(parent) {
    setAcceptHoverEvents(true);
}

void HintArea::setHint(const QString& hint) {
    if (m_hint != hint) {
        m_hint = hint;
        Q_EMIT hintChanged();
        if (HintLayer* layer = m_hintWanted ? HintLayer::of(*this) : nullptr) {
            layer->show(this);
        }
    }
}

void HintArea::hoverEnterEvent(QHoverEvent* event) {
    QQuickItem::hoverEnterEvent(event);
    setHovered(true);
}

void HintArea::hoverLeaveEvent(QHoverEvent* event) {
    QQuickItem::hoverLeaveEvent(event);
    setHovered(false);
}

void HintArea::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange || (change == ItemVisibleHasChanged && !data.boolValue)) {
        setHovered(false);
        setFocusHint(false);
    }
    QQuickItem::itemChange(change, data);
}

void HintArea::setHovered(bool hovered) {
    if (m_hovered == hovered) {
        return;
    }
    m_hovered = hovered;
    Q_EMIT hoveredChanged();
    updateHint();
}

void HintArea::setFocusHint(bool focused) {
    m_focused = focused;
    updateHint();
}

void HintArea::updateHint() {
    const bool wanted = m_hovered || m_focused;
    if (m_hintWanted == wanted) {
        return;
    }
    m_hintWanted = wanted;
    if (HintLayer* layer = HintLayer::of(*this)) {
        wanted ? layer->show(this) : layer->hide(this);
    }
}

} // namespace tunedeck
