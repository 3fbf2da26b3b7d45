#include "Tests/Soak/Application/Hand.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QList>
#include <QStringList>
#include <QWindow>

#include <iterator>
#include <map>

namespace tunedeck::soak {

namespace {

bool isLeftAlone(const QString& name) {
    return name.contains(u"Quit") || name.startsWith(u"Change");
}

void gather(QAccessibleInterface* access, QList<QAccessibleInterface*>& into) {
    if (access == nullptr || !access->isValid() || access->rect().isEmpty()) {
        return;
    }
    auto* const actions = access->actionInterface();
    if (actions != nullptr && !access->state().disabled && !isLeftAlone(access->text(QAccessible::Name)) &&
        (actions->actionNames().contains(QAccessibleActionInterface::pressAction()) ||
         actions->actionNames().contains(QAccessibleActionInterface::toggleAction()))) {
        into.append(access);
    }
    for (int i = 0; i < access->childCount(); ++i) {
        gather(access->child(i), into);
    }
}

/// The visible windows; one that asks a question keeps the others from being used.
QList<QWindow*> windows() {
    QList<QWindow*> found;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->inherits("QQuickWindow")) {
            if (window->modality() == Qt::ApplicationModal) {
                return {window};
            }
            found.append(window);
        }
    }
    return found;
}

} // namespace

QString Hand::press(unsigned number) {
    QList<QAccessibleInterface*> found;
    for (QWindow* window : windows()) {
        gather(QAccessible::queryAccessibleInterface(window), found);
    }
    if (found.isEmpty()) {
        return {};
    }
    // By the name first: a long list of rows with the same button is one thing to do.
    std::map<QString, QList<QAccessibleInterface*>> byName;
    for (auto* control : found) {
        byName[control->text(QAccessible::Name)].append(control);
    }
    const auto& [name, alike] = *std::next(byName.begin(), static_cast<std::ptrdiff_t>(number % byName.size()));
    auto* const chosen = alike.at(static_cast<qsizetype>(number / 1000) % alike.size());
    auto* const actions = chosen->actionInterface();
    const auto& press = QAccessibleActionInterface::pressAction();
    actions->doAction(actions->actionNames().contains(press) ? press : QAccessibleActionInterface::toggleAction());
    return name.isEmpty() ? QStringLiteral("a control without a name") : name;
}

void Hand::closeAll() {
    while (true) {
        const auto open = windows();
        if (open.isEmpty()) {
            return;
        }
        open.first()->close();
        if (open.first()->isVisible()) {
            open.first()->hide();
        }
    }
}

} // namespace tunedeck::soak
