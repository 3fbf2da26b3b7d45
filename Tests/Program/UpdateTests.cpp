#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Helpers/Update/Signing.h"
#include "Tests/Helpers/Update/Zip.h"
#include "Tests/Program/Journey.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <signal.h>

#include <atomic>
#include <utility>
#include <vector>

namespace tunedeck::test {

namespace {

using namespace std::chrono_literals;

/// Zips a bundle together with `emptyFiles` additional empty files.
QByteArray zipOf(const QString& bundle, int emptyFiles) {
    std::vector<ZipEntry> entries;
    for (int i = 0; i < emptyFiles; ++i) {
        entries.push_back({.name = "Tunedeck.app/Contents/Resources/" + QByteArray::number(i)});
    }
    for (QDirIterator files(bundle, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        QFile file(files.next());
        file.open(QIODevice::ReadOnly);
        entries.push_back({.name = QFile::encodeName(u"Tunedeck.app"_s + file.fileName().mid(bundle.size())),
                           .contents = file.readAll(),
                           .mode = QFileInfo(file).isExecutable() ? 0100755U : 0100644U});
    }
    return zip(entries, {.stored = true});
}

/// The test acts as the web endpoint, at the address that the tested program was built with.
class UpdateJourney : public Journey {
protected:
    void prepare() override {
        writeInHome(u".tunedeck/settings.json"_s, settings);
        web.emplace(TUNEDECK_WEB_HOST, TUNEDECK_WEB_PORT);
    }

    /// Publishes version 1.4.1 and returns the size of its archive, whose second half is sent once `held` is false.
    int publish(int emptyFiles = 0) {
        const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
        writeBundle(fresh, "1.4.1", '!');
        const auto archive = zipOf(fresh, emptyFiles);
        // The first private key of RFC 8032, section 7.1.
        const SigningKey key(QByteArray::fromHex("9d61b19deffd5a60ba844af492ec2cc44449c5697b326919703bac031cae7f60"));
        const auto feed = R"({"latest": {"version": "1.4.1", "notes": "Faster.", "url": ")" +
                          web->url("/Tunedeck.zip").toEncoded() + R"(", "sha256": ")" +
                          QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex() + "\"}}\n";
        web->on("GET /download/appcast.json", behave::answer(200, feed));
        web->on("GET /download/appcast.json.sig", behave::answer(200, key.sign(feed) + '\n'));
        web->on("GET /Tunedeck.zip", [this, archive](Connection& connection, const ServedRequest&) {
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(archive.size()) + "\r\n\r\n");
            connection.send(archive.left(archive.size() / 2));
            while (held && connection.pause(10ms)) {
            }
            connection.send(archive.mid(archive.size() / 2));
        });
        return static_cast<int>(archive.size());
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
    std::optional<TestServer> web;
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
    held = false;
    const SmallDisk disk(publish() * 3 / 2 / 1024); // room for one bundle, but not for two
    if (!disk.isThere()) {
        GTEST_SKIP() << disk.reason();
    }
    bundle = disk.path(u"Tunedeck.app"_s);
    writeBundle(bundle, "1.4.0");
    start();
    ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
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

TEST_F(UpdateJourney, KeepsOneBundleWhenKilledOrQuitDuringTheUpdate) {
    publish(10'000); // so that unpacking takes a while
    const auto hasEnded = [this] { return processes(u"Helpers/tunedeck-update"_s).isEmpty() && processes().isEmpty(); };
    for (const auto& [step, isKilled] : {std::pair(Step::Downloading, true),
                                         {Step::Unpacking, true},
                                         {Step::Downloading, false},
                                         {Step::Unpacking, false}}) {
        writeBundle(bundle, "1.4.0");
        start();
        ASSERT_TRUE(opensWith(u"Version 1.4.0"_s));
        updateUntil(step);
        // After the swap the new version may already be running: end that one as well.
        ASSERT_TRUE(eventually([&] {
            for (const auto process : processes()) {
                isKilled ? ::kill(process, SIGKILL) : run({u"--quit"_s}).status;
            }
            return hasEnded();
        }));
        start();
        const auto version = QString::fromUtf8(run({u"--version"_s}).output).trimmed().section(u' ', 1);
        EXPECT_TRUE(version == u"1.4.0" || (version == u"1.4.1" && step == Step::Unpacking)) << version.toStdString();
        ASSERT_TRUE(opensWith(u"Version "_s + version));
        ASSERT_TRUE(press(u"Check for Updates"_s));
        EXPECT_TRUE(sees(version == u"1.4.0" ? u"Tunedeck 1.4.1 is available."_s : u"Up to date"_s));
        EXPECT_EQ(siblings(), bundleOnly) << "a check removes the leftovers first";
        if (step == Step::Unpacking && !isKilled) { // at last, quit during a check
            web->on("GET /download/appcast.json", behave::hang());
            ASSERT_TRUE(press(u"Check for Updates"_s));
            ASSERT_TRUE(eventually([this] { return !processes(u"Helpers/tunedeck-update"_s).isEmpty(); }));
        }
        quit();
        EXPECT_TRUE(eventually(hasEnded));
    }
}

} // namespace

} // namespace tunedeck::test
