#include "TunedeckCore/Support/Async/Process.h"

#include "TunedeckCore/Support/Async/EndWithParent.h"
#include "TunedeckCore/Support/Async/Wait.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>

#include <unistd.h>

#include <csignal>
#include <memory>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// Kills a program that is no longer awaited. The object is deleted when the program has exited, because the destructor
/// of a running QProcess blocks.
struct KillAndDeleteLater {
    void operator()(QProcess* process) const {
        process->disconnect();
        if (process->state() == QProcess::NotRunning) {
            process->deleteLater();
            return;
        }
        process->setParent(QCoreApplication::instance());
        QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
        QObject::connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                process->deleteLater();
            }
        });
        process->kill();
    }
};

/// Kills what is left of a process group.
struct ProcessGroup {
    ProcessGroup() = default;
    ProcessGroup(const ProcessGroup&) = delete;
    ProcessGroup& operator=(const ProcessGroup&) = delete;
    ~ProcessGroup() {
        if (leader > 0) {
            ::kill(-leader, SIGKILL);
        }
    }

    pid_t leader = 0;
};

void isolate(QProcess& process, const QString& folder) {
    QProcessEnvironment environment;
    environment.insert(u"HOME"_s, folder);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.setChildProcessModifier([parent = ::getpid()] {
        ::setpgid(0, 0);
        endWithParent(parent);
    });
}

void discardStreams(QProcess& process, bool keepInput, bool keepOutput, bool keepError) {
    if (!keepInput) {
        process.setStandardInputFile(QProcess::nullDevice());
    }
    if (!keepOutput) {
        process.setStandardOutputFile(QProcess::nullDevice());
    }
    if (!keepError) {
        process.setStandardErrorFile(QProcess::nullDevice());
    }
}

} // namespace

QCoro::Task<std::expected<ProcessResult, QString>> runProcess(ProcessRequest request, std::stop_token stop) {
    const auto stopped = [] { return std::unexpected(u"The program was stopped."_s); };
    if (stop.stop_requested()) {
        co_return stopped();
    }
    ProcessResult result;
    QString killed; // why, if not by the token
    Wait wait(stop);
    const std::unique_ptr<QProcess, KillAndDeleteLater> process(new QProcess);
    ProcessGroup group;
    if (!request.isolatedIn.isEmpty()) {
        isolate(*process, request.isolatedIn);
    }
    discardStreams(*process, !request.input.isEmpty(), request.keepOutput || request.onOutput,
                   static_cast<bool>(request.onError));
    const auto deliver = [&](const ProcessRequest::Receiver& receiver, const QByteArray& bytes) {
        if (killed.isEmpty() && !receiver(bytes)) {
            killed = u"The program's output was rejected."_s;
            wait.wake();
        }
    };
    QObject::connect(process.get(), &QProcess::readyReadStandardOutput, [&] {
        // Read beyond the limit, too: a full pipe would block the program.
        const auto bytes = process->readAllStandardOutput();
        if (request.onOutput) {
            deliver(request.onOutput, bytes);
        } else {
            result.output += bytes.left(request.outputLimit - result.output.size());
        }
    });
    QObject::connect(process.get(), &QProcess::readyReadStandardError,
                     [&] { deliver(request.onError, process->readAllStandardError()); });
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        killed = u"The program didn't finish in time."_s;
        wait.wake();
    });
    if (request.timeLimit.count() > 0) {
        timer.start(request.timeLimit);
    }
    QObject::connect(process.get(), &QProcess::finished, [&wait] { wait.wake(); });
    QObject::connect(process.get(), &QProcess::errorOccurred, [&wait](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            wait.wake();
        }
    });
    process->start(request.program, request.arguments);
    if (!request.input.isEmpty()) {
        process->write(request.input);
        process->closeWriteChannel();
    }
    group.leader = request.isolatedIn.isEmpty() ? 0 : static_cast<pid_t>(process->processId());
    if (!co_await wait.next()) {
        co_return stopped();
    }
    if (!killed.isEmpty()) {
        co_return std::unexpected(killed);
    }
    if (process->error() == QProcess::FailedToStart) {
        co_return std::unexpected(request.program + u": "_s + process->errorString());
    }
    result.exitStatus = process->exitStatus() == QProcess::CrashExit ? 128 + process->exitCode() : process->exitCode();
    co_return result;
}

bool startDetached(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    discardStreams(process, false, false, false);
    return process.startDetached();
}

} // namespace tunedeck
