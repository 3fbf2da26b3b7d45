#include "TunedeckMenu/Platform/Linux/Instance/LinuxRelauncher.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Async/Process.h"

#include <QCoreApplication>
#include <QFile>

#include <sys/stat.h>

namespace tunedeck {

using namespace Qt::StringLiterals;

bool LinuxRelauncher::relaunch(const QString& bundle, const QStringList& arguments) {
    const QStringList command{u"-c"_s, u"sleep 1; exec \"$0\" \"$@\""_s, BundlePaths(bundle).application(),
                              u"--after"_s, QString::number(QCoreApplication::applicationPid())};
    return startDetached(u"/bin/sh"_s, command + arguments);
}

bool LinuxRelauncher::isReplaced(const QString& bundle) const {
    struct stat running{};
    struct stat onDisk{};
    return ::stat(QFile::encodeName(BundlePaths(bundle).application()).constData(), &onDisk) == 0 &&
           (::stat("/proc/self/exe", &running) != 0 || running.st_ino != onDisk.st_ino ||
            running.st_dev != onDisk.st_dev);
}

} // namespace tunedeck
