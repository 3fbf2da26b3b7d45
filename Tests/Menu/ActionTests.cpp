#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/PanelController.h"

#include <QFile>

#include <memory>

namespace tunedeck {

using namespace test;
using namespace std::chrono_literals;

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
    ASSERT_TRUE(comes([&] { return !state().libraryBusy; }));
    EXPECT_EQ(error(), QStringLiteral("Rekordbox is open."));
    EXPECT_TRUE(state().service.isRunning()) << "refreshed";

    serve("POST /local/rekordbox/retry", R"({"ok":false})");
    panel->retryFailedChanges();
    EXPECT_FALSE(state().actionError) << "cleared at once";
    ASSERT_TRUE(comes([&] { return !state().libraryBusy; }));
    EXPECT_EQ(error(), QStringLiteral("That didn't work."));

    serve("POST /local/rekordbox/dismiss", R"({"ok":true})");
    server.on(applyRoute, behave::after(150ms, behave::answer(200, R"({"ok":true})")));
    panel->applyLibraryNow();
    panel->dismissFailedChanges();
    ASSERT_TRUE(comes([&] { return count("POST /local/rekordbox/dismiss") == 1; }));
    settle();
    EXPECT_TRUE(state().libraryBusy) << "the first still runs";
    ASSERT_TRUE(comes([&] { return !state().libraryBusy; }));
    EXPECT_FALSE(state().actionError || state().actionNote);
    EXPECT_EQ(count(applyRoute), 2);
}

TEST_F(ActionTest, ARestoreIsAskedAboutAndSentOnlyWhileItIsWhatWasAskedAbout) {
    serve(restoreRoute, R"({"ok":true})");
    serveStatus(libraryMember("1.4.0"));
    look();
    panel->restoreBackup(QStringLiteral("9.9.9"));
    EXPECT_TRUE(questions.empty()) << "no such backup";

    panel->restoreBackup(QStringLiteral("1.4.0"));
    ASSERT_EQ(questions.size(), 1U);
    const auto& question = questions.back().first;
    EXPECT_EQ(question.message, QStringLiteral("Restore your Rekordbox library to v1.4.0?"));
    EXPECT_TRUE(question.informativeText.startsWith(QStringLiteral("This puts back the backup from Feb 28, 2026")))
        << question.informativeText.toStdString();
    EXPECT_TRUE(question.informativeText.contains(QStringLiteral(": “before import”.\n\nYour current library")));
    EXPECT_TRUE(question.warning);
    answer(false);

    panel->restoreBackup(QStringLiteral("1.4.0"));
    serveStatus(libraryMember("1.5.0"));
    look();
    answer(true);
    EXPECT_EQ(error(), QStringLiteral("The backup v1.4.0 isn't there any more."));

    panel->restoreBackup(QStringLiteral("1.5.0"));
    serveStatus(libraryMember("1.5.0", true));
    look();
    answer(true);
    EXPECT_EQ(error(), QStringLiteral("Quit Rekordbox to restore a backup."));
    settle();
    EXPECT_EQ(count(restoreRoute), 0);

    serveStatus(libraryMember("1.5.0"));
    look();
    panel->restoreBackup(QStringLiteral("1.5.0"));
    answer(true);
    ASSERT_TRUE(comes([&] { return count(restoreRoute) == 1 && !state().libraryBusy; }));
    EXPECT_FALSE(state().actionError);
}

TEST_F(ActionTest, ARestoreWithoutADateLeavesItOutOfTheQuestion) {
    ServiceStatus::Library::Backup backup{
        .version = QStringLiteral("2"), .createdAt = QStringLiteral("soon"), .reason = QStringLiteral("manual")};
    EXPECT_TRUE(
        restoreQuestion(backup).informativeText.startsWith(QStringLiteral("This puts back the backup: “manual”")));
}

TEST_F(ActionTest, RestartingStartsAnewThenBootstrapsThenGivesUpWithTheStatus) {
    const QStringList kickstart{QStringLiteral("kickstart"), QStringLiteral("-k"),
                                QStringLiteral("gui/501/com.brightfold.tunedeck")};
    const QStringList bootstrap{QStringLiteral("bootstrap"), QStringLiteral("gui/501"),
                                home.path(QStringLiteral("Library/LaunchAgents/com.brightfold.tunedeck.plist"))};
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
    EXPECT_EQ(error(), QStringLiteral("Couldn't start tunedeck (launchctl exit 5). See the log."));
    EXPECT_TRUE(state().isRestarting);
    clock.advance(1500ms);
    EXPECT_TRUE(comes([&] { return !state().isRestarting; }));
}

