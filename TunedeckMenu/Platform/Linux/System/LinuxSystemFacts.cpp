#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckMenu/Platform/BundleFacts.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QFile>
#include <QSysInfo>
#include <QVersionNumber>

#include <unistd.h>

namespace tunedeck {

using namespace Qt::StringLiterals;

SystemFacts systemFacts() {
    const auto version = QVersionNumber::fromString(QSysInfo::productVersion());
    const auto bundle = BundlePaths::containing(QFile::symLinkTarget(u"/proc/self/exe"_s)).bundle();
    const auto facts = bundleFacts(bundle);
    return {.home = UserPaths::current().home(),
            .uid = ::getuid(),
            .systemVersion = {version.majorVersion(), version.minorVersion(), version.microVersion()},
            .systemVersionText = QSysInfo::prettyProductName(),
            .architecture = QSysInfo::currentCpuArchitecture(),
            .bundle = bundle,
            .bundleIdentifier = facts.identifier,
            .appVersion = facts.version,
            .supervisorAdvice =
                u"The systemd of your session runs it. Log in at the desktop itself, not with su or over "
                "ssh, and try again."_s};
}

} // namespace tunedeck
