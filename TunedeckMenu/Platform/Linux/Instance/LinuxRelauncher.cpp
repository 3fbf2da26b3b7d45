#include "TunedeckMenu/Platform/Linux/Instance/LinuxRelauncher.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckMenu/Platform/Linux/System/LinuxProcesses.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

bool LinuxRelauncher::relaunch(const QString& bundle, const QStringList& arguments) {
    const auto application = BundlePaths(bundle).application();
    const QStringList command{u"-c"_s, u"sleep 1; exec \"$0\" \"$@\""_s, application, u"--after"_s,
                              QString::number(QCoreApplication::applicationPid())};
    // The shell would find out only after this process has quit.
    return QFileInfo(application).isExecutable() && startDetached(u"/bin/sh"_s, command + arguments);
}

bool LinuxRelauncher::isReplaced(const QString& bundle) const {
    const auto application = BundlePaths(bundle).application();
    return QFileInfo::exists(application) && !runsFile("self", application);
}

} // namespace tunedeck
