// Uses each card, from the service's replies to the calls of the platform.
#include "Tests/Journeys/PanelJourney.h"

#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

class CardJourney : public PanelJourney {
protected:
    /// Waits until all wanted texts and none of the unwanted are visible.
    testing::AssertionResult shows(const QStringList& wanted, const QStringList& unwanted = {}) {
        const auto isVisible = [this](const QString& text) { return hasText(text); };
        const bool holds =
            comes([&] { return std::ranges::all_of(wanted, isVisible) && std::ranges::none_of(unwanted, isVisible); });
        return holds ? testing::AssertionSuccess()
                     : testing::AssertionFailure() << texts().join(u" | "_s).toStdString();
    }
};

} // namespace

TEST_F(CardJourney, UpdatesTheCardsAfterEachPoll) {
    open();
    EXPECT_TRUE(shows({u"connected to the cloud"_s}, {u"Recent"_s, u"Tools"_s, u"Backups ("_s, u"/mcp"_s}));
    serveStatus(R"("download_dir":"/else","download_dir_source":"settings",
        "recent_jobs":[{"job_id":"1","state":"running","playlist":"Alpha","message":"m"}],
        "rekordbox_db":{"db_path":"/db","rekordbox_running":true,"current_version":"1.4.0","pending":[],
            "backups":[],"failed":[{"id":"7","summary":"Add 2 tracks","error":"File not found"}]})");
    serve("GET /local/toolbox",
          R"({"tools":[{"name":"yt-dlp","wanted":"1","ready":false}],"venvs":[],"installing":false})");
    serveLinks(R"({"id":"a","kind":"claude","url":"https://x.example/u/0123456789abcdef/mcp"},
        {"id":"t","kind":"telegram","url":"https://t.me/b?start=1","expiresAt":"2026-03-01T12:10:00Z"})");
    clock.advance(15s); // the links are stale as well
    EXPECT_TRUE(shows({u"Alpha"_s, u"Missing: yt-dlp"_s, u"/0123…/mcp"_s, u"Custom"_s, u"Library v1.4.0"_s,
                       u"Couldn't apply “Add 2 tracks”"_s, u"Expires in "_s}));
    clock.advance(10min); // a code expires without a change of the service
    EXPECT_TRUE(shows({u"This code has expired."_s, u"Get a New Code"_s}, {u"Open Telegram"_s, u"Expires in"_s}));
}

TEST_F(CardJourney, StartsAStoppedService) {
    serve("GET /local/status", {}, 500);
    open();
    EXPECT_TRUE(shows({u"Not running"_s, u"wait in the cloud queue"_s, u"Start tunedeck to see where"_s}));
    launchctlStatus = {113, 5};
    const Element start = ready(u"Start tunedeck"_s);
    start.press();
    start.press(); // before the panel can change
    EXPECT_TRUE(shows({u"Starting…"_s}));
    EXPECT_FALSE(control(u"Starting…"_s).press());
    EXPECT_FALSE(control(u"Restart tunedeck"_s).press());
    clock.advance(1499ms);
    EXPECT_EQ(launchctlCalls,
              (std::vector{QStringList{u"kickstart"_s, u"-k"_s, u"gui/501/com.brightfold.tunedeck"_s}}));
    clock.advance(1ms);
    EXPECT_EQ(launchctlCalls.back(), (QStringList{u"bootstrap"_s, u"gui/501"_s,
                                                  home.path(u"Library/LaunchAgents/com.brightfold.tunedeck.plist"_s)}));
    EXPECT_TRUE(shows({u"Couldn't start tunedeck (launchctl exit 5). See the log."_s}));
    clock.advance(1499ms);
    EXPECT_TRUE(isBusy()) << "until the service had time to start";
    clock.advance(1ms);
    ASSERT_TRUE(comes([this] { return !isBusy(); }));

    poll();
    serveStatus();
    go({u"Start tunedeck"_s});
    clock.advance(1500ms);
    EXPECT_TRUE(shows({u"Running · "_s}, {u"Starting…"_s, u"Not running"_s, u"Couldn't start"_s}));
    EXPECT_EQ(launchctlCalls.size(), 3U);
}

