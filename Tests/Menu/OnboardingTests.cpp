#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/FirstRun/OnboardingModel.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"

#include <QFile>

#include <memory>

namespace tunedeck::test {

namespace {

class OnboardingTest : public MenuTest {
protected:
    [[nodiscard]] const OnboardingState& state() const { return model->state(); }
    [[nodiscard]] OnboardingContent content() const { return onboardingContent(state(), clock.now()); }
    /// Opens the window and waits for the first poll.
    void open() {
        model->windowAppeared();
        ASSERT_TRUE(comes([&] { return clock.sleeping() == 1; }));
    }
    void poll() {
        clock.advance(2s);
        ASSERT_TRUE(comes([&] { return clock.sleeping() == 1; }));
    }
    void showAssistants() {
        model->advance();
        model->advance();
    }
    /// Chooses an assistant, to which the service gives this reply.
    void connect(const QString& kind, const QByteArray& reply, int status = 201) {
        serve("POST /local/links", reply, status);
        model->choose(kind);
        ASSERT_TRUE(comes([&] { return !state().connecting; }));
    }

    MenuModel menu{services};
    PanelController panel{menu, services};
    ServiceSetup setup{ServiceInstaller(home.path(), home.writeScript(u"bundled/tunedeck"_s, "exit 0"), 501,
                                        services.launchctl, clock)};
    std::unique_ptr<OnboardingModel> model =
        std::make_unique<OnboardingModel>(panel.links(), services, setup, std::nullopt);
};

const QByteArray baselineRoute = "POST /local/rekordbox/baseline";
const QByteArray repairRoute = "POST /local/toolbox/install";

} // namespace

TEST_F(OnboardingTest, PollsEveryTwoSecondsWhileTheWindowIsOpen) {
    server.on("GET /local/toolbox",
              behave::answer(200, R"({"venvs":[],"installing":true,"step":"Unpacking","progress":0.5,"tools":[
                  {"name":"ffmpeg","wanted":"7","ready":false}]})"));
    EXPECT_FALSE(content().waitingText.isEmpty());
    open();
    EXPECT_TRUE(content().waitingText.isEmpty());
    EXPECT_EQ(content().installText, u"Unpacking"_s);
    EXPECT_EQ(clock.sleeps().back(), 2s) << "the fetches took no time";

    server.on("GET /local/status", behave::after(50ms, behave::answer(500, "{}")));
    serve("GET /local/toolbox", "{}", 500);
    clock.advance(2s);
    ASSERT_TRUE(comes([&] { return count("GET /local/status") == 2; }));
    clock.advance(500ms);
    ASSERT_TRUE(comes([&] { return clock.sleeping() == 1; }));
    EXPECT_EQ(clock.sleeps().back(), 1500ms);
    EXPECT_FALSE(state().status || state().toolbox) << "the service has stopped";
    model->windowClosed();
    EXPECT_EQ(clock.sleeping(), 0U);
    clock.advance(10s);
    settle();
    EXPECT_EQ(count("GET /local/status"), 2);
    open();
    EXPECT_EQ(count("GET /local/status"), 3);
}

TEST_F(OnboardingTest, SaysInEachStepWhyTheServiceCannotStartAndGoesOnWhenItCan) {
    const auto cause = home.write(u".tunedeck/bin"_s, "a file where the folder belongs");
    serve("GET /local/status", "{}", 500);
    open();
    EXPECT_EQ(content().waitingText, u"Starting Tunedeck's background service…"_s);
    model->startService();
    for (const auto step : {0, 1, 2}) {
        EXPECT_EQ(content().step, step);
        EXPECT_TRUE(content().serviceFailure.startsWith(u"Couldn't start Tunedeck's background service: "));
        EXPECT_TRUE(content().serviceAdvice.isEmpty()) << "it wasn't the supervisor";
        EXPECT_EQ((QStringList{content().waitingText, content().startButton, content().logButton}),
                  (QStringList{QString(), u"Try Again"_s, u"Open Log"_s}));
        if (step < 2) {
            model->advance();
        }
    }
    QFile::remove(cause);
    services.facts.supervisorAdvice = u"Log in at the desktop."_s;
    launchctlStatus.assign(11, 1); // "print" and ten times "bootstrap"
    for (int second = 0; second < 8; second += 2) {
        poll();
    }
    EXPECT_TRUE(launchctlCalls.empty()) << "not yet time to try again";
    ASSERT_TRUE(comes([&] {
        clock.advance(500ms);
        settle();
        return !content().serviceAdvice.isEmpty();
    }));
    EXPECT_TRUE(content().serviceFailure.endsWith(u"launchctl bootstrap exited 1"));
    ASSERT_TRUE(comes([&] {
        clock.advance(1s);
        settle();
        return content().serviceFailure.isEmpty();
    }));
    EXPECT_FALSE(content().waitingText.isEmpty()) << "started, and not yet answering";
    serveStatus();
    ASSERT_TRUE(comes([&] {
        clock.advance(2s);
        settle();
        return content().waitingText.isEmpty();
    }));
    EXPECT_TRUE(content().startButton.isEmpty());
}

