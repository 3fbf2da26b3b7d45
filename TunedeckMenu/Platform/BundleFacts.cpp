#include "TunedeckMenu/Platform/BundleFacts.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/PropertyList.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

BundleFacts bundleFacts(const QString& bundle) {
    const auto text = readFile(BundlePaths(bundle).infoPlist());
    const auto parsed = text ? parsePropertyList(*text, PropertyListFormat::XmlOrBinary) : std::nullopt;
    const auto plist = parsed.value_or(PropertyDictionary());
    const auto valueOr = [&plist](const QString& key, const QString& fallback) {
        const auto value = textValue(plist, key);
        return value && !value->isEmpty() ? *value : fallback;
    };
    return {.identifier = valueOr(u"CFBundleIdentifier"_s, u"com.brightfold.tunedeck.menu"_s),
            .version = valueOr(u"CFBundleShortVersionString"_s, u"dev"_s)};
}

} // namespace tunedeck
