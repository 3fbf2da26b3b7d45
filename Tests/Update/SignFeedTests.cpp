#include "Tests/Helpers/RunTask.h"
#include "Tests/Update/Zip.h"
#include "TunedeckCore/UpdateFeed.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tunedeck::test {

namespace {

/// tools/sign-feed in a folder of its own, with an archive to tell of.
class SignFeed : public testing::Test {
protected:
    SignFeed() {
        write(QStringLiteral("a.zip"), archive);
        write(QStringLiteral("notes"), "Quotes \" and „others“.\n");
        key = run({QStringLiteral("--new-key"), at(QStringLiteral("key"))}).trimmed();
    }

    [[nodiscard]] QString at(const QString& name) const { return folder.filePath(name); }

    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    /// What it prints; empty when it refuses.
    static QString run(const QStringList& arguments) {
        QProcess tool;
        tool.start(QStringLiteral(TUNEDECK_SIGN_FEED), arguments);
        tool.waitForFinished();
        return tool.exitCode() == 0 ? QString::fromUtf8(tool.readAllStandardOutput()) : QString();
    }

    [[nodiscard]] QString sign(const QString& feedKey) const {
        return run({QStringLiteral("--key"), at(QStringLiteral("key")), QStringLiteral("--archive"),
                    at(QStringLiteral("a.zip")), QStringLiteral("--url"), QStringLiteral("https://tunedeck.example/a"),
                    QStringLiteral("--notes"), at(QStringLiteral("notes")), QStringLiteral("--feed-key"), feedKey,
                    folder.path()});
    }

    /// What an installed 1.4.0 makes of the files.
    [[nodiscard]] UpdateCheck check() const {
        const UpdateFeed feed{.url = QUrl(QStringLiteral("https://tunedeck.example/appcast.json")),
                              .publicKey = key,
                              .fetch = [this](QUrl url, std::stop_token) { return fetch(at(url.fileName())); }};
        return runToEnd(feed.check(QStringLiteral("1.4.0"), {12, 0, 0}, {}));
    }

    static QCoro::Task<std::expected<UpdateFeed::Fetched, UpdateError>> fetch(QString path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            co_return std::unexpected(UpdateError::http(404));
        }
        co_return UpdateFeed::Fetched{file.readAll()};
    }

    QTemporaryDir folder;
    QByteArray archive = zip(appEntries("1.4.1", "com.brightfold.tunedeck.menu", "new"));
    QString key;
};

} // namespace

TEST_F(SignFeed, MakesAFeedThatTheApplicationTakes) {
    ASSERT_FALSE(sign(key).isEmpty());
    const auto found = check();
    const auto* available = std::get_if<UpdateCheck::Available>(&found.value);
    ASSERT_NE(available, nullptr);
    EXPECT_EQ(available->release.version, QStringLiteral("1.4.1"));
    EXPECT_EQ(available->release.sha256.toLatin1(),
              QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex());
    EXPECT_EQ(available->release.notes, QStringLiteral("Quotes \" and „others“."));

    QFile feed(at(QStringLiteral("appcast.json")));
    ASSERT_TRUE(feed.open(QIODevice::Append));
    feed.write(" ");
    feed.close();
    EXPECT_TRUE(std::holds_alternative<UpdateCheck::Failed>(check().value)) << "its signature must cover every byte";
}

TEST_F(SignFeed, RefusesWhatInstalledCopiesWouldRefuse) {
    EXPECT_TRUE(sign(QString()).isEmpty()) << "a key that the project's copies don't know";
    EXPECT_TRUE(run({QStringLiteral("--new-key"), at(QStringLiteral("key"))}).isEmpty()) << "a key is there already";
    auto unexecutable = appEntries("1.4.1", "com.brightfold.tunedeck.menu", "new");
    for (auto& entry : unexecutable) {
        entry.mode &= ~0111U;
    }
    for (const auto& entries : {appEntries("1.4", "com.brightfold.tunedeck.menu", "new"),
                                appEntries("1.4.1", "com.example.other", "new"), unexecutable}) {
        write(QStringLiteral("a.zip"), zip(entries));
        EXPECT_TRUE(sign(key).isEmpty());
    }
    EXPECT_FALSE(QFile::exists(at(QStringLiteral("appcast.json")))) << "nothing is left of a refusal";
}

} // namespace tunedeck::test
