#include "TunedeckCore/RekordboxInstall.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

#include <QDir>

#include <algorithm>
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

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// Removes a run of digits from the front and returns it without leading zeros.
QStringView takeNumber(QStringView& text) {
    const auto* const end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto* const start = std::find_if(text.begin(), end, [](QChar digit) { return digit != u'0'; });
    const QStringView number(start, end);
    text = QStringView(end, text.end());
    return number;
}

} // namespace

std::optional<RekordboxInstall> RekordboxInstall::detect(const QString& folder) {
    std::optional<RekordboxInstall> best;
    for (const auto& bundle : candidates(folder)) {
        auto found = install(bundle);
        if (!best || isNumericallyLess(best->version.value_or(QString()), found.version.value_or(QString()))) {
            best = std::move(found);
        }
    }
    return best;
}

bool isNumericallyLess(const QString& one, const QString& other) {
    QStringView left(one);
    QStringView right(other);
    while (!left.isEmpty() && !right.isEmpty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const auto leftNumber = takeNumber(left);
            const auto rightNumber = takeNumber(right);
            if (leftNumber.size() != rightNumber.size()) {
                return leftNumber.size() < rightNumber.size();
            }
            if (leftNumber != rightNumber) {
                return leftNumber < rightNumber;
            }
        } else if (left.front() != right.front()) {
            return left.front() < right.front();
        } else {
            left = left.mid(1);
            right = right.mid(1);
        }
    }
    return left.isEmpty() && !right.isEmpty();
}

} // namespace tunedeck
