#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>

namespace tunedeck::test {

/// The least that can be both the watcher and the host of StatusNotifierItems.
class TrayHost : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
public:
    TrayHost();
    [[nodiscard]] bool isHostRegistered() const { return m_isHost; }
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
    QDBusConnection m_bus = QDBusConnection::sessionBus();
};

} // namespace tunedeck::test
