#pragma once

#include "Tests/Soak/Trail.h"

#include <QProcess>
#include <QString>

#include <optional>

namespace tunedeck::soak {

/// What a process holds.
struct Figures {
    double pss = 0;    ///< KiB, with its share of what others have too: less when more of them run
    double own = 0;    ///< KiB that it has written to and nobody shares
    double memory = 0; ///< KiB, in use by malloc
    double files = 0;  ///< open descriptors
    double sockets = 0;
    double threads = 0;
    double children = 0;
};

/// The application's process.
class Subject {
public:
    /// Starts the bundle's program; what it complains of goes to a file.
    Subject(const QString& program, const Files& files);
    ~Subject();
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;

    /// Has an order carried out; its answer, or nothing when none comes within 20 s.
    std::optional<QString> order(const QString& text);
    /// Nothing when the process is gone or doesn't answer.
    std::optional<Figures> figures();
    /// Stops it for a while, as sleep does, and lets it go on.
    void freeze(bool frozen);
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Ends it by an order; how it ended, empty when it ended well.
    QString quit();
    [[nodiscard]] QString ending() const;
    /// The longest that an order took, in milliseconds.
    [[nodiscard]] double longestAnswer() const { return m_longest; }

private:
    QProcess m_process;
    double m_longest = 0;
};

/// Lets time pass with events handled.
void pass(int milliseconds);
/// The whole output of a program that ends within 20 s, with events handled meanwhile.
QString outputOf(const QString& program, const QStringList& arguments);

} // namespace tunedeck::soak
