#include "TunedeckCore/Locations/Paths.h"

#include <array>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

QString abbreviatingHome(const QString& path, const QString& home) {
    if (path == home) {
        return u"~"_s;
    }
    const QString prefix = home.endsWith(u'/') ? home : home + u'/';
    return path.startsWith(prefix) ? u"~/"_s + path.sliced(prefix.size()) : path;
}

std::optional<QString> protectedLocation(const QString& path, const QString& home) {
    const std::array<std::pair<QString, QString>, 5> places{{{home + "/Desktop"_L1, u"your Desktop"_s},
                                                             {home + "/Documents"_L1, u"Documents"_s},
                                                             {home + "/Downloads"_L1, u"Downloads"_s},
                                                             {home + "/Library/Mobile Documents"_L1, u"iCloud Drive"_s},
                                                             {u"/Volumes"_s, u"an external or network drive"_s}}};
    for (const auto& [prefix, label] : places) {
        if (path == prefix || path.startsWith(prefix + u'/')) {
            return label;
        }
    }
    return {};
}

} // namespace tunedeck
