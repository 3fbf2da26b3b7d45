#include "TunedeckMenu/Platform/Linux/System/Journal.h"
#include "TunedeckMenu/Platform/Log.h"

#include <unistd.h>

#include <cstdio>

namespace tunedeck {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(appLog, "app", QtInfoMsg)

namespace {

constexpr auto subsystem = "com.brightfold.tunedeck.menu";
constexpr qsizetype maxMessageSize = 48 * 1024; // bytes; an entry must fit into one datagram

// syslog's levels
int priority(QtMsgType type) {
    switch (type) {
    case QtDebugMsg:
        return 7;
    case QtInfoMsg:
        return 6;
    case QtWarningMsg:
        return 4;
    case QtCriticalMsg:
        return 3;
    case QtFatalMsg:
        return 2;
    }
    return 6;
}

void write(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    static const Journal journal(
        qEnvironmentVariableIntValue("QT_FORCE_STDERR_LOGGING") != 0 ? QString() : u"/run/systemd/journal/socket"_s);
    static const bool isTerminal = ::isatty(STDERR_FILENO) == 1;
    const auto message = text.toUtf8().left(maxMessageSize);
    const bool sent = journal.send({{"MESSAGE", message},
                                    {"PRIORITY", QByteArray::number(priority(type))},
                                    {"SYSLOG_IDENTIFIER", "Tunedeck"},
                                    {"SUBSYSTEM", subsystem},
                                    {"CATEGORY", context.category ? context.category : "default"}});
    if (!sent || isTerminal) {
        const QByteArray line =
            QByteArray(subsystem) + ':' + (context.category ? context.category : "default") + ": " + message + '\n';
        std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    }
}

} // namespace

void installSystemLog() {
    qInstallMessageHandler(write);
}

} // namespace tunedeck
