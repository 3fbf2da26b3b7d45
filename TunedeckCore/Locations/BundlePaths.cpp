#include "TunedeckCore/Locations/BundlePaths.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

BundlePaths BundlePaths::containing(const QString& program) {
    const auto folder = program.left(program.lastIndexOf(u'/'));
    const auto inside = u"/Contents/MacOS"_s;
    return BundlePaths(folder.endsWith(inside) ? folder.chopped(inside.size()) : folder);
}

QString BundlePaths::below(const char* relative) const {
    return m_bundle + u"/Contents/"_s + QLatin1StringView(relative);
}

} // namespace tunedeck
