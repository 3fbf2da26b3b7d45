#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>

namespace tunedeck::test {

/// What the test program does instead of testing when it is started as an instance: "--instance SOCKET REQUEST
/// PATIENCE". Prints its role; the first instance then prints each request and ends on "quit".
int runInstance(const QStringList& arguments);

/// Starts this test program as an instance.
std::unique_ptr<QProcess> startInstance(const QString& socket, const QString& request, int patience = 2000);

/// The next line that the process prints, within 10 s.
std::string nextLine(QProcess& process);

} // namespace tunedeck::test
