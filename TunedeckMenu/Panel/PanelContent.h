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

/// The whole panel, top to bottom. The hidden-icon card is for the detached window alone: the view under the icon
/// leaves it out.
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

/// What the panel shows for a state at a moment.
PanelContent panelContent(const PanelState& state, const QDateTime& now);

} // namespace tunedeck
