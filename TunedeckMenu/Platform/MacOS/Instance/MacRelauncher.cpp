#include "TunedeckMenu/Platform/MacOS/Instance/MacRelauncher.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Async/Process.h"

#include <QFile>
#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

bool readFacts(const QString& bundle, struct stat& facts) {
    return ::stat(QFile::encodeName(BundlePaths(bundle).application()).constData(), &facts) == 0;
}

} // namespace

MacRelauncher::MacRelauncher(const QString& bundle) {
    readFacts(bundle, m_running);
}

bool MacRelauncher::relaunch(const QString& bundle, const QStringList& arguments) {
    // Within that second this process exits: while it runs, Launch Services would only bring it to the front.
    const auto line =
        arguments.isEmpty() ? u"sleep 1; /usr/bin/open \"$0\""_s : u"sleep 1; /usr/bin/open \"$0\" --args \"$@\""_s;
    // The shell would find out only after this process has quit.
    return QFileInfo(BundlePaths(bundle).application()).isExecutable() &&
           startDetached(u"/bin/sh"_s, QStringList{u"-c"_s, line, bundle} + arguments);
}

bool MacRelauncher::isReplaced(const QString& bundle) const {
    struct stat onDisk{};
    return readFacts(bundle, onDisk) && (onDisk.st_ino != m_running.st_ino || onDisk.st_dev != m_running.st_dev);
}

} // namespace tunedeck
