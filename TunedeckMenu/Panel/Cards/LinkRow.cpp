#include "TunedeckMenu/Panel/Cards/LinkRow.h"

#include "TunedeckCore/Locations/WebEndpoint.h"
#include "TunedeckCore/Masking.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <QHash>

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
        row.urlField = privateUrlField(key, oneLine(state.revealSecrets ? *link.url : maskingSecretPath(*link.url)),
                                       state.copied == key);
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
        return shortcutField(label, link.id + suffix, oneLine(shown), state.copied == link.id + suffix);
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
        .name = oneLine(link.displayName()),
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

/// Gives controls unique accessible names: the label, with the link's name when several links have such a control.
/// Links of the same name are numbered.
void makeNamesUnique(RowSlice<LinkRowView>& links, const PanelState& state, const QDateTime& now) {
    QHash<QString, int> labels;
    QHash<QString, int> names;
    QHash<QString, int> numbers;
    int index = 0;
    for (const AssistantLink& link : state.links) { // also those outside of the slice
        const LinkRowView row = linkRow(link, state, now);
        ++labels[row.menu.label];
        ++labels[row.guideTitle];
        ++labels[row.pairing.openButton];
        ++labels[row.pairing.newCodeButton];
        ++labels[row.urlField.buttonName];
        ++labels[row.keyField.buttonName];
        ++names[row.name];
        if (index++ < links.before) {
            ++numbers[row.name];
        }
    }
    for (LinkRowView& link : links.rows) {
        const QString number = QString::number(++numbers[link.name]);
        const int count = names.value(link.name);
        const QString name = count == 1 ? link.name : u"%1, %2 of %3"_s.arg(link.name, number, QString::number(count));
        const auto uniqueName = [&](const QString& label) {
            return labels.value(label) > 1 && !label.isEmpty() ? u"%1, %2"_s.arg(label, name) : label;
        };
        link.menu.accessibleName = uniqueName(link.menu.label);
        link.menu.description = name + u' ' + link.detail;
        link.guideName = uniqueName(link.guideTitle);
        link.pairing.openName = uniqueName(link.pairing.openButton);
        link.pairing.newCodeName = uniqueName(link.pairing.newCodeButton);
        link.urlField.buttonName = uniqueName(link.urlField.buttonName);
        link.keyField.buttonName = uniqueName(link.keyField.buttonName);
    }
}

} // namespace

RowSlice<LinkRowView> linkRows(const PanelState& state, const QDateTime& now, RowRange range) {
    auto links = RowSlice<LinkRowView>::of(state.links, range,
                                           [&](const AssistantLink& link) { return linkRow(link, state, now); });
    makeNamesUnique(links, state, now);
    return links;
}

QString guideTitle() {
    return u"Setup guide"_s;
}

QString guideHelp(Assistant assistant) {
    return u"How to set up %1, on %2"_s.arg(info(assistant).name, WebEndpoint::host());
}

} // namespace tunedeck
