#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <string>

namespace tunedeck::test {

/// A child process that is terminated with its owner. Its output is read line by line.
class Program {
public:
    Program(const QString& name, const QStringList& arguments, const QProcessEnvironment& environment);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// The next line of its output; empty when there is none within 10 s. Runs the event loop.
    std::string nextLine();
    /// Writes a line to its input.
    void write(const QString& line);
    /// Closes its input.
    void closeInput() { m_process.closeWriteChannel(); }
    /// Kills it, as a crash would.
    void kill();
    /// Waits for up to 10 s until it has exited on its own.
    bool exits() { return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(10000); }
    [[nodiscard]] pid_t id() const { return static_cast<pid_t>(m_process.processId()); }

private:
    QProcess m_process;
};

} // namespace tunedeck::test
