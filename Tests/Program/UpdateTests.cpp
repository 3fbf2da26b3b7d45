#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/Update/Zip.h"
#include "Tests/Program/Journey.h"
#include "Tests/Program/Web.h"

#include <atomic>

namespace tunedeck::test {

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Version 1.4.0 is installed; the product's web endpoint is this test's.
class UpdateJourney : public Journey {
protected:
    void SetUp() override {
        Journey::SetUp();
        if (IsSkipped() || HasFatalFailure()) {
            return;
        }
        layOut(bundle, "1.4.0");
        writeInHome(u".tunedeck/settings.json"_s, settings);
        web.emplace();
    }

    /// Half of the archive comes; the rest when `held` is false.
    Behaviour inHalves(const QByteArray& archive) {
        return [this, archive](Connection& connection, const ServedRequest&) {
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(archive.size()) + "\r\n\r\n");
            connection.send(archive.left(archive.size() / 2));
            while (held && connection.pause(10ms)) {
            }
            connection.send(archive.mid(archive.size() / 2));
        };
    }

    void publish(const QByteArray& archive, const Web::Fault& fault, const QByteArray& diskImage = {}) {
        web->publish(archive, fault, diskImage);
    }

    void findUpdate() {
        ASSERT_TRUE(press(u"Check for Updates"_s));
        ASSERT_TRUE(sees(u"Tunedeck 1.4.1 is available."_s));
    }

    /// The service's process.
    [[nodiscard]] int service() const {
        return output(u"systemctl"_s, {u"--user"_s, u"show"_s, u"--property=MainPID"_s, u"--value"_s,
                                       u"com.brightfold.tunedeck.service"_s})
            .trimmed()
            .toInt();
    }

    const QByteArray settings = R"({"download_dir": "/tmp/Music", "onboarded": true, "somebody": {"else": 1.50}})";
    const QStringList bundleAlone{u"Tunedeck.app"_s};
    std::atomic<bool> held = true;
    std::optional<Web> web;
};

TEST_F(UpdateJourney, LeadsToTheNewVersionAfterAllThatCanGoWrongOnTheWay) {
    start();
    ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
    ASSERT_TRUE(eventually([this] { return service() > 0; }));
    const auto oldService = service();

    const auto small = zip(appEntries("1.4.1", Web::identifier, "program"));
    const auto half = "HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n" + QByteArray(500'000, 'x');
    const struct {
        QString says; ///< after "Couldn't check for updates: "
        Web::Fault fault = {};
        QByteArray archive = {};
        bool isOffered = true;
    } ways[]{
        {.says = u"The update feed isn't signed by Tunedeck."_s,
         .fault = {.secret = QByteArray(32, 's')},
         .isOffered = false},
        {.says = u"The download doesn't match its checksum."_s, .fault = {.digest = QByteArray(64, '0')}},
        {.says = u"The download isn't the expected Tunedeck: version 1.4.0, expected 1.4.1."_s,
         .archive = zip(appEntries("1.4.0", Web::identifier, "program"))},
        {.says = u"The download isn't the expected Tunedeck: bundle org.example.other."_s,
         .archive = zip(appEntries("1.4.1", "org.example.other", "program"))},
        {.says = u"The update server answered 503."_s, .fault = {.delivery = behave::answer(503, "")}},
        {.says = u"transfer closed"_s, .fault = {.delivery = behave::raw(half)}},
        {.says = u"reset"_s, .fault = {.delivery = behave::resetAfter(half)}},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.says.toStdString());
        publish(way.archive.isEmpty() ? small : way.archive, way.fault);
        ASSERT_TRUE(press(u"Check for Updates"_s));
        if (way.isOffered) {
            ASSERT_TRUE(press(u"Update to 1.4.1"_s));
        }
        ASSERT_TRUE(sees(u"Couldn't check for updates: "_s));
        ASSERT_TRUE(sees(way.says));
        EXPECT_EQ(beside(), bundleAlone);
    }

    const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
    layOut(fresh, "1.4.1", '!');
    const auto archive = zipOf(fresh);
    publish(archive, {.delivery = inHalves(archive)});
    findUpdate();
    EXPECT_TRUE(sees(u"Faster."_s));
    ASSERT_TRUE(press(u"Update to 1.4.1"_s));
    EXPECT_TRUE(sees(u"Installing the update… Tunedeck restarts when it's done."_s));
    EXPECT_TRUE(sees(u"50 %"_s));
    const auto old = processes();
    ASSERT_EQ(old.size(), 1);
    held = false;
    ASSERT_TRUE(eventually([&] {
        const auto now = processes();
        return now.size() == 1 && now != old && icons() == 1;
    }));
    EXPECT_TRUE(opensWith(u"Version 1.4.1"_s));
    EXPECT_TRUE(sees(u"/tmp/Music"_s));
    EXPECT_EQ(icons(), 1);
    EXPECT_EQ(processes().size(), 1);
    EXPECT_EQ(windows(), QStringList{u"Tunedeck"_s});
    EXPECT_EQ(beside(), bundleAlone);
    EXPECT_EQ(read(u".tunedeck/settings.json"_s), settings);
    EXPECT_TRUE(eventually([&] { return service() > 0 && service() != oldService; })) << "the new one brings its own";
    EXPECT_EQ(run({u"--quit"_s}).status, 0);
    EXPECT_TRUE(eventually([this] { return processes().isEmpty(); }));
    EXPECT_GT(service(), 0);
}

