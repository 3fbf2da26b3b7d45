#pragma once

#include <QDBusConnection>
#include <QList>
#include <QString>
#include <QStringList>

namespace tunedeck::test {

/// What a screen reader finds of the programs on a desktop, read afresh at each look.
class Accessibility {
public:
    /// `sessionBus`: the address of the desktop's bus.
    explicit Accessibility(const QString& sessionBus);
    ~Accessibility();
    Accessibility(const Accessibility&) = delete;
    Accessibility& operator=(const Accessibility&) = delete;

    /// True when the desktop has such a service.
    [[nodiscard]] bool isThere() const { return m_bus.isConnected(); }
    /// The names of all that is in the windows on the screen, also of what is scrolled away.
    [[nodiscard]] QStringList texts() const;
    /// Presses the control of that name; false when there is none.
    [[nodiscard]] bool press(const QString& name) const;

private:
    /// One thing in a program.
    struct Element {
        QString program; ///< on the bus
        QString path;
        QString name;
    };
    [[nodiscard]] QList<Element> look() const;

    QString m_name;
    QDBusConnection m_bus;
};

} // namespace tunedeck::test
