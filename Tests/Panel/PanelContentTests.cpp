#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"

namespace tunedeck::test {

namespace {

using look::Tone;

ServiceState runningWith(bool cloudEnabled, std::optional<bool> connected) {
    ServiceStatus status = goodStatus();
    status.cloud.enabled = cloudEnabled;
    status.cloud.connected = connected;
    return ServiceState::running(status);
}

} // namespace

TEST(PanelContent, ShowsADisabledCloudBeforeItsConnection) {
    const struct {
        ServiceState service;
        QString line;
        Tone tone;
        QString cloudText = {}; ///< on the card of the assistants
    } cases[] = {
        {runningWith(false, true), u"Running · cloud off"_s, Tone::Secondary},
        {runningWith(false, {}), u"Running · cloud off"_s, Tone::Secondary},
        {runningWith(true, true), u"Running · connected to the cloud"_s, Tone::Good,
         u"Connected to Tunedeck cloud: requests arrive instantly."_s},
        {runningWith(true, false), u"Running · cloud not reachable yet"_s, Tone::Warning,
         u"Not connected right now. Requests wait in the cloud until this Mac is back."_s},
        {runningWith(true, {}), u"Running · v2.3.4"_s, Tone::Good, u"Cloud queue on."_s},
        {ServiceState::checking(), u"Checking…"_s, Tone::Secondary},
        {ServiceState::notRunning(), u"Not running"_s, Tone::Bad},
    };
    for (const auto& [service, line, tone, cloudText] : cases) {
        PanelState state;
        state.service = service;
        const PanelContent content = panelContent(state, moment());
        EXPECT_EQ((QStringList{content.header.title, content.header.status}), (QStringList{u"Tunedeck"_s, line}));
        EXPECT_EQ(content.header.tone, tone) << line.toStdString();
        EXPECT_EQ(content.assistants.cloudText, cloudText);
        EXPECT_EQ(content.assistants.cloudTone, cloudText.startsWith(u"Cloud") ? Tone::Secondary
                                                : cloudText.isEmpty()          ? Tone::Secondary
                                                                               : tone);
    }
}

TEST(PanelContent, ShowsOnlyTheBeginningOfLongTextsAndPartsOfLongLists) {
    const QString longText = QString(u"e\u0301\n"_s).repeated(100'000);
    ServiceStatus status = goodStatus();
    for (QString* text : {&status.version, &status.downloadDir, &status.importXml}) {
        *text = longText;
    }
    status.cloud.connected.reset();
    status.downloadDirWritable = false;
    status.downloadDirError = longText;
    status.recentJobs = {{.jobId = u"j"_s, .state = u"failed"_s, .playlist = longText, .message = longText}};
    status.rekordboxDb = ServiceStatus::Library{
        .pending = {500, {.id = u"p"_s, .createdAt = {}, .summary = longText}},
        .failed = {500, {.id = u"f"_s, .summary = longText, .error = longText}},
        .currentVersion = longText,
        .backups = {500, {.version = longText, .createdAt = {}, .reason = longText}},
    };
    PanelState state;
    state.service = ServiceState::running(status);
    state.actionError = longText;
    state.toolbox = ToolboxReport{.tools = {500, {.name = longText, .wanted = longText}}, .error = longText};
    state.links = {500, link("a", "gemini")};
    for (AssistantLink& link : state.links) {
        link.label = link.url = longText;
    }
    const PanelContent content = panelContent(state, moment(), {.links = {.first = 490, .size = 40}});
    EXPECT_EQ(content.assistants.links.before, 460);
    EXPECT_EQ(content.assistants.links.rows.size(), 40);
    EXPECT_TRUE(content.assistants.links.rows[0].menu.description.contains(u", 461 of 500"));
    EXPECT_EQ(content.rekordbox.failed.rows.size() + content.rekordbox.failed.after, 500);

    const auto expectShort = [](const auto& view) {
        const std::remove_cvref_t<decltype(view)> usual;
        for (const QString& member : members(view.staticMetaObject, &view, &usual)) {
            EXPECT_TRUE(member.startsWith(u"id: ") || member.size() < 3200) << member.left(80).toStdString();
        }
    };
    expectShort(content);
    expectShort(content.recent.jobs.at(0));
    expectShort(content.assistants.links.rows.at(0));
    expectShort(content.rekordbox.failed.rows.at(0));
    expectShort(content.rekordbox.backups.rows.at(0));
    EXPECT_FALSE(content.recent.jobs.at(0).playlist.contains(u'\n'));

    OnboardingState firstRun{.toolbox = state.toolbox, .baseline = {Baseline::Later{longText}}, .error = longText};
    expectShort(onboardingContent(firstRun, moment()));
    expectShort(onboardingContent(firstRun, moment()).tools.rows.at(0));
    firstRun.step = OnboardingStep::rekordbox;
    expectShort(onboardingContent(firstRun, moment()));
}

TEST(PanelContent, EachCardFollowsItsOwnBusyFlag) {
    for (bool PanelState::* busyFlag : {&PanelState::linksBusy, &PanelState::libraryBusy, &PanelState::isRestarting}) {
        PanelState state;
        state.service = ServiceState::running(goodStatus());
        std::get<ServiceStatus>(state.service.value).rekordboxDb = ServiceStatus::Library{};
        state.links = {link("t", "telegram")};
        state.*busyFlag = true;
        const PanelContent content = panelContent(state, moment());
        const AssistantsView& assistants = content.assistants;
        EXPECT_EQ(
            (QList<bool>{assistants.busy, assistants.links.rows.at(0).pairing.busy, content.rekordbox.busy,
                         content.notRunning.starting, content.footer.restarting}),
            (QList<bool>{state.linksBusy, state.linksBusy, state.libraryBusy, state.isRestarting, state.isRestarting}));
    }
}

TEST(PanelContent, ShowsCardsOnlyWhenTheyApply) {
    PanelState state;
    const auto shown = [&] {
        const PanelContent content = panelContent(state, moment());
        return QList<bool>{content.hiddenIcon.shown, content.notRunning.shown, content.recent.shown,
                           content.tools.shown,      content.banner.shown,     content.footer.opensAtLogin};
    };
    EXPECT_EQ(shown(), (QList<bool>{false, false, false, false, false, false}));
    state.service = ServiceState::notRunning();
    state.menuBarIcon.kind = MenuBarIconVisibility::Kind::hidden;
    state.opensAtLogin = true;
    EXPECT_EQ(shown(), (QList<bool>{true, true, false, false, false, true}));
    const PanelContent stopped = panelContent(state, moment());
    EXPECT_EQ(textOf(stopped.notRunning), "shown: true | button: Start tunedeck");
    state.isRestarting = true;
    EXPECT_EQ(panelContent(state, moment()).notRunning.button, u"Starting…");
    EXPECT_EQ(textOf(stopped.footer), "opensAtLogin: true");
    EXPECT_EQ(textOf(stopped.hiddenIcon), "shown: true") << "there is a tray";
    state.missingTray = MissingTray::Yes;
    EXPECT_EQ(
        textOf(panelContent(state, moment()).hiddenIcon),
        "shown: true | missingTray: This desktop shows no tray icons, so Tunedeck opens this window instead. Many "
        "desktops show them after a small change. | guideButton: Show how | dismissButton: Don't show again");
    state.missingTray = MissingTray::Dismissed;
    EXPECT_FALSE(panelContent(state, moment()).hiddenIcon.shown);

    for (const auto& [error, note] : {std::pair(u"Failed."_s, u"Done."_s), {{}, u"Done."_s}}) {
        state.actionError = error.isEmpty() ? std::nullopt : std::optional(error);
        state.actionNote = note;
        const BannerView banner = panelContent(state, moment()).banner;
        EXPECT_TRUE(banner.shown);
        EXPECT_EQ(banner.text, error.isEmpty() ? note : error) << "the error rather than the note";
        EXPECT_EQ(banner.tone, error.isEmpty() ? look::Tone::Good : look::Tone::Warning);
    }
}

} // namespace tunedeck::test
