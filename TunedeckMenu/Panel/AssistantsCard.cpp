#include "TunedeckCore/Support/Text.h"
#include "TunedeckCore/WebEndpoint.h"
#include "TunedeckMenu/Panel/Panel.h"

#include <algorithm>

namespace tunedeck {

namespace {

constexpr int shownKeyCharacters = 4;

QString usage(const AssistantLink& link, const QDateTime& now) {
    const auto used = link.lastUsed();
    return used ? QStringLiteral("· used ") + relativeDate(*used, now) : QStringLiteral("· not used yet");
}

SecretFieldView field(const PanelState& state, const QString& key) {
    const bool copied = state.copied == key;
    return {
        .key = key,
        .button = copied ? QStringLiteral("Copied") : QStringLiteral("Copy"),
        .buttonSymbol = copied ? QStringLiteral("checkmark") : QStringLiteral("doc.on.doc"),
    };
}

void describeGuide(LinkRowView& row, const AssistantLink& link) {
    if (const auto assistant = link.assistant(); assistant && !link.lastUsedAt) {
        row.guideTitle = QStringLiteral("Setup guide");
        row.guideHelp = QStringLiteral("How to set up %1, on %2").arg(info(*assistant).name, WebEndpoint::host());
    }
}

void describePrivateUrl(LinkRowView& row, const AssistantLink& link, const PanelState& state) {
    row.kind = look::LinkKind::PrivateUrl;
    row.rotateTitle = QStringLiteral("New URL…");
    if (link.url) {
        SecretFieldView url = field(state, link.id + QStringLiteral(".url"));
        url.shownValue = state.revealSecrets ? *link.url : maskingSecretPath(*link.url);
        url.help = QStringLiteral("Copy this assistant's private URL");
        row.fields << url;
    } else {
        row.text = QStringLiteral("Made on another Mac or before a reinstall: choose New URL to get one here.");
    }
    describeGuide(row, link);
}

void describeShortcut(LinkRowView& row, const AssistantLink& link, const PanelState& state) {
    row.kind = look::LinkKind::Shortcut;
    row.rotateTitle = QStringLiteral("New Key…");
    if (!link.token) {
        row.text = QStringLiteral("Made on another Mac or before a reinstall: choose New Key to get one here.");
        describeGuide(row, link);
        return;
    }
    row.text = QStringLiteral("Build the Shortcut on your iPhone with these.");
    const auto add = [&](const QString& label, const QString& suffix, const QString& shown) {
        SecretFieldView value = field(state, link.id + suffix);
        value.label = label;
        value.shownValue = shown;
        value.help = QStringLiteral("Copy the %1 for the Shortcut").arg(label);
        row.fields << value;
    };
    if (link.apiUrl) {
        add(QStringLiteral("URL"), QStringLiteral(".url"), *link.apiUrl);
    }
    add(QStringLiteral("Key"), QStringLiteral(".key"),
        state.revealSecrets ? *link.token : cut(*link.token, shownKeyCharacters) + QStringLiteral("…"));
    describeGuide(row, link);
}

void describeTelegram(LinkRowView& row, const AssistantLink& link, const PanelState& state, const QDateTime& now) {
    row.kind = look::LinkKind::Telegram;
    if (link.isConnected()) {
        row.detail = QStringLiteral("· paired");
        row.text = QStringLiteral("Send the bot Spotify or YouTube links, or /playlists.");
        row.rotateTitle = QStringLiteral("New Code…");
    } else {
        row.detail = QStringLiteral("· waiting for Start");
        row.pairing = telegramPairing(link, state.linksBusy, now);
    }
}

LinkRowView linkRow(const AssistantLink& link, const PanelState& state, const QDateTime& now) {
    LinkRowView row{
        .id = link.id,
        .name = link.displayName(),
        .detail = usage(link, now),
        .connected = link.isConnected(),
    };
    const auto assistant = link.assistant();
    if (assistant == Assistant::telegram) {
        describeTelegram(row, link, state, now);
    } else if (assistant == Assistant::iphone) {
        describeShortcut(row, link, state);
    } else {
        describePrivateUrl(row, link, state);
    }
    return row;
}

ConnectRowView connectRow(Assistant assistant) {
    const AssistantInfo& known = info(assistant);
    return {
        .id = known.rawValue,
        .name = known.name,
        .plan = known.cost == u"Free" ? QString() : known.cost,
        .help = QStringLiteral("Connect %1 (%2)").arg(known.name, known.cost.toLower()),
        .symbol = QStringLiteral("plus"),
    };
}

void describeCloud(AssistantsView& card, const ServiceStatus::Cloud& cloud) {
    if (!cloud.connected) {
        card.cloudText = QStringLiteral("Cloud queue on.");
    } else if (*cloud.connected) {
        card.cloudText = QStringLiteral("Connected to Tunedeck cloud: requests arrive instantly.");
        card.cloudTone = look::Tone::Good;
    } else {
        card.cloudText = QStringLiteral("Not connected right now. Requests wait in the cloud until this Mac is back.");
        card.cloudTone = look::Tone::Warning;
    }
}

} // namespace

AssistantsView assistantsCard(const PanelState& state, const QDateTime& now) {
    AssistantsView card{.title = QStringLiteral("Assistants"), .symbol = QStringLiteral("sparkles")};
    card.busy = state.linksBusy;
    card.canReveal = !state.links.empty();
    card.revealSymbol = state.revealSecrets ? QStringLiteral("eye.slash") : QStringLiteral("eye");
    card.revealLabel = state.revealSecrets ? QStringLiteral("Hide the private URLs and keys")
                                           : QStringLiteral("Show the private URLs and keys");
    if (state.links.empty()) {
        card.emptyText =
            QStringLiteral("Connect one, then ask for tracks or playlist changes from your phone, even while "
                           "this Mac sleeps.");
    }
    for (const AssistantLink& link : state.links) {
        card.links << linkRow(link, state, now);
    }
    for (const Assistant assistant : allAssistants) {
        if (std::ranges::none_of(state.links, [&](const auto& link) { return link.assistant() == assistant; })) {
            card.connect << connectRow(assistant);
        }
    }
    if (const ServiceStatus* status = state.service.status(); status && status->cloud.enabled) {
        describeCloud(card, status->cloud);
    }
    return card;
}

} // namespace tunedeck