TEST_F(CardJourney, ChoosesAndResetsTheDownloadFolder) {
    const QByteArray usual = R"("download_dir":"/usr","import_xml":"/etc/os-release")";
    const QByteArray custom =
        R"("download_dir":"/srv","download_dir_source":"settings","import_xml":"/etc/os-release")";
    serveStatus(usual);
    open();
    go({u"Show in Finder, /usr"_s, u"Change Folder…"_s});
    EXPECT_EQ(workspace.opened.back(), QUrl::fromLocalFile(u"/usr"_s));
    EXPECT_EQ((QStringList{picker.prompt, picker.start}), (QStringList{u"Use This Folder"_s, u"/usr"_s}));
    const auto choose = std::exchange(picker.answer, nullptr);
    go({u"Change Folder…"_s});
    EXPECT_EQ(picker.calls, 2) << "it comes to the front";
    model().showError(u"It broke."_s);
    choose(u"/srv"_s);
    EXPECT_FALSE(state().actionError);
    go({u"Show in Finder, /usr"_s, u"Change Folder…"_s}); // the service hasn't read the setting yet
    EXPECT_EQ(workspace.opened.back(), QUrl::fromLocalFile(u"/srv"_s));
    EXPECT_EQ(picker.start, u"/srv"_s);
    serveStatus(custom);
    picker.answer(std::nullopt);
    EXPECT_EQ(services.settings.downloadDir(), u"/srv"_s);
    poll();
    EXPECT_TRUE(shows({u"/srv"_s, u"Custom"_s}));
    serveStatus(usual);
    go({u"Use Default"_s});
    EXPECT_TRUE(shows({u"Show in Finder, /usr"_s}, {u"Use Default"_s}));
    EXPECT_FALSE(services.settings.downloadDir());

    serveStatus(custom);
    poll();
    ASSERT_TRUE(QFile::remove(home.path(u".tunedeck/settings.json"_s)));
    home.write(u".tunedeck/settings.json/in-the-way"_s, "x");
    go({u"Use Default"_s});
    EXPECT_TRUE(comes([this] { return line().value_or(QString()).startsWith(u"Couldn't save the folder: "); }));
    workspace.works = false;
    go({u"Show in Finder, /srv"_s});
    EXPECT_TRUE(comes([this] { return line() == u"Couldn't open /srv."_s; }));
    go({u"Show"_s});
    EXPECT_EQ(workspace.revealed, QStringList{u"/etc/os-release"_s});
}

TEST_F(CardJourney, ShowsAndCopiesSecretsAndOpensGuides) {
    serveLinks(R"({"id":"a","kind":"claude","url":"https://x.example/u/0123456789abcdef/mcp"},
        {"id":"i","kind":"shortcut","apiUrl":"https://x.example/api","token":"topsecret"},
        {"id":"t","kind":"telegram","url":"https://t.me/b?start=1"})");
    open();
    EXPECT_TRUE(shows({u"tops…"_s}, {u"topsecret"_s}));
    go({u"Show the private URLs and keys"_s});
    EXPECT_TRUE(shows({u"topsecret"_s, u"/0123456789abcdef/mcp"_s}));
    for (const auto& [which, value] : {std::pair(u""_s, u"https://x.example/u/0123456789abcdef/mcp"_s),
                                       {u" URL"_s, u"https://x.example/api"_s},
                                       {u" Key"_s, u"topsecret"_s}}) {
        press(u"Copy"_s + which);
        EXPECT_EQ(pasteboard.text, value);
        clock.advance(1s); // the mark of the previous copy would end now
        wait(1);
        EXPECT_EQ(texts().filter(u"Copied"_s), QStringList{u"Copied"_s + which}) << "only that one";
    }
    clock.advance(500ms);
    EXPECT_TRUE(comes([this] { return !hasText(u"Copied"_s); }));
    go({u"Hide the private URLs and keys"_s});
    EXPECT_TRUE(shows({u"tops…"_s}, {u"topsecret"_s}));
    go({u"Open Telegram"_s, u"Setup guide of Claude"_s, u"More of Telegram"_s, u"Setup Guide"_s});
    ASSERT_EQ(workspace.opened.size(), 3U);
    EXPECT_EQ(workspace.opened[0], QUrl(u"https://t.me/b?start=1"_s));
    EXPECT_EQ(workspace.opened[1].path(), u"/connect/claude"_s);
    EXPECT_EQ(workspace.opened[2].path(), u"/connect/telegram"_s);
}