TEST_F(OnboardingTest, SaysWhatAWaitOfTwentySecondsIsFor) {
    serve("GET /local/status", "{}", 500);
    open();
    const auto waits = [&](int seconds) {
        for (int passed = 0; passed < seconds; passed += 2) {
            poll();
        }
        return content().waitNote;
    };
    EXPECT_TRUE(waits(18).isEmpty());
    EXPECT_FALSE(waits(2).isEmpty());
    EXPECT_EQ(content().startButton, u"Try Again"_s);
    serveStatus();
    EXPECT_TRUE(waits(2).isEmpty());
    showAssistants();
    server.on("POST /local/links", behave::hang());
    model->choose(u"claude"_s);
    EXPECT_TRUE(waits(18).isEmpty()) << "another wait begins anew";
    EXPECT_TRUE(waits(2).contains(u"cloud"));
}

TEST_F(OnboardingTest, RequestsTheFirstBackupOnceAutomaticallyAndThenByButton) {
    serve(baselineRoute, R"({"ok":false})");
    open();
    model->advance();
    poll();
    EXPECT_EQ(count(baselineRoute), 0) << "without a library";
    model->back();
    serveStatus(libraryMember("1", true));
    poll();
    EXPECT_EQ(count(baselineRoute), 0) << "before its step";
    model->advance();
    model->takeBaseline(); // already under way
    EXPECT_TRUE(content().baselineBusy);
    ASSERT_TRUE(comes([&] { return !content().baselineBusy; }));
    EXPECT_EQ(content().baselineText, u"Rekordbox is open."_s);
    model->back();
    model->advance();
    poll();
    EXPECT_EQ(count(baselineRoute), 1);

    serve(baselineRoute, R"({"ok":false,"error":"The disk is full."})");
    model->takeBaseline();
    ASSERT_TRUE(comes([&] { return content().baselineText == u"The disk is full."_s; }));
    serve(baselineRoute, R"({"ok":true})");
    model->takeBaseline();
    ASSERT_TRUE(comes([&] { return std::holds_alternative<Baseline::Done>(state().baseline.value); }));
    EXPECT_EQ(std::get<Baseline::Done>(state().baseline.value).version, u"1.0.0"_s);
    serve(baselineRoute, R"({"ok":true,"version":"1.2.0"})");
    model->takeBaseline();
    EXPECT_TRUE(comes([&] { return state().baseline.value == decltype(Baseline::value)(Baseline::Done{u"1.2.0"_s}); }));
}

