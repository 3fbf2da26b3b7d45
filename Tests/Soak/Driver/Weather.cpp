#include "Tests/Soak/Driver/Weather.h"

#include <QProcess>
#include <QTimer>

#include <csignal>

namespace tunedeck::soak {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::size_t trailLength = 40;

} // namespace

Weather::Weather(On on, const Files& files, std::uint64_t seed)
    : m_on(std::move(on)), m_random{static_cast<std::int64_t>(seed)}, m_all(files.weather()) {}

bool Weather::blow() {
    const auto chance = m_random.between(0, 99);
    const bool obeyed = chance < 70   ? user()
                        : chance < 82 ? desktop()
                        : chance < 94 ? service()
                        : chance < 97 ? sleep()
                                      : startAgain();
    pass(static_cast<int>(m_random.between(30, 500)));
    return obeyed && m_on.subject.isRunning();
}

bool Weather::user() {
    const auto number = static_cast<unsigned>(m_random.between(0, 1'000'000));
    const auto chance = m_random.between(0, 99);
    if (chance < 60) {
        const auto pressed = m_on.subject.order(u"press %1"_s.arg(number));
        if (!pressed || pressed->isEmpty()) {
            note(u"panel opened or closed"_s);
            return pressed && order(u"panel"_s);
        }
        note(u"control pressed"_s, *pressed);
        return true;
    }
    if (chance < 75 && m_on.desk.hasTray()) {
        note(u"icon clicked"_s);
        m_on.desk.tray().activateItem();
    } else if (chance < 80) {
        note(u"panel opened or closed"_s);
        return order(u"panel"_s);
    } else if (chance < 86) {
        note(u"window opened"_s);
        return order(u"window"_s);
    } else if (chance < 88) {
        note(u"first-run window opened"_s);
        return order(u"onboarding"_s);
    } else if (chance < 94) {
        note(u"windows closed"_s);
        return order(u"close"_s);
    } else if (m_on.desk.touchNotification(number, m_random.chance(50))) {
        note(u"notification touched"_s);
    }
    return true;
}

bool Weather::desktop() {
    const auto spell = static_cast<int>(m_random.between(50, 6000));
    if (m_random.chance(10)) {
        note(u"session bus gone"_s, u"%1 ms"_s.arg(spell / 2));
        m_on.desk.setBus(false);
        later(spell / 2, [this] { m_on.desk.setBus(true); });
        return true;
    }
    switch (m_random.between(0, 2)) {
    case 0:
        note(u"notification server gone"_s);
        m_on.desk.setServer(false);
        later(spell, [this, rich = m_random.chance(70)] { m_on.desk.setServer(true, rich); });
        break;
    case 1:
        note(u"tray gone"_s);
        m_on.desk.setTray(false);
        later(spell, [this] { m_on.desk.setTray(true); });
        break;
    default:
        if (m_on.desk.hasTray()) {
            note(u"tray's host gone"_s);
            m_on.desk.tray().setHostRegistered(false);
            later(spell, [this] {
                if (m_on.desk.hasTray()) {
                    m_on.desk.tray().setHostRegistered(true);
                }
            });
        }
    }
    return true;
}

bool Weather::service() {
    const auto spell = static_cast<int>(m_random.between(100, 3500));
    const auto chance = m_random.between(0, 99);
    if (chance < 40) {
        if (m_on.unit.signal(SIGUSR1)) {
            note(u"service changed its port"_s);
        }
    } else if (chance < 60) {
        if (m_on.unit.signal(SIGSTOP)) {
            note(u"service hung"_s, u"%1 ms"_s.arg(spell));
            later(spell, [this] { (void)m_on.unit.signal(SIGCONT); });
        }
    } else if (chance < 90) {
        if (m_on.unit.signal(m_random.chance(70) ? SIGKILL : SIGTERM)) {
            note(u"service died"_s);
            // Now and then it is left to the user manager, which waits for half a minute.
            if (m_random.chance(90)) {
                later(spell, [this] { m_on.unit.revive(); });
            }
        }
    } else {
        note(u"service stopped"_s);
        Unit::stop();
        later(spell, [this] { m_on.unit.revive(); });
    }
    return true;
}

bool Weather::sleep() {
    const auto minutes = m_random.between(5, 600);
    note(u"machine slept"_s, u"%1 min"_s.arg(minutes));
    m_on.subject.freeze(true);
    pass(static_cast<int>(m_random.between(50, 400)));
    m_on.timeline.slept(std::chrono::minutes(minutes));
    m_on.subject.freeze(false);
    return order(u"woke"_s);
}

bool Weather::startAgain() {
    note(u"second start"_s);
    QProcess second;
    second.start(m_on.program, QStringList());
    for (int tries = 0; tries < 100 && second.state() != QProcess::NotRunning; ++tries) {
        pass(100);
        second.waitForFinished(0);
    }
    const bool handedOver =
        second.state() == QProcess::NotRunning && second.exitStatus() == QProcess::NormalExit && second.exitCode() == 0;
    if (!handedOver) {
        note(u"second start refused"_s, QString::number(second.exitCode()));
    }
    return handedOver;
}

bool Weather::settle() {
    ++m_calm;
    note(u"calm"_s);
    m_on.desk.setBus(true);
    m_on.desk.setServer(true);
    m_on.desk.setTray(true);
    m_on.desk.tray().setHostRegistered(true);
    (void)m_on.unit.signal(SIGCONT);
    m_on.unit.revive();
    pass(300);
    const bool closed = order(u"close"_s);
    pass(900);
    return closed;
}

bool Weather::order(const QString& text) {
    return m_on.subject.order(text).has_value();
}

QStringList Weather::trail() const {
    return {m_trail.begin(), m_trail.end()};
}

void Weather::note(const QString& kind, const QString& detail) {
    ++m_tally[kind];
    const auto seconds = std::chrono::duration<double>(realTime() - m_begin).count();
    m_trail.push_back(u"%1 s  %2 %3"_s.arg(seconds, 9, 'f', 3).arg(kind, detail).trimmed());
    m_all.note(m_trail.back().toStdString());
    if (m_trail.size() > trailLength) {
        m_trail.pop_front();
    }
}

void Weather::later(int milliseconds, std::function<void()> what) {
    QTimer::singleShot(milliseconds, this, [this, what = std::move(what), calm = m_calm] {
        if (calm == m_calm) {
            what();
        }
    });
}

} // namespace tunedeck::soak
