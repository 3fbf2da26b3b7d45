#include "TunedeckMenu/Platform/SystemFacts.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/PropertyList.h"
#include "TunedeckMenu/Platform/Linux/System/OsRelease.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>

#include <pwd.h>
#include <unistd.h>

namespace tunedeck {
namespace {

constexpr qint64 mostText = 1024 * 1024;

QString homeFolder() {
    auto home = QFile::decodeName(qgetenv("HOME"));
    if (!home.startsWith(u'/')) {
        const auto* user = ::getpwuid(::getuid());
        home = user ? QFile::decodeName(user->pw_dir) : QStringLiteral("/");
    }
    return QDir::cleanPath(home);
}

OsRelease osRelease() {
    const auto text = readFile(QStringLiteral("/etc/os-release"), mostText);
    return OsRelease::parse(text ? *text
                                 : readFile(QStringLiteral("/usr/lib/os-release"), mostText).value_or(QByteArray()));
}

} // namespace

QString bundleOf(const QString& program) {
    const auto folder = program.left(program.lastIndexOf(u'/'));
    const auto inside = QStringLiteral("/Contents/MacOS");
    return folder.endsWith(inside) ? folder.chopped(inside.size()) : folder;
}

BundleFacts bundleFacts(const QString& bundle) {
    const auto text = readFile(bundle + QStringLiteral("/Contents/Info.plist"), mostText);
    const auto plist = (text ? parsePropertyList(*text) : std::nullopt).value_or(PropertyDictionary());
    const auto named = [&plist](const QString& key, const QString& otherwise) {
        const auto value = textValue(plist, key);
        return value && !value->isEmpty() ? *value : otherwise;
    };
    return {named(QStringLiteral("CFBundleIdentifier"), QStringLiteral("com.brightfold.tunedeck.menu")),
            named(QStringLiteral("CFBundleShortVersionString"), QStringLiteral("dev"))};
}

SystemFacts systemFacts() {
    const auto system = osRelease();
    const auto bundle = bundleOf(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    const auto named = bundleFacts(bundle);
    return {.home = homeFolder(),
            .uid = ::getuid(),
            .systemVersion = system.version,
            .systemVersionText = system.name,
            .architecture = QSysInfo::currentCpuArchitecture(),
            .bundle = bundle,
            .bundleIdentifier = named.identifier,
            .appVersion = named.version};
}

} // namespace tunedeck
