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

struct ProcessResult {
    int exitStatus = 0; ///< 128 + signal number if killed by a signal
    QByteArray output;  ///< standard output, if requested
};

struct ProcessRequest {
    QString program;
    QStringList arguments;
    bool keepOutput = false;          ///< else standard output is discarded
    qint64 outputLimit = 1024 * 1024; ///< bytes of output kept
    /// Called with each chunk of standard output, which then isn't kept.
    std::function<void(const QByteArray& part)> onOutput = {};
};

/// Runs a program until it exits. Fails with a message if it can't be started; stopping the token kills it. Standard
/// input and error are the null device.
QCoro::Task<std::expected<ProcessResult, QString>> runProcess(ProcessRequest request, std::stop_token stop);

/// Starts a program in its own session that outlives this one, with its streams on the null device. False if it can't
/// be started.
bool startDetached(const QString& program, const QStringList& arguments);

} // namespace tunedeck
