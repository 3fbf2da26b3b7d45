#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/StatusDocument.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Menu/MenuFixture.h"
#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Checkup/CheckRunner.h"
#include "TunedeckMenu/Checkup/Checks.h"
#include "TunedeckMenu/Checkup/CheckupReport.h"

#include <QJsonDocument>

namespace tunedeck::test {

namespace {

/// The level's mark and the sentence.
std::string words(const CheckResult& result) {
    const std::array levels{"✓ ", "! ", "✗ "};
    return levels.at(static_cast<std::size_t>(result.level)) + result.sentence.toStdString();
}

struct Case {
    std::function<void()> arrange;
    std::string expected;
};

class CheckupTest : public testing::Test {
protected:
    /// Arranges one case after the other; each keeps what the previous ones arranged.
    template<class Check>
    void expectEach(Check check, const std::vector<Case>& cases) {
        for (const auto& each : cases) {
            each.arrange();
            if constexpr (requires { check(context); }) {
                EXPECT_EQ(words(check(context)), each.expected);
            } else {
                EXPECT_EQ(words(runToEnd(check(context, std::stop_token()))), each.expected);
            }
        }
    }
    std::function<void()> status(const QByteArray& changes) {
        return [this, changes] { context.status = ServiceStatus::decode(statusDocument(changes)).value(); };
    }
    std::function<void()> failure(DocumentFailure failure) {
        return [this, failure] { context.status = std::unexpected(failure); };
    }
    std::function<void()> file(const QString& path, const QByteArray& bytes) {
        return [this, path, bytes] { home.write(path, bytes); };
    }

