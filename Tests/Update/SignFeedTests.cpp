#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/Update/Zip.h"
#include "TunedeckCore/Update/Appcast.h"
#include "TunedeckCore/Update/UpdateFeed.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>

namespace tunedeck::test {

namespace {

const char* const identifier = "com.brightfold.tunedeck.menu";

/// Runs tools/sign-feed in a temporary folder with an archive and release notes.
class SignFeed : public testing::Test {
protected:
    SignFeed() {
        folder.write(u"a.zip"_s, archive);
        folder.write(u"notes"_s, "Quotes \" and „others“.\n");
        key = run({u"--new-key"_s, folder.path(u"key"_s)}).trimmed();
    }

    /// The output of the tool; empty if it fails.
    static QString run(const QStringList& arguments) {
        QProcess tool;
        tool.start(QStringLiteral(TUNEDECK_SIGN_FEED), arguments);
        tool.waitForFinished();
        return tool.exitCode() == 0 ? QString::fromUtf8(tool.readAllStandardOutput()) : QString();
    }

    [[nodiscard]] bool signs(const QString& feedKey) const {
        return !run({u"--key"_s, folder.path(u"key"_s), u"--archive"_s, folder.path(u"a.zip"_s), u"--url"_s,
                     u"https://tunedeck.example/a"_s, u"--notes"_s, folder.path(u"notes"_s), u"--feed-key"_s, feedKey,
                     folder.path()})
                    .isEmpty();
    }

    TemporaryHome folder;
    QByteArray archive = zip(appEntries("1.4.1", identifier, "new"));
    QString key;
};

} // namespace

TEST_F(SignFeed, WritesAFeedThatTheApplicationAccepts) {
    ASSERT_TRUE(signs(key));
    const auto feed = folder.read(u"appcast.json"_s);
    EXPECT_TRUE(UpdateFeed::verify(feed, QString::fromUtf8(folder.read(u"appcast.json.sig"_s)), key));
    const auto appcast = Appcast::decode(feed);
    ASSERT_TRUE(appcast);
    EXPECT_EQ(appcast->latest.version, u"1.4.1");
    EXPECT_EQ(appcast->latest.url, u"https://tunedeck.example/a");
    EXPECT_EQ(appcast->latest.sha256.toLatin1(), QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex());
    EXPECT_EQ(appcast->latest.notes, u"Quotes \" and „others“."_s);
}

TEST_F(SignFeed, RejectsWhatInstalledCopiesWouldReject) {
    EXPECT_FALSE(signs(QString())) << "not the project's key";
    EXPECT_TRUE(run({u"--new-key"_s, folder.path(u"key"_s)}).isEmpty()) << "the key file exists";
    auto unexecutable = appEntries("1.4.1", identifier, "new");
    for (auto& entry : unexecutable) {
        entry.mode &= ~0111U;
    }
    auto unnamed = appEntries("1.4.1", identifier, "new");
    unnamed[1].contents.replace("<string>Tunedeck<", "<string>Other<");
    for (const auto& entries : {unnamed, appEntries("1.4", identifier, "new"),
                                appEntries("1.4.1", "com.example.other", "new"), unexecutable}) {
        folder.write(u"a.zip"_s, zip(entries));
        EXPECT_FALSE(signs(key));
    }
    EXPECT_FALSE(QFile::exists(folder.path(u"appcast.json"_s))) << "nothing is written on failure";
}

} // namespace tunedeck::test