TEST_F(OnboardingTest, CreatesOneLinkAtATimeAndNoticesItsFirstUse) {
    showAssistants();
    open();
    server.on("POST /local/links",
              behave::after(50ms, behave::answer(201, R"({"id":"n","kind":"claude","url":"https://x.example/u"})")));
    serveLinks(R"({"id":"n","kind":"claude","url":"https://x.example/u"})");
    model->choose(u"claude"_s);
    model->choose(u"chatgpt"_s);
    EXPECT_TRUE(state().connecting);
    ASSERT_TRUE(comes([&] { return !state().connecting; }));
    EXPECT_EQ(count("POST /local/links"), 1);
    EXPECT_EQ((QStringList{content().chosen, content().pasteText, content().liveText}),
              (QStringList{u"claude"_s, u"Paste this into Claude"_s, u"Waiting for the first request from Claude…"_s}));
    EXPECT_EQ(content().setupSteps, info(Assistant::claude).setupSteps);

    model->copyLink();
    EXPECT_EQ(pasteboard.text, u"https://x.example/u"_s);
    EXPECT_EQ(content().urlField.button, u"Copied"_s);
    model->choose(u"claude"_s);
    ASSERT_TRUE(comes([&] { return !state().connecting; }));
    EXPECT_EQ(content().urlField.button, u"Copy"_s) << "another link";
    serveLinks(R"({"id":"n","kind":"claude","url":"https://x.example/u","lastUsedAt":"2026-03-01T11:59:00Z"})");
    clock.advance(2s);
    ASSERT_TRUE(comes([&] { return content().connected; }));
    EXPECT_TRUE(content().liveText.startsWith(u"Connected. Try: “Add "_s));
    const auto lists = count("GET /local/links");
    poll();
    poll();
    EXPECT_EQ(count("GET /local/links"), lists) << "the link is connected";

    connect(u"chatgpt"_s, R"({"error":""})", 500);
    EXPECT_EQ(content().error, u"Couldn't make a link. Is this Mac online?"_s);
    EXPECT_FALSE(state().link) << "of another assistant";
}

TEST_F(OnboardingTest, DropsTheNewCodeOfALinkThatWasReplaced) {
    showAssistants();
    connect(u"telegram"_s, R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=1"})");
    model->openTelegram();
    model->openSetupGuide();
    ASSERT_EQ(workspace.opened.size(), 2U);
    EXPECT_EQ(workspace.opened[0], QUrl(u"https://t.me/b?start=1"_s));
    EXPECT_EQ(workspace.opened[1].path(), u"/connect/telegram"_s);

    server.on("POST /local/links/t/rotate",
              behave::after(80ms, behave::answer(200, R"({"id":"t","kind":"telegram","url":"https://t.me/b"})")));
    model->newTelegramCode();
    connect(u"shortcut"_s, R"({"id":"s","kind":"shortcut","apiUrl":"https://api","token":"key"})");
    ASSERT_TRUE(comes([&] { return !state().renewing; }));
    ASSERT_EQ(state().link->id, u"s"_s);
    model->copyLink();
    EXPECT_EQ(pasteboard.text, u"https://api"_s);
    model->copyKey();
    EXPECT_EQ(pasteboard.text, u"key"_s);
    EXPECT_EQ(content().keyField.button, u"Copied"_s);
}

TEST_F(OnboardingTest, ShowsAnErrorUntilTheNextOrPreviousStep) {
    showAssistants();
    connect(u"telegram"_s, R"({"error":"The cloud is busy."})", 503);
    EXPECT_EQ(content().error, u"The cloud is busy."_s);
    model->choose(u"telegram"_s);
    EXPECT_TRUE(content().error.isEmpty()) << "cleared at once";
    ASSERT_TRUE(comes([&] { return !content().error.isEmpty(); }));
    model->back();
    EXPECT_TRUE(content().error.isEmpty());
    workspace.works = false;
    model->advance();
    model->openSetupGuide();
    EXPECT_TRUE(content().error.startsWith(u"Couldn't open "_s));

    model->back();
    model->back();
    server.on(repairRoute, behave::after(50ms, behave::answer(500, "{}")));
    model->repairTools();
    model->repairTools(); // a double press
    ASSERT_TRUE(comes([&] { return content().error == u"Couldn't reach tunedeck to repair its tools."_s; }));
    EXPECT_EQ(count(repairRoute), 1);
    model->repairTools();
    EXPECT_TRUE(content().error.isEmpty()) << "cleared at once";
    ASSERT_TRUE(comes([&] { return !content().error.isEmpty(); }));
    model->advance();
    EXPECT_TRUE(content().error.isEmpty());
}

TEST_F(OnboardingTest, KeepsANewCodeAndContinuesAfterAFailedList) {
    const auto link = [](const QByteArray& code, const QByteArray& paired = "false") {
        return R"({"id":"t","kind":"telegram","url":"https://t.me/b?start=)" + code + R"(","paired":)" + paired + '}';
    };
    const QByteArray rotateRoute = "POST /local/links/t/rotate";
    const auto url = [&] { return state().link->url.value_or(QString()); };
    showAssistants();
    connect(u"telegram"_s, link("1"));
    ASSERT_TRUE(comes([&] { return server.open() == 0; }));

    server.on("GET /local/links", behave::after(100ms, behave::answer(200, R"({"links":[)" + link("1") + "]}")));
    open();
    ASSERT_TRUE(comes([&] { return count("GET /local/links") == 1; }));
    server.on(rotateRoute, behave::after(20ms, behave::answer(200, link("2"))));
    model->newTelegramCode();
    model->newTelegramCode(); // a double press
    EXPECT_TRUE(state().renewing);
    ASSERT_TRUE(comes([&] { return !state().renewing; }));
    EXPECT_EQ(count(rotateRoute), 1);
    ASSERT_TRUE(comes([&] { return server.open() == 0; })) << "the list is late";
    EXPECT_EQ(url(), u"https://t.me/b?start=2"_s);

    serve(rotateRoute, R"({"error":"Too many codes."})", 429);
    model->newTelegramCode();
    ASSERT_TRUE(comes([&] { return content().error == u"Couldn't make a new code: Too many codes."_s; }));
    serve(rotateRoute, link("3"));
    model->newTelegramCode();
    ASSERT_TRUE(comes([&] { return url().endsWith(u'3'); }));
    EXPECT_TRUE(content().error.isEmpty());

    server.on("GET /local/links", behave::after(150ms, behave::answer(500, "{}")));
    poll();
    poll(); // one list at a time
    ASSERT_TRUE(comes([&] { return count("GET /local/links") == 2 && server.open() == 0; }));
    serveLinks(link("3", "true"));
    poll();
    EXPECT_TRUE(comes([&] { return content().connected; }));
}

TEST_F(OnboardingTest, CancelsItsRequestsWhenDestroyed) {
    const std::vector<std::function<void(OnboardingModel&)>> actions{
        [](auto& m) { m.windowAppeared(); },
        [](auto& m) { m.repairTools(); },
        [](auto& m) { m.takeBaseline(); },
        [](auto& m) { m.choose(u"telegram"_s); },
    };
    server.on("*", behave::hang());
    server.on("GET /local/status", behave::hang());
    for (const auto& action : actions) {
        const auto before = server.connections();
        action(*model);
        ASSERT_TRUE(comes([&] { return server.connections() > before; }));
        model = std::make_unique<OnboardingModel>(panel.links(), services, setup, std::nullopt);
    }
    // The panel's action continues.
    EXPECT_TRUE(comes([&] { return server.open() == 1; }));
}

} // namespace tunedeck::test
