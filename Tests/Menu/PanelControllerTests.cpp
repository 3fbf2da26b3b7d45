#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Actions/PanelController.h"

#include <memory>

namespace tunedeck {

using namespace test;

namespace {

class PanelControllerTest : public MenuTest {
protected:
    [[nodiscard]] const PanelState& state() const { return model.state(); }
    [[nodiscard]] QString error() const { return state().actionError.value_or(QString()); }
    [[nodiscard]] QString note() const { return state().actionNote.value_or(QString()); }
    /// Refreshes the model, including the links.
    void refresh() {
        runToEnd(model.refresh(scope.token()));
        runToEnd(model.refreshLinks(MenuModel::LinksFetch::Always, scope.token()));
    }
    void awaitLinks() const {
        ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    }
    void awaitLibrary() const {
        ASSERT_TRUE(comes([&] { return !state().libraryBusy; }));
    }
    void answer(bool confirmed) {
        ASSERT_FALSE(questions.empty()) << "nothing was asked";
        questions.back().second(confirmed);
    }

    MenuModel model{services};
    TaskScope scope;
    std::unique_ptr<PanelController> panel = std::make_unique<PanelController>(model, services);
};

const QByteArray applyRoute = "POST /local/rekordbox/apply";
const QByteArray restoreRoute = "POST /local/rekordbox/restore";

} // namespace

TEST_F(PanelControllerTest, LibraryActionsAreBusyUntilTheLastOneHasEnded) {
    serve("POST /local/rekordbox/retry", R"({"ok":false})");
    panel->retryFailedChanges();
    awaitLibrary();
    EXPECT_EQ(error(), u"That didn't work."_s);
    EXPECT_TRUE(state().service.isRunning()) << "refreshed";

    serve("POST /local/rekordbox/dismiss", R"({"ok":true})");
    server.on(applyRoute, behave::after(150ms, behave::answer(200, R"({"ok":true})")));
    panel->applyLibraryNow();
    panel->dismissFailedChanges();
    ASSERT_TRUE(comes([&] { return count("POST /local/rekordbox/dismiss") == 1; }));
    settle();
    EXPECT_TRUE(state().libraryBusy) << "the first is still in flight";
    awaitLibrary();
    EXPECT_FALSE(state().actionError || state().actionNote);
    EXPECT_EQ(count(applyRoute), 1);
}

TEST_F(PanelControllerTest, RestoringSendsNothingIfTheStateHasChangedSinceTheQuestion) {
    serve(restoreRoute, R"({"ok":true})");
    serveStatus(libraryMember("1.4.0"));
    refresh();
    panel->restoreBackup(u"9.9.9"_s);
    EXPECT_TRUE(questions.empty()) << "no such backup";

    panel->restoreBackup(u"1.4.0"_s);
    ASSERT_EQ(questions.size(), 1U);
    const auto& question = questions.back().first;
    EXPECT_EQ(question.message, u"Restore your Rekordbox library to v1.4.0?"_s);
    EXPECT_TRUE(question.informativeText.startsWith(u"This puts back the backup from Feb 28, 2026"_s))
        << question.informativeText.toStdString();
    EXPECT_TRUE(question.informativeText.contains(u": “before import”.\n\nYour current library"_s));
    EXPECT_TRUE(question.warning);
    answer(false);

    panel->restoreBackup(u"1.4.0"_s);
    serveStatus(libraryMember("1.5.0"));
    refresh();
    answer(true);
    EXPECT_EQ(error(), u"The backup v1.4.0 isn't there any more."_s);

    panel->restoreBackup(u"1.5.0"_s);
    serveStatus(libraryMember("1.5.0", true));
    refresh();
    answer(true);
    EXPECT_EQ(error(), u"Quit Rekordbox to restore a backup."_s);
    settle();
    EXPECT_EQ(count(restoreRoute), 0);

    panel->restoreBackup(u"1.5.0"_s);
    serve("GET /local/status", "{}", 500);
    refresh();
    answer(true); // the request itself reports a service that is down
    ASSERT_TRUE(comes([&] { return count(restoreRoute) == 1 && !state().libraryBusy; }));
    EXPECT_TRUE(bodyOf(restoreRoute).contains("1.5.0"));
}

TEST_F(PanelControllerTest, RestoreQuestionOmitsAnUnknownDate) {
    ServiceStatus::Library::Backup backup{.version = u"2"_s, .createdAt = u"soon"_s, .reason = u"manual"_s};
    EXPECT_TRUE(restoreQuestion(backup).informativeText.startsWith(u"This puts back the backup: “manual”"_s));
}

TEST_F(PanelControllerTest, RestartingFallsBackToBootstrapAndReportsItsExitStatus) {
    const QStringList kickstart{u"kickstart"_s, u"-k"_s, u"gui/501/com.brightfold.tunedeck"_s};
    const QStringList bootstrap{u"bootstrap"_s, u"gui/501"_s,
                                home.path(u"Library/LaunchAgents/com.brightfold.tunedeck.plist"_s)};
    launchctlStatus = {113, 5};
    model.showError(u"old"_s);
    panel->restartService();
    EXPECT_FALSE(state().actionError);
    panel->restartService();
    EXPECT_EQ(launchctlCalls, std::vector{kickstart}) << "once, although pressed twice";
    EXPECT_TRUE(state().isRestarting);
    clock.advance(1499ms);
    EXPECT_EQ(launchctlCalls.size(), 1U);
    clock.advance(1ms);
    EXPECT_EQ(launchctlCalls, (std::vector{kickstart, bootstrap}));
    EXPECT_EQ(error(), u"Couldn't start tunedeck (launchctl exit 5). See the log."_s);
    clock.advance(1499ms);
    EXPECT_EQ(count("GET /local/status"), 0);
    clock.advance(1ms);
    ASSERT_TRUE(comes([&] { return !state().isRestarting; }));
    EXPECT_TRUE(state().service.isRunning());
}

TEST_F(PanelControllerTest, AnEarlierCopyDoesNotClearTheMarkOfALaterOne) {
    serveLinks(R"({"id":"a","kind":"claude","url":"u"},{"id":"i.1","kind":"shortcut","token":"secret"})");
    refresh();
    panel->copySecret(u"a.url"_s);
    clock.advance(1s);
    panel->copySecret(u"i.1.key"_s);
    clock.advance(500ms);
    EXPECT_EQ(state().copied, u"i.1.key"_s);
    clock.advance(1s);
    EXPECT_FALSE(state().copied);
    panel->copySecret(u"gone.url"_s);
    EXPECT_EQ(pasteboard.text, u"secret"_s);
}

TEST_F(PanelControllerTest, ConnectingShowsTheNextStepAndAddsTheLink) {
    refresh();
    serve("POST /local/links", R"({"id":"s","kind":"shortcut"})", 201);
    serve("GET /local/links", "{}", 500);
    const auto lists = count("GET /local/links");
    panel->connectAssistant(u"shortcut"_s);
    panel->connectAssistant(u"shortcut"_s); // a double press
    EXPECT_TRUE(state().linksBusy);
    awaitLinks();
    EXPECT_EQ(count("POST /local/links"), 1);
    EXPECT_EQ(count("GET /local/links"), lists + 1);
    EXPECT_EQ(note(), u"Follow the setup guide on your iPhone, using the URL and key shown here."_s);
    EXPECT_EQ(state().links.size(), 1U) << "although the list fails";
    serve("POST /local/links", R"({"code":"telegram_not_configured"})", 409);
    panel->connectAssistant(u"telegram"_s);
    EXPECT_FALSE(state().actionError);
    awaitLinks();
    EXPECT_EQ(error(), u"Telegram isn't available yet. Try ChatGPT, Claude or the iPhone Shortcut for now."_s);
    EXPECT_FALSE(state().actionNote);
    panel->connectAssistant(u"telegram"_s);
    EXPECT_FALSE(state().actionError) << "cleared at once";
    awaitLinks();
    serve("POST /local/links", R"({"id":"c","kind":"claude"})", 201);
    panel->connectAssistant(u"claude"_s);
    awaitLinks();
    EXPECT_FALSE(state().actionNote) << "there is no URL to paste";
    serve("POST /local/links", R"({"id":"c","kind":"claude","url":"u"})", 201);
    panel->connectAssistant(u"claude"_s);
    awaitLinks();
    EXPECT_EQ(state().copied, u"c.url"_s);
}

TEST_F(PanelControllerTest, RenewingALinkCopiesItsSecretUnlessItIsACode) {
    serveLinks(
        R"({"id":"i","kind":"shortcut","token":"old"},{"id":"t","kind":"telegram","url":"https://t.me/b?start=1"})");
    refresh();
    serve("GET /local/links", "{}", 500);
    panel->rotateLink(u"i"_s);
    EXPECT_EQ(questions.back().first.informativeText,
              u"The current key stops working right away. Put the new one into your Shortcut to keep "
              "using Tunedeck there."_s);
    serve("POST /local/links/i/rotate", R"({"id":"i","kind":"shortcut","token":"fresh"})");
    answer(true);
    awaitLinks();
    EXPECT_EQ(state().copied, u"i.key"_s);
    EXPECT_EQ(model.link(u"i"_s)->token, u"fresh"_s) << "although the list fails";
    panel->newTelegramCode(u"t"_s);
    serve("POST /local/links/t/rotate", R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=new"})");
    answer(true);
    awaitLinks();
    EXPECT_EQ(pasteboard.text, u"fresh"_s);
    EXPECT_EQ(model.link(u"t"_s)->url, u"https://t.me/b?start=new"_s);
}

TEST_F(PanelControllerTest, ALinkThatChangedDuringTheQuestionIsLeftAlone) {
    serveLinks(
        R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=1"},{"id":"a","kind":"claude","url":"https://old"},)"
        R"({"id":"i","kind":"shortcut","token":"old"},{"id":"c","kind":"chatgpt","url":"https://old"})");
    refresh();
    panel->newTelegramCode(u"t"_s);
    panel->rotateLink(u"i"_s);
    panel->disconnectLink(u"c"_s);
    panel->rotateLink(u"a"_s);
    panel->disconnectLink(u"a"_s);
    serveLinks(R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=1","paired":true},
        {"id":"i","kind":"shortcut","token":"new"},{"id":"c","kind":"chatgpt","url":"https://new"})");
    refresh();
    const auto before = server.requests().size();
    for (const auto& question : questions) {
        model.clearError();
        question.second(true);
        EXPECT_TRUE(error().endsWith(u" has changed in the meantime, so nothing was done."_s));
    }
    settle();
    EXPECT_FALSE(state().linksBusy);
    EXPECT_EQ(server.requests().size(), before);

    panel->disconnectLink(u"t"_s);
    EXPECT_EQ(questions.back().first.informativeText,
              u"The bot stops answering that chat right away. You can pair again later."_s);
    server.on("DELETE /local/links/t", behave::answer(204, {}));
    serve("GET /local/links", "{}", 500);
    answer(true);
    ASSERT_TRUE(comes([&] { return !state().linksBusy && count("DELETE /local/links/t") == 1; }));
    EXPECT_EQ(model.link(u"t"_s), nullptr) << "removed although the list fails";
}

TEST_F(PanelControllerTest, AsksForTheFolderOnceStartingAtTheCurrentOne) {
    panel->chooseFolder();
    EXPECT_EQ(picker.start, home.path());
    const auto choose = std::exchange(picker.answer, nullptr);
    panel->chooseFolder();
    EXPECT_FALSE(picker.answer) << "it is still open";
    model.showError(u"old"_s);
    choose(u"/sets"_s);
    EXPECT_FALSE(state().actionError);
    ASSERT_TRUE(comes([&] { return state().service.isRunning(); })) << "refreshed";
    panel->chooseFolder();
    EXPECT_EQ(picker.start, u"/sets"_s);
    picker.answer(std::nullopt);
    panel->revealDownloads();
    EXPECT_EQ(workspace.opened.back(), QUrl::fromLocalFile(u"/sets"_s)) << "cancelling changes nothing";
    panel->useDefaultFolder();
    panel->chooseFolder();
    EXPECT_EQ(picker.start, u"/music"_s);
}

TEST_F(PanelControllerTest, AnUpdateThatCannotBeInstalledOpensItsDiskImage) {
    const auto latest = u"https://x.example/latest.dmg"_s;
    services.updates.latestDiskImageUrl = QUrl(latest);
    services.updates.install = [&](const Release&, const ProgressHandler& progress, std::stop_token) {
        EXPECT_EQ(state().update, UpdateState{UpdateState::Installing{}});
        progress(0.5);
        EXPECT_EQ(state().update, UpdateState{UpdateState::Installing{0.5}});
        const std::expected<void, UpdateError> failed =
            std::unexpected(UpdateError{.kind = UpdateError::Kind::notWritable});
        return endedTask(failed);
    };
    for (const auto& [image, opened] : {std::pair(u"http://x.example/a%20b.dmg"_s, u"http://x.example/a%20b.dmg"_s),
                                        {u"file:///etc/passwd"_s, latest},
                                        {QString(), latest}}) {
        const UpdateState available{UpdateState::Available{{.version = u"1.3.0"_s, .dmgUrl = image}}};
        model.setUpdate(available);
        panel->installUpdate();
        EXPECT_EQ(workspace.opened.back(), QUrl(opened));
        EXPECT_EQ(state().update, available);
    }
}

TEST_F(PanelControllerTest, SmallActionsUpdateTheModel) {
    serveLinks(R"({"id":"x","kind":"new","label":"Robot"})");
    refresh();
    serve("POST /local/toolbox/install", "{}", 202);
    serve("GET /local/toolbox",
          R"({"tools":[{"name":"ffmpeg","wanted":"7","ready":false}],"venvs":[],"installing":true})");
    panel->repairTools();
    ASSERT_TRUE(comes([&] { return state().toolbox->installing; })) << "the report is fetched at once";
    services.facts.architecture = u"arm64"_s;
    panel->copyDiagnostics();
    for (const auto& part : {u"Apple silicon"_s, u"Tools: ffmpeg"_s, u"Assistants: Robot"_s}) {
        EXPECT_TRUE(pasteboard.text.contains(part)) << pasteboard.text.toStdString();
    }
    panel->openSetupGuide(u"x"_s);
    EXPECT_EQ(workspace.opened.back().path(), u"/connect/"_s) << "an unknown assistant";
    panel->toggleRevealSecrets();
    EXPECT_TRUE(state().revealSecrets);
    panel->toggleRevealSecrets();
    EXPECT_FALSE(state().revealSecrets);
    model.showError(u"old"_s);
    panel->setOpensAtLogin(true);
    EXPECT_FALSE(state().actionError);
    EXPECT_TRUE(state().opensAtLogin);
}

TEST_F(PanelControllerTest, DestroyedActionsCancelTheirRequests) {
    serveStatus(libraryMember("1"));
    serveLinks(R"({"id":"a","kind":"claude","url":"u"},{"id":"t","kind":"telegram","url":"v"})");
    const std::vector<std::function<void(PanelController&)>> actions{
        [](auto& p) { p.applyLibraryNow(); },
        [](auto& p) { p.restoreBackup(u"1"_s); },
        [](auto& p) { p.repairTools(); },
        [](auto& p) { p.restartService(); },
        [](auto& p) { p.chooseFolder(); },
        [](auto& p) { p.useDefaultFolder(); },
        [](auto& p) { p.connectAssistant(u"chatgpt"_s); },
        [](auto& p) { p.rotateLink(u"a"_s); },
        [](auto& p) { p.newTelegramCode(u"t"_s); },
        [](auto& p) { p.disconnectLink(u"a"_s); },
        [](auto& p) { p.copySecret(u"a.url"_s); },
        [](auto& p) { p.panelAppeared(); },
    };
    // With every route hanging, each action waits in its first request; with only the status hanging, in its refresh.
    for (const bool isFirstRequest : {true, false}) {
        for (const auto& action : actions) {
            serveStatus(libraryMember("1"));
            auto owner = std::make_unique<MenuModel>(services);
            runToEnd(owner->refresh(scope.token()));
            runToEnd(owner->refreshLinks(MenuModel::LinksFetch::Always, scope.token()));
            auto controller = std::make_unique<PanelController>(*owner, services);
            server.on(isFirstRequest ? "*" : "GET /local/status", behave::hang());
            questions.clear();
            picker.answer = nullptr;
            const auto before = server.connections();
            action(*controller);
            if (!questions.empty()) {
                questions.back().second(true);
            }
            runUntil([&] { return server.connections() > before; }, 50ms);
            controller.reset();
            owner.reset();
            EXPECT_TRUE(comes([&] { return server.open() == 0; })) << "a request outlived its owner";
            clock.advance(5s);
            if (picker.answer) {
                picker.answer(u"/late"_s);
            }
        }
    }
    EXPECT_NE(services.settings.downloadDir(), u"/late"_s);
}

} // namespace tunedeck
