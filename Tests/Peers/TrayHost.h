#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>

namespace tunedeck::test {

/// A minimal watcher and host of StatusNotifierItems in one object, with its own connection to a bus. While there is
/// another one it waits, and then replaces it without a gap.
class TrayHost : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
public:
    /// On the session bus, or on the bus at `address`.
    explicit TrayHost(const QString& address = {});
    ~TrayHost() override;
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;

    [[nodiscard]] bool isHostRegistered() const { return m_isHost; }
    [[nodiscard]] QStringList items() const { return {m_item + QStringLiteral("/StatusNotifierItem")}; }
    /// Registers or unregisters the host; the watcher stays.
    void setHostRegistered(bool isRegistered);
    /// Clicks the item that registered last.
    void activateItem();
    /// Selects each entry of its menu.
    void selectMenuEntries();
    /// Reads the properties of the item, as after its registration.
    void readItem();

    /// What was read: the tool tip, "dark" or "light", and the number of the icon's opaque pixels.
    QStringList reads;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service);

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    bool m_isHost = true;
    QString m_item;
    QDBusConnection m_bus;
};

} // namespace tunedeck::test
