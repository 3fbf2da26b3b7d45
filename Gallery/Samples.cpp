#include "Gallery/Samples.h"

#include "Gallery/FakeHost.h"

#include <QFileIconProvider>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tunedeck {

QIcon FakeHost::fileIcon(const QString& path) {
    return QFileIconProvider().icon(QFileInfo(path));
}

namespace samples {

using look::Tone;

JobRowView job(const QString& id, const QString& state, const QString& playlist, const QString& trailing) {
    JobRowView row{.id = id, .playlist = playlist, .trailing = trailing, .stateName = state};
    if (state == u"Done"_s) {
        row.symbol = u"checkmark.circle.fill"_s;
        row.tone = Tone::Good;
        row.message = u"Saved 14 songs."_s;
    } else if (state == u"Failed"_s) {
        row.symbol = u"xmark.octagon.fill"_s;
        row.tone = Tone::Bad;
        row.message = u"The playlist is private."_s;
    } else if (state == u"Running"_s) {
        row.symbol = u"arrow.down.circle.fill"_s;
        row.tone = Tone::Accent;
        row.pulsing = true;
        row.message = u"Song 3 of 14"_s;
    } else {
        row.symbol = u"clock.fill"_s;
    }
    return row;
}

LinkRowView privateLink(const QString& id, const QString& name, const QString& detail, bool connected) {
    return {.id = id,
            .name = name,
            .detail = detail,
            .connected = connected,
            .rotateTitle = u"New URL…"_s,
            .fields = {{.shownValue = u"https://tunedeck.example/m/k7Qx…"_s,
                        .key = id + u".url"_s,
                        .help = u"Copy this assistant's private URL"_s,
                        .button = u"Copy"_s,
                        .buttonSymbol = u"doc.on.doc"_s}},
            .guideTitle = connected ? QString() : u"Setup guide"_s,
            .guideHelp = u"How to set up "_s + name + u", on tunedeck.example"_s};
}

LinkRowView shortcutLink(const QString& id) {
    return {.id = id,
            .kind = look::LinkKind::Shortcut,
            .name = u"iPhone"_s,
            .detail = u"· not used yet"_s,
            .rotateTitle = u"New Key…"_s,
            .text = u"Build the Shortcut on your iPhone with these."_s,
            .fields = {{.label = u"URL"_s,
                        .shownValue = u"https://tunedeck.example/api/add"_s,
                        .key = id + u".url"_s,
                        .help = u"Copy the URL for the Shortcut"_s,
                        .button = u"Copy"_s,
                        .buttonSymbol = u"doc.on.doc"_s},
                       {.label = u"Key"_s,
                        .shownValue = u"h8Kd…"_s,
                        .key = id + u".key"_s,
                        .help = u"Copy the Key for the Shortcut"_s,
                        .button = u"Copied"_s,
                        .buttonSymbol = u"checkmark"_s}},
            .guideTitle = u"Setup guide"_s,
            .guideHelp = u"How to set up iPhone, on tunedeck.example"_s};
}

LinkRowView telegramLink(const QString& id, bool paired) {
    LinkRowView link{.id = id,
                     .kind = look::LinkKind::Telegram,
                     .name = u"Telegram"_s,
                     .detail = paired ? u"· paired"_s : u"· waiting for Start"_s,
                     .connected = paired};
    if (paired) {
        link.text = u"Send the bot Spotify or YouTube links, or /playlists."_s;
    } else {
        link.pairing = {.shown = true,
                        .startUrl = u"https://t.me/tunedeck_bot?start=Zk81mQp0aV"_s,
                        .text = u"Scan with your phone's camera, then tap Start in Telegram."_s,
                        .openButton = u"Open Telegram"_s,
                        .openHelp = u"Opens the Tunedeck bot in Telegram on this Mac"_s,
                        .newCodeButton = u"New Code"_s,
                        .expiryNote = u"Expires in 9 min"_s,
                        .qrName = u"QR code to pair Telegram"_s};
    }
    return link;
}

namespace {

const QString homeless = u"/home/ada"_s;

BackupRowView backup(const QString& version, const QString& date, const QString& reason, bool latest) {
    return {.version = version,
            .date = date,
            .badge = latest ? u"Latest"_s : QString(),
            .reason = reason,
            .button = u"Restore"_s,
            .help = u"Restore v"_s + version,
            .canRestore = true};
}

PanelContent frame() {
    PanelContent content;
    content.header = {.title = u"Tunedeck"_s, .status = u"Checking…"_s};
    content.recent = {.title = u"Recent"_s, .symbol = u"clock"_s, .jobs = {}};
    content.tools = {.title = u"Tools"_s, .symbol = u"wrench.and.screwdriver"_s, .button = u"Repair Tools"_s};
    content.assistants = {.title = u"Assistants"_s,
                          .symbol = u"sparkles"_s,
                          .revealSymbol = u"eye"_s,
                          .revealLabel = u"Show the private URLs and keys"_s,
                          .emptyText = u"Connect one, then ask for tracks or playlist changes from your phone, even "
                                       "while this Mac sleeps."_s,
                          .links = {},
                          .connect = {}};
    const struct {
        const char16_t* id;
        const char16_t* name;
        const char16_t* plan;
        const char16_t* symbol;
    } kinds[] = {{u"chatgpt", u"ChatGPT", u"Paid plan", u"bubble.left.and.bubble.right"},
                 {u"claude", u"Claude", u"", u"asterisk"},
                 {u"telegram", u"Telegram", u"", u"paperplane"},
                 {u"iphone", u"iPhone", u"", u"iphone"}};
    for (const auto& kind : kinds) {
        const QString name = QString::fromUtf16(kind.name);
        const QString plan = QString::fromUtf16(kind.plan);
        content.assistants.connect.append(
            {.id = QString::fromUtf16(kind.id),
             .name = name,
             .plan = plan,
             .help = u"Connect "_s + name + (plan.isEmpty() ? u" (free)"_s : u" (paid plan)"_s),
             .symbol = QString::fromUtf16(kind.symbol)});
    }
    content.downloads = {.title = u"Downloads"_s,
                         .symbol = u"arrow.down.circle"_s,
                         .badge = u"Default"_s,
                         .stoppedText = u"Start tunedeck to see where songs are saved."_s,
                         .changeButton = u"Change Folder…"_s,
                         .changeHelp = u"New downloads go to the folder you pick. Songs already saved stay where they "
                                       "are."_s,
                         .note = u"Applies from the next download."_s};
    content.rekordbox = {.title = u"Rekordbox"_s,
                         .symbol = u"square.stack.3d.up"_s,
                         .failed = {},
                         .backups = {},
                         .xmlText = u"Shown when tunedeck is running."_s,
                         .xmlSymbol = u"doc.text"_s};
    content.about = {.title = u"About"_s,
                     .symbol = u"info.circle"_s,
                     .version = u"Tunedeck 1.4.0"_s,
                     .updateText = u"Up to date · checked 2 hours ago"_s,
                     .checkButton = u"Check for Updates"_s,
                     .diagnosticsButton = u"Copy Diagnostics"_s,
                     .diagnosticsHelp = u"Versions, tool states and recent errors, with every secret masked, for "
                                        "support"_s};
    content.footer = {.loginTitle = u"Open at Login"_s,
                      .opensAtLogin = true,
                      .restartLabel = u"Restart tunedeck"_s,
                      .logLabel = u"Open Log"_s,
                      .quitLabel = u"Quit Tunedeck"_s};
    return content;
}

} // namespace

PanelContent checking() {
    return frame();
}

PanelContent stopped() {
    PanelContent content = frame();
    content.header.status = u"Not running"_s;
    content.header.tone = Tone::Bad;
    content.notRunning = {.shown = true,
                          .title = u"Service"_s,
                          .symbol = u"bolt.horizontal.circle"_s,
                          .text = u"tunedeck isn't running. Downloads you request wait in the cloud queue until it's "
                                  "back."_s,
                          .button = u"Start tunedeck"_s};
    return content;
}

PanelContent usual() {
    PanelContent content = frame();
    content.header.status = u"Running · connected to the cloud"_s;
    content.header.tone = Tone::Good;
    content.recent.shown = true;
    content.recent.jobs = {job(u"1"_s, u"Running"_s, u"Friday Warm-up"_s, u"Downloading"_s),
                           job(u"2"_s, u"Done"_s, u"Disco Edits 2026"_s, u"5 minutes ago"_s),
                           job(u"3"_s, u"Failed"_s, u"After Hours"_s, u"yesterday"_s)};
    content.assistants.emptyText.clear();
    content.assistants.canReveal = true;
    content.assistants.links = {privateLink(u"a"_s, u"Claude"_s, u"· used 5 minutes ago"_s, true),
                                telegramLink(u"t"_s, true)};
    content.assistants.connect.removeIf(
        [](const ConnectRowView& row) { return row.id == u"claude"_s || row.id == u"telegram"_s; });
    content.assistants.cloudText = u"Connected to Tunedeck cloud: requests arrive instantly."_s;
    content.assistants.cloudTone = Tone::Good;
    content.downloads.hasFolder = true;
    content.downloads.stoppedText.clear();
    content.downloads.folderPath = homeless + u"/Music/Tunedeck"_s;
    content.downloads.folderTitle = u"Show in Finder"_s;
    content.downloads.folderSubtitle = u"~/Music/Tunedeck"_s;
    content.downloads.folderHelp = homeless + u"/Music/Tunedeck"_s;
    RekordboxView& library = content.rekordbox;
    library.badge = u"Library v1.3.0"_s;
    library.badgeHelp = u"Semver of your Rekordbox library's latest backup"_s;
    library.hasLibrary = true;
    library.headline = u"Up to date"_s;
    library.tone = Tone::Good;
    library.detail = u"Added 14 tracks to “Friday Warm-up” · 5 minutes ago"_s;
    library.backupsTitle = u"Backups (3)"_s;
    library.backups = {backup(u"1.3.0"_s, u"5 minutes ago"_s, u"Before adding 14 tracks to “Friday Warm-up”"_s, true),
                       backup(u"1.2.0"_s, u"3 days ago"_s, u"Before removing “Old set”"_s, false),
                       backup(u"1.0.0"_s, u"2 months ago"_s, u"First backup"_s, false)};
    library.xmlText = u"rekordbox xml"_s;
    library.xmlButton = u"Show"_s;
    library.xmlHelp = homeless + u"/Music/Tunedeck/rekordbox.xml"_s;
    return content;
}

PanelContent troubled() {
    PanelContent content = usual();
    content.header.status = u"Running · cloud not reachable yet"_s;
    content.header.tone = Tone::Warning;
    content.hiddenIcon = {.shown = true,
                          .title = u"Menu bar"_s,
                          .symbol = u"menubar.rectangle"_s,
                          .text = u"Hold ⌘ and drag other icons out of the menu bar to make room — Tunedeck sits next "
                                  "to the clock. Until then, open Tunedeck from Spotlight (⌘ Space, “Tunedeck”) to get "
                                  "this window."_s};
    content.tools.shown = true;
    content.tools.badge = u"Needs repair"_s;
    content.tools.badgeTone = Tone::Warning;
    content.tools.text = u"Missing: yt-dlp, ffmpeg"_s;
    content.tools.detail = u"The last try failed: the download was cut off."_s;
    content.assistants.cloudText = u"Not connected right now. Requests wait in the cloud until this Mac is back."_s;
    content.assistants.cloudTone = Tone::Warning;
    content.assistants.links.append(telegramLink(u"u"_s, false));
    content.downloads.badge = u"Custom"_s;
    content.downloads.defaultButton = u"Use Default"_s;
    content.downloads.warning = {
        .shown = true, .text = u"tunedeck can't write to this folder."_s, .detail = {}, .id = {}};
    RekordboxView& library = content.rekordbox;
    library.headline = u"2 changes waiting — quit Rekordbox to apply"_s;
    library.tone = Tone::Warning;
    library.detail = u"Last try failed: The library is locked by another program."_s;
    library.failed = {{.shown = true,
                       .text = u"Couldn't apply “Rename ‘Peak’ to ‘Peak Time’”"_s,
                       .detail = u"There is no playlist of that name."_s,
                       .id = u"1"_s},
                      {.shown = true,
                       .text = u"Couldn't apply “Add 2 tracks to ‘Sunday’”"_s,
                       .detail = u"The file is gone: ~/Music/Tunedeck/Sunday/04 – Intro.mp3"_s,
                       .id = u"2"_s}};
    library.retryButton = u"Retry"_s;
    library.dismissButton = u"Dismiss"_s;
    library.backupsNote = u"Quit Rekordbox to restore a backup."_s;
    for (BackupRowView& row : library.backups) {
        row.canRestore = false;
        row.help = u"Quit Rekordbox to restore a backup."_s;
    }
    content.about.updateText = u"Couldn't check for updates: the server can't be reached."_s;
    content.banner = {.shown = true,
                      .text = u"Couldn't reach tunedeck to repair its tools."_s,
                      .detail = {},
                      .tone = Tone::Warning,
                      .id = {}};
    return content;
}

PanelContent longWords() {
    PanelContent content = usual();
    content.header.status = u"Running · v2026.11.21-beta.4+build.20261121.0915"_s;
    content.recent.jobs = {
        job(u"1"_s, u"Running"_s, u"Donaudampfschifffahrtsgesellschaftskapitänsmützen-Sommerabschlussfest 2026"_s,
            u"Downloading"_s),
        job(u"2"_s, u"Done"_s, u"أغاني الصيف — حفلة الجمعة"_s, u"3 weeks ago"_s),
        job(u"3"_s, u"Queued"_s, u"🪩 Disco 🕺🏽 Night 🇩🇪🇧🇷 👩‍🎤 — Überraschungsgäste"_s,
            u"11 minutes ago"_s)};
    QString path = u"/srv/Musik/"_s;
    while (path.size() < 190) {
        path += u"Überraschungspartysammlung/"_s;
    }
    content.downloads.folderPath = path;
    content.downloads.folderSubtitle = path;
    content.downloads.folderHelp = path;
    content.downloads.badge = u"Custom"_s;
    content.downloads.defaultButton = u"Use Default"_s;
    content.downloads.warning = {.shown = true,
                                 .text = u"macOS may block the background service from saving to iCloud Drive. If "
                                         "downloads fail, pick a folder in ~/Music."_s,
                                 .detail = {},
                                 .id = {}};
    content.assistants.links = {
        privateLink(u"a"_s, u"Wohnzimmerassistentenverbindung im Gartenhaus"_s, u"· used 11 minutes ago"_s, true),
        shortcutLink(u"s"_s)};
    content.rekordbox.headline = u"Applying 12 changes…"_s;
    content.rekordbox.tone = Tone::Accent;
    content.rekordbox.detail = u"Add 14 tracks to “Donaudampfschifffahrt” · Move “Sommer” into “Archiv 2025” · Rename "
                               "“אחרי חצות” · Remove 3 tracks from “Überraschungsgäste” · Add “🪩 Disco”"_s;
    content.rekordbox.applyButton = u"Apply Now"_s;
    content.rekordbox.badge = u"Library v1.204.11-überarbeitet"_s;
    content.about.updateText = u"Tunedeck 1.5.0 is available."_s;
    content.about.updateDetail = u"Playlists can be renamed by asking. Backups open three times as fast."_s;
    content.about.updateButton = u"Update to 1.5.0"_s;
    content.banner = {.shown = true,
                      .text = u"Copied Claude's URL. In Claude, open Settings → Connectors → Add custom connector, "
                              "paste the URL and choose Connect."_s,
                      .detail = {},
                      .tone = Tone::Good,
                      .id = {}};
    return content;
}

PanelContent crowded() {
    PanelContent content = usual();
    content.assistants.links.clear();
    content.assistants.connect.clear();
    for (int i = 0; i < 9; ++i) {
        content.assistants.links.append(
            privateLink(u"p"_s + QString::number(i), u"Studio %1"_s.arg(i + 1),
                        i % 3 == 0 ? u"· not used yet"_s : u"· used %1 days ago"_s.arg(i + 1), i % 3 != 0));
    }
    content.assistants.links.append(shortcutLink(u"s"_s));
    content.assistants.links.append(telegramLink(u"t"_s, false));
    content.assistants.links.append(telegramLink(u"u"_s, true));
    content.rekordbox.backups.clear();
    for (int i = 0; i < 60; ++i) {
        content.rekordbox.backups.append(backup(u"1.%1.0"_s.arg(60 - i), u"%1 days ago"_s.arg(i + 2),
                                                u"Before adding %1 tracks to “Set %2”"_s.arg(i % 9 + 2).arg(60 - i),
                                                i == 0));
    }
    content.rekordbox.backupsTitle = u"Backups (60)"_s;
    return content;
}

OnboardingContent toolsStep() {
    return {
        .step = 0,
        .stepLabel = u"Step 1 of 3"_s,
        .title = u"Install the tools"_s,
        .text = u"Tunedeck downloads the free tools it uses (yt-dlp, spotdl, ffmpeg) from their official sources "
                "and keeps them up to date. About 250 MB, once."_s,
        .tools =
            {{.name = u"yt-dlp"_s, .state = u"Ready"_s, .symbol = u"checkmark.circle.fill"_s, .tone = Tone::Good},
             {.name = u"spotdl"_s, .state = u"Installing…"_s, .symbol = u"arrow.down.circle"_s, .tone = Tone::Accent},
             {.name = u"ffmpeg"_s, .state = u"Missing"_s, .symbol = u"clock.fill"_s}},
        .installText = u"Downloading spotdl…"_s,
        .progress = 0.42,
        .assistants = {},
        .setupSteps = {},
        .nextButton = u"Continue"_s};
}

OnboardingContent rekordboxStep() {
    return {.step = 1,
            .stepLabel = u"Step 2 of 3"_s,
            .title = u"Find Rekordbox"_s,
            .text = u"New songs and playlist changes go straight into your Rekordbox library (a Tunedeck folder in "
                    "Playlists). With Rekordbox open, they appear under rekordbox xml and land in the library when you "
                    "quit it."_s,
            .tools = {},
            .rekordboxName = u"Rekordbox 7"_s,
            .baselineText = u"Library v1.0.0 is backed up. Every change is backed up first; restore any time from the "
                            "menu."_s,
            .baselineSymbol = u"checkmark.shield.fill"_s,
            .assistants = {},
            .setupSteps = {},
            .backButton = u"Back"_s,
            .nextButton = u"Continue"_s};
}

OnboardingContent assistantStep() {
    return {.step = 2,
            .stepLabel = u"Step 3 of 3"_s,
            .title = u"Connect your assistant"_s,
            .text =
                u"Pick where you'll ask for tracks. Tunedeck gives it a private link to this Mac. It works from your "
                "phone too, even while this Mac is asleep. Telegram and Claude are free; ChatGPT needs a paid plan."_s,
            .tools = {},
            .assistants = frame().assistants.connect,
            .setupSteps = {},
            .backButton = u"Back"_s,
            .nextButton = u"Finish"_s};
}

} // namespace samples
} // namespace tunedeck