    TemporaryHome home;
    TestServer server;
    CheckContext context{.facts = {.home = home.path(),
                                   .uid = 501,
                                   .bundle = home.path(u"apps/Tunedeck.app"_s),
                                   .appVersion = u"1.2.0"_s},
                         .now = ManualClock().now(),
                         .serviceUrl = server.url()};
};

const std::string needsService = "! Not checked: the service has to answer first.";

TEST_F(CheckupTest, ComparesTheInstallationWithTheBundle) {
    const auto installed = u".tunedeck/bin/tunedeck"_s;
    expectEach(checks::serviceProgram,
               {{[] {}, "! This copy of Tunedeck contains no service program."},
                {file(u"apps/Tunedeck.app/Contents/Helpers/tunedeck"_s, "1"), "✗ It isn't installed."},
                {file(installed, "0"), "✗ The installed program can't be executed."},
                {[&] { QFile::setPermissions(home.path(installed), QFile::ReadOwner | QFile::ExeOwner); },
                 "! The installed program isn't the one in this Tunedeck."},
                {file(installed, "1"), "✓ It is installed, and the same as in this Tunedeck."}});

    ManualClock clock;
    const ServiceInstaller installer(home.path(), {}, 501, {}, clock);
    const auto plist = u"Library/LaunchAgents/com.brightfold.tunedeck.plist"_s;
    std::optional<QString> outdated;
    context.system.outdatedServiceFile = [&](const PropertyDictionary& list) {
        EXPECT_EQ(list, installer.plist());
        return outdated;
    };
    expectEach(
        checks::serviceFiles,
        {{[] {}, "✗ ~/Library/LaunchAgents/com.brightfold.tunedeck.plist is missing."},
         {file(plist, "<plist/>"), "! ~/Library/LaunchAgents/com.brightfold.tunedeck.plist was changed."},
         {file(plist, xmlPropertyList(installer.plist())), "✓ The files that start the service are as they should be."},
         {[&] { outdated = home.path(u"x.service"_s); }, "✗ ~/x.service is missing."},
         {file(u"x.service"_s, "x"), "! ~/x.service was changed."}});
}

TEST_F(CheckupTest, ReportsTheProcessAndItsAnswer) {
    using State = SupervisedService::State;
    std::optional<SupervisedService> service;
    context.system.service = [&](std::stop_token) { return endedTask(service); };
    const auto is = [&service](SupervisedService state) { return [&service, state] { service = state; }; };
    const QDateTime start(QDate(2026, 3, 1), QTime(11, 0), Qt::UTC);
    const auto since = "It has been running since " + dateAndTime(start).toStdString();
    expectEach(checks::serviceProcess,
               {{[] {}, "✗ The system's service manager doesn't answer."},
                {is({State::Unknown}), "✗ It isn't set up."},
                {is({State::Stopped, {}, u"exit status 0"_s}), "✗ It is stopped; it ended with exit status 0."},
                {is({State::Restarting, {}, u"signal 9"_s}),
                 "✗ It keeps ending and is started again; it ended with signal 9."},
                {is({State::Running, start, {}, 2}), "! " + since + ", after ending unexpectedly (2 times)."},
                {is({State::Running, start}), "✓ " + since + '.'}});
    context.serviceUrl = QUrl(u"http://127.0.0.1:8123"_s);
    expectEach(checks::serviceAnswer,
               {{failure(HttpFailure::Unreachable), "✗ Nothing answers on port 8123."},
                {failure(HttpFailure::TimedOut), "✗ It doesn't answer in time on port 8123."},
                {failure(HttpFailure::Malformed), "✗ What answers on port 8123 isn't the service."},
                {failure(404), "✗ What answers on port 8123 isn't the service."},
                {failure(ServiceStatus::decode(statusDocument(R"("cloud":{})")).error()),
                 "✗ Its status can't be read. Unreadable document: \"cloud.enabled\" is missing."},
                {status(R"("version":"5%2")"), "✓ Version 5%2 answers on port 8123."}});
}

TEST_F(CheckupTest, ReportsTheToolsAndTheFolder) {
    const auto report = [this](const QByteArray& tools, const QByteArray& more = "false") {
        return [this, tools, more] {
            server.on("GET /local/toolbox",
                      behave::answer(200, R"({"tools":[)" + tools + R"(],"venvs":[],"installing":)" + more + '}'));
        };
    };
    const QByteArray ready = R"({"name":"ffmpeg","installed":"7.1","wanted":"7.1","ready":true})";
    const QByteArray missing = R"({"name":"yt-dlp","wanted":"2","ready":false})";
    expectEach(checks::tools,
               {{failure(HttpFailure::Unreachable), needsService},
                {status({}), "! The service doesn't report on its tools."},
                {report(ready + ',' + missing), "✗ Missing or too old: yt-dlp."},
                {report(missing, R"(false,"error":"No space.")"), "✗ Missing or too old: yt-dlp. (No space.)"},
                {report(missing, "true"), "! They are being installed."},
                {report(ready), "✓ All tools are installed."}});
    EXPECT_EQ(runToEnd(checks::tools(context, {})).details, u"ffmpeg 7.1"_s);

    const SmallDisk disk(64);
    expectEach(checks::downloadFolder, {{failure(404), needsService},
                                        {file(u".tunedeck/settings.json"_s, R"({"download_dir":"/nowhere"})"),
                                         "✗ /nowhere can't be written to."},
                                        {status(R"("download_dir_writable":false)"), "✗ /music can't be written to."},
                                        {status(R"("download_dir_writable":false,"download_dir_error":"It is full.")"),
                                         "✗ /music can't be written to. It is full."}});
    status(R"("download_dir":")" + QFile::encodeName(home.path(u"Music"_s)) + '"')();
    EXPECT_TRUE(words(checks::downloadFolder(context)).starts_with("✓ ~/Music can be written to, with "));
    status(R"("download_dir":")" + QFile::encodeName(disk.path(u"not/yet/there"_s)) + '"')();
    EXPECT_TRUE(!disk.isThere() || words(checks::downloadFolder(context)).ends_with("has only 66 kB of free space."));
}

TEST_F(CheckupTest, ReportsTheConnectionAndTheTunnel) {
    const auto cloud = [this](const QByteArray& members) {
        return status(R"("cloud":{"base_url":"https://x.example",)" + members + '}');
    };
    expectEach(checks::cloud, {{failure(404), needsService},
                               {cloud(R"("enabled":false)"),
                                "! It is switched off in the service, so assistants can't send requests."},
                               {cloud(R"("enabled":true,"connected":true)"), "! This computer isn't registered yet."},
                               {cloud(R"("enabled":true,"registered":true)"), "! The service is still connecting."},
                               {cloud(R"("enabled":true,"registered":true,"connected":false)"),
                                "✗ The service can't reach it; requests wait there."},
                               {cloud(R"("enabled":true,"registered":true,"connected":true)"),
                                "✓ This computer is registered and connected."}});
    expectEach(checks::relay, {{cloud(R"("enabled":false)"), "✓ Not asked, as the cloud is switched off."},
                               {failure(404), needsService}});

    const auto path = u".cloudflared/config.yml"_s;
    context.serviceUrl = QUrl(u"http://127.0.0.1:8123"_s);
    expectEach(checks::tunnel, {{[] {}, "✓ None; Tunedeck doesn't need one."},
                                {file(path, "hostname: a.example"), "! ~/.cloudflared/config.yml names no tunnel."},
                                {file(path, "tunnel: t"), "✓ Your tunnel is configured."},
                                {file(path, "tunnel: t\nhostname: a%2.example\nservice: http://localhost:8000"),
                                 "! a%2.example leads to port 8000, but the service is on port 8123."},
                                {file(path, "tunnel: t\nhostname: a.example\nservice: http://localhost:8123"),
                                 "✓ a.example leads to http://localhost:8123."}});
}

TEST_F(CheckupTest, ReportsTheLibrary) {
    const auto library = [this](const QByteArray& members, bool isOpen = false) {
        auto document = libraryMember("1", isOpen);
        document.insert(document.size() - 1, members);
        return status(document);
    };
    const QByteArray pending = R"(,"pending":[{"id":"a","created_at":"","summary":""}])";
    expectEach(checks::rekordbox,
               {{failure(404), needsService},
                {status({}), "! A library wasn't found."},
                {library(R"(,"failed":[{"id":"a","summary":"","error":""}])"), "! 1 change couldn't be applied."},
                {library(pending, true), "! Waiting until Rekordbox is closed: 1 change."},
                {library({}, true), "✓ The library was found; Rekordbox is open."},
                {library(pending + R"(,"last_error":"Locked.")"), "! The last change failed: Locked."},
                {library(pending), "✓ The library was found; Rekordbox is closed."}});
}

TEST_F(CheckupTest, ReportsTheIconAndTheNotifications) {
    std::optional<TrayFacts> tray;
    std::optional<NotificationFacts> shower;
    context.system = {.tray = [&](qint64, std::stop_token) { return endedTask(tray); },
                      .notifications = [&](std::stop_token) { return endedTask(shower); }};
    const auto record = [this](const QByteArray& status, const QByteArray& date) {
        return file(u".tunedeck/menu-bar.json"_s, R"({"status":")" + status + R"(","checked_at":")" + date + "\"}");
    };
    const std::string noDesktop = "! Not checked: this terminal doesn't belong to a desktop.";
    const std::string isMissing = "! Tunedeck is running, but its icon isn't in the tray.";
    expectEach(checks::trayIcon,
               {{[] {}, noDesktop},
                {[&] { tray.emplace(); }, "! This desktop shows no tray icons; Tunedeck opens its window instead."},
                {[&] { tray->exists = true; }, "✓ The desktop has a tray; the icon appears when Tunedeck runs."},
                {[&] { context.instance = {.process = 1, .program = {}, .since = context.now}; }, isMissing},
                {record("visible", "2026-03-01T11:59:00Z"), isMissing}, // measured by an earlier process
                {record("hidden: full", "2026-03-01T12:00:05Z"), isMissing},
                {record("visible", "2026-03-01T12:00:05Z"), "✓ The icon is in the tray."},
                {[&] { tray->showsIcon = false; }, isMissing},
                {[&] { tray->showsIcon = true; }, "✓ The icon is in the tray."}});
    expectEach(checks::notifications,
               {{[] {}, noDesktop},
                {[&] { shower.emplace(); }, "! This desktop shows no notifications."},
                {[&] { shower->exists = true; }, "! The desktop shows them, but a click on one does nothing."},
                {[&] { shower->capabilities = {u"body"_s, u"actions"_s}; }, "✓ The desktop shows them."}});
    EXPECT_EQ(runToEnd(checks::notifications(context, {})).details, u"body, actions"_s);
    shower = NotificationFacts{.advice = u"Allow them."_s};
    EXPECT_EQ(runToEnd(checks::notifications(context, {})).advice, u"Allow them."_s);
}

TEST_F(CheckupTest, ReportsTheRunningInstanceAndItsUpdates) {
    const auto program = home.write(u"apps/Tunedeck.app/Contents/MacOS/Tunedeck"_s, "");
    expectEach(
        checks::application,
        {{[] {}, "! Tunedeck isn't running."},
         {[&] { context.instance = {.process = 1, .program = home.path(u"b/Tunedeck"_s)}; },
          "! The running Tunedeck is another copy, ~/b/Tunedeck."},
         {[&] { context.instance->program = QFileInfo(program).canonicalFilePath(); }, "✓ Version 1.2.0 is running."},
         {[&] { context.instance->isOnDisk = false; }, "! Tunedeck was updated or moved while it was running."}});
    context.lastUpdateCheck = context.now.addDays(-2);
    expectEach(checks::updates, {{[] {}, "✓ Last checked 2 days ago; Tunedeck can update itself."},
                                 {[&] { context.facts.bundle = u"/nowhere/Tunedeck.app"_s; },
                                  "✓ Last checked 2 days ago; you install new versions, as /nowhere is "
                                  "write-protected."}});
}

QCoro::Task<CheckResult> sleep(Clock* clock, std::chrono::milliseconds time, std::stop_token stop) {
    co_await clock->sleep(time, stop);
    co_return CheckResult::ok({});
}

TEST(CheckRunnerTest, KeepsTheOrderAndCutsOffWhatTakesTooLong) {
    ManualClock clock;
    const auto sleeper = [&clock](const QString& name, std::chrono::milliseconds time) {
        return Check{name, [&clock, time](std::stop_token stop) { return sleep(&clock, time, stop); }, 2s};
    };
    const Check deaf{u"deaf"_s, [&clock](std::stop_token) { return sleep(&clock, 2001ms, {}); }, 2s};
    const std::vector checks{sleeper(u"slow"_s, 1999ms), sleeper(u"hangs"_s, 1h), sleeper(u"fast"_s, 0ms), deaf};
    const auto ending = endingOf(runChecks(checks, &clock));
    clock.advance(1999ms);
    EXPECT_FALSE(ending->isThere());
    clock.advance(1ms);
    ASSERT_TRUE(ending->isThere());
    EXPECT_EQ(clock.sleeping(), 1U) << "only the one that doesn't stop";
    clock.advance(1ms);
    std::string seen;
    for (const auto& result : *ending->value) {
        seen += result.name.toStdString() + (result.level == CheckResult::Level::Ok ? " ok, " : " late, ");
    }
    EXPECT_EQ(seen, "slow ok, hangs late, fast ok, deaf late, ");
    EXPECT_TRUE(runToEnd(runChecks({}, &clock)).empty());
    EXPECT_EQ(runToEnd(runChecks({sleeper(u"fast"_s, 0ms)}, &clock)).size(), 1U);
    EXPECT_EQ(clock.sleeping(), 0U) << "its time limit";
}

TEST(CheckupReportTest, AlignsItsLinesAndMasksSecrets) {
    const std::vector<CheckResult> results{
        {.sentence = u"Fi\nne."_s, .name = u"Long name"_s},
        {.level = CheckResult::Level::Problem,
         .sentence = u"See \"abcdefghijklmnopqrstuvwx\"."_s,
         .advice = u"password=x"_s,
         .details = u"?start=code"_s,
         .name = u"Short"_s},
    };
    EXPECT_EQ(checkupText(results).toStdString(), "✓ Long name  Fi�ne.\n"
                                                  "✗ Short      See \"abcd…\".\n"
                                                  "             password=…\n");
    EXPECT_EQ(QJsonDocument::fromJson(checkupJson(results).toUtf8()), QJsonDocument::fromJson(R"([
        {"name": "Long name", "level": "ok", "sentence": "Fi�ne."},
        {"name": "Short", "level": "problem", "sentence": "See \"abcd…\".", "advice": "password=…",
         "details": "?start=…"}])"));
}

} // namespace
} // namespace tunedeck::test
