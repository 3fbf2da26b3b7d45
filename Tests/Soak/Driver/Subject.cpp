#include "Tests/Soak/Driver/Subject.h"

#include "Tests/Soak/Timeline.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <algorithm>
#include <csignal>

namespace tunedeck::soak {

namespace {

constexpr int patience = 20'000;

/// Handles events until the condition holds; false when that takes too long.
template<class Condition>
bool await(QProcess& process, Condition condition) {
    QEventLoop loop;
    QTimer limit;
    limit.setSingleShot(true);
    const auto look = [&] {
        if (condition() || process.state() == QProcess::NotRunning) {
            loop.quit();
        }
    };
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop, look);
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    limit.start(patience);
    if (!condition() && process.state() != QProcess::NotRunning) {
        loop.exec();
    }
    return condition();
}

/// The number after a name in a file of /proc.
double numberIn(const QString& path, const QByteArray& name) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const auto& line : file.readAll().split('\n')) {
        if (line.startsWith(name)) {
            return line.mid(name.size()).simplified().split(' ').first().toDouble();
        }
    }
    return 0;
}

} // namespace

void pass(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

QString outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    await(process, [&] { return process.state() == QProcess::NotRunning; });
    return QString::fromUtf8(process.readAllStandardOutput());
}

Subject::Subject(const QString& program, const Files& files) {
    const auto home = QString::fromStdString(files.home.string());
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), home + QStringLiteral("/tmp"));
    environment.insert(QStringLiteral("PATH"), home + QStringLiteral("/bin:/usr/bin:/bin"));
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    environment.remove(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"));
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(QString::fromStdString(files.complaints().string()));
    m_process.start(program, QStringList());
    m_process.waitForStarted();
}

Subject::~Subject() {
    freeze(false);
    m_process.kill();
    m_process.waitForFinished();
}

std::optional<QString> Subject::order(const QString& text) {
    const auto begin = realTime();
    m_process.write(text.toUtf8() + '\n');
    if (!await(m_process, [this] { return m_process.canReadLine(); })) {
        return std::nullopt;
    }
    m_longest = std::max(m_longest, std::chrono::duration<double, std::milli>(realTime() - begin).count());
    return QString::fromUtf8(m_process.readLine()).trimmed();
}

std::optional<Figures> Subject::figures() {
    const auto memory = order(QStringLiteral("memory"));
    if (!memory) {
        return std::nullopt;
    }
    const auto folder = QStringLiteral("/proc/%1/").arg(m_process.processId());
    Figures figures{.pss = numberIn(folder + QStringLiteral("smaps_rollup"), "Pss:"),
                    .own = numberIn(folder + QStringLiteral("smaps_rollup"), "Private_Dirty:"),
                    .memory = memory->toDouble() / 1024,
                    .files = 1e9,
                    .sockets = 1e9,
                    .threads = numberIn(folder + QStringLiteral("status"), "Threads:"),
                    .children = 0};
    // Requests come and go: what is held all the time is the least that is seen.
    for (int look = 0; look < 10; ++look) {
        const QDir descriptors(folder + QStringLiteral("fd"));
        double files = 0;
        double sockets = 0;
        for (const auto& name : descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
            ++files;
            sockets += QFile::symLinkTarget(descriptors.filePath(name)).contains(QStringLiteral("socket:")) ? 1 : 0;
        }
        figures.files = std::min(figures.files, files);
        figures.sockets = std::min(figures.sockets, sockets);
        pass(30);
    }
    for (const auto& thread : QDir(folder + QStringLiteral("task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(folder + QStringLiteral("task/") + thread + QStringLiteral("/children"));
        if (children.open(QIODevice::ReadOnly)) {
            const auto list = children.readAll().simplified();
            figures.children += static_cast<double>(list.isEmpty() ? 0 : list.count(' ') + 1);
        }
    }
    return figures;
}

void Subject::freeze(bool frozen) {
    if (isRunning()) {
        ::kill(static_cast<pid_t>(m_process.processId()), frozen ? SIGSTOP : SIGCONT);
    }
}

QString Subject::quit() {
    m_process.write("quit\n");
    await(m_process, [this] { return m_process.state() == QProcess::NotRunning; });
    return ending();
}

QString Subject::ending() const {
    if (m_process.state() != QProcess::NotRunning) {
        return QStringLiteral("it doesn't end");
    }
    if (m_process.exitStatus() == QProcess::CrashExit) {
        return QStringLiteral("it crashed with signal %1").arg(m_process.exitCode());
    }
    return m_process.exitCode() == 0 ? QString() : QStringLiteral("it ended with status %1").arg(m_process.exitCode());
}

} // namespace tunedeck::soak
