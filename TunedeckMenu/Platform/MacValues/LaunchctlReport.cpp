#include "TunedeckMenu/Platform/MacValues/LaunchctlReport.h"

#include <QMap>

#include <algorithm>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// The values of the report's own lines, which are indented by one tab. The keys of its lists begin with further tabs.
QMap<QByteArray, QByteArray> valuesOf(const QByteArray& output) {
    QMap<QByteArray, QByteArray> values;
    for (const auto& line : output.split('\n')) {
        const auto equals = line.indexOf(" = ");
        if (equals > 1 && line[0] == '\t') {
            values.insert(line.mid(1, equals - 1), line.mid(equals + 3).trimmed());
        }
    }
    return values;
}

/// "signal 9" for "Killed: 9", "exit status 78" for "78: EX_CONFIG"; nothing if it has never exited.
std::optional<QString> lastExit(const QMap<QByteArray, QByteArray>& values) {
    const auto signal = values.value("last terminating signal").split(':');
    if (signal.size() == 2) {
        return u"signal "_s + QString::fromLatin1(signal[1].trimmed());
    }
    bool isNumber = false;
    const auto status = values.value("last exit code").split(':')[0].toInt(&isNumber);
    return isNumber ? std::optional(u"exit status "_s + QString::number(status)) : std::nullopt;
}

} // namespace

LaunchctlReport LaunchctlReport::parse(const QByteArray& output) {
    using State = SupervisedService::State;
    const auto values = valuesOf(output);
    const auto state = values.value("state");
    LaunchctlReport report;
    report.service.state = state == "running"           ? State::Running
                           : state == "spawn scheduled" ? State::Restarting
                                                        : State::Stopped;
    report.service.lastExit = lastExit(values);
    report.service.restarts = std::max(0, values.value("runs").toInt() - 1);
    if (const auto process = values.value("pid").toLongLong(); process > 0) {
        report.process = process;
    }
    return report;
}

} // namespace tunedeck
