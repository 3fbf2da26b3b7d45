// What the window can't provoke: calls that overlap, a state that changes while a question is open, rare replies.
#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Actions/PanelController.h"

#include <memory>

namespace tunedeck::test {

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
    void awaitIdle() const {
        ASSERT_TRUE(comes([&] { return !state().linksBusy && !state().libraryBusy; }));
    }
    void confirm() {
        ASSERT_FALSE(questions.empty()) << "nothing was asked";
        questions.back().second(true);
    }

    MenuModel model{services};
    TaskScope scope;
    std::unique_ptr<PanelController> panel = std::make_unique<PanelController>(model, services);
};

} // namespace

TEST_F(PanelControllerTest, LibraryActionsAreBusyUntilTheLastOneHasEnded) {
    server.on("POST /local/rekordbox/apply", behave::after(150ms, behave::answer(200, R"({"ok":true})")));
    serve("POST /local/rekordbox/dismiss", R"({"ok":false})");
    panel->applyLibraryNow();
    panel->dismissFailedChanges();
    ASSERT_TRUE(comes([&] { return error() == u"That didn't work."_s; }));
    settle();
    EXPECT_TRUE(state().libraryBusy) << "the first is still in flight";
    awaitIdle();
    EXPECT_TRUE(state().service.isRunning()) << "refreshed";
    panel->applyLibraryNow();
    EXPECT_FALSE(state().actionError) << "cleared at once";
}

TEST_F(PanelControllerTest, RestoringSendsNothingIfTheStateHasChangedSinceTheQuestion) {
    const QByteArray route = "POST /local/rekordbox/restore";
    serve(route, R"({"ok":true})");
    const auto askThenRefresh = [&](const QString& version, const QByteArray& changes) {
        panel->restoreBackup(version);
        serveStatus(changes);
        refresh();
        confirm();
    };
    serveStatus(libraryMember("1.4.0"));
    refresh();
    panel->restoreBackup(u"9.9.9"_s);
    EXPECT_TRUE(questions.empty()) << "no such backup";
    askThenRefresh(u"1.4.0"_s, libraryMember("1.5.0"));
    EXPECT_EQ(error(), u"The backup v1.4.0 isn't there any more."_s);
    askThenRefresh(u"1.5.0"_s, libraryMember("1.5.0", true));
    EXPECT_EQ(error(), u"Quit Rekordbox to restore a backup."_s);
    settle();
    EXPECT_EQ(count(route), 0);

    panel->restoreBackup(u"1.5.0"_s);
    serve("GET /local/status", "{}", 500);
    refresh();
    confirm(); // the request itself reports a service that is down
    ASSERT_TRUE(comes([&] { return count(route) == 1; }));
    EXPECT_TRUE(bodyOf(route).contains("1.5.0"));
}

TEST_F(PanelControllerTest, RestoreQuestionShowsTheDateAndReason) {
    ServiceStatus::Library::Backup backup{.version = u"2"_s, .createdAt = u"soon"_s, .reason = u"manual"_s};
    EXPECT_TRUE(restoreQuestion(backup).informativeText.startsWith(u"This puts back the backup: “manual”.\n\nYour"_s));
    backup.createdAt = u"2026-02-28T10:00:00Z"_s;
    EXPECT_TRUE(restoreQuestion(backup).informativeText.startsWith(u"This puts back the backup from Feb 28, 2026"_s));
    EXPECT_EQ(restoreQuestion(backup).message, u"Restore your Rekordbox library to v2?"_s);
    EXPECT_TRUE(restoreQuestion(backup).warning);
}

