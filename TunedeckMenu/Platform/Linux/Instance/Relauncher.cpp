#include "TunedeckMenu/Platform/Linux/Instance/Relauncher.h"

#include "TunedeckCore/Support/Async/Process.h"

#include <QCoreApplication>

namespace tunedeck {

bool LinuxRelauncher::relaunch(const QString& bundle, const QStringList& arguments) {
    QStringList command{QStringLiteral("-c"), QStringLiteral("sleep 1; exec \"$0\" \"$@\""),
                        bundle + QStringLiteral("/Contents/MacOS/Tunedeck"), QStringLiteral("--after"),
                        QString::number(QCoreApplication::applicationPid())};
    return startDetached(QStringLiteral("/bin/sh"), command + arguments);
}

} // namespace tunedeck
