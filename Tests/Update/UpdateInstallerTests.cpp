#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Helpers/Update/Zip.h"
#include "TunedeckCore/Update/BundleSwap.h"
#include "TunedeckCore/Update/UpdateInstaller.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

namespace tunedeck::test {

namespace {

const char* const identifier = "com.brightfold.tunedeck.menu";

/// An installed version 1.4.0 in a folder of its own, and a server with an archive of 1.4.1.
class UpdateInstallerTest : public testing::Test {
protected:
    UpdateInstallerTest() {
        installed = parent + u"/Tunedeck.app"_s;
        writeApp(installed, "1.4.0", identifier, "old");
        offer(appEntries("1.4.1", identifier, "new"));
    }

    void offer(const std::vector<ZipEntry>& entries) {
        const QByteArray archive = zip(entries, {.stored = true});
        server.on("GET /a.zip", behave::answer(200, archive));
        release.version = u"1.4.1"_s;
        release.url = server.url("/a.zip").toString();
        release.sha256 = QString::fromLatin1(QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex());
    }

    auto begin(std::stop_token stop = {}) {
        return UpdateInstaller::install(release, installed, QString::fromLatin1(identifier),
                                        Downloader(QStringLiteral(TUNEDECK_FETCH)), {}, stop);
    }
    UpdateInstaller::Result<QString> install() { return runToEnd(begin()); }

    QByteArray program() const {
        QFile file(installed + u"/Contents/MacOS/Tunedeck"_s);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("gone");
    }

