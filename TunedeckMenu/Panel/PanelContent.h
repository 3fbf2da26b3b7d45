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
#include "TunedeckMenu/Panel/RowSlice.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>

namespace tunedeck {

struct PanelState;

/// All texts and conditions of the panel, from top to bottom; the views decide none of them. Symbols are names of the
/// system's own symbols. The popover leaves out `hiddenIcon`, which is only for the window.
struct PanelContent {
    Q_GADGET
    VIEW_PROPERTY(tunedeck::HeaderView, header);
    VIEW_PROPERTY(tunedeck::HiddenIconView, hiddenIcon);
    VIEW_PROPERTY(tunedeck::NotRunningView, notRunning);
    VIEW_PROPERTY(tunedeck::RecentView, recent);
    VIEW_PROPERTY(tunedeck::ToolsNoticeView, tools);
    VIEW_PROPERTY(tunedeck::AssistantsView, assistants);
    VIEW_PROPERTY(tunedeck::DownloadsView, downloads);
    VIEW_PROPERTY(tunedeck::RekordboxView, rekordbox);
    VIEW_PROPERTY(tunedeck::AboutView, about);
    VIEW_PROPERTY(tunedeck::BannerView, banner);
    VIEW_PROPERTY(tunedeck::FooterView, footer);

    bool operator==(const PanelContent&) const = default;
};

/// `ranges`: the rows of long lists to include.
PanelContent panelContent(const PanelState& state, const QDateTime& now, const RowRanges& ranges = {});

} // namespace tunedeck
