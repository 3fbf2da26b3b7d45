#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckMenu/Platform/BundleFacts.h"
#include "TunedeckMenu/Platform/MacOS/System/MacStrings.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QOperatingSystemVersion>
#include <QSysInfo>

#include <unistd.h>

namespace tunedeck {

using namespace Qt::StringLiterals;

SystemFacts systemFacts() {
    const auto version = QOperatingSystemVersion::current();
    // The folder of a program that was started outside a bundle.
    const auto bundle = fromNSString([[NSBundle mainBundle] bundlePath]);
    const auto facts = bundleFacts(bundle);
    return {.home = UserPaths::current().home(),
            .uid = ::getuid(),
            .systemVersion = {version.majorVersion(), version.minorVersion(), version.microVersion()},
            .systemVersionText = QSysInfo::productVersion(),
            .architecture = QSysInfo::currentCpuArchitecture(),
            .bundle = bundle,
            .bundleIdentifier = facts.identifier,
            .appVersion = facts.version};
}

} // namespace tunedeck
