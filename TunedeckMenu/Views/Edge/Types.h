#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/PanelActions.h"
#include "TunedeckMenu/Panel/PanelContent.h"

#include <QtQml/qqml.h>

/// Registers the panel's types for QML; the panel's own headers don't depend on QML.
namespace tunedeck::qml {

namespace LookForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(tunedeck::look)
QML_NAMED_ELEMENT(Look)
} // namespace LookForeign

// NOLINTBEGIN(bugprone-macro-parentheses): the argument is a macro call, not an expression
#define TUNEDECK_QML_TYPE(Type, REGISTRATION)                                                                          \
    struct Type##Foreign {                                                                                             \
        Q_GADGET                                                                                                       \
        QML_FOREIGN(tunedeck::Type)                                                                                    \
        REGISTRATION                                                                                                   \
    };
// NOLINTEND(bugprone-macro-parentheses)

TUNEDECK_QML_TYPE(PanelActions, QML_ANONYMOUS)
TUNEDECK_QML_TYPE(OnboardingActions, QML_ANONYMOUS)
TUNEDECK_QML_TYPE(PanelContent, QML_VALUE_TYPE(panelContent))
TUNEDECK_QML_TYPE(HeaderView, QML_VALUE_TYPE(headerView))
TUNEDECK_QML_TYPE(HiddenIconView, QML_VALUE_TYPE(hiddenIconView))
TUNEDECK_QML_TYPE(NotRunningView, QML_VALUE_TYPE(notRunningView))
TUNEDECK_QML_TYPE(RecentView, QML_VALUE_TYPE(recentView))
TUNEDECK_QML_TYPE(JobRowView, QML_VALUE_TYPE(jobRowView))
TUNEDECK_QML_TYPE(ToolsNoticeView, QML_VALUE_TYPE(toolsNoticeView))
TUNEDECK_QML_TYPE(BannerView, QML_VALUE_TYPE(bannerView))
TUNEDECK_QML_TYPE(ConnectRowView, QML_VALUE_TYPE(connectRowView))
TUNEDECK_QML_TYPE(LinkRowView, QML_VALUE_TYPE(linkRowView))
TUNEDECK_QML_TYPE(LinkMenuView, QML_VALUE_TYPE(linkMenuView))
TUNEDECK_QML_TYPE(SecretFieldView, QML_VALUE_TYPE(secretFieldView))
TUNEDECK_QML_TYPE(TelegramPairingView, QML_VALUE_TYPE(telegramPairingView))
TUNEDECK_QML_TYPE(AssistantsView, QML_VALUE_TYPE(assistantsView))
TUNEDECK_QML_TYPE(DownloadsView, QML_VALUE_TYPE(downloadsView))
TUNEDECK_QML_TYPE(RekordboxView, QML_VALUE_TYPE(rekordboxView))
TUNEDECK_QML_TYPE(BackupRowView, QML_VALUE_TYPE(backupRowView))
TUNEDECK_QML_TYPE(AboutView, QML_VALUE_TYPE(aboutView))
TUNEDECK_QML_TYPE(FooterView, QML_VALUE_TYPE(footerView))
TUNEDECK_QML_TYPE(ToolRowView, QML_VALUE_TYPE(toolRowView))
TUNEDECK_QML_TYPE(OnboardingContent, QML_VALUE_TYPE(onboardingContent))

#undef TUNEDECK_QML_TYPE

} // namespace tunedeck::qml
