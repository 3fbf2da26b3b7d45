#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "Tests/Helpers/Update/Zip.h"
#include "TunedeckCore/Update/BundleSwap.h"
#include "TunedeckCore/Update/Exchange.h"
#include "TunedeckCore/Update/ScratchFolder.h"
#include "TunedeckCore/Update/UpdateInstaller.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace tunedeck::test {

namespace {

const char* const identifier = "com.brightfold.tunedeck.menu";

/// Version 1.4.0 is installed; a server offers an archive of 1.4.1.
class UpdateInstallerTest : public testing::Test {
protected:
    UpdateInstallerTest() {
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
        return UpdateInstaller::install(release, installed, QString::fromLatin1(identifier), helper, {}, stop,
                                        checkSignature);
    }

    /// Description of the error; empty on success.
    QString install() {
        const auto result = runToEnd(begin());
        return result ? QString() : result.error().description();
    }

    /// "old", "new" or another text of the installed program.
    QByteArray program() const { return home.read(u"Tunedeck.app/Contents/MacOS/Tunedeck"_s).split('\n').last(); }
    QStringList files() const {
        return QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    void sweep() { runToEnd(ScratchFolder::removeStale(installed, {})); }
    bool isUntouched() const { return program() == "old" && files() == QStringList{u"Tunedeck.app"_s}; }

    TestServer server;
    TemporaryHome home;
    QString installed = home.path(u"Tunedeck.app"_s);
    Release release;
    QString helper = QStringLiteral(TUNEDECK_UPDATE);
    SignatureCheck checkSignature = &checkBundleSignature;
};

} // namespace

TEST_F(UpdateInstallerTest, ReplacesTheBundleAndLeavesNoOtherFiles) {
    const QByteArray large(1'500'000, 'n'); // more than one chunk of the checksum
    auto entries = appEntries("1.4.1", identifier, large);
    for (auto& entry : entries) {
        entry.name.prepend('.'); // hidden applications are found as well
    }
    // A binary property list with the same identifier and version.
    entries[1].contents =
        QByteArray::fromHex("62706c6973743030d30102030405065f1012434642756e646c6545786563757461626c655f1012434642756e"
                            "646c654964656e7469666965725f101a434642756e646c6553686f727456657273696f6e537472696e675854"
                            "756e656465636b5f101c636f6d2e627269676874666f6c642e74756e656465636b2e6d656e7555312e342e31"
                            "080f2439565f7e0000000000000101000000000000000700000000000000000000000000000084");
    offer(entries);
    release.sha256 = release.sha256.toUpper();
    installed += u'/';
    EXPECT_EQ(install(), QString());
    EXPECT_TRUE(program() == large);
    EXPECT_TRUE(QFileInfo(installed + u"Contents/MacOS/Tunedeck"_s).isExecutable());
    EXPECT_EQ(files().size(), 1);
}

TEST_F(UpdateInstallerTest, RejectsEverythingButTheAnnouncedApplication) {
    offer(appEntries("1.4.0", identifier, "new"));
    EXPECT_EQ(install(), u"The download isn't the expected Tunedeck: version 1.4.0, expected 1.4.1.");
    offer(appEntries("1.4.1", "org.example.other", "new"));
    EXPECT_EQ(install(), u"The download isn't the expected Tunedeck: bundle org.example.other.");
    offer({{.name = "Tunedeck.app/Contents/Info.plist", .contents = "<plist><dict/></plist>"}});
    EXPECT_EQ(install(), u"The download isn't the expected Tunedeck: bundle ?.");
    const QString noApp = u"The download doesn't contain Tunedeck."_s;
    offer({{.name = "Tunedeck.app/Contents/x", .contents = "x"}});
    EXPECT_EQ(install(), noApp);
    offer({{.name = ".app/Contents/Info.plist", .contents = "<plist><dict/></plist>"}});
    EXPECT_EQ(install(), noApp);
    release.sha256[0] = release.sha256[0] == u'0' ? u'1' : u'0';
    EXPECT_EQ(install(), u"The download doesn't match its checksum.");
    server.on("GET /a.zip", behave::answer(503, ""));
    EXPECT_EQ(install(), u"The update server answered 503.");
    release.url = u"no address"_s;
    EXPECT_EQ(install(), noApp);
    EXPECT_TRUE(isUntouched());
    installed = home.path(u"missing/Tunedeck.app"_s);
    EXPECT_EQ(install(), u"Tunedeck's folder isn't writable, so it can't update itself.");
}

TEST_F(UpdateInstallerTest, RejectsAProgramThatDoesNotRun) {
    const auto installs = [&](const QByteArray& script, unsigned mode = 0100755, const QByteArray& link = {}) {
        auto entries = appEntries("1.4.1", identifier, "new");
        entries[2].contents = "#!/bin/sh\n" + script;
        entries[2].mode = mode;
        entries[2].linkTarget = link;
        offer(entries);
        return install();
    };
    const QString noApp = u"The download doesn't contain Tunedeck."_s;
    const QByteArray good = versionScript("1.4.1", "new");
    EXPECT_EQ(installs(good, 0100644), noApp) << "not executable";
    EXPECT_EQ(installs({}, 0040755), noApp) << "a folder";
    for (const char* link : {"missing", "../Info.plist", ".", "../../../../../bin/true", "/bin/true"}) {
        EXPECT_EQ(installs({}, 0120777, link), noApp) << link;
    }
    for (const char* script : {"", "exit 1", "echo Tunedeck 1.4.1; exit 1", "echo Tunedeck 1.4.1; kill -SEGV $$"}) {
        EXPECT_EQ(installs(script), noApp) << script;
    }
    const auto wrong = u"The download isn't the expected Tunedeck: version %1, expected 1.4.1."_s;
    EXPECT_EQ(installs("echo Tunedeck 1.4.0"), wrong.arg(u"1.4.0"_s));
    EXPECT_EQ(installs("printf 'Other\\n \\033 1.4.1'"), wrong.arg(u"Other \ufffd 1.4.1"_s));
    auto other = appEntries("1.4.1", identifier, "new");
    other[1].contents.replace("<string>Tunedeck<", "<string>Current<");
    offer(other);
    EXPECT_EQ(install(), noApp);
    EXPECT_TRUE(isUntouched());
    EXPECT_EQ(installs("[ \"$HOME\" = \"$PWD\" ] && [ \"$1$#\" = --version1 ] && "
                       "env | grep -qvE '^(HOME|PWD|OLDPWD|SHLVL|_)=' || echo Tunedeck 1.4.1"),
              QString())
        << "its home is temporary and its environment otherwise empty";
}

TEST_F(UpdateInstallerTest, ChecksTheSignatureBeforeItRunsTheNewProgram) {
    auto entries = appEntries("1.4.1", identifier, "new");
    entries[2].contents = "#!/bin/sh\ntouch '" + home.path(u"has run"_s).toUtf8() + "'\necho Tunedeck 1.4.1";
    offer(entries);
    QString checked;
    checkSignature = [&checked](const QString& bundle) -> std::expected<void, QString> {
        checked = bundle;
        return std::unexpected(u"It isn't signed."_s);
    };
    EXPECT_EQ(install(), u"It isn't signed.");
    EXPECT_TRUE(checked.endsWith(u"/unpacked/Tunedeck.app")) << checked.toStdString();
    EXPECT_TRUE(isUntouched()) << "nothing has run either";
}

TEST_F(UpdateInstallerTest, AFailingHelperLeavesNothingBehind) {
    const auto failing = [&](const QString& step, const QString& fault) {
        const auto text = u"[ $1 = %1 ] && %2\nexec %3 \"$@\""_s;
        helper = home.writeScript(u"Tunedeck.app/helper"_s, text.arg(step, fault, u"" TUNEDECK_UPDATE ""_s).toUtf8());
        return install();
    };
    for (const auto& step : {u"fetch"_s, u"verify"_s, u"unpack"_s}) {
        EXPECT_TRUE(failing(step, u"kill -SEGV $$"_s).endsWith(u"ended unexpectedly.")) << step.toStdString();
    }
    const QString digest = std::exchange(release.sha256, QString());
    EXPECT_EQ(failing(u"verify"_s, u"{ echo 'result ' >&2; exit; }"_s), u"The download doesn't match its checksum.");
    release.sha256 = digest;
    writeApp(home.path(u"Tunedeck.app/Contents/other.app"_s), "1.4.1", identifier, "other");
    EXPECT_EQ(failing(u"unpack"_s, u"{ echo result ../../Tunedeck.app/Contents/other.app >&2; exit; }"_s),
              u"The download doesn't contain Tunedeck.");
    EXPECT_TRUE(isUntouched());
}

TEST_F(UpdateInstallerTest, RemovesScratchFoldersWithoutBlocking) {
    const auto create = [this] {
        auto scratch = ScratchFolder::create(installed);
        for (int i = 0; i < 20'000; ++i) {
            QFile((*scratch)->filePath(QString::number(i))).open(QIODevice::WriteOnly);
        }
        return *scratch;
    };
    create().reset(); // as in a cancelled update
    EXPECT_FALSE(isUntouched());
    EXPECT_TRUE(runUntil([this] { return isUntouched(); }));
    const auto removal = endingOf(create()->remove({}));
    EXPECT_FALSE(removal->isThere());
    EXPECT_TRUE(runUntil([&] { return removal->isThere(); }));
    EXPECT_TRUE(isUntouched());
}

TEST_F(UpdateInstallerTest, ReplacesFoldersOnly) {
    const QString fresh = home.path(u"fresh.app"_s);
    writeApp(fresh, "1.4.1", identifier, "new");
    const QString link = home.path(u"link.app"_s);
    const QString aside = home.path(u"aside"_s);
    QFile::link(installed, link);
    EXPECT_FALSE(UpdateInstaller::replace(link, fresh, aside));
    EXPECT_FALSE(UpdateInstaller::replace(installed, link, aside));
    EXPECT_FALSE(UpdateInstaller::replace(home.path(u"missing.app"_s), fresh, aside));
    // One system call, so that there is a complete bundle at every moment.
    EXPECT_TRUE(exchangeFolders(QFile::encodeName(installed), QFile::encodeName(fresh)));
    EXPECT_EQ(program(), "new");
    EXPECT_EQ(UpdateInstaller::replace(installed, fresh, aside), installed);
    EXPECT_EQ(program(), "old");
    EXPECT_FALSE(QFileInfo::exists(fresh));
}

TEST_F(UpdateInstallerTest, RenamesWhereTheFileSystemCannotExchange) {
    const QString fresh = home.path(u"fresh.app"_s);
    int code = ENOSPC;
    bool isRemoved = false;
    const auto exchange = [&](const QByteArray&, const QByteArray&) {
        isRemoved = isRemoved && QDir(fresh).removeRecursively();
        errno = code;
        return false;
    };
    writeApp(fresh, "1.4.1", identifier, "new");
    const auto replace = [&] { return UpdateInstaller::replace(installed, fresh, home.path(u"aside"_s), exchange); };
    EXPECT_EQ(replace().error().description(), u"No space left on device");
    EXPECT_EQ(program(), "old");
    code = ENOTSUP;
    isRemoved = true;
    EXPECT_FALSE(replace());
    EXPECT_TRUE(isUntouched()) << "the old bundle is moved back";
    writeApp(fresh, "1.4.1", identifier, "new");
    isRemoved = false;
    EXPECT_TRUE(replace());
    EXPECT_EQ(program(), "new");
    EXPECT_EQ(files().size(), 1);
}

TEST_F(UpdateInstallerTest, MovesABundleBackThatAKilledUpdateHadMovedAside) {
    const QString killed = u".tunedeck-update-Tunedeck.app-killed"_s;
    home.write(killed + u"/Tunedeck.app.old/older"_s, "older");
    sweep();
    EXPECT_TRUE(isUntouched()) << "this bundle is complete";
    QDir().mkpath(home.path(killed));
    QFile::rename(installed, home.path(killed + u"/Tunedeck.app.old"_s));
    sweep();
    EXPECT_TRUE(isUntouched());
    const auto scratch = ScratchFolder::create(installed).value();
    QFile::rename(installed, scratch->asidePath());
    runToEnd(scratch->remove({}));
    EXPECT_TRUE(isUntouched()) << "after a swap that failed halfway";
    home.write(u".tunedeck-update-Gone.app-killed/Gone.app.old/file"_s, "gone");
    home.write(u".tunedeck-update-Other.app-killed/Other.app.old/file"_s, "old");
    home.write(u"Other.app/file"_s, "other");
    sweep();
    EXPECT_EQ(home.read(u"Gone.app/file"_s), "gone") << "nothing of it is left that could be started";
    EXPECT_EQ(home.read(u".tunedeck-update-Other.app-killed/Other.app.old/file"_s), "old");
    EXPECT_EQ(home.read(u"Other.app/file"_s), "other");
}

TEST_F(UpdateInstallerTest, CreatesItsFolderWhileAnotherProcessSweeps) {
    for (int i = 0; i < 300; ++i) {
        const auto sweeping = endingOf(ScratchFolder::removeStale(installed, {}));
        const auto scratch = ScratchFolder::create(installed);
        ASSERT_TRUE(scratch) << scratch.error().toStdString();
        EXPECT_TRUE(runUntil([&] { return sweeping->isThere(); }));
        EXPECT_TRUE(QFileInfo::exists((*scratch)->filePath(u"lock"_s)));
    }
    EXPECT_TRUE(runUntil([this] { return isUntouched(); }));
}

TEST_F(UpdateInstallerTest, StoppingKeepsTheOldBundleAndStaleFoldersAreRemoved) {
    server.on("GET /a.zip", behave::hang("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc"));
    home.write(u".tunedeck-update-killed/unpacked/file"_s, "x");
    QFile::link(home.path(), home.path(u".tunedeck-update-link"_s));
    std::stop_source source;
    const auto ending = endingOf(begin(source.get_token()));
    ASSERT_TRUE(runUntil([&] { return server.open() == 1; }));
    auto expected = files();
    EXPECT_EQ(expected.size(), 4);
    expected.removeOne(u".tunedeck-update-killed"_s);
    sweep();
    EXPECT_EQ(files(), expected) << "keeps links and the folder of an update in progress";
    QFile::remove(home.path(u".tunedeck-update-link"_s));
    source.request_stop();
    ASSERT_TRUE(ending->isThere());
    EXPECT_FALSE(*ending->value);
    EXPECT_TRUE(runUntil([&] { return isUntouched(); }));
    EXPECT_TRUE(runUntil([&] { return server.open() == 0; })) << "the helper is killed";
}

} // namespace tunedeck::test
