#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/FirstRun/OnboardingModel.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"

#include <memory>

namespace tunedeck {

using namespace test;

namespace {

class OnboardingTest : public MenuTest {
protected:
    [[nodiscard]] const OnboardingState& state() const { return model->state(); }
    [[nodiscard]] OnboardingContent content() const { return onboardingContent(state(), clock.now()); }
    /// Opens the window and lets one round of its watch pass.
    void open() {
        model->windowAppeared();
        ASSERT_TRUE(comes([&] { return clock.sleeping() == 1; }));
    }
    void nextRound() {
        clock.advance(2s);
        ASSERT_TRUE(comes([&] { return clock.sleeping() == 1; }));
    }

    MenuModel menu{services};
    PanelController panel{menu, services};
    std::unique_ptr<OnboardingModel> model = std::make_unique<OnboardingModel>(panel.links(), services, std::nullopt);
};

const QByteArray baselineRoute = "POST /local/rekordbox/baseline";

} // namespace

TEST_F(OnboardingTest, WatchesTheServiceEveryTwoSecondsWhileItsWindowIsOpen) {
    server.on("GET /local/toolbox",
              behave::answer(200, R"({"venvs":[],"installing":true,"step":"Unpacking","progress":0.5,"tools":[
                  {"name":"yt-dlp","installed":"yt-dlp==2025.1","wanted":"1","ready":true},
                  {"name":"ffmpeg","wanted":"7","ready":false}]})"));
    EXPECT_EQ(content().waitingText, u"Starting Tunedeck's background service…"_s);
    open();
    EXPECT_TRUE(content().waitingText.isEmpty());
    EXPECT_EQ(content().installText, u"Unpacking"_s);
    EXPECT_EQ(content().tools.front().state, u"2025.1"_s);
    EXPECT_TRUE(content().repairButton.isEmpty()) << "nothing to repair while it installs";
    EXPECT_EQ(clock.sleeps().back(), 2s) << "the clock stood still in the round";

    serve("GET /local/status", "{}", 500);
    nextRound();
    EXPECT_FALSE(state().status) << "it died in between";
    model->windowClosed();
    EXPECT_EQ(clock.sleeping(), 0U);
    clock.advance(10s);
    settle();
    EXPECT_EQ(count("GET /local/status"), 2);
}

TEST_F(OnboardingTest, TheFirstBackupIsAskedForOnceByItselfAndAgainByHand) {
    serve(baselineRoute, R"({"ok":false})");
    serveStatus(libraryMember("1", true));
    open();
    EXPECT_EQ(count(baselineRoute), 0) << "not before its step";
    model->advance();
    model->takeBaseline(); // already under way
    EXPECT_TRUE(content().baselineBusy);
    ASSERT_TRUE(comes([&] { return !content().baselineBusy; }));
    EXPECT_EQ(content().baselineText, u"Rekordbox is open."_s);
    EXPECT_TRUE(content().baselineNote.startsWith(u"Rekordbox is open, so Tunedeck will back up"_s));
    model->back();
    model->advance();
    nextRound();
    EXPECT_EQ(count(baselineRoute), 1);

    serve(baselineRoute, R"({"ok":false,"error":"The disk is full."})");
    model->takeBaseline();
    ASSERT_TRUE(comes([&] { return content().baselineText == u"The disk is full."_s; }));
    EXPECT_FALSE(content().baselineButton.isEmpty());
    serve(baselineRoute, R"({"ok":true})");
    model->takeBaseline();
    ASSERT_TRUE(comes([&] { return content().baselineSymbol == u"checkmark.shield.fill"_s; }));
    EXPECT_EQ(std::get<Baseline::Done>(state().baseline.value).version, u"1.0.0"_s);
    EXPECT_TRUE(content().baselineButton.isEmpty());
}

TEST_F(OnboardingTest, WithoutALibraryNoBackupIsAskedFor) {
    open();
    model->advance();
    nextRound();
    EXPECT_EQ(count(baselineRoute), 0);
    EXPECT_TRUE(content().text.startsWith(u"Rekordbox isn't installed here."_s));
    EXPECT_TRUE(content().baselineText.isEmpty());
}

TEST_F(OnboardingTest, MakesOneLinkAtATimeAndSeesItBeingUsed) {
    model->advance();
    model->advance();
    open();
    server.on("POST /local/links",
              behave::after(50ms, behave::answer(201, R"({"id":"n","kind":"claude","url":"https://x.example/u"})")));
    serveLinks(R"({"id":"n","kind":"claude","url":"https://x.example/u"})");
    model->choose(u"claude"_s);
    model->choose(u"chatgpt"_s);
    EXPECT_EQ(content().connectingText, u"Making your private link…"_s);
    ASSERT_TRUE(comes([&] { return !state().connecting; }));
    EXPECT_EQ(count("POST /local/links"), 1);
    EXPECT_EQ(content().pasteText, u"Paste this into Claude"_s);
    EXPECT_FALSE(content().connected);

    model->copyLink();
    EXPECT_EQ(pasteboard.text, u"https://x.example/u"_s);
    EXPECT_EQ(content().fields.at(0).button, u"Copied"_s);
    serveLinks(R"({"id":"n","kind":"claude","url":"https://x.example/u","lastUsedAt":"2026-03-01T11:59:00Z"})");
    clock.advance(2s);
    ASSERT_TRUE(comes([&] { return content().connected; }));
    EXPECT_TRUE(content().liveText.startsWith(u"Connected. Try: “Add "_s));
    EXPECT_EQ(content().fields.at(0).button, u"Copy"_s);
    const auto lists = count("GET /local/links");
    nextRound();
    nextRound();
    EXPECT_EQ(count("GET /local/links"), lists) << "a connected link isn't watched any more";
}

TEST_F(OnboardingTest, AFailureIsTheWindowsErrorUntilTheNextStep) {
    serve("POST /local/links", R"({"error":"The cloud is busy."})", 503);
    model->advance();
    model->advance();
    model->choose(u"telegram"_s);
    EXPECT_EQ(content().connectingText, u"Making your pairing code…"_s);
    ASSERT_TRUE(comes([&] { return !state().connecting; }));
    EXPECT_EQ(content().error, u"The cloud is busy."_s);
    model->back();
    EXPECT_TRUE(content().error.isEmpty());
    workspace.works = false;
    model->advance();
    model->openSetupGuide();
    EXPECT_TRUE(content().error.startsWith(u"Couldn't open "_s));
}

TEST_F(OnboardingTest, GoingInTheMiddleOfAnythingTouchesNothing) {
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
        model = std::make_unique<OnboardingModel>(panel.links(), services, std::nullopt);
    }
    // What the panel's action began goes on without the window.
    EXPECT_TRUE(comes([&] { return server.open() == 1; }));
}

} // namespace tunedeck
