#include "Tests/Gallery/Samples.h"

#include "Tests/Gallery/FakeHost.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace tunedeck {

FakeHost::FakeHost() {
    connect(&panel, &PanelActions::panelAppeared, this, [this] { ++appeared; });
    connect(&panel, &PanelActions::panelDisappeared, this, [this] { --appeared; });
    const auto& type = PanelActions::staticMetaObject;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const auto signal = type.method(i);
        if (!signal.name().startsWith("panel")) {
            const auto slot = "record(" + signal.parameterTypes().value(0) + ')';
            connect(&panel, signal, this, metaObject()->method(metaObject()->indexOfSlot(slot)));
        }
    }
}

QIcon FakeHost::fileIcon(const QString& path) {
    iconPaths << path;
    return icon;
}

void FakeHost::record(const QString& argument) {
    const auto action = QString::fromLatin1(sender()->metaObject()->method(senderSignalIndex()).name());
    pressed << (argument.isEmpty() ? action : action + u' ' + argument);
}

namespace {

constexpr qint64 minute = 60;
constexpr qint64 day = 24 * 60 * minute;

QDateTime presentTime() {
    return QDateTime(QDate(2026, 11, 21), QTime(18, 4), Qt::UTC);
}

} // namespace

PanelContent contentOf(const PanelState& state, const RowRanges& ranges) {
    return panelContent(state, presentTime(), ranges);
}

OnboardingContent contentOf(const OnboardingState& state) {
    return onboardingContent(state, presentTime());
}

