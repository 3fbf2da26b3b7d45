#pragma once

#include "Tests/Soak/Trail.h"

#include <QString>
#include <QStringList>

namespace tunedeck::soak {

/// The service as the user manager runs it.
class Unit {
public:
    explicit Unit(const Files& files) : m_files(files) {}

    /// Stops it as a user would by hand; doesn't wait.
    static void stop();
    /// Starts it at once when it doesn't run; doesn't wait.
    void revive() const;
    /// Sends a signal to the process that names itself in the runtime file; false when there is none.
    [[nodiscard]] bool signal(int number) const;
    /// How often the service was started.
    [[nodiscard]] int starts() const;
    /// The units of the manager, one "NAME STATE" each.
    static QStringList all();

private:
    Files m_files;
};

} // namespace tunedeck::soak
