#include "TunedeckMenu/Views/Items/Pressable.h"

#include "TunedeckMenu/Views/Items/HintLayer.h"

#include <utility>

namespace tunedeck {

Pressable::Pressable(QQuickItem* parent) : HintArea(parent) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
}

void Pressable::setUsable(bool usable) {
    if (m_usable != usable) {
        m_spaceHeld = false;
        setPressed(false);
        setActiveFocusOnTab(usable);
        setState(m_usable, usable, [](QAccessible::State& changed) { changed.disabled = true; });
    }
}

void Pressable::setChecked(bool checked) {
    setState(m_checked, checked, [](QAccessible::State& changed) { changed.checked = true; });
}

void Pressable::setExpanded(bool expanded) {
    setState(m_expanded, expanded, [](QAccessible::State& changed) { changed.expanded = true; });
}

void Pressable::setState(bool& state, bool value, void (*mark)(QAccessible::State& changed)) {
    if (state != value) {
        state = value;
        Q_EMIT stateChanged();
        QAccessible::State changed;
        mark(changed);
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }
}

void Pressable::activate() {
    if (isUsable() && isVisible()) {
        if (HintLayer* layer = HintLayer::of(*this)) {
            layer->hide(this);
        }
        Q_EMIT clicked();
    }
}

void Pressable::setPressed(bool pressed) {
    if (m_pressed != pressed) {
        m_pressed = pressed;
        Q_EMIT pressedChanged();
    }
}

void Pressable::setFocusShown(bool shown) {
    if (m_focusShown != shown) {
        m_focusShown = shown;
        setFocusHint(shown);
        Q_EMIT focusShownChanged();
    }
}

void Pressable::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (!isUsable()) {
        return;
    }
    setPressed(true);
    if (HintLayer* layer = HintLayer::of(*this)) {
        layer->hide(this);
    }
}

void Pressable::mouseMoveEvent(QMouseEvent* event) {
    setPressed(isUsable() && contains(event->position()));
}

void Pressable::mouseReleaseEvent(QMouseEvent* event) {
    const bool inside = m_pressed && contains(event->position());
    setPressed(false);
    if (inside) {
        activate();
    }
}

void Pressable::mouseUngrabEvent() {
    setPressed(false);
}

void Pressable::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && event->key() == Qt::Key_Space) {
        if (!event->isAutoRepeat()) {
            m_spaceHeld = isUsable();
            setPressed(m_spaceHeld);
        }
    } else if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        if (!event->isAutoRepeat()) {
            activate();
        }
    } else {
        event->ignore();
    }
}

void Pressable::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) {
        event->ignore();
        return;
    }
    if (!event->isAutoRepeat() && std::exchange(m_spaceHeld, false)) {
        setPressed(false);
        activate();
    }
}

void Pressable::focusInEvent(QFocusEvent* event) {
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason ||
        (reason == Qt::ActiveWindowFocusReason && m_focusWasShown)) {
        setFocusShown(true);
    }
}

void Pressable::focusOutEvent(QFocusEvent* event) {
    QQuickItem::focusOutEvent(event);
    m_spaceHeld = false;
    setPressed(false);
    m_focusWasShown = m_focusShown;
    setFocusShown(false);
}

} // namespace tunedeck
