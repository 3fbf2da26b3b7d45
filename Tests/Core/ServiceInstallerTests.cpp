#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckCore/Support/Async/Wait.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

#include <map>

namespace tunedeck::test {
namespace {

using Outcome = ServiceInstaller::Outcome;
using Kind = Outcome::Kind;

constexpr auto bothChanged = "installed(serviceChanged: true, plistChanged: true)";
constexpr auto programChanged = "installed(serviceChanged: true, plistChanged: false)";
constexpr auto listChanged = "installed(serviceChanged: false, plistChanged: true)";

/// With a fake launchctl that records its arguments and returns the given statuses.
class ServiceInstallerTest : public testing::Test {
protected:
    QCoro::Task<std::int32_t> launchctl(QStringList arguments, std::stop_token stop) {
        asked << arguments.join(u' ');
        if (arguments.front() == hanging) {
            Wait wait(stop);
            co_await wait.next();
        }
        co_return answers[arguments.front()];
    }

    void SetUp() override { writeProgram("program 1"); }

    void writeProgram(const QByteArray& bytes) {
        m_home.write(u"bundle/tunedeck"_s, bytes);
        ::chmod(QFile::encodeName(m_bundled).constData(), 0755);
    }

    ServiceInstaller installer(const QString& home) {
        return {home, m_bundled, 501,
                [this](const QStringList& arguments, std::stop_token stop) { return launchctl(arguments, stop); },
                m_clock};
    }

    /// Runs the installer; returns the outcome as text.
    std::string run(const QString& home) {
        asked.clear();
        const auto ending = endingOf(installer(home).ensureInstalled({}));
        m_clock.advance(1h);
        return ending->value ? ending->value->description().toStdString() : "unfinished";
    }
    std::string run() { return run(m_home.path(u"u"_s)); }

    /// Installs; from then on the agent is loaded.
    void installAndLoad() {
        ASSERT_EQ(run(), bothChanged);
        answers[u"print"_s] = 0;
    }

