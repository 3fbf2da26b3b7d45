#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/App/AppDelegate.h"
#include "TunedeckMenu/Windows/PanelLoader.h"

#include <QFile>

#include <memory>

namespace tunedeck::test {

namespace {

/// What the windows were told.
struct Shown {
    QStringList calls; ///< in order
    bool popover = false;
    QRect anchor;
    PanelContent content;
    OnboardingActions* onboarding = nullptr;
};

class FakeViews final : public PanelViews {
public:
    explicit FakeViews(Shown& shown) : m_shown(shown) {}
    void setContent(const PanelContent& content) override { m_shown.content = content; }
    void showPopover(const QRect& anchor) override {
        m_shown.popover = true;
        m_shown.anchor = anchor;
        m_shown.calls << u"popover"_s;
    }
    void closePopover() override { m_shown.popover = false; }
    [[nodiscard]] bool isPopoverShown() const override { return m_shown.popover; }
    void showWindow() override { m_shown.calls << u"window"_s; }
    [[nodiscard]] bool isWindowShown() const override { return false; }
    void setOnboardingContent(const OnboardingContent&) override {}
    void showOnboarding(OnboardingActions& actions) override {
        m_shown.calls << u"onboarding"_s;
        m_shown.onboarding = &actions;
    }
    void closeOnboarding() override { m_shown.calls << u"close onboarding"_s; }
    void confirm(const Confirmation&, std::function<void(bool)>) override {}
    void setAppearance(const Appearance&) override { m_shown.calls << u"appearance"_s; }

private:
    Shown& m_shown;
};

class FakeViewsSource final : public ViewsSource {
public:
    std::unique_ptr<PanelViews> createViews(PanelHost& application, const Appearance&) override {
        ++asked;
        host = &application;
        return works ? std::make_unique<FakeViews>(shown) : nullptr;
    }
    Shown shown;
    PanelHost* host = nullptr;
    bool works = true;
    int asked = 0;
};

class AppDelegateTest : public MenuTest {
protected:
    /// Started at login, after the first run.
    AppDelegateTest() {
        clock.setUptime(1min);
        home.write(u".tunedeck/settings.json"_s, R"({"onboarded":true})");
    }
    void launch() {
        delegate =
            std::make_unique<AppDelegate>(services, AppDelegate::Desktop{item, center, appearance, views, defaults});
        delegate->launch();
    }
    [[nodiscard]] QByteArray measured() const { return home.read(u".tunedeck/menu-bar.json"_s); }
    /// Waits until the start-up has ended with a running service.
    void finishStartUp() {
        ASSERT_TRUE(comes([&] { return count("GET /local/status") >= 2; }));
        settle();
    }

