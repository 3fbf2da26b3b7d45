#include "TunedeckMenu/Platform/BundleFacts.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>
#include <QVersionNumber>

#include <pwd.h>
#include <unistd.h>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

QString homeFolder() {
    auto home = QFile::decodeName(qgetenv("HOME"));
    if (!home.startsWith(u'/')) {
        const auto* user = ::getpwuid(::getuid());
        home = user ? QFile::decodeName(user->pw_dir) : u"/"_s;
    }
    return QDir::cleanPath(home);
}

} // namespace

SystemFacts systemFacts() {
    const auto version = QVersionNumber::fromString(QSysInfo::productVersion());
    const auto bundle = bundleOf(QFile::symLinkTarget(u"/proc/self/exe"_s));
    const auto facts = bundleFacts(bundle);
    return {.home = homeFolder(),
            .uid = ::getuid(),
            .systemVersion = {version.majorVersion(), version.minorVersion(), version.microVersion()},
            .systemVersionText = QSysInfo::prettyProductName(),
            .architecture = QSysInfo::currentCpuArchitecture(),
            .bundle = bundle,
            .bundleIdentifier = facts.identifier,
            .appVersion = facts.version};
}

} // namespace tunedeck
