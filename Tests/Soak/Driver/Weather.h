#pragma once

#include "DemoService/World/Random.h"
#include "Tests/Soak/Driver/Desk.h"
#include "Tests/Soak/Driver/Subject.h"
#include "Tests/Soak/Driver/Unit.h"
#include "Tests/Soak/Timeline.h"

#include <QObject>
#include <QStringList>

#include <deque>
#include <functional>
#include <map>

namespace tunedeck::soak {

/// What happens to the application, by chance: the user, the service, the desktop and the machine's sleep.
class Weather : public QObject {
    Q_OBJECT
public:
    struct On {
        Subject& subject;
        Desk& desk;
        Unit& unit;
        Timeline& timeline;
        QString program; ///< for further starts of the application
    };
    Weather(On on, const Files& files, std::uint64_t seed);

    /// Lets one thing happen, and some time pass; false when the application doesn't do as it is told.
    bool blow();
    /// Makes it calm: everything there, no window open.
    bool settle();
    /// What happened last, the newest at the end.
    [[nodiscard]] QStringList trail() const;
    /// How often what happened.
    [[nodiscard]] const std::map<QString, int>& tally() const { return m_tally; }

private:
    bool user();
    bool desktop();
    bool service();
    bool sleep();
    bool startAgain();
    bool order(const QString& text);
    void note(const QString& kind, const QString& detail = {});
    /// Later, unless it has become calm meanwhile.
    void later(int milliseconds, std::function<void()> what);

    On m_on;
    demo::Random m_random;
    Trail m_all;
    std::deque<QString> m_trail;
    std::map<QString, int> m_tally;
    std::chrono::nanoseconds m_begin = realTime();
    int m_calm = 0;
};

} // namespace tunedeck::soak