    FakeStatusItem item;
    FakeNotificationCenter center;
    FakeAppearanceSource appearance;
    FakeViewsSource views;
    UserDefaults defaults{home.path(u"defaults.ini"_s)};
    std::unique_ptr<AppDelegate> delegate;
};

const QByteArray registeredCloud = R"("cloud":{"enabled":true,"base_url":"x","registered":true})";
const auto warning = u"exclamationmark.triangle"_s;
const auto normal = u"music.note.list"_s;
const auto positionKey = u"NSStatusItem Preferred Position TunedeckStatusItem"_s;

} // namespace

TEST_F(AppDelegateTest, ShowsTheIconFirstAndKeepsItsPreferredPosition) {
    launch();
    EXPECT_EQ(item.installs, 1);
    EXPECT_EQ(item.symbol, normal);
    EXPECT_EQ(item.toolTip, u"Tunedeck: Checking…"_s);
    EXPECT_EQ(defaults.value(positionKey), u"220");
    EXPECT_EQ(center.starts, 1);
    EXPECT_EQ(views.asked, 0) << "the windows are loaded on demand";
    clock.advance(1s);
    EXPECT_TRUE(measured().contains("\"visible\""));
    const auto before = measured();
    item.place->screenWidth = 800; // a monitor was unplugged, which is reported more than once
    delegate->screensChanged();
    clock.advance(900ms);
    delegate->screensChanged();
    clock.advance(999ms);
    EXPECT_EQ(measured(), before);
    clock.advance(1ms);
    EXPECT_NE(measured(), before);

    defaults.setValue(positionKey, u"7"_s);
    delegate.reset();
    launch();
    EXPECT_EQ(defaults.value(positionKey), u"7");
}

TEST_F(AppDelegateTest, WaitsTwentySecondsForTheServiceBeforeTheIconWarns) {
    clock.setUptime(1h);
    server.stop();
    launch();
    for (int second = 0; second < 19; ++second) {
        settle();
        EXPECT_EQ(item.symbol, normal) << second;
        EXPECT_TRUE(views.shown.calls.isEmpty()) << second;
        clock.advance(1s);
    }
    ASSERT_TRUE(comes([&] { return !views.shown.calls.isEmpty(); })) << "after the 20th attempt";
    clock.advance(4s);
    EXPECT_TRUE(comes([&] { return item.symbol == warning; }));
}

TEST_F(AppDelegateTest, UpdatesTheIconWithoutTheWindows) {
    views.works = false;
    launch();
    finishStartUp();
    Q_EMIT item.activated();
    delegate->reopen();
    EXPECT_EQ(views.asked, 2) << "retried: the module may exist now";
    const auto next = [&](const QString& expected) {
        clock.advance(4s);
        return comes([&] { return item.symbol == expected; });
    };
    serveStatus(R"("download_dir_writable":false)");
    EXPECT_TRUE(next(warning));
    serveStatus();
    EXPECT_TRUE(next(normal));
    serve("GET /local/status", "{}", 500);
    EXPECT_TRUE(next(warning));
    EXPECT_EQ(count("GET /local/toolbox"), 0);
    serveStatus();
    Q_EMIT views.host->actions().panelAppeared();
    EXPECT_TRUE(comes([&] { return item.symbol == normal; })) << "a panel refreshes at once";
}

TEST_F(AppDelegateTest, OpensTheWindowOnARequestOrAfterAStartByHandButNotAtLogin) {
    launch();
    finishStartUp();
    EXPECT_TRUE(views.shown.calls.isEmpty());
    Q_EMIT center.opened(u"b-requested"_s);
    Q_EMIT item.selected(TrayMenuEntry::Kind::Open);
    EXPECT_EQ(views.shown.calls, (QStringList{u"window"_s, u"window"_s}));

    views.shown.calls.clear();
    clock.setUptime(301s);
    serveStatus(registeredCloud);
    server.on("GET /local/links", behave::hang()); // no link can prevent the first run, as it is over
    launch();
    EXPECT_TRUE(comes([&] { return views.shown.calls.contains(u"window"_s); }));
    EXPECT_TRUE(comes([&] { return count("GET /local/links") == 1; }));

    views.shown = {};
    item.available = false;
    const auto before = count("GET /local/status");
    launch();
    Q_EMIT item.activated(); // opens the panel during the start-up
    ASSERT_TRUE(comes([&] { return count("GET /local/status") >= before + 2; }));
    settle();
    clock.advance(10s);
    EXPECT_EQ(views.shown.calls, QStringList{u"popover"_s});
}

TEST_F(AppDelegateTest, ShowsAFailedInstallationAndContinues) {
    QFile program(home.write(u"Tunedeck.app/Contents/Helpers/tunedeck"_s, "program"));
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    home.write(u".tunedeck/bin"_s, "in the way");
    launch();
    finishStartUp();
    delegate->showWindow();
    EXPECT_TRUE(views.shown.content.banner.text.startsWith(u"Couldn't start Tunedeck's background service: "_s))
        << views.shown.content.banner.text.toStdString();
}

TEST_F(AppDelegateTest, ReportsAReplacementThatCannotBeStarted) {
    launch();
    delegate->showWindow();
    PanelLoader loader(center, {.module = home.path(u"other.so"_s),
                                .buildId = u"ours"_s,
                                .wasReplaced = [] { return true; },
                                .restart = [] { return false; }});
    EXPECT_FALSE(loader.createViews(*views.host, {}));
    ASSERT_EQ(center.posted.size(), 1U);
    EXPECT_TRUE(center.posted[0].body.endsWith(u"the new version can't be started."));
}

TEST_F(AppDelegateTest, OpensTheWindowWithoutATrayAndMeasuresALateIcon) {
    item.available = false;
    item.place.reset();
    launch();
    finishStartUp();
    EXPECT_TRUE(views.shown.calls.isEmpty());
    clock.advance(10s);
    settle();
    EXPECT_TRUE(views.shown.calls.contains(u"window"_s));
    EXPECT_TRUE(measured().isEmpty()) << "nothing was measured";
    EXPECT_TRUE(views.shown.content.hiddenIcon.shown);
    item.place = MenuBarPlacement{.itemMinX = 1200, .itemWidth = 24, .screenWidth = 1600};
    delegate->showWindow();
    EXPECT_FALSE(measured().isEmpty()) << "measured again";
    EXPECT_FALSE(views.shown.content.hiddenIcon.shown);
    item.place->itemMinX = -1;
    item.setAvailable(true);
    clock.advance(1s);
    EXPECT_TRUE(measured().contains("hidden: "));
    EXPECT_TRUE(comes([&] { return views.shown.content.hiddenIcon.shown; }));
    Q_EMIT views.host->actions().dismissMissingTray(); // which isn't why this one is hidden
    settle();
    EXPECT_TRUE(views.shown.content.hiddenIcon.shown);
}

TEST_F(AppDelegateTest, TogglesThePanelAtTheIcon) {
    launch();
    item.rectangle = QRect(1500, 0, 24, 24);
    Q_EMIT item.activated();
    EXPECT_EQ(views.shown.anchor, QRect(1500, 0, 24, 24));
    EXPECT_TRUE(views.shown.popover);
    Q_EMIT item.activated();
    EXPECT_FALSE(views.shown.popover);
    Q_EMIT item.activated();
    Q_EMIT item.spaceChanged();
    EXPECT_FALSE(views.shown.popover);
    appearance.set({.dark = true});
    EXPECT_EQ(views.shown.calls.last(), u"appearance"_s);
    Q_EMIT item.selected(TrayMenuEntry::Kind::Quit);
    EXPECT_EQ(quits, 1);
}

TEST_F(AppDelegateTest, ChecksForUpdatesAfterAMinuteAndDailyIncludingSuspendedTime) {
    int checks = 0;
    services.updates.check = [&](std::stop_token) {
        ++checks;
        return endedTask(UpdateCheck{UpdateCheck::UpToDate{}});
    };
    launch();
    finishStartUp();
    clock.advance(59s);
    EXPECT_EQ(checks, 0);
    clock.advance(1s);
    EXPECT_EQ(checks, 1);
    clock.suspend(23h);
    EXPECT_EQ(checks, 1);
    clock.suspend(1h);
    EXPECT_EQ(checks, 2);
    delegate->showWindow();
    clock.suspend(5h);
    Q_EMIT views.host->actions().checkForUpdates();
    EXPECT_EQ(checks, 3);
    clock.suspend(24h);
    EXPECT_EQ(checks, 3) << "19 hours after the last check it was too early";
    clock.suspend(1h);
    EXPECT_EQ(checks, 4);
}

TEST_F(AppDelegateTest, RepeatsTheFirstRunUntilItIsDone) {
    ASSERT_TRUE(services.settings.setOnboarded(false));
    launch();
    ASSERT_TRUE(comes([&] { return views.shown.calls.contains(u"onboarding"_s); }));
    EXPECT_FALSE(services.settings.onboarded());
    views.shown.onboarding->windowClosed();
    delegate->reopen();
    EXPECT_EQ(views.shown.calls, (QStringList{u"onboarding"_s, u"onboarding"_s})) << "not the main window yet";
    for (int step = 0; step < 4; ++step) {
        views.shown.onboarding->advance(); // the last one twice: a double press
    }
    EXPECT_TRUE(services.settings.onboarded());
    ASSERT_TRUE(comes([&] { return views.shown.calls.contains(u"window"_s); }));
    EXPECT_EQ(views.shown.calls.count(u"close onboarding"_s), 1);
}

TEST_F(AppDelegateTest, SkipsTheFirstRunIfALinkIsAlreadyUsed) {
    ASSERT_TRUE(services.settings.setOnboarded(false));
    serveStatus(registeredCloud);
    serveLinks(R"({"id":"a","kind":"claude","lastUsedAt":"2026-02-01T00:00:00Z"})");
    launch();
    EXPECT_TRUE(comes([&] { return services.settings.onboarded(); }));
    EXPECT_TRUE(views.shown.calls.isEmpty());

    // Without a registration with the cloud, the links aren't fetched.
    delegate.reset();
    ASSERT_TRUE(services.settings.setOnboarded(false));
    serveStatus();
    const auto before = count("GET /local/links");
    launch();
    EXPECT_TRUE(comes([&] { return views.shown.calls.contains(u"onboarding"_s); }));
    EXPECT_EQ(count("GET /local/links"), before);
}

} // namespace tunedeck::test