TEST_F(ActionTest, RepairingToolsShowsTheNewReportAtOnceOrSaysWhyNot) {
    const QByteArray route = "POST /local/toolbox/install";
    serve(route, "{}", 200);
    panel->repairTools();
    ASSERT_TRUE(comes([&] { return state().actionError.has_value(); }));
    EXPECT_EQ(error(), QStringLiteral("Couldn't reach tunedeck to repair its tools."));
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
    panel->copySecret(QStringLiteral("a.url"));
    EXPECT_EQ(pasteboard.text, QStringLiteral("https://x.example/abc/mcp"));
    clock.advance(1s);
    panel->copySecret(QStringLiteral("i.1.key"));
    EXPECT_EQ(pasteboard.text, QStringLiteral("secret"));
    clock.advance(500ms);
    EXPECT_EQ(state().copied, QStringLiteral("i.1.key")) << "the first value's time doesn't end the second's";
    clock.advance(1s);
    EXPECT_FALSE(state().copied);
    panel->copySecret(QStringLiteral("i.1.url"));
    EXPECT_EQ(pasteboard.text, QStringLiteral("https://x.example/api"));
    panel->copySecret(QStringLiteral("gone.url"));
    EXPECT_EQ(pasteboard.texts.size(), 3);
}

TEST_F(ActionTest, ConnectingAnnouncesTheLinkAndAddsIt) {
    look();
    server.on("POST /local/links",
              behave::after(50ms, behave::answer(201, R"({"id":"n","kind":"claude","url":"https://x.example/u"})")));
    serveLinks(R"({"id":"n","kind":"claude","url":"https://x.example/u"})");
    panel->connectAssistant(QStringLiteral("claude"));
    panel->connectAssistant(QStringLiteral("claude"));
    EXPECT_TRUE(state().linksBusy);
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(count("POST /local/links"), 1) << "two links of a double press would be one too many";
    EXPECT_EQ(pasteboard.text, QStringLiteral("https://x.example/u"));
    EXPECT_EQ(state().copied, QStringLiteral("n.url"));
    EXPECT_EQ(note(), QStringLiteral("Copied Claude's URL. ") + info(Assistant::claude).setupSteps.join(u' '));
    EXPECT_EQ(state().links.size(), 1U);

    serve("POST /local/links", R"({"id":"s","kind":"shortcut"})", 201);
    panel->connectAssistant(QStringLiteral("shortcut"));
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(note(), QStringLiteral("Follow the setup guide on your iPhone, using the URL and key shown here."));

    serve("POST /local/links", R"({"error":"The cloud is busy."})", 503);
    panel->connectAssistant(QStringLiteral("shortcut"));
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(error(), QStringLiteral("Couldn't connect iPhone: The cloud is busy."));
    EXPECT_FALSE(state().actionNote);
    serve("POST /local/links", R"({"code":"telegram_not_configured"})", 409);
    panel->connectAssistant(QStringLiteral("telegram"));
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(error(),
              QStringLiteral("Telegram isn't available yet. Try ChatGPT, Claude or the iPhone Shortcut for now."));
}

TEST_F(ActionTest, RenewingALinkCopiesItsNewSecretOrSaysWhyNot) {
    serveLinks(R"({"id":"a","kind":"claude","url":"https://old"},{"id":"i","kind":"shortcut","token":"old"},
                  {"id":"t","kind":"telegram","url":"https://t.me/b?start=old"})");
    look();
    panel->rotateLink(QStringLiteral("a"));
    EXPECT_EQ(questions.back().first.message, QStringLiteral("Make a new URL for Claude?"));
    serve("POST /local/links/a/rotate", R"({"id":"a","kind":"claude","url":"https://new"})");
    answer(true);
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(pasteboard.text, QStringLiteral("https://new"));
    EXPECT_EQ(note(), QStringLiteral("New URL copied. Paste it into Claude"));

    panel->rotateLink(QStringLiteral("i"));
    EXPECT_EQ(questions.back().first.informativeText,
              QStringLiteral("The current key stops working right away. Put the new one into your Shortcut to keep "
                             "using Tunedeck there."));
    serve("POST /local/links/i/rotate", R"({"id":"i","kind":"shortcut","token":"fresh"})");
    answer(true);
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(state().copied, QStringLiteral("i.key"));
    serve("POST /local/links/i/rotate", "{}", 500);
    panel->rotateLink(QStringLiteral("i"));
    answer(true);
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(error(), QStringLiteral("Couldn't make a new key: tunedeck answered 500."));

    panel->newTelegramCode(QStringLiteral("t"));
    serve("POST /local/links/t/rotate", R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=new"})");
    answer(true);
    ASSERT_TRUE(comes([&] { return !state().linksBusy; }));
    EXPECT_EQ(note(), QStringLiteral("New code ready. Scan it with your phone."));
    EXPECT_EQ(pasteboard.text, QStringLiteral("fresh")) << "a code isn't copied";
}

TEST_F(ActionTest, ALinkThatChangedBehindTheQuestionIsLeftAlone) {
    serveLinks(
        R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=1"},{"id":"a","kind":"claude","url":"https://old"})");
    look();
    panel->newTelegramCode(QStringLiteral("t"));
    panel->rotateLink(QStringLiteral("a"));
    panel->disconnectLink(QStringLiteral("a"));
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

    panel->disconnectLink(QStringLiteral("t"));
    EXPECT_EQ(questions.back().first.informativeText,
              QStringLiteral("The bot stops answering that chat right away. You can pair again later."));
    server.on("DELETE /local/links/t", behave::answer(204, {}));
    serve("GET /local/links", "{}", 500);
    answer(true);
    ASSERT_TRUE(comes([&] { return !state().linksBusy && count("DELETE /local/links/t") == 1; }));
    EXPECT_TRUE(state().links.empty()) << "gone although the list can't be had";
}

TEST_F(ActionTest, TheDownloadFolderIsSavedAndOpened) {
    look();
    panel->revealDownloads();
    EXPECT_EQ(workspace.opened.back(), QUrl::fromLocalFile(QStringLiteral("/music")));
    panel->chooseFolder();
    panel->chooseFolder();
    EXPECT_EQ(picker.title, QStringLiteral("Choose where Tunedeck saves downloads"));
    picker.answer(QStringLiteral("/else where"));
    EXPECT_EQ(services.settings.downloadDir(), QStringLiteral("/else where"));
    ASSERT_TRUE(comes([&] { return state().customFolder == QStringLiteral("/else where"); }));
    panel->revealDownloads();
    EXPECT_EQ(workspace.opened.back(), QUrl::fromLocalFile(QStringLiteral("/else where")));
    panel->useDefaultFolder();
    EXPECT_FALSE(services.settings.downloadDir());

    panel->chooseFolder();
    ASSERT_TRUE(QFile::remove(home.path(QStringLiteral(".tunedeck/settings.json"))));
    home.write(QStringLiteral(".tunedeck/settings.json/in-the-way"), "x");
    picker.answer(QStringLiteral("/b"));
    EXPECT_TRUE(error().startsWith(QStringLiteral("Couldn't save the folder: "))) << error().toStdString();
    workspace.works = false;
    panel->openLog();
    EXPECT_TRUE(error().startsWith(QStringLiteral("Couldn't open "))) << error().toStdString();
}

TEST_F(ActionTest, OpenAtLoginShowsWhatTheSystemSays) {
    panel->setOpensAtLogin(true);
    EXPECT_TRUE(state().opensAtLogin);
    loginItem.failure = QStringLiteral("read-only");
    panel->setOpensAtLogin(false);
    EXPECT_EQ(error(), QStringLiteral("Couldn't change Open at Login: read-only"));
    EXPECT_TRUE(state().opensAtLogin);
}

TEST_F(ActionTest, AnUpdateIsInstalledOrItsDiskImageOpened) {
    const Release release{.version = QStringLiteral("1.3.0"),
                          .url = QStringLiteral("https://x.example/z"),
                          .dmgUrl = QStringLiteral("file:///etc")};
    std::expected<void, UpdateError> result;
    struct Answer {
        static QCoro::Task<std::expected<void, UpdateError>> give(std::expected<void, UpdateError> result) {
            co_return result;
        }
    };
    services.updates.latestDiskImage = QUrl(QStringLiteral("https://x.example/latest.dmg"));
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
    EXPECT_EQ(state().update,
              UpdateState{UpdateState::Failed{QStringLiteral("The download doesn't match its checksum.")}});
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
        [](auto& p) { p.restoreBackup(QStringLiteral("1")); },
        [](auto& p) { p.repairTools(); },
        [](auto& p) { p.restartService(); },
        [](auto& p) { p.chooseFolder(); },
        [](auto& p) { p.useDefaultFolder(); },
        [](auto& p) { p.connectAssistant(QStringLiteral("chatgpt")); },
        [](auto& p) { p.rotateLink(QStringLiteral("a")); },
        [](auto& p) { p.newTelegramCode(QStringLiteral("t")); },
        [](auto& p) { p.disconnectLink(QStringLiteral("a")); },
        [](auto& p) { p.copySecret(QStringLiteral("a.url")); },
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
                picker.answer(QStringLiteral("/late"));
            }
        }
    }
    EXPECT_NE(services.settings.downloadDir(), QStringLiteral("/late"));
}

} // namespace tunedeck