TEST_F(PanelControllerTest, ConnectingDependsOnTheAssistantAndTheReply) {
    refresh();
    ASSERT_TRUE(comes([&] { return count("GET /local/links") == 2; }));
    serve("GET /local/links", "{}", 500);
    const struct {
        QString kind;
        int status;
        QByteArray reply;
        QString note = {};
        QString error = {};
    } cases[]{
        {u"shortcut"_s, 201, R"({"id":"s","kind":"shortcut"})",
         u"Follow the setup guide on your iPhone, using the URL and key shown here."_s},
        {u"telegram"_s,
         409,
         R"({"code":"telegram_not_configured"})",
         {},
         u"Telegram isn't available yet. Try ChatGPT, Claude or the iPhone Shortcut for now."_s},
        {u"claude"_s, 201, R"({"id":"c","kind":"claude"})"}, // there is no URL to paste
        {u"chatgpt"_s, 201, R"({"id":"d","kind":"chatgpt","url":"u"})", u"Copied ChatGPT's URL. "_s},
    };
    for (const auto& [kind, status, reply, expectedNote, expectedError] : cases) {
        model.showError(u"old"_s);
        serve("POST /local/links", reply, status);
        panel->connectAssistant(kind);
        panel->connectAssistant(kind); // a double press
        EXPECT_FALSE(state().actionError) << "cleared at once";
        awaitIdle();
        EXPECT_EQ(note().left(expectedNote.size()), expectedNote);
        EXPECT_EQ(note().isEmpty(), expectedNote.isEmpty());
        EXPECT_EQ(error(), expectedError);
    }
    EXPECT_EQ(count("POST /local/links"), 4);
    EXPECT_EQ(count("GET /local/links"), 5) << "after each success";
    EXPECT_EQ(state().links.size(), 3U) << "although the list fails";
    EXPECT_EQ(state().copied, u"d.url"_s);
}

TEST_F(PanelControllerTest, ANoteGoesWithTheLinkThatItIsAbout) {
    const QByteArray fresh = R"({"id":"t","kind":"telegram","url":"u"})";
    refresh();
    serve("POST /local/links", fresh, 201);
    const auto connectTo = [&](const QByteArray& links) {
        serveLinks(fresh);
        panel->connectAssistant(u"telegram"_s);
        awaitIdle();
        EXPECT_EQ(note(), u"Scan the code with your phone, then tap Start in Telegram."_s);
        serveLinks(links);
        runToEnd(model.refreshLinks(MenuModel::LinksFetch::Always, {}));
        return note();
    };
    EXPECT_EQ(connectTo(R"({"id":"t","kind":"telegram","paired":true})"), QString()) << "paired";
    EXPECT_EQ(connectTo({}), QString()) << "removed elsewhere";
    EXPECT_NE(connectTo(fresh + R"(,{"id":"c","kind":"claude","lastUsedAt":"t"})"), QString()) << "another link";
    model.showNote(u"Something else."_s);
    model.removeLink(u"t"_s);
    EXPECT_EQ(note(), u"Something else."_s);
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

    serve("GET /local/links", "{}", 500); // the model follows although the list fails
    serve("POST /local/links/t/rotate", R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=2"})");
    panel->newTelegramCode(u"t"_s);
    confirm();
    awaitIdle();
    EXPECT_EQ(model.link(u"t"_s)->url, u"https://t.me/b?start=2"_s);
    panel->disconnectLink(u"t"_s);
    EXPECT_EQ(questions.back().first.informativeText,
              u"The bot stops answering that chat right away. You can pair again later."_s);
    server.on("DELETE /local/links/t", behave::answer(204, {}));
    confirm();
    ASSERT_TRUE(comes([&] { return !state().linksBusy && model.link(u"t"_s) == nullptr; }));
    serve("POST /local/links/i/rotate", R"({"id":"i","kind":"shortcut","token":"fresh"})");
    panel->rotateLink(u"i"_s);
    EXPECT_EQ(questions.back().first.informativeText,
              u"The current key stops working right away. Put the new one into your Shortcut to keep "
              "using Tunedeck there."_s);
    confirm();
    awaitIdle();
    EXPECT_EQ(model.link(u"i"_s)->token, u"fresh"_s);
    EXPECT_EQ(state().copied, u"i.key"_s);
}

TEST_F(PanelControllerTest, RepairingFetchesTheReportAndAnUnknownAssistantHasAGuide) {
    serveLinks(R"({"id":"x","kind":"new"})");
    refresh();
    serve("POST /local/toolbox/install", "{}", 202);
    serve("GET /local/toolbox", R"({"tools":[],"venvs":[],"installing":true})");
    panel->repairTools();
    ASSERT_TRUE(comes([&] { return state().toolbox->installing; })) << "without waiting for the next poll";
    panel->openSetupGuide(u"x"_s);
    EXPECT_EQ(workspace.opened.back().path(), u"/connect/"_s);
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

} // namespace tunedeck::test