    QStringList beside() const {
        return QDir(parent).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// Whether the old application stands untouched and nothing lies beside it.
    bool untouched() const { return program() == "old" && beside() == QStringList{u"Tunedeck.app"_s}; }

    TestServer server;
    QTemporaryDir folder;
    QString parent = folder.path();
    QString installed;
    Release release;
};

QString failure(const UpdateInstaller::Result<QString>& result) {
    return result ? u"no failure"_s : result.error().description();
}

} // namespace

TEST_F(UpdateInstallerTest, SwapsInTheNewBundleAndLeavesNothingBehind) {
    release.sha256 = release.sha256.toUpper();
    const auto result = install();
    ASSERT_TRUE(result) << failure(result).toStdString();
    EXPECT_EQ(*result, installed);
    EXPECT_EQ(program(), "new");
    EXPECT_TRUE(QFileInfo(installed + u"/Contents/MacOS/Tunedeck"_s).isExecutable());
    EXPECT_EQ(beside().size(), 1);
}

TEST_F(UpdateInstallerTest, RefusesAnythingButThePromisedApplication) {
    offer(appEntries("1.4.0", identifier, "new"));
    EXPECT_EQ(failure(install()), u"The download isn't the expected Tunedeck: version 1.4.0, expected 1.4.1.");
    offer(appEntries("1.4.1", "org.example.other", "new"));
    EXPECT_EQ(failure(install()), u"The download isn't the expected Tunedeck: bundle org.example.other.");
    offer({{.name = "Tunedeck.app/Contents/Info.plist", .contents = "<plist><dict/></plist>"}});
    EXPECT_EQ(failure(install()), u"The download isn't the expected Tunedeck: bundle ?.");
    const QString noApp = u"The download doesn't contain Tunedeck."_s;
    offer({{.name = "Tunedeck.app/Contents/x", .contents = "x"}});
    EXPECT_EQ(failure(install()), noApp);
    offer({{.name = "readme", .contents = "x"}});
    EXPECT_EQ(failure(install()), noApp);
    auto hostile = appEntries("1.4.1", identifier, "new");
    hostile.push_back({.name = "../Tunedeck.app/Contents/MacOS/Tunedeck", .contents = "evil"});
    offer(hostile);
    EXPECT_EQ(failure(install()), noApp);
    release.sha256[0] = release.sha256[0] == u'0' ? u'1' : u'0';
    EXPECT_EQ(failure(install()), u"The download doesn't match its checksum.");
    release.url = u"no address"_s;
    EXPECT_EQ(failure(install()), noApp);
    EXPECT_TRUE(untouched());
}

TEST_F(UpdateInstallerTest, ReplacesFoldersOnly) {
    const QString fresh = parent + u"/fresh.app"_s;
    writeApp(fresh, "1.4.1", identifier, "new");
    const QString link = parent + u"/link.app"_s;
    QFile::link(installed, link);
    EXPECT_FALSE(UpdateInstaller::replace(link, fresh));
    EXPECT_FALSE(UpdateInstaller::replace(parent + u"/missing.app"_s, fresh));
    EXPECT_EQ(program(), "old");
    EXPECT_TRUE(UpdateInstaller::replace(installed, fresh));
    EXPECT_EQ(program(), "new");
    EXPECT_FALSE(QFileInfo::exists(fresh));
}

TEST_F(UpdateInstallerTest, StoppingLeavesTheOldOneAndNobodySweepsAwayWhatIsUnderWay) {
    server.on("GET /a.zip", behave::hang("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc"));
    std::stop_source source;
    const auto ending = endingOf(begin(source.get_token()));
    ASSERT_TRUE(runUntil([&] { return server.open() == 1; }));
    EXPECT_EQ(beside().size(), 2);
    UpdateInstaller::sweep(installed); // as another start does
    EXPECT_EQ(beside().size(), 2);
    source.request_stop();
    ASSERT_TRUE(ending->isThere());
    EXPECT_FALSE(*ending->value);
    EXPECT_TRUE(untouched());
}

/// Kills an update at a random moment, many times: the place always holds one whole bundle, and the next start sweeps
/// up what is left.
TEST_F(UpdateInstallerTest, KilledAtAnyMomentLeavesOneWholeBundle) {
    auto entries = appEntries("1.4.1", identifier, "new");
    for (int i = 0; i < 200; ++i) {
        entries.push_back(
            {.name = "Tunedeck.app/Contents/Resources/" + QByteArray::number(i), .contents = QByteArray(20'000, 'r')});
    }
    offer(entries);
    const auto start = [&] {
        QDir(installed).removeRecursively();
        writeApp(installed, "1.4.0", identifier, "old");
        const pid_t child = fork();
        if (child == 0) {
            const QByteArray url = server.url("/a.zip").toEncoded();
            execl(TUNEDECK_UPDATE_ONCE, TUNEDECK_UPDATE_ONCE, url.constData(), release.sha256.toLatin1().constData(),
                  QFile::encodeName(installed).constData(), nullptr);
            _exit(127);
        }
        return child;
    };
    // As long as an update takes on this machine, and a little longer.
    QElapsedTimer watch;
    watch.start();
    waitpid(start(), nullptr, 0);
    ASSERT_EQ(program(), "new");
    std::uniform_int_distribution<useconds_t> moment(5'000, static_cast<useconds_t>(watch.elapsed() * 1200));
    std::mt19937 random(20260314);
    int swapped = 0;
    const int rounds =
        qEnvironmentVariableIntValue("TUNEDECK_KILLS") > 0 ? qEnvironmentVariableIntValue("TUNEDECK_KILLS") : 30;
    for (int round = 0; round < rounds; ++round) {
        const pid_t child = start();
        usleep(moment(random));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        const bool isNew = program() == "new";
        swapped += isNew;
        EXPECT_TRUE(isNew || program() == "old") << round;
        const auto valid =
            UpdateInstaller::validate(installed, QString::fromLatin1(identifier), isNew ? u"1.4.1"_s : u"1.4.0"_s);
        EXPECT_TRUE(valid) << round;
        EXPECT_EQ(QDir(installed + u"/Contents/Resources"_s).count(), isNew ? 202U : 0U) << round;
        // The download helper ends with its parent, but a moment later; until then it may hold the lock.
        EXPECT_TRUE(runUntil([&] {
            UpdateInstaller::sweep(installed);
            return beside().size() == 1;
        })) << round;
    }
    RecordProperty("swapped", swapped);
    EXPECT_TRUE(rounds < 100 || (swapped > 0 && swapped < rounds)) << swapped << " of " << rounds;
}

} // namespace tunedeck::test
