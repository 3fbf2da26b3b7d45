#pragma once

#include "TunedeckMenu/Panel/Banner.h"
#include "TunedeckMenu/Panel/Cards/AboutCard.h"
#include "TunedeckMenu/Panel/Cards/AssistantsCard.h"
#include "TunedeckMenu/Panel/Cards/DownloadsCard.h"
#include "TunedeckMenu/Panel/Cards/HiddenIconCard.h"
#include "TunedeckMenu/Panel/Cards/NotRunningCard.h"
#include "TunedeckMenu/Panel/Cards/RecentCard.h"
#include "TunedeckMenu/Panel/Cards/RekordboxCard.h"
#include "TunedeckMenu/Panel/Cards/ToolsNotice.h"
#include "TunedeckMenu/Panel/FooterView.h"
#include "TunedeckMenu/Panel/HeaderView.h"

#include <QDateTime>

namespace tunedeck {

struct PanelState;

/// All texts, symbols and conditions of the panel, from top to bottom; the views decide none of them. Symbols are names
/// of the system's own symbols. The popover leaves out `hiddenIcon`, which is only for the window.
struct PanelContent {
    HeaderView header;
    TextCardView hiddenIcon;
    NotRunningView notRunning;
    RecentView recent;
    ToolsNoticeView tools;
    AssistantsView assistants;
    DownloadsView downloads;
    RekordboxView rekordbox;
    AboutView about;
    BannerView banner;
    FooterView footer;
    bool operator==(const PanelContent&) const = default;
};

PanelContent panelContent(const PanelState& state, const QDateTime& now);

} // namespace tunedeck
