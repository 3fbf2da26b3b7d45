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

#include <QJsonArray>

namespace tunedeck {
namespace {

using namespace test;

/// "LEVEL: SENTENCE"
std::string words(const CheckResult& result) {
    const std::array levels{"ok: ", "warning: ", "problem: "};
    return levels.at(static_cast<std::size_t>(result.level)) + result.sentence.toStdString();
}

ServiceStatus decoded(const QByteArray& changes) {
    return ServiceStatus::decode(statusDocument(changes)).value();
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
        return [this, changes] { context.status = decoded(changes); };
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

using ServiceCheckupTest = CheckupTest;
using DownloadCheckupTest = CheckupTest;
using CloudCheckupTest = CheckupTest;
using DesktopCheckupTest = CheckupTest;
using ApplicationCheckupTest = CheckupTest;

const std::string needsService = "warning: Not checked: the service has to answer first.";

TEST_F(ServiceCheckupTest, ComparesTheInstallationWithTheBundle) {
    const auto installed = u".tunedeck/bin/tunedeck"_s;
    expectEach(checks::serviceProgram,
               {{[] {}, "warning: This copy of Tunedeck contains no service program."},
                {file(u"apps/Tunedeck.app/Contents/Helpers/tunedeck"_s, "1"), "problem: It isn't installed."},
                {file(installed, "0"), "problem: The installed program can't be executed."},
                {[&] { QFile::setPermissions(home.path(installed), QFile::ReadOwner | QFile::ExeOwner); },
                 "warning: The installed program isn't the one in this Tunedeck."},
                {file(installed, "1"), "ok: It is installed, and the same as in this Tunedeck."}});

    ManualClock clock;
    const ServiceInstaller installer(home.path(), {}, 501, {}, clock);
    const auto plist = u"Library/LaunchAgents/com.brightfold.tunedeck.plist"_s;
    std::optional<QString> outdated;
    context.system.outdatedServiceFile = [&](const PropertyDictionary& list) {
        EXPECT_EQ(list, installer.plist());
        return outdated;
    };
    expectEach(checks::serviceFiles,
               {{[] {}, "problem: ~/Library/LaunchAgents/com.brightfold.tunedeck.plist is missing."},
                {file(plist, "<plist/>"), "warning: ~/Library/LaunchAgents/com.brightfold.tunedeck.plist was changed."},
                {file(plist, xmlPropertyList(installer.plist())),
                 "ok: The files that start the service are as they should be."},
                {[&] { outdated = home.path(u"x.service"_s); }, "problem: ~/x.service is missing."},
                {file(u"x.service"_s, "x"), "warning: ~/x.service was changed."}});
}

TEST_F(ServiceCheckupTest, ReportsTheProcessAndItsAnswer) {
    using State = SupervisedService::State;
    std::optional<SupervisedService> service;
    context.system.service = [&](std::stop_token) { return endedTask(service); };
    const auto is = [&service](SupervisedService state) { return [&service, state] { service = state; }; };
    const QDateTime start(QDate(2026, 3, 1), QTime(11, 0), Qt::UTC);
    const auto since = "It has been running since " + dateAndTime(start).toStdString();
    expectEach(checks::serviceProcess,
               {{[] {}, "problem: The system's service manager doesn't answer."},
                {is({State::Unknown}), "problem: It isn't set up."},
                {is({State::Stopped}), "problem: It is stopped."},
                {is({State::Stopped, {}, u"exit status 0"_s}), "problem: It is stopped; it ended with exit status 0."},
                {is({State::Restarting, {}, u"signal 9"_s}),
                 "problem: It keeps ending and is started again; it ended with signal 9."},
                {is({State::Running, start, {}, 2}), "warning: " + since + ", after ending unexpectedly (2 times)."},
                {is({State::Running, start}), "ok: " + since + '.'}});
    context.serviceUrl = QUrl(u"http://127.0.0.1:8123"_s);
    expectEach(checks::serviceAnswer,
               {{failure(HttpFailure::Unreachable), "problem: Nothing answers on port 8123."},
                {failure(HttpFailure::TimedOut), "problem: It doesn't answer in time on port 8123."},
                {failure(HttpFailure::Malformed), "problem: What answers on port 8123 isn't the service."},
                {failure(404), "problem: What answers on port 8123 isn't the service."},
                {failure(ServiceStatus::decode(statusDocument(R"("cloud":{})")).error()),
                 "problem: Its status can't be read. Unreadable document: \"cloud.enabled\" is missing."},
                {status({}), "ok: Version 5.0 answers on port 8123."}});
}

TEST_F(DownloadCheckupTest, ReportsTheToolsAndTheFolder) {
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
                {status({}), "warning: The service doesn't report on its tools."},
                {report(ready + ',' + missing), "problem: Missing or too old: yt-dlp."},
                {report(missing, R"(false,"error":"No space.")"), "problem: Missing or too old: yt-dlp. (No space.)"},
                {report(missing, "true"), "warning: They are being installed."},
                {report(ready), "ok: All tools are installed."}});
    EXPECT_EQ(runToEnd(checks::tools(context, {})).details, u"ffmpeg 7.1"_s);

