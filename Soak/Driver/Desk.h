#pragma once

#include "Peers/NotificationServer.h"
#include "Peers/TrayHost.h"
#include "Soak/Driver/Judge.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tunedeck::soak {

/// The desktop's notification server and tray, which come and go.
class Desk {
public:
    Desk();

    /// The server comes, with markup and actions or without, or goes.
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

    std::unique_ptr<test::NotificationServer> m_server;
    std::unique_ptr<test::TrayHost> m_tray;
    std::int64_t m_since = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> m_present; ///< when a server was there
    std::map<std::string, int> m_shows;                           ///< by kind and subject
    std::vector<unsigned> m_numbers;                              ///< on the screen
    int m_shown = 0;
};

} // namespace tunedeck::soak
