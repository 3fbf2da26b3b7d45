#include "TunedeckMenu/Panel/ShownText.h"

#include "TunedeckCore/Support/Text/Text.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

QString shortened(const QString& text, int limit) {
    const QString shown = cut(text, limit);
    return shown.size() < text.size() ? shown + u'…' : shown;
}

} // namespace

QString oneLine(const QString& text, int limit) {
    return withoutControls(shortened(text, limit));
}

QString paragraph(const QString& text) {
    return shortened(text, 1000);
}

} // namespace tunedeck
