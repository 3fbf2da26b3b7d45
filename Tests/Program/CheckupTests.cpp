#include "Tests/Helpers/StatusDocument.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Peers/NotificationServer.h"
#include "Tests/Program/Journey.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <signal.h>

#include <map>

namespace tunedeck::test {

namespace {

class CheckupJourney : public Journey {
protected:
    void prepare() override {}

    /// Runs the check-up and returns "LEVEL: SENTENCE" by name.
    std::map<QString, QString> checkup() {
        QProcess process; // while the event loop runs, as the notification server is in this process
        process.setProcessEnvironment(environment);
        process.start(bundle + u"/Contents/MacOS/Tunedeck"_s, {u"--checkup"_s, u"--json"_s});
        EXPECT_TRUE(eventually([&] { return process.state() == QProcess::NotRunning; }));
        const auto output = process.readAllStandardOutput();
        std::map<QString, QString> lines;
        bool hasProblem = false;
        for (const auto& value : QJsonDocument::fromJson(output).array()) {
            const auto object = value.toObject();
            const auto level = object.value(u"level"_s).toString();
            hasProblem = hasProblem || level == u"problem";
            lines[object.value(u"name"_s).toString()] = level + u": "_s + object.value(u"sentence"_s).toString();
        }
        EXPECT_EQ(lines.size(), 16U) << output.toStdString();
        EXPECT_EQ(process.exitCode(), hasProblem ? 1 : 0);
        return lines;
    }
};

TEST_F(CheckupJourney, FollowsARunningInstallationIntoItsFaults) {
    const NotificationServer notifications({u"actions"_s}, busAddress());
    writeInHome(u".tunedeck/settings.json"_s, R"({"onboarded": true})");
    start();
    ASSERT_TRUE(eventually([this] { return run({u"--status"_s}).status == 0; }));
    auto lines = checkup();
    for (const auto& name : {u"Service"_s, u"Service answer"_s, u"Service program"_s, u"Service files"_s,
                             u"Download folder"_s, u"Your own tunnel"_s, u"Notifications"_s, u"Updates"_s}) {
        EXPECT_TRUE(lines[name].startsWith(u"ok: "_s)) << lines[name].toStdString();
    }
    EXPECT_EQ(lines[u"Tunedeck"_s], u"ok: Version 1.4.0 is running."_s);
    EXPECT_TRUE(eventually([this] { return checkup()[u"Tray icon"_s] == u"ok: The icon is in the tray."; }));

    std::ignore = output(u"systemctl"_s, {u"--user"_s, u"stop"_s, u"com.brightfold.tunedeck.service"_s});
    writeInHome(u"Library/LaunchAgents/com.brightfold.tunedeck.plist"_s, "<plist/>");
    lines = checkup();
    EXPECT_EQ(lines[u"Service"_s], u"problem: It is stopped; it ended with exit status 0."_s);
    EXPECT_TRUE(lines[u"Service answer"_s].startsWith(u"problem: Nothing answers on port "_s));
    EXPECT_TRUE(lines[u"Service files"_s].endsWith(u" was changed."_s));
}

TEST_F(CheckupJourney, AsksTheRelayAndMasksSecrets) {
    TestServer service;
    TestServer relay;
    publishServicePort(service.port());
    service.on("GET /local/status",
               behave::answer(200, statusDocument(R"("download_dir_writable":false,"download_dir_error":"Bearer abc",)"
                                                  R"("cloud":{"enabled":true,"base_url":")" +
                                                  relay.url().toEncoded() + "\"}")));
    const std::pair<QByteArray, QString> healths[]{
        {R"({"status":"ok"})", u"warning: 127.0.0.1 doesn't answer."_s},
        {R"({"status":"down","version":"","protocol":"","queued":2})",
         u"warning: 127.0.0.1 reports “down”. Waiting there: 2 requests."_s},
        {R"({"status":"ok","version":"","protocol":"","agent":{"online":false,"last_seen":"x"}})",
         u"warning: 127.0.0.1 doesn't see this computer."_s},
        {R"({"status":"ok","version":"","protocol":"","agent":{"online":true}})", u"ok: 127.0.0.1 works."_s},
    };
    for (const auto& [health, expected] : healths) {
        relay.on("GET /health", behave::answer(200, health));
        auto lines = checkup();
        EXPECT_EQ(lines[u"Cloud relay"_s], expected);
        EXPECT_EQ(lines[u"Service answer"_s], u"ok: Version 5.0 answers on port %1."_s.arg(service.port()));
        EXPECT_EQ(lines[u"Download folder"_s], u"problem: /music can't be written to. Bearer …"_s);
    }
}

TEST_F(CheckupJourney, EndsInTimeWhenNothingResponds) {
    TestServer service;
    service.on("*", behave::hang());
    publishServicePort(service.port());
    const auto hung = hangProgram(u"systemctl"_s);
    ::kill(bus->id(), SIGSTOP);
    QElapsedTimer watch;
    watch.start();
    const auto ended = run({u"--checkup"_s});
    const auto elapsed = watch.elapsed();
    ::kill(bus->id(), SIGCONT);
    EXPECT_LT(elapsed, 10'000);
    EXPECT_EQ(ended.status, 1);
    const auto lines = QString::fromUtf8(ended.output).split(u'\n').filter(QRegularExpression(u"^[✓!✗] "_s));
    ASSERT_EQ(lines.size(), 16) << ended.output.toStdString();
    for (const auto& line : {lines[0], lines[11], lines[12], lines[13]}) {
        EXPECT_TRUE(line.startsWith(u'✗') && line.endsWith(u"it took too long."_s)) << line.toStdString();
    }
    EXPECT_TRUE(lines[1].contains(u"It doesn't answer in time"_s));
    QFile status(u"/proc/%1/stat"_s.arg(hung()));
    EXPECT_TRUE(eventually([&] { return !status.open(QFile::ReadOnly) || status.readAll().contains(") Z "); }))
        << "its child process still runs";
}

TEST_F(CheckupJourney, WorksWithoutDesktopAndService) {
    for (const auto* name : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"}) {
        environment.remove(QString::fromLatin1(name));
    }
    const auto lines = checkup();
    EXPECT_EQ(lines.at(u"Service"_s), u"problem: It isn't set up."_s);
    EXPECT_EQ(lines.at(u"Service program"_s), u"problem: It isn't installed."_s);
    EXPECT_EQ(lines.at(u"Tunedeck"_s), u"warning: Tunedeck isn't running."_s);
    for (const auto& created : {u".tunedeck"_s, u".config"_s, u"Library"_s}) {
        EXPECT_FALSE(QDir(home).exists(created)) << created.toStdString();
    }
    const auto started = run();
    EXPECT_EQ(started.status, 1);
    EXPECT_TRUE(started.output.contains("there is no display to run on"));
}

} // namespace

} // namespace tunedeck::test
