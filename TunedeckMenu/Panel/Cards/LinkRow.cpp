#include "TunedeckMenu/Panel/Cards/LinkRow.h"

#include "TunedeckCore/Locations/WebEndpoint.h"
#include "TunedeckCore/Masking.h"
#include "TunedeckCore/Support/Text/Text.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr int shownKeyCharacters = 4;

QString usage(const AssistantLink& link, const QDateTime& now) {
    const auto used = link.lastUsed();
    return used ? u"· used "_s + relativeDate(*used, now) : u"· not used yet"_s;
}

void describeGuide(LinkRowView& row, const AssistantLink& link) {
    if (const auto assistant = link.assistant(); assistant && !link.lastUsedAt) {
        row.guideTitle = guideTitle();
        row.guideHelp = guideHelp(*assistant);
    }
}

void describePrivateUrl(LinkRowView& row, const AssistantLink& link, const PanelState& state) {
    row.kind = look::LinkKind::PrivateUrl;
    row.menu.renew = u"New URL…"_s;
    if (link.url) {
        const QString key = link.id + u".url"_s;
        row.urlField =
            privateUrlField(key, state.revealSecrets ? *link.url : maskingSecretPath(*link.url), state.copied == key);
    } else {
        row.text = u"Made on another Mac or before a reinstall: choose New URL to get one here."_s;
    }
    describeGuide(row, link);
}

void describeShortcut(LinkRowView& row, const AssistantLink& link, const PanelState& state) {
    row.kind = look::LinkKind::Shortcut;
    row.menu.renew = u"New Key…"_s;
    if (!link.token) {
        row.text = u"Made on another Mac or before a reinstall: choose New Key to get one here."_s;
        describeGuide(row, link);
        return;
    }
    row.text = u"Build the Shortcut on your iPhone with these."_s;
    const auto field = [&](const QString& label, const QString& suffix, const QString& shown) {
        return shortcutField(label, link.id + suffix, shown, state.copied == link.id + suffix);
    };
    if (link.apiUrl) {
        row.urlField = field(u"URL"_s, u".url"_s, *link.apiUrl);
    }
    row.keyField =
        field(u"Key"_s, u".key"_s, state.revealSecrets ? *link.token : cut(*link.token, shownKeyCharacters) + u"…"_s);
    describeGuide(row, link);
}

void describeTelegram(LinkRowView& row, const AssistantLink& link, const PanelState& state, const QDateTime& now) {
    row.kind = look::LinkKind::Telegram;
    if (link.isConnected()) {
        row.detail = u"· paired"_s;
        row.text = u"Send the bot Spotify or YouTube links, or /playlists."_s;
        row.menu.renew = u"New Code…"_s;
    } else {
        row.detail = u"· waiting for Start"_s;
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

/// The link's name, numbered when several links have the same name.
QString uniqueName(const QList<LinkRowView>& links, qsizetype index) {
    const auto hasSameName = [&](const LinkRowView& link) { return link.name == links[index].name; };
    const auto count = std::ranges::count_if(links, hasSameName);
    const auto before = std::count_if(links.begin(), links.begin() + index, hasSameName);
    return count == 1 ? links[index].name : u"%1, %2 of %3"_s.arg(links[index].name).arg(before + 1).arg(count);
}

/// Gives controls unique accessible descriptions: the help, with the link's name when several controls share the help.
void makeDescriptionsUnique(QList<LinkRowView>& links) {
    QHash<QString, int> helps;
    for (const LinkRowView& link : links) {
        ++helps[link.guideHelp];
        ++helps[link.pairing.openHelp];
        ++helps[link.urlField.help];
        ++helps[link.keyField.help];
    }
    for (qsizetype i = 0; i < links.size(); ++i) {
        LinkRowView& link = links[i];
        const QString name = uniqueName(links, i);
        const auto uniqueDescription = [&](const QString& help) {
            return !help.isEmpty() && helps.value(help) > 1 ? u"%1 (%2)"_s.arg(help, name) : help;
        };
        link.menu.description = name + u' ' + link.detail;
        link.guideDescription = uniqueDescription(link.guideHelp);
        link.pairing.openDescription = uniqueDescription(link.pairing.openHelp);
        link.pairing.newCodeDescription =
            link.pairing.newCodeHelp.isEmpty() ? name : u"%1. %2"_s.arg(name, link.pairing.newCodeHelp);
        link.urlField.description = uniqueDescription(link.urlField.help);
        link.keyField.description = uniqueDescription(link.keyField.help);
    }
}

} // namespace

QList<LinkRowView> linkRows(const PanelState& state, const QDateTime& now) {
    QList<LinkRowView> rows;
    for (const AssistantLink& link : state.links) {
        rows << linkRow(link, state, now);
    }
    makeDescriptionsUnique(rows);
    return rows;
}

QString guideTitle() {
    return u"Setup guide"_s;
}

QString guideHelp(Assistant assistant) {
    return u"How to set up %1, on %2"_s.arg(info(assistant).name, WebEndpoint::host());
}

} // namespace tunedeck