    const SmallDisk disk(64);
    const auto onDisk = R"("download_dir":")" + QFile::encodeName(disk.path(u"not/yet/there"_s)) + '"';
    expectEach(checks::downloadFolder,
               {{failure(404), needsService},
                {file(u".tunedeck/settings.json"_s, R"({"download_dir":"/nowhere"})"),
                 "problem: /nowhere can't be written to."},
                {status(R"("download_dir_writable":false)"), "problem: /music can't be written to."},
                {status(R"("download_dir_writable":false,"download_dir_error":"It is full.")"),
                 "problem: /music can't be written to. It is full."}});
    context.status = decoded(R"("download_dir":")" + QFile::encodeName(home.path(u"Music"_s)) + '"');
    const auto large = words(checks::downloadFolder(context));
    EXPECT_TRUE(large.starts_with("ok: ~/Music can be written to, with ") && large.ends_with("B of free space."))
        << large;
    if (disk.isThere()) {
        context.status = decoded(onDisk);
        EXPECT_TRUE(words(checks::downloadFolder(context)).ends_with("has only 66 kB of free space."));
    }
}

TEST_F(CloudCheckupTest, ReportsTheConnectionAndTheTunnel) {
    const auto cloud = [this](const QByteArray& members) {
        return status(R"("cloud":{"base_url":"https://x.example",)" + members + '}');
    };
    expectEach(checks::cloud,
               {{failure(404), needsService},
                {cloud(R"("enabled":false)"),
                 "warning: It is switched off in the service, so assistants can't send requests."},
                {cloud(R"("enabled":true,"connected":true)"), "warning: This computer isn't registered yet."},
                {cloud(R"("enabled":true,"registered":true)"), "warning: The service is still connecting."},
                {cloud(R"("enabled":true,"registered":true,"connected":false)"),
                 "problem: The service can't reach it; requests wait there."},
                {cloud(R"("enabled":true,"registered":true,"connected":true)"),
                 "ok: This computer is registered and connected."}});
    expectEach(checks::relay, {{cloud(R"("enabled":false)"), "ok: Not asked, as the cloud is switched off."},
                               {failure(404), needsService}});

    const auto path = u".cloudflared/config.yml"_s;
    context.serviceUrl = QUrl(u"http://127.0.0.1:8123"_s);
    expectEach(checks::tunnel,
               {{[] {}, "ok: None; Tunedeck doesn't need one."},
                {file(path, "hostname: a.example"), "warning: ~/.cloudflared/config.yml names no tunnel."},
                {file(path, "tunnel: t"), "ok: Your tunnel is configured."},
                {file(path, "tunnel: t\nhostname: a.example\nservice: http://localhost:8000"),
                 "warning: a.example leads to port 8000, but the service is on port 8123."},
                {file(path, "tunnel: t\nhostname: a.example\nservice: http://localhost:8123"),
                 "ok: a.example leads to http://localhost:8123."}});
}

TEST_F(CloudCheckupTest, ReportsTheLibrary) {
    const auto library = [this](const QByteArray& members, bool isOpen = false) {
        auto document = libraryMember("1", isOpen);
        document.insert(document.size() - 1, members);
        return status(document);
    };
    const QByteArray pending = R"(,"pending":[{"id":"a","created_at":"","summary":""}])";
    expectEach(
        checks::rekordbox,
        {{failure(404), needsService},
         {status({}), "warning: A library wasn't found."},
         {library(R"(,"failed":[{"id":"a","summary":"","error":""}])"), "warning: 1 change couldn't be applied."},
         {library(pending, true), "warning: Waiting until Rekordbox is closed: 1 change."},
         {library({}, true), "ok: The library was found; Rekordbox is open."},
         {library(pending + R"(,"last_error":"Locked.")"), "warning: The last change failed: Locked."},
         {library(pending), "ok: The library was found; Rekordbox is closed."}});
}

TEST_F(DesktopCheckupTest, ReportsEachPartOfTheDesktop) {
    std::optional<TrayFacts> tray;
    std::optional<NotificationFacts> shower;
    std::optional<bool> settings;
    auto login = LoginItemState::Off;
    context.system = {.tray = [&](qint64, std::stop_token) { return endedTask(tray); },
                      .notifications = [&](std::stop_token) { return endedTask(shower); },
                      .settings = [&](std::stop_token) { return endedTask(settings); },
                      .loginItem = [&] { return login; }};
    const auto record = [this](const QByteArray& status, const QByteArray& date) {
        return file(u".tunedeck/menu-bar.json"_s, R"({"status":")" + status + R"(","checked_at":")" + date + "\"}");
    };
    const std::string noDesktop = "warning: Not checked: this terminal doesn't belong to a desktop.";
    const std::string isMissing = "warning: Tunedeck is running, but its icon isn't in the tray.";
    expectEach(
        checks::trayIcon,
        {{[] {}, noDesktop},
         {[&] { tray.emplace(); }, "warning: This desktop shows no tray icons; Tunedeck opens its window instead."},
         {[&] { tray->exists = true; }, "ok: The desktop has a tray; the icon appears when Tunedeck runs."},
         {[&] { context.instance = {.process = 1, .program = {}, .since = context.now}; }, isMissing},
         {record("visible", "2026-03-01T11:59:00Z"), isMissing}, // measured by an earlier process
         {record("hidden: full", "2026-03-01T12:00:05Z"), isMissing},
         {record("visible", "2026-03-01T12:00:05Z"), "ok: The icon is in the tray."},
         {[&] { tray->showsIcon = false; }, isMissing},
         {[&] { tray->showsIcon = true; }, "ok: The icon is in the tray."}});
    expectEach(checks::notifications,
               {{[] {}, noDesktop},
                {[&] { shower.emplace(); }, "warning: This desktop shows no notifications."},
                {[&] { shower->exists = true; }, "warning: The desktop shows them, but a click on one does nothing."},
                {[&] { shower->capabilities = {u"body"_s, u"actions"_s}; }, "ok: The desktop shows them."}});
    EXPECT_EQ(runToEnd(checks::notifications(context, {})).details, u"body, actions"_s);
    expectEach(checks::desktopSettings,
               {{[] {}, noDesktop},
                {[&] { settings = false; }, "warning: The desktop doesn't report whether it is light or dark."},
                {[&] { settings = true; }, "ok: Tunedeck follows the desktop's light or dark style."}});
    expectEach(checks::openAtLogin, {{[] {}, "ok: Off."},
                                     {[&] { login = LoginItemState::On; }, "ok: On."},
                                     {[&] { login = LoginItemState::Broken; },
                                      "warning: There is an entry for it, but the desktop doesn't use it."}});
}

