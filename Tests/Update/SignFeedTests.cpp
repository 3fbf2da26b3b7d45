#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/Update/Zip.h"
#include "TunedeckCore/Update/UpdateCheck.h"
#include "TunedeckCore/Update/UpdateFeed.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>

namespace tunedeck::test {

namespace {

/// tools/sign-feed in a folder of its own, with an archive to tell of.
class SignFeed : public testing::Test {
protected:
    SignFeed() {
        write(u"a.zip"_s, archive);
        write(u"notes"_s, "Quotes \" and „others“.\n");
        key = run({u"--new-key"_s, at(u"key"_s)}).trimmed();
    }

    [[nodiscard]] QString at(const QString& name) const { return folder.path(name); }
    void write(const QString& name, const QByteArray& bytes) const { folder.write(name, bytes); }

    /// What it prints; empty when it refuses.
    static QString run(const QStringList& arguments) {
        QProcess tool;
        tool.start(QStringLiteral(TUNEDECK_SIGN_FEED), arguments);
        tool.waitForFinished();
        return tool.exitCode() == 0 ? QString::fromUtf8(tool.readAllStandardOutput()) : QString();
    }

    [[nodiscard]] QString sign(const QString& feedKey) const {
        return run({u"--key"_s, at(u"key"_s), u"--archive"_s, at(u"a.zip"_s), u"--url"_s,
                    u"https://tunedeck.example/a"_s, u"--notes"_s, at(u"notes"_s), u"--feed-key"_s, feedKey,
                    folder.path()});
    }

    /// What an installed 1.4.0 makes of the files.
    [[nodiscard]] UpdateCheck check() const {
        const UpdateFeed feed{.url = QUrl(u"https://tunedeck.example/appcast.json"_s),
                              .publicKey = key,
                              .fetch = [this](QUrl url, std::stop_token) { return fetch(at(url.fileName())); }};
        return runToEnd(feed.check(u"1.4.0"_s, {12, 0, 0}, {}));
    }

    static QCoro::Task<std::expected<UpdateFeed::Fetched, UpdateError>> fetch(QString path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            co_return std::unexpected(UpdateError::http(404));
        }
        co_return UpdateFeed::Fetched{file.readAll()};
    }

    TemporaryHome folder;
    QByteArray archive = zip(appEntries("1.4.1", "com.brightfold.tunedeck.menu", "new"));
    QString key;
};

} // namespace

TEST_F(SignFeed, MakesAFeedThatTheApplicationTakes) {
    ASSERT_FALSE(sign(key).isEmpty());
    const auto found = check();
    const auto* available = std::get_if<UpdateCheck::Available>(&found.value);
    ASSERT_NE(available, nullptr);
    EXPECT_EQ(available->release.version, u"1.4.1"_s);
    EXPECT_EQ(available->release.sha256.toLatin1(),
              QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex());
    EXPECT_EQ(available->release.notes, u"Quotes \" and „others“."_s);

    QFile feed(at(u"appcast.json"_s));
    ASSERT_TRUE(feed.open(QIODevice::Append));
    feed.write(" ");
    feed.close();
    EXPECT_TRUE(std::holds_alternative<UpdateCheck::Failed>(check().value)) << "its signature must cover every byte";
}

TEST_F(SignFeed, RefusesWhatInstalledCopiesWouldRefuse) {
    EXPECT_TRUE(sign(QString()).isEmpty()) << "a key that the project's copies don't know";
    EXPECT_TRUE(run({u"--new-key"_s, at(u"key"_s)}).isEmpty()) << "a key is there already";
    auto unexecutable = appEntries("1.4.1", "com.brightfold.tunedeck.menu", "new");
    for (auto& entry : unexecutable) {
        entry.mode &= ~0111U;
    }
    for (const auto& entries : {appEntries("1.4", "com.brightfold.tunedeck.menu", "new"),
                                appEntries("1.4.1", "com.example.other", "new"), unexecutable}) {
        write(u"a.zip"_s, zip(entries));
        EXPECT_TRUE(sign(key).isEmpty());
    }
    EXPECT_FALSE(QFile::exists(at(u"appcast.json"_s))) << "nothing is left of a refusal";
}

} // namespace tunedeck::test
