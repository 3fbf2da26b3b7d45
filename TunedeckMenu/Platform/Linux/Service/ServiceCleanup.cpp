#include "TunedeckMenu/Platform/Linux/Service/ServiceCleanup.h"

#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckMenu/Platform/Linux/System/LinuxProcesses.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace tunedeck {

using namespace Qt::StringLiterals;

QCoro::Task<Removal> removeUnit(SystemdUserManager manager, QString home, std::stop_token stop) {
    Removal removal;
    const auto unit = QString::fromLatin1(ServiceInstaller::label) + u".service"_s;
    for (const auto& wanted : QDir(manager.unitFolder).entryList({u"*.wants"_s, u"*.requires"_s}, QDir::Dirs)) {
        const auto folder = manager.unitFolder + u'/' + wanted;
        const auto link = folder + u'/' + unit;
        removal.note(abbreviatingHome(link, home), removeFile(link));
        ::rmdir(QFile::encodeName(folder).constData()); // fails unless empty, which is fine
    }
    const auto file = manager.unitFolder + u'/' + unit;
    removal.note(abbreviatingHome(file, home), removeFile(file));
    if (!removal.done.isEmpty()) {
        const ProcessRequest reload{.program = manager.systemctl, .arguments = {u"--user"_s, u"daemon-reload"_s}};
        co_await runProcess(reload, stop); // fails without a manager, which is fine
    }
    co_return removal;
}

std::vector<pid_t> processesRunning(const QString& program) {
    const auto path = QFile::encodeName(QFileInfo(QFileInfo(program).path()).canonicalFilePath() + u'/' +
                                        QFileInfo(program).fileName());
    std::vector<pid_t> found;
    for (const auto& name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        bool isNumber = false;
        const auto process = name.toInt(&isNumber);
        if (isNumber && ownProgramPath(process) == path) {
            found.push_back(process);
        }
    }
    return found;
}

} // namespace tunedeck