    const QString program = u"u/.tunedeck/bin/tunedeck"_s;
    const QString plist = u"u/Library/LaunchAgents/com.brightfold.tunedeck.plist"_s;
    const QString print = u"print gui/501/com.brightfold.tunedeck"_s;
    const QString bootout = u"bootout gui/501/com.brightfold.tunedeck"_s;
    const QString restart = u"kickstart -k gui/501/com.brightfold.tunedeck"_s;
    TemporaryHome m_home;
    const QString m_bundled = m_home.path(u"bundle/tunedeck"_s);
    const QString bootstrap = u"bootstrap gui/501 "_s + m_home.path(plist);
    ManualClock m_clock;
    QStringList asked;
    std::map<QString, int> answers{{u"print"_s, 113}};
    QString hanging; ///< the subcommand that waits for the stop
};

TEST_F(ServiceInstallerTest, InstallsForANewUser) {
    EXPECT_EQ(run(), bothChanged);
    EXPECT_EQ(asked, QStringList({print, bootstrap}));
    EXPECT_EQ(m_home.read(program), "program 1");
    struct stat facts{};
    ::stat(QFile::encodeName(m_home.path(program)).constData(), &facts);
    EXPECT_EQ(facts.st_mode & 07777, 0755);
    EXPECT_EQ(parsePropertyList(m_home.read(plist)), installer(m_home.path(u"u"_s)).plist());
}

TEST_F(ServiceInstallerTest, DoesNothingIfUpToDate) {
    installAndLoad();
    // The order of keys and white space don't matter.
    auto xml = m_home.read(plist);
    xml.replace("\t<key>KeepAlive</key>\n\t<true/>\n", "")
        .replace("</dict>\n</plist>", "<key>KeepAlive</key> <true/></dict></plist>");
    m_home.write(plist, xml);
    EXPECT_EQ(run(), "upToDate");
    EXPECT_EQ(asked, QStringList(print));
    EXPECT_EQ(m_home.read(plist), xml);
}

TEST_F(ServiceInstallerTest, RestartsOrReloadsOnlyAsNeeded) {
    installAndLoad();
    answers[u"kickstart"_s] = 3;
    answers[u"bootout"_s] = 3;
    writeProgram("program 2");
    EXPECT_EQ(run(), programChanged);
    EXPECT_EQ(asked, QStringList({print, restart}));
    EXPECT_EQ(m_home.read(program), "program 2");

    m_home.write(plist, xmlPropertyList(installer(u"/home/other"_s).plist()));
    EXPECT_EQ(run(), listChanged);
    EXPECT_EQ(asked, QStringList({print, bootout, bootstrap}));

    answers[u"print"_s] = -1;
    EXPECT_EQ(run(), "upToDate");
    EXPECT_EQ(asked, QStringList({print, bootstrap}));
    QFile::remove(m_home.path(plist));
    EXPECT_EQ(run(), listChanged);
}

TEST_F(ServiceInstallerTest, RetriesLoadingTenTimes) {
    answers[u"bootstrap"_s] = 5;
    EXPECT_EQ(run(), "failed(\"launchctl bootstrap exited 5\")");
    EXPECT_EQ(asked.count(bootstrap), 10);
    EXPECT_EQ(m_clock.sleeps(), std::vector<std::chrono::milliseconds>(9, 500ms));
}

TEST_F(ServiceInstallerTest, DoesNothingWithoutABundledProgram) {
    ::chmod(QFile::encodeName(m_bundled).constData(), 0644);
    EXPECT_EQ(run(), "notBundled");
    QFile::remove(m_bundled);
    QDir().mkpath(m_bundled);
    EXPECT_EQ(run(), "notBundled");
    EXPECT_FALSE(QFileInfo::exists(m_home.path(u"u"_s)));
}

TEST_F(ServiceInstallerTest, ComparesProgramsByteForByte) {
    QByteArray big(1'000'000, 'a');
    writeProgram(big);
    installAndLoad();
    for (const auto at : {qsizetype{0}, qsizetype{262'144}, big.size() - 1}) {
        big[at] = 'b';
        writeProgram(big);
        EXPECT_EQ(run(), programChanged) << at;
        EXPECT_EQ(m_home.read(program), big);
    }
}

TEST_F(ServiceInstallerTest, ReportsObstaclesAndKeepsTheUsersFiles) {
    const auto other = m_home.write(program + u"/keep"_s, "mine");
    EXPECT_EQ(run(), "failed(\"" + m_home.path(program).toStdString() + ": Is a directory\")");
    EXPECT_EQ(readFile(other), QByteArray("mine"));
    QFile::remove(other); // empty folders and leftovers are replaced
    m_home.write(program + u".new"_s, "half a prog");
    EXPECT_EQ(run(), bothChanged);
    EXPECT_EQ(QDir(m_home.path(u"u/.tunedeck/bin"_s)).entryList(QDir::Files), QStringList(u"tunedeck"_s));

    QFile::remove(m_home.path(plist));
    QDir().mkpath(m_home.path(plist));
    EXPECT_EQ(run(), "failed(\"" + m_home.path(plist).toStdString() + ": Is a directory\")");
    m_home.write(u"file"_s, "mine");
    EXPECT_TRUE(run(m_home.path(u"file"_s)).ends_with("Not a directory\")"));
    EXPECT_TRUE(asked.isEmpty());
}

TEST_F(ServiceInstallerTest, KeepsTheProgramOnAFullDisk) {
    const SmallDisk disk(512);
    if (!disk.isThere()) {
        GTEST_SKIP() << disk.reason();
    }
    const auto home = disk.path(u"u"_s);
    EXPECT_EQ(run(home), bothChanged);
    const auto path = home + u"/.tunedeck/bin/tunedeck"_s;
    writeProgram(QByteArray(300'000, 'x'));
    disk.fill();
    EXPECT_EQ(run(home), "failed(\"" + path.toStdString() + ".new: No space left on device\")");
    EXPECT_FALSE(QFileInfo::exists(path + u".new"_s));
    EXPECT_EQ(readFile(path), QByteArray("program 1"));
    EXPECT_TRUE(asked.isEmpty());
}

TEST_F(ServiceInstallerTest, StopsAtEveryStep) {
    for (const auto& step : {u"print"_s, u"bootout"_s, u"bootstrap"_s, u"sleep"_s}) {
        asked.clear();
        answers = {{u"bootstrap"_s, 5}};
        hanging = step;
        m_home.write(plist, "old");
        TaskScope scope;
        auto gone = std::make_unique<ServiceInstaller>(installer(m_home.path(u"u"_s)));
        const auto ending = endingOf(gone->ensureInstalled(scope.token()));
        gone.reset();
        EXPECT_FALSE(ending->isThere()) << step.toStdString();
        const auto count = asked.size();
        scope.stop();
        ASSERT_TRUE(ending->value) << step.toStdString();
        EXPECT_EQ(ending->value->kind, Kind::failed);
        EXPECT_EQ(asked.size(), count);
    }
}

} // namespace
} // namespace tunedeck::test
