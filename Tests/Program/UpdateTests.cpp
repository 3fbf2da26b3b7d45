#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Program/Journey.h"
#include "Tests/Program/Web.h"

#include <QFileInfo>

#include <atomic>
#include <utility>

namespace tunedeck::test {

namespace {

using namespace std::chrono_literals;

/// The test acts as the web endpoint.
class UpdateJourney : public Journey {
protected:
    void prepare() override {
        writeInHome(u".tunedeck/settings.json"_s, settings);
        web.emplace();
    }

    /// Publishes version 1.4.1. The second half of its archive is sent once `held` is false.
    void publish(int emptyFiles = 0) {
        const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
        writeBundle(fresh, "1.4.1", '!');
        const auto archive = zipOf(fresh, emptyFiles);
        web->publish(archive, [this, archive](Connection& connection, const ServedRequest&) {
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(archive.size()) + "\r\n\r\n");
            connection.send(archive.left(archive.size() / 2));
            while (held && connection.pause(10ms)) {
            }
            connection.send(archive.mid(archive.size() / 2));
        });
    }

    void findUpdate() {
        ASSERT_TRUE(press(u"Check for Updates"_s));
        ASSERT_TRUE(sees(u"Tunedeck 1.4.1 is available."_s));
        EXPECT_TRUE(sees(u"Faster."_s));
    }

    enum class Step { Downloading, Unpacking };

    /// Starts the update and waits until it has reached the step. Unpacking may already be over.
    void updateUntil(Step step) {
        const auto old = processes();
        findUpdate();
        held = step == Step::Downloading;
        ASSERT_TRUE(press(u"Update to 1.4.1"_s));
        EXPECT_TRUE(!held || sees(u"50 %"_s));
        ASSERT_TRUE(eventually([&] {
            const auto scratch = siblings().filter(u".tunedeck-update-"_s);
            const auto unpacked = QFileInfo(bundle).path() + u'/' + scratch.value(0) + u"/unpacked"_s;
            return (!scratch.isEmpty() && (held || QFileInfo::exists(unpacked))) || processes() != old;
        }));
    }

    [[nodiscard]] int servicePid() const {
        return output(u"systemctl"_s, {u"--user"_s, u"show"_s, u"--property=MainPID"_s, u"--value"_s,
                                       u"com.brightfold.tunedeck.service"_s})
            .trimmed()
            .toInt();
    }

