#include "TunedeckCore/Locations/WebEndpoint.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/Panel.h"

#include <QHash>

#include <algorithm>

namespace tunedeck {

namespace {

constexpr int shownKeyCharacters = 4;

QString usage(const AssistantLink& link, const QDateTime& now) {
    const auto used = link.lastUsed();
    return used ? QStringLiteral("· used ") + relativeDate(*used, now) : QStringLiteral("· not used yet");
}

void describeGuide(LinkRowView& row, const AssistantLink& link) {
    if (const auto assistant = link.assistant(); assistant && !link.lastUsedAt) {
        row.guideTitle = guideTitle();
        row.guideHelp = guideHelp(*assistant);
    }
}

void describePrivateUrl(LinkRowView& row, const AssistantLink& link, const PanelState& state) {
    row.kind = look::LinkKind::PrivateUrl;
    row.menu.renew = QStringLiteral("New URL…");
    if (link.url) {
        const QString key = link.id + QStringLiteral(".url");
        row.fields << privateUrlField(key, state.revealSecrets ? *link.url : maskingSecretPath(*link.url),
                                      state.copied == key);
    } else {
        row.text = QStringLiteral("Made on another Mac or before a reinstall: choose New URL to get one here.");
    }
    describeGuide(row, link);
}

void describeShortcut(LinkRowView& row, const AssistantLink& link, const PanelState& state) {
    row.kind = look::LinkKind::Shortcut;
    row.menu.renew = QStringLiteral("New Key…");
    if (!link.token) {
        row.text = QStringLiteral("Made on another Mac or before a reinstall: choose New Key to get one here.");
        describeGuide(row, link);
        return;
    }
    row.text = QStringLiteral("Build the Shortcut on your iPhone with these.");
    const auto add = [&](const QString& label, const QString& suffix, const QString& shown) {
        row.fields << shortcutField(label, link.id + suffix, shown, state.copied == link.id + suffix);
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
        row.menu.renew = QStringLiteral("New Code…");
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
        .menu = {.label = QStringLiteral("More"),
                 .guide = QStringLiteral("Setup Guide"),
                 .disconnect = QStringLiteral("Disconnect")},
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

/// What a link is called among the others: its name, with its number where another has the same.
QString nameAmong(const QList<LinkRowView>& links, qsizetype index) {
    const auto isNamesake = [&](const LinkRowView& link) { return link.name == links[index].name; };
    const auto count = std::ranges::count_if(links, isNamesake);
    const auto before = std::count_if(links.begin(), links.begin() + index, isNamesake);
    return count == 1 ? links[index].name
                      : QStringLiteral("%1, %2 of %3").arg(links[index].name).arg(before + 1).arg(count);
}

/// Tells controls of the same words from each other: by their help, and by their link where another has the same help.
void tellApart(QList<LinkRowView>& links) {
    QHash<QString, int> helps;
    for (const LinkRowView& link : links) {
        ++helps[link.guideHelp];
        ++helps[link.pairing.openHelp];
        for (const SecretFieldView& field : link.fields) {
            ++helps[field.help];
        }
    }
    for (qsizetype i = 0; i < links.size(); ++i) {
        LinkRowView& link = links[i];
        const QString name = nameAmong(links, i);
        const auto described = [&](const QString& help) {
            return !help.isEmpty() && helps.value(help) > 1 ? QStringLiteral("%1 (%2)").arg(help, name) : help;
        };
        link.menu.description = name + u' ' + link.detail;
        link.guideDescription = described(link.guideHelp);
        link.pairing.openDescription = described(link.pairing.openHelp);
        link.pairing.newCodeDescription =
            link.pairing.newCodeHelp.isEmpty() ? name : QStringLiteral("%1. %2").arg(name, link.pairing.newCodeHelp);
        for (SecretFieldView& field : link.fields) {
            field.description = described(field.help);
        }
    }
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

SecretFieldView field(const QString& label, const QString& key, const QString& shown, bool copied) {
    return {
        .label = label,
        .shownValue = shown,
        .key = key,
        .button = copied ? QStringLiteral("Copied") : QStringLiteral("Copy"),
        .buttonSymbol = copied ? QStringLiteral("checkmark") : QStringLiteral("doc.on.doc"),
    };
}

} // namespace

SecretFieldView privateUrlField(const QString& key, const QString& shown, bool copied) {
    SecretFieldView url = field({}, key, shown, copied);
    url.help = url.description = QStringLiteral("Copy this assistant's private URL");
    return url;
}

SecretFieldView shortcutField(const QString& label, const QString& key, const QString& shown, bool copied) {
    SecretFieldView value = field(label, key, shown, copied);
    value.help = value.description = QStringLiteral("Copy the %1 for the Shortcut").arg(label);
    return value;
}

QString guideTitle() {
    return QStringLiteral("Setup guide");
}

QString guideHelp(Assistant assistant) {
    return QStringLiteral("How to set up %1, on %2").arg(info(assistant).name, WebEndpoint::host());
}

ConnectRowView connectRow(Assistant assistant, const QString& symbol, bool busy) {
    const AssistantInfo& known = info(assistant);
    const QString help = QStringLiteral("Connect %1 (%2)").arg(known.name, known.cost.toLower());
    return {
        .id = known.rawValue,
        .name = known.name,
        .plan = known.cost == u"Free" ? QString() : known.cost,
        .help = busy ? help + QStringLiteral(". Another link is being changed.") : help,
        .symbol = symbol,
    };
}

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
    tellApart(card.links);
    for (const Assistant assistant : allAssistants) {
        if (std::ranges::none_of(state.links, [&](const auto& link) { return link.assistant() == assistant; })) {
            card.connect << connectRow(assistant, QStringLiteral("plus"), state.linksBusy);
        }
    }
    if (const ServiceStatus* status = state.service.status(); status && status->cloud.enabled) {
        describeCloud(card, status->cloud);
    }
    return card;
}

} // namespace tunedeck