TEST_F(UpdateJourney, WithoutRoomOrAWritableFolderKeepsTheOldVersion) {
    const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
    layOut(fresh, "1.4.1");
    const auto archive = zipOf(fresh);
    const SmallDisk disk(static_cast<int>(archive.size() * 3 / 2 / 1024)); // for one bundle, but not for two
    if (!disk.isThere()) {
        GTEST_SKIP() << disk.reason();
    }
    bundle = disk.path(u"Tunedeck.app"_s);
    layOut(bundle, "1.4.0");
    start();
    ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
    publish(archive, {}, "http://example.org/Tunedeck%201.dmg");
    findUpdate();
    ASSERT_TRUE(press(u"Update to 1.4.1"_s));
    EXPECT_TRUE(sees(u"No space left on device"_s));
    EXPECT_EQ(beside(), bundleAlone);

    disk.setReadOnly(true);
    for (const QByteArray image : {"http://example.org/Tunedeck%201.dmg", "file:///etc/passwd", ""}) {
        publish(archive, {}, image);
        findUpdate();
        const auto before = opened().size();
        ASSERT_TRUE(press(u"Update to 1.4.1"_s));
        ASSERT_TRUE(eventually([&] { return opened().size() > before; }));
        EXPECT_EQ(opened().last().toUtf8(),
                  image.startsWith("http") ? image : web->url("/download/Tunedeck-latest.dmg").toEncoded());
        EXPECT_TRUE(sees(u"Tunedeck 1.4.1 is available."_s));
    }
    EXPECT_EQ(processes().size(), 1);
    EXPECT_EQ(run({u"--quit"_s}).status, 0);
    EXPECT_TRUE(eventually([this] { return processes().isEmpty(); }));
    EXPECT_EQ(run({u"--version"_s}).output, "Tunedeck 1.4.0\n");
    disk.setReadOnly(false);
}

