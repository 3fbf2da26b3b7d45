#pragma once

#include "Tests/Peers/NotificationServer.h"
#include "Tests/Peers/TrayHost.h"
#include "Tests/Soak/Driver/Judge.h"
#include "Tests/Soak/Trail.h"

#include <QProcess>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tunedeck::soak {

/// The desktop's session bus, notification server and tray, which come and go.
class Desk {
public:
    /// From now on the bus of the soak is the session bus of this process and of those that it starts.
    explicit Desk(const Files& files);
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    /// The bus crashes with all that is on it, or is started again at the same address, with the others on it.
    void setBus(bool there);
    [[nodiscard]] bool hasBus() const { return m_bus.state() == QProcess::Running; }
    /// The server comes, with markup and actions or without, or goes. Without a bus nobody comes.
    void setServer(bool there, bool rich = true);
    [[nodiscard]] bool hasServer() const { return m_server != nullptr; }
    void setTray(bool there);
    [[nodiscard]] bool hasTray() const { return m_tray != nullptr; }
    [[nodiscard]] test::TrayHost& tray() { return *m_tray; }
    /// Clicks a notification that is shown, or closes it; false when none is.
    bool touchNotification(unsigned number, bool click);

    /// Compares what the servers showed with what was announced: all of it while a server was there and, when no more
    /// is to come, nothing else. What is wrong, or an empty text.
    std::string compare(const std::vector<Judge::Announcement>& announcements, bool finally);
    [[nodiscard]] int shown() const { return m_shown; }

private:
    void collect();

    QStringList m_busArguments;
    QProcess m_bus;
    std::int64_t m_busLost = 0; ///< when the application last was on the bus for certain
    std::int64_t m_onBus = 0;   ///< from when it is so again
    std::unique_ptr<test::NotificationServer> m_server;
    std::unique_ptr<test::TrayHost> m_tray;
    std::int64_t m_since = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> m_present; ///< when a server was there
    std::map<std::string, int> m_shows;                           ///< by kind and subject
    std::vector<unsigned> m_numbers;                              ///< on the screen
    int m_shown = 0;
};

} // namespace tunedeck::soak
