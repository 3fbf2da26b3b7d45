#include "TunedeckMenu/Platform/SingleInstance.h"

#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckMenu/Platform/Log.h"
#include "TunedeckMenu/Platform/Processes.h"
#include "TunedeckMenu/Platform/ReopenListener.h"

#include <QDeadlineTimer>
#include <QFileInfo>

#include <unistd.h>

#include <thread>

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

SingleInstance::SingleInstance(const QString& lockPath) : m_lock(lockPath) {
    m_lock.setStaleLockTime(0); // only the death of its owner makes a lock stale, never its age
}

std::expected<SingleInstance::Start, QString> SingleInstance::start(std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience, Qt::PreciseTimer);
    const auto folder = createFolder(QFileInfo(m_lock.fileName()).path());
    for (;;) {
        if (folder && m_lock.tryLock(0)) {
            return Start::First;
        }
        if (!folder || m_lock.error() != QLockFile::LockFailedError) {
            qCWarning(appLog).noquote() << "can't create the lock file" << m_lock.fileName();
            return Start::First;
        }
        switch (requestReopen(std::chrono::milliseconds(deadline.remainingTime()))) {
        case ReopenReply::Accepted:
            return Start::HandedOver;
        case ReopenReply::NoBus:
            return std::unexpected(u"already running, but its window can't be shown without a session bus"_s);
        case ReopenReply::None:
            break;
        }
        if (deadline.hasExpired()) {
            return std::unexpected(u"already running but not responding"_s);
        }
        std::this_thread::sleep_for(50ms);
    }
}

std::expected<bool, QString> SingleInstance::takeOver(std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience, Qt::PreciseTimer);
    bool wasRunning = false;
    while (!m_lock.tryLock(0) && m_lock.error() == QLockFile::LockFailedError) {
        qint64 process = 0;
        QString host;
        QString program;
        if (m_lock.getLockInfo(&process, &host, &program)) {
            wasRunning = true;
            terminateSameProgram(process);
            waitForExit(process, std::chrono::milliseconds(deadline.remainingTime()));
        }
        if (deadline.hasExpired()) {
            return std::unexpected(u"the running application doesn't exit"_s);
        }
        std::this_thread::sleep_for(10ms); // the file may be incomplete, or about to be removed
    }
    return wasRunning;
}

QString SingleInstance::defaultLockPath() {
    const QFileInfo runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    const bool isUsable = runtime.isAbsolute() && runtime.isDir() && runtime.ownerId() == ::getuid();
    return (isUsable ? runtime.filePath() : UserPaths::current().dataFolder()) +
           u"/com.brightfold.tunedeck.menu.lock"_s;
}

} // namespace tunedeck
