#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

namespace tunedeck::test {

/// A peer on the session bus with a connection of its own, which answers every call of one object.
class Peer : public QDBusVirtualObject {
    Q_OBJECT
public:
    Peer(const QString& service, const QString& path);
    ~Peer() override;
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

protected:
    [[nodiscard]] QDBusConnection& bus() { return m_bus; }

private:
    QString m_connectionName;
    QDBusConnection m_bus;
};

/// The portal's settings.
class SettingsPortal final : public Peer {
    Q_OBJECT
public:
    explicit SettingsPortal(QMap<QString, QVariantMap> settings);
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    /// Changes a setting and tells so.
    void change(const QString& group, const QString& key, const QVariant& value);

private:
    QMap<QString, QVariantMap> m_settings;
};

/// A file manager that keeps what it was asked to show, or refuses.
class FileManager final : public Peer {
    Q_OBJECT
public:
    FileManager();
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    QStringList shown;
    bool refuses = false;
};

} // namespace tunedeck::test