TEST_F(UpdateJourney, KilledOnTheWayItStartsAgainAndSweepsUp) {
    const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
    layOut(fresh, "1.4.1", '!');
    const auto archive = zipOf(fresh, 10'000); // more than is unpacked in a moment
    publish(archive, {.delivery = inHalves(archive)});
    for (const bool whileDownloading : {true, false}) {
        start();
        ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
        findUpdate();
        held = whileDownloading;
        ASSERT_TRUE(press(u"Update to 1.4.1"_s));
        if (whileDownloading) {
            EXPECT_TRUE(sees(u"50 %"_s));
        }
        QString scratch;
        ASSERT_TRUE(eventually([&] {
            const auto found = beside().filter(u".tunedeck-update-"_s);
            scratch = found.isEmpty() ? scratch : QFileInfo(bundle).path() + u'/' + found.first();
            return whileDownloading ? !found.isEmpty()
                                    : QFileInfo::exists(scratch + u"/unpacked"_s) || processes().isEmpty();
        }));
        if (application.state() == QProcess::Running) {
            application.kill();
            ASSERT_TRUE(application.waitForFinished());
            start();
        } else { // it was faster than this test
            ASSERT_TRUE(eventually([this] { return icons() == 1; }));
        }
        const bool isOld = run({u"--version"_s}).output == "Tunedeck 1.4.0\n";
        EXPECT_TRUE(isOld || !whileDownloading);
        ASSERT_TRUE(opensWith(isOld ? u"Version 1.4.0"_s : u"Version 1.4.1"_s));
        ASSERT_TRUE(press(u"Check for Updates"_s));
        EXPECT_TRUE(eventually([this] { return beside() == bundleAlone; })) << beside().join(u' ').toStdString();
        EXPECT_TRUE(sees(isOld ? u"Tunedeck 1.4.1 is available."_s : u"Up to date"_s));
        EXPECT_EQ(run({u"--quit"_s}).status, 0);
        ASSERT_TRUE(eventually([this] { return processes().isEmpty(); }));
    }
}

TEST_F(UpdateJourney, QuitOnTheWayEndsEverythingAndLeavesOneWholeBundle) {
    const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
    layOut(fresh, "1.4.1", '!');
    const auto archive = zipOf(fresh, 10'000);
    publish(archive, {.delivery = inHalves(archive)});
    enum class Step { Checking, Downloading, Installing };
    for (const auto step : {Step::Checking, Step::Downloading, Step::Installing}) {
        SCOPED_TRACE(static_cast<int>(step));
        start();
        ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
        const auto old = processes();
        if (step == Step::Checking) {
            web->on("GET /download/appcast.json", behave::hang());
            ASSERT_TRUE(press(u"Check for Updates"_s));
            ASSERT_TRUE(sees(u"Checking for updates…"_s));
            ASSERT_TRUE(eventually([this] { return !processes(u"Helpers/tunedeck-fetch"_s).isEmpty(); }));
            publish(archive, {.delivery = inHalves(archive)});
        } else {
            findUpdate();
            held = step == Step::Downloading;
            ASSERT_TRUE(press(u"Update to 1.4.1"_s));
            EXPECT_TRUE(!held || sees(u"50 %"_s));
            ASSERT_TRUE(eventually([&] {
                const auto scratch = beside().filter(u".tunedeck-update-"_s);
                const auto unpacked = QFileInfo(bundle).path() + u'/' + scratch.value(0) + u"/unpacked"_s;
                return (!scratch.isEmpty() && (held || QFileInfo::exists(unpacked))) || processes() != old;
            }));
        }
        // One that has just been replaced hands over to the new version, which is quit as well.
        ASSERT_TRUE(eventually([this] { return run({u"--quit"_s}).status == 0 && processes().isEmpty(); }));
        EXPECT_TRUE(eventually([this] { return processes(u"Helpers/tunedeck-fetch"_s).isEmpty(); }));
        EXPECT_TRUE(step == Step::Installing || beside() == bundleAlone) << beside().join(u' ').toStdString();
    }
    const auto version = run({u"--version"_s}).output.trimmed().mid(9);
    EXPECT_TRUE(version == "1.4.0" || version == "1.4.1") << version.constData();
    start();
    EXPECT_TRUE(opensWith(u"Version "_s + QString::fromUtf8(version)));
}

} // namespace

} // namespace tunedeck::test