    const QByteArray settings = R"({"download_dir": "/tmp/Music", "onboarded": true, "somebody": {"else": 1.50}})";
    const QStringList bundleOnly{u"Tunedeck.app"_s};
    std::atomic<bool> held = true;
    std::optional<Web> web;
};

TEST_F(UpdateJourney, RestartsWithTheNewVersionAndItsService) {
    start();
    ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
    ASSERT_TRUE(eventually([this] { return servicePid() > 0; }));
    const auto oldService = servicePid();
    const auto old = processes();
    ASSERT_EQ(old.size(), 1);
    publish();
    updateUntil(Step::Downloading);
    EXPECT_TRUE(sees(u"Installing the update… Tunedeck restarts when it's done."_s));
    held = false;
    ASSERT_TRUE(eventually([&] {
        const auto now = processes();
        return now.size() == 1 && now != old && icons() == 1;
    }));
    EXPECT_TRUE(opensWith(u"Version 1.4.1"_s));
    EXPECT_TRUE(sees(u"/tmp/Music"_s));
    EXPECT_EQ(windows(), QStringList{u"Tunedeck"_s});
    EXPECT_EQ(siblings(), bundleOnly);
    EXPECT_EQ(read(u".tunedeck/settings.json"_s), settings);
    EXPECT_TRUE(eventually([&] { return servicePid() > 0 && servicePid() != oldService; }));
    quit();
    EXPECT_GT(servicePid(), 0);
}

TEST_F(UpdateJourney, KeepsTheOldVersionOnAFullOrReadOnlyDisk) {
    const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
    writeBundle(fresh, "1.4.1");
    const auto archive = zipOf(fresh);
    const SmallDisk disk(static_cast<int>(archive.size() * 3 / 2 / 1024)); // room for one bundle, but not for two
    if (!disk.isThere()) {
        GTEST_SKIP() << disk.reason();
    }
    bundle = disk.path(u"Tunedeck.app"_s);
    writeBundle(bundle, "1.4.0");
    start();
    ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
    web->publish(archive);
    findUpdate();
    ASSERT_TRUE(press(u"Update to 1.4.1"_s));
    EXPECT_TRUE(sees(u"No space left on device"_s));
    EXPECT_EQ(siblings(), bundleOnly);

    disk.setReadOnly(true);
    findUpdate();
    ASSERT_TRUE(press(u"Update to 1.4.1"_s));
    ASSERT_TRUE(eventually([this] { return !opened().isEmpty(); }));
    EXPECT_EQ(opened().last(), web->url("/download/Tunedeck-latest.dmg").toString());
    EXPECT_TRUE(sees(u"Tunedeck 1.4.1 is available."_s));
    EXPECT_EQ(processes().size(), 1);
    quit();
    EXPECT_EQ(run({u"--version"_s}).output, "Tunedeck 1.4.0\n");
    disk.setReadOnly(false);
}

TEST_F(UpdateJourney, IsCheckedByTheCheckupOnlyOnRequest) {
    const auto finds = [this](const QByteArray& text, const QStringList& more = {}) {
        return eventually([&] { return run(QStringList(u"--checkup"_s) + more).output.contains(text); });
    };
    publish();
    EXPECT_TRUE(finds("Not checked yet; Tunedeck can update itself."));
    EXPECT_EQ(web->requests().size(), 0);
    web->on("GET /download/appcast.json.sig", behave::answer(200, "x"));
    EXPECT_TRUE(finds("✗ Update feed      The update feed isn't signed", {u"--online"_s}));
    start();
    ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
    ASSERT_TRUE(press(u"Check for Updates"_s));
    ASSERT_TRUE(sees(u"The update feed isn't signed by Tunedeck."_s));
    EXPECT_TRUE(finds("Not checked yet"));
    publish();
    findUpdate();
    EXPECT_TRUE(finds("✓ Updates          Last checked "));
    EXPECT_TRUE(finds("! Update feed      Version 1.4.1 is available.", {u"--online"_s}));
    const auto installed = std::exchange(bundle, folder->filePath(u"fresh/Tunedeck.app"_s));
    EXPECT_TRUE(finds("✓ Update feed      This is the latest version.", {u"--online"_s}));
    bundle = installed;
}

TEST_F(UpdateJourney, StartsAgainAfterAKillAndRemovesTheLeftovers) {
    publish(10'000); // so that unpacking takes a while
    for (const auto step : {Step::Downloading, Step::Unpacking}) {
        start();
        ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
        updateUntil(step);
        if (application.state() == QProcess::Running) {
            application.kill();
            ASSERT_TRUE(application.waitForFinished());
            start();
        } else { // the update is already complete
            ASSERT_TRUE(eventually([this] { return icons() == 1; }));
        }
        const bool isOld = run({u"--version"_s}).output == "Tunedeck 1.4.0\n";
        EXPECT_TRUE(isOld || step == Step::Unpacking);
        ASSERT_TRUE(opensWith(isOld ? u"Version 1.4.0"_s : u"Version 1.4.1"_s));
        ASSERT_TRUE(press(u"Check for Updates"_s));
        EXPECT_TRUE(eventually([this] { return siblings() == bundleOnly; })) << siblings().join(u' ').toStdString();
        EXPECT_TRUE(sees(isOld ? u"Tunedeck 1.4.1 is available."_s : u"Up to date"_s));
        quit();
    }
}

TEST_F(UpdateJourney, QuittingDuringTheUpdateEndsAllProcessesAndKeepsOneBundle) {
    publish(10'000);
    const auto quitAll = [this] {
        // After the swap the new version may already be running; quit that one as well.
        ASSERT_TRUE(eventually([this] { return run({u"--quit"_s}).status == 0 && processes().isEmpty(); }));
        EXPECT_TRUE(eventually([this] { return processes(u"Helpers/tunedeck-update"_s).isEmpty(); }));
    };
    for (const auto step : {Step::Downloading, Step::Unpacking}) {
        start();
        ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
        updateUntil(step);
        quitAll();
    }
    const auto version = u"Version "_s + QString::fromUtf8(run({u"--version"_s}).output.trimmed().mid(9));
    EXPECT_TRUE(version == u"Version 1.4.0" || version == u"Version 1.4.1") << version.toStdString();
    start();
    ASSERT_TRUE(opensWith(version));
    web->on("GET /download/appcast.json", behave::hang());
    ASSERT_TRUE(press(u"Check for Updates"_s));
    ASSERT_TRUE(sees(u"Checking for updates…"_s));
    ASSERT_TRUE(eventually([this] { return !processes(u"Helpers/tunedeck-update"_s).isEmpty(); }));
    EXPECT_EQ(siblings(), bundleOnly) << "a check removes the leftovers first";
    quitAll();
}

} // namespace

} // namespace tunedeck::test