namespace samples {

namespace {

ServiceStatus::Job job(const QString& id, const QString& state, const QString& playlist, qint64 age,
                       const QString& message) {
    return {.jobId = id, .state = state, .playlist = playlist, .message = message, .createdAt = ago(age)};
}

ServiceStatus::Library::Backup backup(const QString& version, qint64 age, const QString& reason) {
    return {.version = version, .createdAt = ago(age), .reason = reason, .sizeBytes = 14'000'000};
}

ServiceStatus goodStatus() {
    ServiceStatus status;
    status.version = u"2.3.4"_s;
    status.downloadDir = u"/home/ada/Music/Tunedeck"_s;
    status.downloadDirSource = u"default"_s;
    status.downloadDirWritable = true;
    status.importXml = u"/home/ada/Music/Tunedeck/rekordbox.xml"_s;
    status.cloud = {.enabled = true, .baseUrl = u"https://tunedeck.example"_s, .connected = true};
    status.recentJobs = {job(u"1"_s, u"running"_s, u"Friday Warm-up"_s, minute, u"Song 3 of 14"_s),
                         job(u"2"_s, u"done"_s, u"Disco Edits 2026"_s, 5 * minute, u"Saved 14 songs."_s),
                         job(u"3"_s, u"failed"_s, u"After Hours"_s, day, u"The playlist is private."_s)};
    ServiceStatus::Library library;
    library.currentVersion = u"1.3.0"_s;
    library.lastApplied = {
        .at = ago(5 * minute), .version = u"1.3.0"_s, .summary = u"Added 14 tracks to “Friday Warm-up”"_s};
    library.backups = {backup(u"1.3.0"_s, 5 * minute, u"Before adding 14 tracks to “Friday Warm-up”"_s),
                       backup(u"1.2.0"_s, 3 * day, u"Before removing “Old set”"_s),
                       backup(u"1.0.0"_s, 62 * day, u"First backup"_s)};
    status.rekordboxDb = library;
    return status;
}

AssistantLink used(AssistantLink link, qint64 age) {
    link.lastUsedAt = ago(age);
    return link;
}

AssistantLink paired(AssistantLink link) {
    link.paired = true;
    return link;
}

} // namespace

QString ago(qint64 seconds) {
    return presentTime().addSecs(-seconds).toString(Qt::ISODate);
}

AssistantLink link(const QString& id, Assistant assistant) {
    AssistantLink made;
    made.id = id;
    made.kind = info(assistant).rawValue;
    if (assistant == Assistant::telegram) {
        made.url = u"https://t.me/tunedeck_bot?start=Zk81mQp0aV"_s;
        made.expiresAt = ago(-9 * minute);
    } else if (assistant == Assistant::iphone) {
        made.apiUrl = u"https://tunedeck.example/api/add"_s;
        made.token = u"h8KdTz0aVk81mWv"_s;
    } else {
        made.url = u"https://tunedeck.example/u/k7QxPz81mWv0aVh8Kd/mcp"_s;
    }
    return made;
}

ServiceStatus& status(PanelState& state) {
    return std::get<ServiceStatus>(state.service.value);
}

PanelState checking() {
    PanelState state;
    state.appVersion = u"1.4.0"_s;
    state.home = u"/home/ada"_s;
    state.opensAtLogin = true;
    state.update.value = UpdateState::UpToDate{presentTime().addSecs(-120 * minute)};
    return state;
}

PanelState usual() {
    PanelState state = checking();
    state.service = ServiceState::running(goodStatus());
    state.links = {used(link(u"a"_s, Assistant::claude), 5 * minute), paired(link(u"t"_s, Assistant::telegram))};
    return state;
}

PanelState stopped() {
    PanelState state = checking();
    state.service = ServiceState::notRunning();
    return state;
}

PanelState troubled() {
    PanelState state = usual();
    ServiceStatus& service = status(state);
    service.cloud.connected = false;
    service.downloadDirSource = u"settings"_s;
    service.downloadDirWritable = false;
    auto& library = *service.rekordboxDb;
    library.rekordboxRunning = true;
    library.pending = {{u"p1"_s, ago(minute), u"Add 2 tracks to “Sunday”"_s},
                       {u"p2"_s, ago(minute), u"Rename “Peak”"_s}};
    library.lastError = u"The library is locked by another program."_s;
    library.failed = {
        {u"1"_s, u"Rename ‘Peak’ to ‘Peak Time’"_s, u"There is no playlist of that name."_s},
        {u"2"_s, u"Add 2 tracks to ‘Sunday’"_s, u"The file is gone: ~/Music/Tunedeck/Sunday/04 – Intro.mp3"_s}};
    state.menuBarIcon.kind = MenuBarIconVisibility::Kind::hidden;
    state.missingTray = MissingTray::Yes;
    state.links.push_back(link(u"u"_s, Assistant::telegram));
    state.toolbox = ToolboxReport{.tools = {{.name = u"yt-dlp"_s}, {.name = u"ffmpeg"_s}},
                                  .error = u"The last try failed: the download was cut off."_s};
    state.update.value = UpdateState::Failed{u"the server can't be reached."_s};
    state.actionError = u"Couldn't reach tunedeck to repair its tools."_s;
    return state;
}

PanelState busy() {
    PanelState state = usual();
    auto& library = *status(state).rekordboxDb;
    library.pending = {{u"p"_s, ago(minute), u"Add 2 tracks to “Sunday”"_s}};
    library.failed = {{u"1"_s, u"Rename ‘Peak’ to ‘Peak Time’"_s, u"There is no playlist of that name."_s}};
    state.libraryBusy = state.linksBusy = state.isRestarting = state.revealSecrets = true;
    state.links.push_back(link(u"u"_s, Assistant::telegram));
    state.update.value = UpdateState::Installing{0.63};
    state.toolbox = toolsStep().toolbox;
    return state;
}

PanelState longWords() {
    PanelState state = usual();
    ServiceStatus& service = status(state);
    service.version = u"2026.11.21-beta.4+build.20261121.0915"_s;
    service.cloud.connected.reset();
    service.recentJobs = {
        job(u"1"_s, u"running"_s, u"Donaudampfschifffahrtsgesellschaftskapitänsmützen-Sommerabschlussfest 2026"_s,
            minute, {}),
        job(u"2"_s, u"done"_s, u"أغاني الصيف — حفلة الجمعة"_s, 21 * day, {}),
        job(u"3"_s, u"queued"_s, u"🪩 Disco 🕺🏽 Night 🇩🇪🇧🇷 👩‍🎤 — Überraschungsgäste"_s,
            11 * minute, {})};
    service.downloadDir = u"/home/ada/Documents/"_s;
    while (service.downloadDir.size() < 190) {
        service.downloadDir += u"Überraschungspartysammlung/"_s;
    }
    service.downloadDirSource = u"settings"_s;
    auto& library = *service.rekordboxDb;
    library.currentVersion = u"1.204.11-überarbeitet-im-garten"_s;
    library.backups.front().version = *library.currentVersion;
    AssistantLink garden = used(link(u"a"_s, Assistant::claude), 11 * minute);
    garden.label = u"Wohnzimmerassistentenverbindung im Gartenhaus"_s;
    state.links = {garden, link(u"s"_s, Assistant::iphone)};
    state.copied = u"s.key"_s;
    Release release;
    release.version = u"1.5.0"_s;
    release.notes = u"Playlists can be renamed by asking. Backups open three times as fast."_s;
    state.update.value = UpdateState::Available{release};
    state.actionNote = u"Copied Claude's URL. "_s + info(Assistant::claude).setupSteps.join(u' ');
    return state;
}

PanelState crowded() {
    PanelState state = usual();
    state.links.clear();
    for (int i = 0; i < 9; ++i) {
        AssistantLink made = link(u"p%1"_s.arg(i), i % 2 == 0 ? Assistant::claude : Assistant::chatgpt);
        made.label = u"Studio %1"_s.arg(i + 1);
        state.links.push_back(i % 3 == 0 ? made : used(made, (i + 1) * day));
    }
    state.links.push_back(link(u"s"_s, Assistant::iphone));
    state.links.push_back(link(u"t"_s, Assistant::telegram));
    state.links.push_back(paired(link(u"u"_s, Assistant::telegram)));
    auto& backups = status(state).rekordboxDb->backups;
    backups.clear();
    for (int i = 0; i < 60; ++i) {
        backups.push_back(backup(u"1.%1.0"_s.arg(60 - i), (i + 2) * day,
                                 u"Before adding %1 tracks to “Set %2”"_s.arg(i % 9 + 2).arg(60 - i)));
    }
    return state;
}

PanelState offered() {
    PanelState state = usual();
    state.update.value =
        UpdateState::Available{Release{.version = u"1.5.0"_s, .notes = u"Backups are listed by day."_s}};
    state.actionNote = u"Diagnostics copied."_s;
    return state;
}

OnboardingState noService() {
    return {.serviceFailure = u"Couldn't start Tunedeck's background service: launchctl bootstrap exited 1"_s,
            .serviceAdvice = u"The systemd of your session runs it. Log in at the desktop itself."_s};
}

OnboardingState slowBackup() {
    OnboardingState state = rekordboxStep();
    state.rekordbox.reset();
    state.baseline.value = Baseline::Working{};
    state.waitingSince = presentTime().addSecs(-minute);
    return state;
}

OnboardingState toolsStep() {
    OnboardingState state;
    state.status = goodStatus();
    state.toolbox = ToolboxReport{.tools = {{.name = u"yt-dlp"_s, .installed = u"2026.11.01"_s, .ready = true},
                                            {.name = u"spotdl"_s},
                                            {.name = u"ffmpeg"_s}},
                                  .installing = true,
                                  .step = u"Downloading spotdl…"_s,
                                  .progress = 0.42};
    return state;
}

OnboardingState brokenTools() {
    OnboardingState state = toolsStep();
    state.toolbox->installing = false;
    state.toolbox->error = u"The download was cut off."_s;
    state.error = u"Couldn't reach tunedeck to repair its tools."_s;
    return state;
}

OnboardingState rekordboxStep() {
    OnboardingState state;
    state.step = OnboardingStep::rekordbox;
    state.status = goodStatus();
    state.rekordbox = RekordboxInstall{u"Rekordbox 7"_s, u"7.1.3"_s};
    state.baseline.value = Baseline::Done{u"1.0.0"_s};
    return state;
}

OnboardingState postponedBackup() {
    OnboardingState state = rekordboxStep();
    state.rekordbox.reset();
    state.baseline.value = Baseline::Later{u"Rekordbox is open."_s};
    return state;
}

OnboardingState assistantStep() {
    OnboardingState state;
    state.step = OnboardingStep::assistant;
    state.status = goodStatus();
    return state;
}

OnboardingState assistantStep(Assistant assistant) {
    OnboardingState state = assistantStep();
    state.assistant = assistant;
    state.link = link(u"n"_s, assistant);
    return state;
}

QList<std::pair<QString, PanelState>> panels() {
    return {{u"checking"_s, checking()}, {u"stopped"_s, stopped()}, {u"usual"_s, usual()},
            {u"troubled"_s, troubled()}, {u"busy"_s, busy()},       {u"long-words"_s, longWords()},
            {u"crowded"_s, crowded()},   {u"update"_s, offered()}};
}

QList<std::pair<QString, OnboardingState>> firstRuns() {
    OnboardingState claude = assistantStep(Assistant::claude);
    claude.copied = true;
    claude.link->lastUsedAt = ago(minute);
    claude.error = u"Couldn't open https://tunedeck.example/connect/claude."_s;
    return {{u"waiting"_s, {}},
            {u"no-service"_s, noService()},
            {u"slow-service"_s, {.waitingSince = presentTime().addSecs(-minute)}},
            {u"tools"_s, toolsStep()},
            {u"no-tools"_s, brokenTools()},
            {u"rekordbox"_s, rekordboxStep()},
            {u"no-rekordbox"_s, postponedBackup()},
            {u"slow-backup"_s, slowBackup()},
            {u"assistant"_s, assistantStep()},
            {u"telegram"_s, assistantStep(Assistant::telegram)},
            {u"claude"_s, claude},
            {u"iphone"_s, assistantStep(Assistant::iphone)}};
}

} // namespace samples
} // namespace tunedeck