TEST_F(CardJourney, InstallsAnUpdateOrShowsWhyNot) {
    const auto latest = u"https://x.example/latest.dmg"_s;
    Release release{.version = u"1.3.0"_s};
    std::function<std::expected<void, UpdateError>()> outcome;
    services.updates.latestDiskImageUrl = QUrl(latest);
    services.updates.check = [&](std::stop_token) { return endedTask(UpdateCheck{UpdateCheck::Available{release}}); };
    services.updates.install = [&](const Release&, const ProgressHandler& progress, std::stop_token) {
        EXPECT_EQ(state().update, UpdateState{UpdateState::Installing{}});
        progress(0.5);
        EXPECT_EQ(state().update, UpdateState{UpdateState::Installing{0.5}});
        return endedTask(outcome());
    };
    open();
    EXPECT_TRUE(shows({u"Version 1.2.0"_s}, {u"Update to"_s}));
    const auto install = [&](const std::function<std::expected<void, UpdateError>()>& ending) {
        outcome = ending;
        go({u"Check for Updates"_s, u"Update to 1.3.0"_s});
    };
    for (const auto& [image, opened] : {std::pair(u"http://x.example/a%20b.dmg"_s, u"http://x.example/a%20b.dmg"_s),
                                        {u"file:///etc/passwd"_s, latest},
                                        {QString(), latest}}) {
        release.dmgUrl = image;
        install([] { return std::unexpected(UpdateError{.kind = UpdateError::Kind::notWritable}); });
        EXPECT_EQ(workspace.opened.back(), QUrl(opened));
        EXPECT_TRUE(shows({u"Tunedeck 1.3.0 is available."_s, u"Update to 1.3.0"_s}));
    }
    install([] { return std::unexpected(UpdateError{.kind = UpdateError::Kind::checksum}); });
    EXPECT_TRUE(shows({u"doesn't match its checksum."_s}, {u"Update to"_s}));
    install([]() -> std::expected<void, UpdateError> { throw std::runtime_error("It broke."); });
    EXPECT_TRUE(shows({u"It broke."_s}, {u"Installing"_s}));
    relauncher.works = false; // makes no difference
    install([] { return std::expected<void, UpdateError>(); });
    EXPECT_EQ(relauncher.relaunched.size(), 1U);
    EXPECT_EQ(quits, 1);
}

TEST_F(CardJourney, TheFooterAndTheDiagnosticsWork) {
    services.facts.architecture = u"arm64"_s;
    serve("GET /local/toolbox",
          R"({"tools":[{"name":"ffmpeg","wanted":"7","ready":true}],"venvs":[],"installing":false})");
    serveLinks(R"({"id":"x","kind":"new","label":"Robot"})");
    open();
    ASSERT_TRUE(shows({u"Robot"_s}));
    go({u"Copy Diagnostics"_s});
    EXPECT_TRUE(comes([this] {
        return line() == u"Diagnostics copied, with secrets masked. Paste them into your message to support."_s;
    }));
    for (const auto& part :
         {u"Tunedeck diagnostics"_s, u"Apple silicon"_s, u"Tools: ffmpeg"_s, u"Assistants: Robot"_s}) {
        EXPECT_TRUE(pasteboard.text.contains(part)) << qPrintable(pasteboard.text);
    }
    go({u"Open at Login"_s});
    EXPECT_TRUE(loginItem.enabled);
    EXPECT_TRUE(comes([this] { return control(u"Open at Login"_s).access->state().checked; }));
    loginItem.failure = u"The disk is full."_s;
    go({u"Open at Login"_s});
    EXPECT_TRUE(comes([this] { return line() == u"Couldn't change Open at Login: The disk is full."_s; }));
    EXPECT_TRUE(control(u"Open at Login"_s).access->state().checked);
    loginItem.failure.clear();
    go({u"Open at Login"_s});
    EXPECT_TRUE(comes([this] { return !line(); }));
    home.write(u"Library/Logs/tunedeck.log"_s, "a line");
    go({u"Open Log"_s, u"Quit Tunedeck"_s});
    EXPECT_TRUE(workspace.opened.back().path().endsWith(u"/Library/Logs/tunedeck.log"));
    EXPECT_EQ(quits, 1);
}

} // namespace tunedeck::test
