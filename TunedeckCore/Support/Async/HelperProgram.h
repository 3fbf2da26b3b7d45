#pragma once

#include "TunedeckCore/Support/Async/Process.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <expected>
#include <functional>
#include <stop_token>

namespace tunedeck {

/// How a run of a helper program ended; its exit status.
enum class HelperStatus : int {
    Done = 0,
    Failed = 1,    ///< an error of the system or the network; the text describes it
    Refused = 2,   ///< the data isn't what was asked for, such as a response with another status
    Unexpected = 3 ///< it is, but of something else, which the text names
};

struct HelperResult {
    HelperStatus status = HelperStatus::Failed;
    QString text; ///< the answer or the error
};

/// One run of a helper program.
struct HelperRequest {
    QString subcommand;
    QStringList operands;
    QByteArray input = {}; ///< standard input
    std::chrono::milliseconds timeLimit = std::chrono::minutes(5);
    ProcessRequest::Receiver onOutput = {}; ///< receives standard output
    /// Receives the words of each line "progress …".
    std::function<void(const QList<QByteArray>& words)> onProgress = {};
};

/// Runs a helper program until it exits, as `PROGRAM SUBCOMMAND PARENT-PID OPERAND…`. On its standard error it may
/// report progress and has to report a result, as a line "result TEXT" with the text percent-encoded; everything else
/// is ignored. An error means that it didn't start, crashed, didn't finish in time or reported no result. Stopping the
/// token kills it.
QCoro::Task<std::expected<HelperResult, QString>> runHelper(QString program, HelperRequest request,
                                                            std::stop_token stop);

} // namespace tunedeck
