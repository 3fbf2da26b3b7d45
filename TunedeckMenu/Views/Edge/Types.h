#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/PanelActions.h"
#include "TunedeckMenu/Panel/PanelContent.h"

#include <QtQml/qqml.h>

/// Makes the panel's values known to QML, which the panel itself knows nothing of.
namespace tunedeck::qml {

namespace LookForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(tunedeck::look)
QML_NAMED_ELEMENT(Look)
} // namespace LookForeign

struct PanelActionsForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::PanelActions)
    QML_ANONYMOUS
};
struct OnboardingActionsForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::OnboardingActions)
    QML_ANONYMOUS
};
struct HeaderViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::HeaderView)
    QML_VALUE_TYPE(headerView)
};
struct TextCardViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::TextCardView)
    QML_VALUE_TYPE(textCardView)
};
struct NotRunningViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::NotRunningView)
    QML_VALUE_TYPE(notRunningView)
};
struct RecentViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::RecentView)
    QML_VALUE_TYPE(recentView)
};
struct ToolsNoticeViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::ToolsNoticeView)
    QML_VALUE_TYPE(toolsNoticeView)
};
struct BannerViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::BannerView)
    QML_VALUE_TYPE(bannerView)
};
struct LinkMenuViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::LinkMenuView)
    QML_VALUE_TYPE(linkMenuView)
};
struct TelegramPairingViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::TelegramPairingView)
    QML_VALUE_TYPE(telegramPairingView)
};
struct AssistantsViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::AssistantsView)
    QML_VALUE_TYPE(assistantsView)
};
struct DownloadsViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::DownloadsView)
    QML_VALUE_TYPE(downloadsView)
};
struct RekordboxViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::RekordboxView)
    QML_VALUE_TYPE(rekordboxView)
};
struct AboutViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::AboutView)
    QML_VALUE_TYPE(aboutView)
};
struct FooterViewForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::FooterView)
    QML_VALUE_TYPE(footerView)
};
struct OnboardingContentForeign {
    Q_GADGET
    QML_FOREIGN(tunedeck::OnboardingContent)
    QML_VALUE_TYPE(onboardingContent)
};

} // namespace tunedeck::qml
