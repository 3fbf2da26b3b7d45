#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QStringList>

#include <expected>
#include <functional>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// How a program ended.
struct ProcessResult {
    int exitStatus = 0; ///< 128 + the signal's number when a signal ended it
    QByteArray output;  ///< its standard output, when it was asked for
};

/// What to run.
struct ProcessRequest {
    QString program;
    QStringList arguments;
    bool keepOutput = false;          ///< else both streams go to the null device
    qint64 outputLimit = 1024 * 1024; ///< bytes of output kept
    /// Called with each part of the standard output as it comes, which then isn't kept.
    std::function<void(const QByteArray& part)> onOutput = {};
};

/// Runs a program and waits for its end without blocking the event loop. Fails with a sentence when it can't be
/// started; stopping the token ends the program.
QCoro::Task<std::expected<ProcessResult, QString>> runProcess(ProcessRequest request, std::stop_token stop);

/// Starts a program that outlives this one, in a session of its own, with its streams on the null device. False when
/// it can't be started.
bool startDetached(const QString& program, const QStringList& arguments);

} // namespace tunedeck
