#include "Tests/Platform/Starts.h"

#include "TunedeckMenu/Platform/SingleInstance.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <cstdio>

namespace tunedeck::test {
namespace {

void say(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

} // namespace

int runInstance(const QStringList& arguments) {
    SingleInstance instance(arguments.at(0));
    switch (instance.acquire(arguments.at(1).toUtf8(), std::chrono::milliseconds(arguments.at(2).toInt()))) {
    case SingleInstance::Role::handedOver:
        say("handed over");
        return 0;
    case SingleInstance::Role::unanswered:
        say("unanswered");
        return 1;
    case SingleInstance::Role::first:
        break;
    }
    int count = 0;
    QCoreApplication application(count, nullptr);
    QObject::connect(&instance, &SingleInstance::requested, &application, [&application](const QByteArray& request) {
        say((request + ' ' + qgetenv("XDG_ACTIVATION_TOKEN")).trimmed().constData());
        if (request == "quit") {
            application.quit();
        }
    });
    instance.answer();
    say("first");
    return QCoreApplication::exec();
}

std::unique_ptr<QProcess> startInstance(const QString& socket, const QString& request, int patience) {
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(QCoreApplication::applicationFilePath(),
                   {QStringLiteral("--instance"), socket, request, QString::number(patience)});
    return process;
}

std::string nextLine(QProcess& process) {
    const QDeadlineTimer deadline(10000);
    while (!process.canReadLine() && !deadline.hasExpired()) {
        if (!process.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
            break;
        }
    }
    return process.readLine().trimmed().toStdString();
}

} // namespace tunedeck::test
