#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include <memory>

namespace tunedeck {

class SessionBus;

/// Finds out what kind of tray the desktop has, and notices one that starts late. Doesn't block.
///
/// Wait for a tray before creating the first QSystemTrayIcon: Qt looks for one only once per process, and blocks.
class TrayWatch : public QObject {
    Q_OBJECT
public:
    enum class Tray {
        None,           ///< none so far
        StatusNotifier, ///< a StatusNotifierItem host is registered
        XEmbed,         ///< there is an X11 tray
    };

    explicit TrayWatch(SessionBus& bus, QObject* parent = nullptr);

    void start();
    [[nodiscard]] Tray tray() const { return m_tray; }

    /// The X11 tray's window, or 0.
    [[nodiscard]] static quint32 xembedWindow();

Q_SIGNALS:
    void changed();
    /// One watcher of status notifier items took over from another without a gap, which Qt doesn't notice.
    void watcherReplaced();
    /// An X11 tray started, exited or was replaced.
    void xembedChanged();

private Q_SLOTS:
    void queryHost();
    void onTrayWindow();

private:
    enum class Host { Unknown, NoWatcher, NoHost, Registered };

    void subscribe();
    void update();

    SessionBus& m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    QTimer m_grace; ///< soon after login, a watcher often has no host yet
    Host m_host = Host::Unknown;
    Tray m_tray = Tray::None;
    quint64 m_queryNumber = 0;
};

} // namespace tunedeck
