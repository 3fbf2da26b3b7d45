#include "TunedeckMenu/Platform/Log.h"

#include <os/log.h>
#include <unistd.h>

#include <cstdio>

namespace tunedeck {

Q_LOGGING_CATEGORY(appLog, "app", QtInfoMsg)

namespace {

constexpr auto subsystem = "com.brightfold.tunedeck.menu";

os_log_type_t level(QtMsgType type) {
    switch (type) {
    case QtDebugMsg:
        return OS_LOG_TYPE_DEBUG;
    case QtInfoMsg:
        return OS_LOG_TYPE_INFO;
    case QtWarningMsg:
        return OS_LOG_TYPE_DEFAULT;
    case QtCriticalMsg:
        return OS_LOG_TYPE_ERROR;
    case QtFatalMsg:
        break;
    }
    return OS_LOG_TYPE_FAULT;
}

void write(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    static const bool isTerminal = ::isatty(STDERR_FILENO) == 1;
    const char* const category = context.category != nullptr ? context.category : "default";
    const auto message = text.toUtf8();
    // The system returns the same object for the same two names.
    os_log_with_type(os_log_create(subsystem, category), level(type), "%{public}s", message.constData());
    if (isTerminal) {
        std::fprintf(stderr, "%s:%s: %s\n", subsystem, category, message.constData());
    }
}

} // namespace

void installSystemLog() {
    qInstallMessageHandler(write);
}

} // namespace tunedeck
