#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QStringList>

#include <chrono>
#include <expected>
#include <functional>
#include <stop_token>

namespace tunedeck {

struct ProcessResult {
    int exitStatus = 0; ///< 128 + signal number if killed by a signal
    QByteArray output;  ///< standard output, if requested
};

struct ProcessRequest {
    QString program;
    QStringList arguments;
    QByteArray input = {};            ///< standard input; the null device if empty
    bool keepOutput = false;          ///< else standard output is discarded
    qint64 outputLimit = 1024 * 1024; ///< bytes of output kept
    /// Receives standard output or error in parts; false kills the program.
    using Receiver = std::function<bool(const QByteArray& part)>;
    Receiver onOutput = {};                 ///< if set, standard output isn't kept
    Receiver onError = {};                  ///< if not set, standard error is discarded
    std::chrono::milliseconds timeLimit{0}; ///< after which the program is killed; 0 for none
    /// If set, the program runs in this folder with nothing but HOME in its environment, and in a process group that is
    /// killed when it or this process ends.
    QString isolatedIn = {};
};

/// Runs a program until it exits. Fails with a message if it can't be started or is killed by a receiver or the time
/// limit; stopping the token kills it as well.
QCoro::Task<std::expected<ProcessResult, QString>> runProcess(ProcessRequest request, std::stop_token stop);

/// Starts a program in its own session that outlives this one, with its streams on the null device. False if it can't
/// be started.
bool startDetached(const QString& program, const QStringList& arguments);

} // namespace tunedeck
