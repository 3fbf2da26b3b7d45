#pragma once

#include <QDBusConnection>
#include <QList>
#include <QString>
#include <QStringList>

namespace tunedeck::test {

/// Reads the accessibility tree of all programs on a desktop, as a screen reader does. Nothing is cached.
class Accessibility {
public:
    explicit Accessibility(const QString& sessionBusAddress);
    ~Accessibility();
    Accessibility(const Accessibility&) = delete;
    Accessibility& operator=(const Accessibility&) = delete;

    [[nodiscard]] bool isConnected() const { return m_bus.isConnected(); }
    /// The names of all elements in visible windows, including those scrolled out of view.
    [[nodiscard]] QStringList texts() const;
    /// Presses the control with this name; false if there is none.
    [[nodiscard]] bool press(const QString& name) const;

private:
    struct Element {
        QString program; ///< its bus name
        QString path;
        QString name;
    };
    [[nodiscard]] QList<Element> elements() const;

    QString m_name;
    QDBusConnection m_bus;
};

} // namespace tunedeck::test
