#include "Tests/Helpers/Views/Elements.h"

#include <QGuiApplication>

namespace tunedeck::test {

namespace {

void collectElements(QAccessibleInterface* access, QList<Element>& elements) {
    if (access == nullptr || !access->isValid() || access->rect().isEmpty()) {
        return;
    }
    if (qobject_cast<QWindow*>(access->object()) == nullptr) {
        elements.append({.access = access,
                         .name = access->text(QAccessible::Name),
                         .description = access->text(QAccessible::Description),
                         .role = access->role(),
                         .geometry = access->rect()});
    }
    for (int i = 0; i < access->childCount(); ++i) {
        collectElements(access->child(i), elements);
    }
}

} // namespace

bool Element::isControl() const {
    return role == QAccessible::Button || role == QAccessible::CheckBox || role == QAccessible::MenuItem ||
           role == QAccessible::Link || role == QAccessible::ButtonMenu;
}

bool Element::press() const {
    QAccessibleActionInterface* const actions = access->actionInterface();
    for (const QString& action :
         {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction()}) {
        if (actions != nullptr && actions->actionNames().contains(action)) {
            actions->doAction(action);
            return true;
        }
    }
    return false;
}

QList<QQuickWindow*> openWindows() {
    QList<QQuickWindow*> open;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        auto* const quick = qobject_cast<QQuickWindow*>(window);
        if (quick != nullptr && quick->isVisible()) {
            if (quick->modality() == Qt::ApplicationModal) {
                return {quick};
            }
            open << quick;
        }
    }
    return open;
}

QList<Element> elementsOf(QQuickWindow& window) {
    QList<Element> elements;
    collectElements(QAccessible::queryAccessibleInterface(&window), elements);
    return elements;
}

} // namespace tunedeck::test
