#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include <memory>

namespace tunedeck {

class SessionBus;

/// Knows what kind of tray the desktop has, without ever waiting for one, and notices one that comes late.
///
/// The question has to be settled before the first QSystemTrayIcon is made: Qt asks it once per process, waits for the
/// answer, and keeps it.
class TrayWatch : public QObject {
    Q_OBJECT
public:
    enum class Tray {
        none,           ///< none so far, or not yet known
        statusNotifier, ///< a StatusNotifierItem host is registered
        xembed,         ///< an X11 tray has its window
    };

    explicit TrayWatch(SessionBus& bus, QObject* parent = nullptr);

    /// Begins to look; changed() tells when the answer is another one.
    void start();
    [[nodiscard]] Tray tray() const { return m_tray; }

    /// The X11 tray's window, or 0.
    [[nodiscard]] static quint32 xembedWindow();

Q_SIGNALS:
    void changed();
    /// The X11 tray came, went or was replaced by another.
    void xembedChanged();

private Q_SLOTS:
    void askHost();
    void onTrayWindow();

private:
    enum class Host { asking, absent, missing, registered };

    void followBus();
    void settle();

    SessionBus& m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    QTimer m_grace; ///< a watcher without a host often gets one soon after the login
    Host m_host = Host::asking;
    Tray m_tray = Tray::none;
    quint64 m_question = 0;
};

} // namespace tunedeck
