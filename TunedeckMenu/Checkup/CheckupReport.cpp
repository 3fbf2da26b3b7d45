#include "TunedeckMenu/Checkup/CheckupReport.h"

#include "TunedeckCore/Masking.h"
#include "TunedeckCore/Support/Json/Value.h"
#include "TunedeckCore/Support/Text/Text.h"

#include <algorithm>
#include <array>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// Secrets are masked; a value from a file or the service can't control the terminal.
QString shown(const QString& text) {
    return Diagnostics::maskCredentials(Diagnostics::mask(withoutControls(text)));
}

} // namespace

QString checkupText(const std::vector<CheckResult>& results) {
    constexpr std::array symbols{u'✓', u'!', u'✗'};
    qsizetype width = 0;
    for (const auto& result : results) {
        width = std::max(width, result.name.size());
    }
    QString text;
    for (const auto& result : results) {
        text += QChar(symbols.at(static_cast<std::size_t>(result.level)));
        text += u' ' + result.name.leftJustified(width) + u"  "_s + shown(result.sentence) + u'\n';
        if (!result.advice.isEmpty()) {
            text += QString(width + 4, u' ') + shown(result.advice) + u'\n';
        }
    }
    return text;
}

QString checkupJson(const std::vector<CheckResult>& results) {
    const std::array levels{u"ok"_s, u"warning"_s, u"problem"_s};
    json::Array array;
    for (const auto& result : results) {
        json::Object object{{u"name"_s, result.name},
                            {u"level"_s, levels.at(static_cast<std::size_t>(result.level))},
                            {u"sentence"_s, shown(result.sentence)}};
        for (const auto& [key, text] :
             {std::pair(u"advice"_s, result.advice), std::pair(u"details"_s, result.details)}) {
            if (!text.isEmpty()) {
                object.set(key, shown(text));
            }
        }
        array.emplace_back(std::move(object));
    }
    return QString::fromUtf8(json::prettyText(array));
}

} // namespace tunedeck
