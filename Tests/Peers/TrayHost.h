#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>

namespace tunedeck::test {

/// The least that can be both the watcher and the host of StatusNotifierItems, on a connection of its own.
class TrayHost : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
public:
    TrayHost();
    ~TrayHost() override;
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;
    [[nodiscard]] bool isHostRegistered() const { return m_isHost; }
    /// "come" and "go": the host registers or leaves; "activate": clicks the item.
    void obey(const QByteArray& order);

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service);

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();
    void said(const QString& line);

private:
    bool m_isHost = true;
    QString m_item;
    QString m_connectionName;
    QDBusConnection m_bus;
};

} // namespace tunedeck::test