TEST_F(ApplicationCheckupTest, ReportsTheRunningInstanceAndItsUpdates) {
    const auto program = home.write(u"apps/Tunedeck.app/Contents/MacOS/Tunedeck"_s, "");
    expectEach(checks::application, {{[] {}, "warning: Tunedeck isn't running."},
                                     {[&] { context.instance = {.process = 1, .program = home.path(u"b/Tunedeck"_s)}; },
                                      "warning: The running Tunedeck is another copy, ~/b/Tunedeck."},
                                     {[&] { context.instance->program = QFileInfo(program).canonicalFilePath(); },
                                      "ok: Version 1.2.0 is running."},
                                     {[&] { context.instance->isOnDisk = false; },
                                      "warning: Tunedeck was updated or moved while it was running."}});
    expectEach(checks::updates,
               {{[] {}, "ok: Not checked yet; Tunedeck can update itself."},
                {[&] { context.lastUpdateCheck = context.now.addDays(-7); },
                 "ok: Last checked last week; Tunedeck can update itself."},
                {[&] { context.lastUpdateCheck = context.now.addDays(-8); }, "warning: Last checked last week."},
                {[&] {
                     context.lastUpdateCheck.reset();
                     context.facts.bundle = u"/nowhere/Tunedeck.app"_s;
                 },
                 "ok: Not checked yet; you install new versions, as /nowhere is write-protected."}});
}

