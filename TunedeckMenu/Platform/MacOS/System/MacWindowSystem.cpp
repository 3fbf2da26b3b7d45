#include "TunedeckMenu/Platform/WindowSystem.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

WindowSystem chooseWindowSystem() {
    return {{}, u"the only one"_s};
}

QString missingDisplay(const QString& standard) {
    return standard;
}

} // namespace tunedeck
