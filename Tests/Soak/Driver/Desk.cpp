#include "Tests/Soak/Driver/Desk.h"

#include "Tests/Soak/Timeline.h"

#include <QRegularExpression>

#include <algorithm>
#include <fstream>
#include <limits>

namespace tunedeck::soak {

using namespace Qt::StringLiterals;

namespace {

/// A server that has only come may not be known yet, and one that goes may take a call with it.
constexpr std::int64_t comes = 2'000'000'000;
constexpr std::int64_t goes = 3'000'000'000;
constexpr std::int64_t looks = 1'000'000'000; ///< for a bus, at first
constexpr std::size_t mostNumbers = 200;

/// Kind and subject of a notification, by its words.
std::string keyOf(const test::NotificationServer::Call& call) {
    if (call.title == u"Rekordbox library updated"_s) {
        return "library " + call.body.section(u" · v"_s, -1).toStdString();
    }
    static const QRegularExpression job(u"job-\\d+"_s);
    const auto kind = call.title == u"New download request"_s ? "requested "
                      : call.title == u"Added to Rekordbox"_s ? "finished "
                      : call.title == u"Download failed"_s    ? "failed "
                                                              : "other ";
    return kind + job.match(call.body).captured().toStdString();
}

} // namespace

Desk::Desk(const Files& files) {
    const auto configuration = files.folder() / "bus.conf";
    const auto address = "unix:path=" + (files.folder() / "bus").string();
    // Without a folder of services: nothing that is installed on this machine starts by itself.
    std::ofstream(configuration)
        << "<busconfig><type>session</type><listen>" << address
        << "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
    m_busArguments = {u"--config-file="_s + QString::fromStdString(configuration.string()), u"--nofork"_s,
                      u"--print-address=1"_s};
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.c_str());
    setBus(true);
}

Desk::~Desk() {
    setBus(false);
}

void Desk::setBus(bool there) {
    if (there == hasBus()) {
        return;
    }
    if (there) {
        m_bus.start(u"dbus-daemon"_s, m_busArguments);
        m_bus.waitForReadyRead();
        // Who lost the bus looks for it now and then, and the longer the more seldom.
        const auto now = realTime().count();
        m_onBus = m_busLost == 0 ? now : now + (now - m_busLost) + looks;
        setServer(true);
        setTray(true);
    } else {
        m_bus.kill();
        m_bus.waitForFinished();
        setServer(false);
        setTray(false);
        const auto now = realTime().count();
        m_busLost = m_busLost == 0 || now > m_onBus ? now : m_busLost;
    }
}

void Desk::setServer(bool there, bool rich) {
    if (there == hasServer() || (there && !hasBus())) {
        return;
    }
    if (there) {
        m_server = std::make_unique<test::NotificationServer>(rich ? QStringList{u"body-markup"_s, u"actions"_s}
                                                                   : QStringList());
        m_since = std::max(realTime().count(), m_onBus);
    } else {
        collect();
        m_present.emplace_back(m_since, realTime().count());
        m_server.reset();
        m_numbers.clear();
    }
}

void Desk::setTray(bool there) {
    if (there != hasTray() && (!there || hasBus())) {
        m_tray = there ? std::make_unique<test::TrayHost>() : nullptr;
    }
}

bool Desk::touchNotification(unsigned number, bool click) {
    if (!hasServer()) {
        return false;
    }
    collect();
    if (m_numbers.empty()) {
        return false;
    }
    const auto at = number % m_numbers.size();
    const auto chosen = m_numbers[at];
    if (click) {
        Q_EMIT m_server->ActionInvoked(chosen, u"default"_s);
    }
    Q_EMIT m_server->NotificationClosed(chosen, 2);
    m_numbers.erase(m_numbers.begin() + static_cast<std::ptrdiff_t>(at));
    return true;
}

void Desk::collect() {
    for (const auto& call : m_server->calls) {
        ++m_shown;
        ++m_shows[keyOf(call)];
        m_numbers.push_back(call.id);
    }
    m_server->calls.clear();
    if (m_numbers.size() > mostNumbers) {
        m_numbers.erase(m_numbers.begin(), m_numbers.end() - mostNumbers / 2);
    }
}

std::string Desk::compare(const std::vector<Judge::Announcement>& announcements, bool finally) {
    auto present = m_present;
    if (hasServer()) {
        collect();
        present.emplace_back(m_since, std::numeric_limits<std::int64_t>::max());
    }
    std::map<std::string, std::pair<int, int>> wanted; // at least, at most
    for (const auto& one : announcements) {
        auto& [least, most] = wanted[one.kind + ' ' + one.id];
        ++most;
        for (const auto& [from, to] : present) {
            least += one.at - comes > from && one.at + goes < to ? 1 : 0;
        }
    }
    for (const auto& [key, times] : m_shows) {
        if (finally && times > wanted[key].second) {
            return "“" + key + "” was shown " + std::to_string(times) + " times and announced " +
                   std::to_string(wanted[key].second) + " times";
        }
    }
    for (const auto& [key, range] : wanted) {
        if (m_shows[key] < range.first) {
            return "“" + key + "” was announced " + std::to_string(range.first) +
                   " times with a server there and shown " + std::to_string(m_shows[key]) + " times";
        }
    }
    return {};
}

} // namespace tunedeck::soak
