#include "TunedeckCore/Service/TunnelConfig.h"

#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckCore/Support/Text/Text.h"

#include <QStringView>

namespace tunedeck {

using namespace Qt::StringLiterals;

QString TunnelConfig::standardURL() {
    return UserPaths::current().tunnelConfig();
}

std::optional<TunnelConfig> TunnelConfig::parse(const QString& text) {
    TunnelConfig config;
    for (const QStringView whole : QStringView(text).split(u'\n', Qt::SkipEmptyParts)) {
        QStringView line = trimmingSpaces(whole);
        if (line.startsWith(u'#')) {
            continue;
        }
        if (line.startsWith("- "_L1)) {
            line = line.sliced(2);
        }
        const qsizetype colon = line.indexOf(u':');
        if (colon < 0) {
            continue;
        }
        const QStringView key = trimmingSpaces(line.first(colon));
        const QString value = trimmingSpaces(line.sliced(colon + 1)).toString();
        if (key == "tunnel"_L1) {
            config.tunnelId = value;
        } else if (key == "hostname"_L1 && !config.hostname) {
            config.hostname = value;
        } else if (key == "service"_L1 && !config.service) {
            config.service = value;
        }
    }
    return config.tunnelId.isEmpty() ? std::nullopt : std::optional(config);
}

std::optional<TunnelConfig> TunnelConfig::load(const QString& path) {
    const auto bytes = readDocument(path);
    return bytes && bytes->isValidUtf8() ? parse(QString::fromUtf8(*bytes)) : std::nullopt;
}

} // namespace tunedeck
