#pragma once

#include <QAccessible>
#include <QList>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

namespace tunedeck::test {

/// An element of a window, as reported to assistive technology.
struct Element {
    QAccessibleInterface* access = nullptr;
    QString name;
    QString description;
    QAccessible::Role role = QAccessible::NoRole;
    QRect geometry; ///< in screen coordinates

    [[nodiscard]] QQuickItem* item() const { return qobject_cast<QQuickItem*>(access->object()); }
    [[nodiscard]] bool isControl() const;
    [[nodiscard]] bool isEnabled() const { return !access->state().disabled; }
    /// Presses it as a screen reader would; false when it has no such action.
    bool press() const;
};

/// The visible windows, or only the modal one, which blocks the others.
QList<QQuickWindow*> openWindows();

/// The elements of a window in tree order, including those that are scrolled out of view.
QList<Element> elementsOf(QQuickWindow& window);

} // namespace tunedeck::test
