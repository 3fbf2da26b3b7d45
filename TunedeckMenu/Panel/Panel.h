#pragma once

#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QDateTime>
#include <QString>

/// What the panel says of a state at a moment. Pure functions, one for each card; no window is needed to test a word.
namespace tunedeck {

/// The whole panel.
PanelContent panelContent(const PanelState& state, const QDateTime& now);

/// The line under the title.
QString statusLine(const ServiceState& service);
HeaderView headerView(const ServiceState& service);
TextCardView hiddenIconCard(const MenuBarIconVisibility& icon);
NotRunningView notRunningCard(const ServiceState& service, bool isStarting);
/// The first three jobs of a running service.
RecentView recentCard(const ServiceState& service, const QDateTime& now);
ToolsNoticeView toolsNotice(const std::optional<ToolboxReport>& toolbox);
AssistantsView assistantsCard(const PanelState& state, const QDateTime& now);
/// A button that connects an assistant. `busy`: another link is being changed.
ConnectRowView connectRow(Assistant assistant, const QString& symbol, bool busy);
/// A private URL that can be copied under `key`. `copied`: it was, a moment ago.
SecretFieldView privateUrlField(const QString& key, const QString& shown, bool copied);
/// What a Shortcut is built with: its "URL" or its "Key"; otherwise as privateUrlField.
SecretFieldView shortcutField(const QString& label, const QString& key, const QString& shown, bool copied);
/// The link to an assistant's setup guide.
QString guideTitle();
QString guideHelp(Assistant assistant);
/// The pairing block of a Telegram link; not shown for a paired one.
TelegramPairingView telegramPairing(const AssistantLink& link, bool busy, const QDateTime& now);
/// When the pairing code ends, in words; empty when it has ended or there is no time.
QString expiryNote(const AssistantLink& link, const QDateTime& now);
/// `customFolder`: the folder that the settings file names.
DownloadsView downloadsCard(const ServiceState& service, const std::optional<QString>& customFolder,
                            const QString& home);
RekordboxView rekordboxCard(const ServiceState& service, bool libraryBusy, const QDateTime& now);
AboutView aboutCard(const QString& appVersion, const UpdateState& update, const QDateTime& now);
/// The one line about the last action; not shown when there is none.
BannerView actionBanner(const std::optional<QString>& error, const std::optional<QString>& note);
FooterView footer(bool opensAtLogin, bool isRestarting);

} // namespace tunedeck
