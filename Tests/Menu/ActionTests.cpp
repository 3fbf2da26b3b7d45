#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/PanelController.h"

#include <QFile>

#include <memory>

namespace tunedeck {

using namespace test;

namespace {

class ActionTest : public MenuTest {
protected:
    [[nodiscard]] const PanelState& state() const { return model.state(); }
    [[nodiscard]] QString error() const { return state().actionError.value_or(QString()); }
    [[nodiscard]] QString note() const { return state().actionNote.value_or(QString()); }
    /// Has the model see the service as it is served now.
    void look() {
        runToEnd(model.refresh(scope.token()));
        runToEnd(model.refreshLinks(true, scope.token()));
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

TEST_F(ActionTest, LibraryActionsShowARefusalAndAreBusyUntilTheLastOneEnded) {
    serve(applyRoute, R"({"ok":false,"error":"Rekordbox is open."})", 500);
    panel->applyLibraryNow();
    EXPECT_TRUE(state().libraryBusy);
    awaitLibrary();
    EXPECT_EQ(error(), u"Rekordbox is open."_s);
    EXPECT_TRUE(state().service.isRunning()) << "refreshed";

    serve("POST /local/rekordbox/retry", R"({"ok":false})");
    panel->retryFailedChanges();
    EXPECT_FALSE(state().actionError) << "cleared at once";
    awaitLibrary();
    EXPECT_EQ(error(), u"That didn't work."_s);

    serve("POST /local/rekordbox/dismiss", R"({"ok":true})");
    server.on(applyRoute, behave::after(150ms, behave::answer(200, R"({"ok":true})")));
    panel->applyLibraryNow();
    panel->dismissFailedChanges();
    ASSERT_TRUE(comes([&] { return count("POST /local/rekordbox/dismiss") == 1; }));
    settle();
    EXPECT_TRUE(state().libraryBusy) << "the first still runs";
    awaitLibrary();
    EXPECT_FALSE(state().actionError || state().actionNote);
    EXPECT_EQ(count(applyRoute), 2);
}

TEST_F(ActionTest, ARestoreIsAskedAboutAndSentOnlyWhileItIsWhatWasAskedAbout) {
    serve(restoreRoute, R"({"ok":true})");
    serveStatus(libraryMember("1.4.0"));
    look();
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
    look();
    answer(true);
    EXPECT_EQ(error(), u"The backup v1.4.0 isn't there any more."_s);

    panel->restoreBackup(u"1.5.0"_s);
    serveStatus(libraryMember("1.5.0", true));
    look();
    answer(true);
    EXPECT_EQ(error(), u"Quit Rekordbox to restore a backup."_s);
    settle();
    EXPECT_EQ(count(restoreRoute), 0);

    serveStatus(libraryMember("1.5.0"));
    look();
    panel->restoreBackup(u"1.5.0"_s);
    answer(true);
    ASSERT_TRUE(comes([&] { return count(restoreRoute) == 1 && !state().libraryBusy; }));
    EXPECT_FALSE(state().actionError);
}

TEST_F(ActionTest, ARestoreWithoutADateLeavesItOutOfTheQuestion) {
    ServiceStatus::Library::Backup backup{.version = u"2"_s, .createdAt = u"soon"_s, .reason = u"manual"_s};
    EXPECT_TRUE(restoreQuestion(backup).informativeText.startsWith(u"This puts back the backup: “manual”"_s));
}

TEST_F(ActionTest, RestartingStartsAnewThenBootstrapsThenGivesUpWithTheStatus) {
    const QStringList kickstart{u"kickstart"_s, u"-k"_s, u"gui/501/com.brightfold.tunedeck"_s};
    const QStringList bootstrap{u"bootstrap"_s, u"gui/501"_s,
                                home.path(u"Library/LaunchAgents/com.brightfold.tunedeck.plist"_s)};
    panel->restartService();
    panel->restartService();
    EXPECT_TRUE(state().isRestarting);
    EXPECT_EQ(launchctlCalls, std::vector{kickstart}) << "once, although pressed twice";
    clock.advance(1499ms);
    EXPECT_EQ(count("GET /local/status"), 0);
    clock.advance(1ms);
    ASSERT_TRUE(comes([&] { return !state().isRestarting; }));
    EXPECT_TRUE(state().service.isRunning());
    EXPECT_FALSE(state().actionError);

    launchctlStatus = {0, 113, 5};
    panel->restartService();
    clock.advance(1499ms);
    EXPECT_EQ(launchctlCalls.size(), 2U);
    clock.advance(1ms);
    EXPECT_EQ(launchctlCalls, (std::vector{kickstart, kickstart, bootstrap}));
    EXPECT_EQ(error(), u"Couldn't start tunedeck (launchctl exit 5). See the log."_s);
    EXPECT_TRUE(state().isRestarting);
    clock.advance(1500ms);
    EXPECT_TRUE(comes([&] { return !state().isRestarting; }));
}

TEST_F(ActionTest, RepairingToolsShowsTheNewReportAtOnceOrSaysWhyNot) {
    const QByteArray route = "POST /local/toolbox/install";
    serve(route, "{}", 200);
    panel->repairTools();
    ASSERT_TRUE(comes([&] { return state().actionError.has_value(); }));
    EXPECT_EQ(error(), u"Couldn't reach tunedeck to repair its tools."_s);
    EXPECT_EQ(count("GET /local/toolbox"), 0);
    serve(route, "{}", 202);
    panel->repairTools();
    EXPECT_TRUE(comes([&] { return state().toolbox.has_value(); }));
    EXPECT_FALSE(state().actionError);
    EXPECT_EQ(count(route), 2);
}

TEST_F(ActionTest, ACopiedValueIsMarkedForAMoment) {
    serveLinks(R"({"id":"a","kind":"claude","url":"https://x.example/abc/mcp"},
                  {"id":"i.1","kind":"shortcut","apiUrl":"https://x.example/api","token":"secret"})");
    look();
    panel->copySecret(u"a.url"_s);
    EXPECT_EQ(pasteboard.text, u"https://x.example/abc/mcp"_s);
    clock.advance(1s);
    panel->copySecret(u"i.1.key"_s);
    EXPECT_EQ(pasteboard.text, u"secret"_s);
    clock.advance(500ms);
    EXPECT_EQ(state().copied, u"i.1.key"_s) << "the first value's time doesn't end the second's";
    clock.advance(1s);
    EXPECT_FALSE(state().copied);
    panel->copySecret(u"i.1.url"_s);
    EXPECT_EQ(pasteboard.text, u"https://x.example/api"_s);
    panel->copySecret(u"gone.url"_s);
    EXPECT_EQ(pasteboard.text, u"https://x.example/api"_s);
}

TEST_F(ActionTest, ConnectingAnnouncesTheLinkAndAddsIt) {
    look();
    server.on("POST /local/links",
              behave::after(50ms, behave::answer(201, R"({"id":"n","kind":"claude","url":"https://x.example/u"})")));
    serveLinks(R"({"id":"n","kind":"claude","url":"https://x.example/u"})");
    panel->connectAssistant(u"claude"_s);
    panel->connectAssistant(u"claude"_s);
    EXPECT_TRUE(state().linksBusy);
    awaitLinks();
    EXPECT_EQ(count("POST /local/links"), 1) << "two links of a double press would be one too many";
    EXPECT_EQ(pasteboard.text, u"https://x.example/u"_s);
    EXPECT_EQ(state().copied, u"n.url"_s);
    EXPECT_EQ(note(), u"Copied Claude's URL. "_s + info(Assistant::claude).setupSteps.join(u' '));
    EXPECT_EQ(state().links.size(), 1U);

    serve("POST /local/links", R"({"id":"s","kind":"shortcut"})", 201);
    panel->connectAssistant(u"shortcut"_s);
    awaitLinks();
    EXPECT_EQ(note(), u"Follow the setup guide on your iPhone, using the URL and key shown here."_s);

    serve("POST /local/links", R"({"error":"The cloud is busy."})", 503);
    panel->connectAssistant(u"shortcut"_s);
    awaitLinks();
    EXPECT_EQ(error(), u"Couldn't connect iPhone: The cloud is busy."_s);
    EXPECT_FALSE(state().actionNote);
    serve("POST /local/links", R"({"code":"telegram_not_configured"})", 409);
    panel->connectAssistant(u"telegram"_s);
    awaitLinks();
    EXPECT_EQ(error(), u"Telegram isn't available yet. Try ChatGPT, Claude or the iPhone Shortcut for now."_s);
}

TEST_F(ActionTest, RenewingALinkCopiesItsNewSecretOrSaysWhyNot) {
    serveLinks(R"({"id":"a","kind":"claude","url":"https://old"},{"id":"i","kind":"shortcut","token":"old"},
                  {"id":"t","kind":"telegram","url":"https://t.me/b?start=old"})");
    look();
    panel->rotateLink(u"a"_s);
    EXPECT_EQ(questions.back().first.message, u"Make a new URL for Claude?"_s);
    serve("POST /local/links/a/rotate", R"({"id":"a","kind":"claude","url":"https://new"})");
    answer(true);
    awaitLinks();
    EXPECT_EQ(pasteboard.text, u"https://new"_s);
    EXPECT_EQ(note(), u"New URL copied. Paste it into Claude"_s);

    panel->rotateLink(u"i"_s);
    EXPECT_EQ(questions.back().first.informativeText,
              u"The current key stops working right away. Put the new one into your Shortcut to keep "
              "using Tunedeck there."_s);
    serve("POST /local/links/i/rotate", R"({"id":"i","kind":"shortcut","token":"fresh"})");
    answer(true);
    awaitLinks();
    EXPECT_EQ(state().copied, u"i.key"_s);
    serve("POST /local/links/i/rotate", "{}", 500);
    panel->rotateLink(u"i"_s);
    answer(true);
    awaitLinks();
    EXPECT_EQ(error(), u"Couldn't make a new key: tunedeck answered 500."_s);

    panel->newTelegramCode(u"t"_s);
    serve("POST /local/links/t/rotate", R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=new"})");
    answer(true);
    awaitLinks();
    EXPECT_EQ(note(), u"New code ready. Scan it with your phone."_s);
    EXPECT_EQ(pasteboard.text, u"fresh"_s) << "a code isn't copied";
}

TEST_F(ActionTest, ALinkThatChangedBehindTheQuestionIsLeftAlone) {
    serveLinks(
        R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=1"},{"id":"a","kind":"claude","url":"https://old"})");
    look();
    panel->newTelegramCode(u"t"_s);
    panel->rotateLink(u"a"_s);
    panel->disconnectLink(u"a"_s);
    serveLinks(R"({"id":"t","kind":"telegram","paired":true})");
    look();
    for (const auto& question : questions) {
        question.second(true);
    }
    settle();
    EXPECT_FALSE(error().isEmpty());
    EXPECT_FALSE(state().linksBusy);
    EXPECT_EQ(
        count("POST /local/links/t/rotate") + count("POST /local/links/a/rotate") + count("DELETE /local/links/a"), 0);

    panel->disconnectLink(u"t"_s);
    EXPECT_EQ(questions.back().first.informativeText,
              u"The bot stops answering that chat right away. You can pair again later."_s);
    server.on("DELETE /local/links/t", behave::answer(204, {}));
    serve("GET /local/links", "{}", 500);
    answer(true);
    ASSERT_TRUE(comes([&] { return !state().linksBusy && count("DELETE /local/links/t") == 1; }));
    EXPECT_TRUE(state().links.empty()) << "gone although the list can't be had";
}

TEST_F(ActionTest, TheDownloadFolderIsSavedAndOpened) {
    look();
    panel->revealDownloads();
    EXPECT_EQ(workspace.opened.back(), QUrl::fromLocalFile(u"/music"_s));
    panel->chooseFolder();
    panel->chooseFolder();
    EXPECT_EQ(picker.title, u"Choose where Tunedeck saves downloads"_s);
    picker.answer(u"/else where"_s);
    EXPECT_EQ(services.settings.downloadDir(), u"/else where"_s);
    ASSERT_TRUE(comes([&] { return state().customFolder == u"/else where"_s; }));
    panel->revealDownloads();
    EXPECT_EQ(workspace.opened.back(), QUrl::fromLocalFile(u"/else where"_s));
    panel->useDefaultFolder();
    EXPECT_FALSE(services.settings.downloadDir());

    panel->chooseFolder();
    ASSERT_TRUE(QFile::remove(home.path(u".tunedeck/settings.json"_s)));
    home.write(u".tunedeck/settings.json/in-the-way"_s, "x");
    picker.answer(u"/b"_s);
    EXPECT_TRUE(error().startsWith(u"Couldn't save the folder: "_s)) << error().toStdString();
    workspace.works = false;
    panel->openLog();
    EXPECT_TRUE(error().startsWith(u"Couldn't open "_s)) << error().toStdString();
}

TEST_F(ActionTest, OpenAtLoginShowsWhatTheSystemSays) {
    panel->setOpensAtLogin(true);
    EXPECT_TRUE(state().opensAtLogin);
    loginItem.failure = u"read-only"_s;
    panel->setOpensAtLogin(false);
    EXPECT_EQ(error(), u"Couldn't change Open at Login: read-only"_s);
    EXPECT_TRUE(state().opensAtLogin);
}

TEST_F(ActionTest, AnUpdateIsInstalledOrItsDiskImageOpened) {
    const Release release{.version = u"1.3.0"_s, .url = u"https://x.example/z"_s, .dmgUrl = u"file:///etc"_s};
    std::expected<void, UpdateError> result;
    struct Answer {
        static QCoro::Task<std::expected<void, UpdateError>> give(std::expected<void, UpdateError> result) {
            co_return result;
        }
    };
    services.updates.latestDiskImage = QUrl(u"https://x.example/latest.dmg"_s);
    services.updates.install = [&](Release, const ProgressHandler& progress, std::stop_token) {
        progress(0.5);
        EXPECT_EQ(std::get<UpdateState::Installing>(state().update.value).progress, 0.5);
        return Answer::give(result);
    };
    panel->installUpdate();
    EXPECT_TRUE(relauncher.relaunched.empty()) << "nothing is available";

    result = std::unexpected(UpdateError{.kind = UpdateError::Kind::notWritable});
    model.setUpdate({UpdateState::Available{release}});
    panel->installUpdate();
    EXPECT_EQ(workspace.opened.back(), services.updates.latestDiskImage) << "not what is no web address";
    EXPECT_EQ(state().update, UpdateState{UpdateState::Available{release}});
    result = std::unexpected(UpdateError{.kind = UpdateError::Kind::checksum});
    panel->installUpdate();
    EXPECT_EQ(state().update, UpdateState{UpdateState::Failed{u"The download doesn't match its checksum."_s}});
    EXPECT_EQ(quits, 0);

    result = {};
    model.setUpdate({UpdateState::Available{release}});
    panel->installUpdate();
    ASSERT_EQ(relauncher.relaunched.size(), 1U);
    EXPECT_EQ(relauncher.relaunched.front().first, services.facts.bundle);
    EXPECT_EQ(quits, 1);
}

TEST_F(ActionTest, GoingInTheMiddleOfAnythingTouchesNothing) {
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
    // With every route hanging, each action comes to rest at its first request; with the status alone, at its refresh.
    for (const bool isFirstRequest : {true, false}) {
        for (const auto& action : actions) {
            serveStatus(libraryMember("1"));
            auto owner = std::make_unique<MenuModel>(services);
            runToEnd(owner->refresh(scope.token()));
            runToEnd(owner->refreshLinks(true, scope.token()));
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
