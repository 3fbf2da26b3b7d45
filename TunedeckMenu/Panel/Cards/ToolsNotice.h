#pragma once

#include "TunedeckCore/Service/Toolbox.h"
#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <optional>

namespace tunedeck {

struct ToolsNoticeView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, title) = u"Tools"_s;
    VIEW_PROPERTY(QString, badge);
    VIEW_PROPERTY(tunedeck::look::Tone, badgeTone) = look::Tone::Warning;
    VIEW_PROPERTY(QString, text);           ///< the missing tools; may be empty
    VIEW_PROPERTY(QString, detail);         ///< the installation step or the last error
    VIEW_PROPERTY(QString, button);         ///< empty while installing
    VIEW_PROPERTY(QString, installingText); ///< empty otherwise
    VIEW_PROPERTY(double, progress) = -1;   ///< 0 to 1; negative when unknown
    bool operator==(const ToolsNoticeView&) const = default;
};

ToolsNoticeView toolsNotice(const std::optional<ToolboxReport>& toolbox);

} // namespace tunedeck
