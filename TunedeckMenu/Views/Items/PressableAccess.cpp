#include "TunedeckMenu/Views/Items/PressableAccess.h"

#include "TunedeckMenu/Views/Items/Pressable.h"

#include <QAccessible>
#include <QtQuick/private/qaccessiblequickitem_p.h>

namespace tunedeck {

namespace {

class PressableAccess : public QAccessibleQuickItem {
public:
    using QAccessibleQuickItem::QAccessibleQuickItem;

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleQuickItem::state();
        const Pressable& item = pressable();
        state.disabled = !item.isUsable();
        state.focusable = item.isUsable();
        state.checkable = item.isCheckable();
        state.checked = item.isCheckable() && item.isChecked();
        state.expandable = item.isExpandable();
        state.expanded = item.isExpandable() && item.isExpanded();
        state.collapsed = item.isExpandable() && !item.isExpanded();
        state.pressed = item.isPressed();
        return state;
    }

    QStringList actionNames() const override {
        const QString main = pressable().isCheckable() ? toggleAction() : pressAction();
        return pressable().isUsable() ? QStringList{main, setFocusAction()} : QStringList{};
    }

    void doAction(const QString& name) override {
        if (name == pressAction() || name == toggleAction()) {
            pressable().activate();
        } else if (name == setFocusAction() && pressable().isUsable()) {
            pressable().forceActiveFocus(Qt::TabFocusReason);
        }
    }

private:
    Pressable& pressable() const { return static_cast<Pressable&>(*item()); }
};

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* const item = qobject_cast<Pressable*>(object);
    return item != nullptr ? new PressableAccess(item) : nullptr;
}

} // namespace

void installPressableAccess() {
    QAccessible::installFactory(make);
}

} // namespace tunedeck
