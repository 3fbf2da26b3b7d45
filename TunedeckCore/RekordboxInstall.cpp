#include "TunedeckCore/RekordboxInstall.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <QCollator>
#include <QDir>
#include <QLocale>

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

QStringList contents(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                                  QDir::Unsorted);
}

bool isNamedRekordbox(const QString& name) {
    return name.toLower().startsWith(u"rekordbox");
}

/// The bundles with a matching name, in listing order.
QStringList candidates(const QString& folder) {
    QStringList bundles;
    for (const auto& name : contents(folder)) {
        if (!isNamedRekordbox(name)) {
            continue;
        }
        const auto path = folder + u'/' + name;
        if (name.endsWith(u".app")) {
            bundles << path;
            continue;
        }
        for (const auto& inner : contents(path)) {
            if (isNamedRekordbox(inner) && inner.endsWith(u".app")) {
                bundles << path + u'/' + inner;
            }
        }
    }
    return bundles;
}

RekordboxInstall install(const QString& bundle) {
    const auto bytes = readFile(BundlePaths(bundle).infoPlist());
    const auto plist = bytes ? parsePropertyList(*bytes) : std::nullopt;
    auto version = plist ? textValue(*plist, u"CFBundleShortVersionString"_s) : std::nullopt;
    const auto pieces = version.value_or(QString()).split(u'.', Qt::SkipEmptyParts);
    return {.name = pieces.isEmpty() ? u"Rekordbox"_s : u"Rekordbox "_s + pieces.front(),
            .version = std::move(version)};
}

} // namespace

std::optional<RekordboxInstall> RekordboxInstall::detect(const QString& folder) {
    QCollator order{QLocale(QLocale::English)}; // that of the C locale doesn't compare numbers
    order.setNumericMode(true);
    std::optional<RekordboxInstall> best;
    for (const auto& bundle : candidates(folder)) {
        auto found = install(bundle);
        if (!best || order.compare(best->version.value_or(QString()), found.version.value_or(QString())) < 0) {
            best = std::move(found);
        }
    }
    return best;
}

} // namespace tunedeck
