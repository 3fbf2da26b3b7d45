#include "TunedeckMenu/Panel/Cards/ToolsNotice.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// More don't fit into the card.
constexpr qsizetype maxNames = 100;

QString installDetail(const ToolboxReport& toolbox) {
    QStringList parts{oneLine(toolbox.step.value_or(QString()))};
    if (toolbox.progress) {
        parts << u"%1 %"_s.arg(std::lround(std::clamp(*toolbox.progress, 0.0, 1.0) * 100));
    }
    return joined(parts);
}

} // namespace

ToolsNoticeView toolsNotice(const std::optional<ToolboxReport>& toolbox) {
    ToolsNoticeView card;
    if (!toolbox || (toolbox->allReady() && !toolbox->installing)) {
        return card;
    }
    card.shown = true;
    QStringList missing;
    for (const ToolboxReport::Tool& tool : toolbox->all()) {
        const QString name = oneLine(tool.name);
        if (!tool.ready && missing.size() < maxNames && !missing.contains(name)) {
            missing << name;
        }
    }
    if (!missing.isEmpty()) {
        card.text = u"Missing: "_s + paragraph(missing.join(u", "_s));
    }
    if (toolbox->installing) {
        card.badge = u"Installing"_s;
        card.badgeTone = look::Tone::Accent;
        card.detail = installDetail(*toolbox);
        card.installingText = u"Installing…"_s;
        card.progress = toolbox->progress ? std::clamp(*toolbox->progress, 0.0, 1.0) : -1;
    } else {
        card.badge = u"Needs repair"_s;
        card.badgeTone = look::Tone::Warning;
        card.detail = paragraph(toolbox->error.value_or(QString()));
        card.button = u"Repair Tools"_s;
    }
    return card;
}

} // namespace tunedeck