QCoro::Task<CheckResult> sleeping(Clock& clock, std::chrono::milliseconds time, const QString& sentence,
                                  std::stop_token stop) {
    co_await clock.sleep(time, stop);
    co_return CheckResult::ok(sentence);
}

TEST(CheckRunnerTest, KeepsTheOrderAndCutsOffWhatTakesTooLong) {
    ManualClock clock;
    const auto sleeper = [&clock](const QString& name, std::chrono::milliseconds time, bool stops = true) {
        return Check{name,
                     [&clock, name, time, stops](std::stop_token stop) {
                         return sleeping(clock, time, name, stops ? stop : std::stop_token());
                     },
                     2s};
    };
    const auto ending = endingOf(runChecks({sleeper(u"slow"_s, 1999ms), sleeper(u"hangs"_s, 1h),
                                            sleeper(u"fast"_s, 0ms), sleeper(u"deaf"_s, 2001ms, false)},
                                           clock));
    clock.advance(1999ms);
    EXPECT_FALSE(ending->isThere());
    clock.advance(1ms);
    ASSERT_TRUE(ending->isThere());
    EXPECT_EQ(clock.sleeping(), 1U) << "only the one that doesn't stop";
    clock.advance(1ms);
    const std::string late = "problem: This couldn't be checked: it took too long.";
    const std::vector<std::pair<QString, std::string>> expected{
        {u"slow"_s, "ok: slow"}, {u"hangs"_s, late}, {u"fast"_s, "ok: fast"}, {u"deaf"_s, late}};
    ASSERT_EQ(ending->value->size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(ending->value->at(i).name, expected[i].first);
        EXPECT_EQ(words(ending->value->at(i)), expected[i].second);
    }
    EXPECT_TRUE(runToEnd(runChecks({}, clock)).empty());
}

TEST(CheckupReportTest, AlignsItsLinesAndMasksSecrets) {
    auto good = CheckResult::ok(u"Fine."_s);
    good.name = u"Long name"_s;
    auto bad = CheckResult::problem(u"See https://x.example/abcdefghijklmnopqrstuvwx/mcp \"now\"."_s, u"Bearer x"_s);
    bad.name = u"Short"_s;
    bad.details = u"?start=code"_s;
    EXPECT_EQ(checkupText({good, bad}).toStdString(), "✓ Long name  Fine.\n"
                                                      "✗ Short      See https://x.example/abcd…/mcp \"now\".\n"
                                                      "             Bearer …\n");
    const auto parsed = QJsonDocument::fromJson(checkupJson({good, bad}).toUtf8()).array();
    EXPECT_EQ(parsed,
              QJsonArray({QJsonObject{{u"name"_s, u"Long name"_s}, {u"level"_s, u"ok"_s}, {u"sentence"_s, u"Fine."_s}},
                          QJsonObject{{u"name"_s, u"Short"_s},
                                      {u"level"_s, u"problem"_s},
                                      {u"sentence"_s, u"See https://x.example/abcd…/mcp \"now\"."_s},
                                      {u"advice"_s, u"Bearer …"_s},
                                      {u"details"_s, u"?start=…"_s}}}));
}

} // namespace
} // namespace tunedeck
