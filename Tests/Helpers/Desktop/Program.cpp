#include "Tests/Helpers/Desktop/Program.h"

#include "Tests/Helpers/RunTask.h"

namespace tunedeck::test {

Program::Program(const QString& name, const QStringList& arguments, const QProcessEnvironment& environment) {
    m_process.setProcessEnvironment(environment);
    m_process.start(name, arguments);
    m_process.waitForStarted();
}

Program::~Program() {
    m_process.terminate();
    if (!m_process.waitForFinished(2000)) {
        kill();
    }
}

std::string Program::nextLine() {
    runUntil([this] { return m_process.canReadLine() || m_process.state() == QProcess::NotRunning; });
    return m_process.readLine().trimmed().toStdString();
}

void Program::write(const QString& line) {
    m_process.write(line.toUtf8() + '\n');
    m_process.waitForBytesWritten();
}

void Program::kill() {
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace tunedeck::test
