#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace tunedeck::test {
namespace {

class AtomicFileTest : public testing::Test {
protected:
    TemporaryHome m_home;
    const QString m_path = m_home.path(u"file"_s);

    static mode_t mode(const QString& path) {
        struct stat facts{};
        ::stat(QFile::encodeName(path).constData(), &facts);
        return facts.st_mode & 07777;
    }

    [[nodiscard]] QStringList names(const QString& folder) const {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
};

TEST_F(AtomicFileTest, ReplacesTheWholeFileAndKeepsItsMode) {
    const auto umask = ::umask(022);
    ASSERT_TRUE(writeFileAtomically(m_path, "a longer text"));
    ::umask(umask);
    EXPECT_EQ(mode(m_path), 0644U);
    for (const mode_t kept : {0400, 0755}) {
        ::chmod(QFile::encodeName(m_path).constData(), kept);
        ASSERT_TRUE(writeFileAtomically(m_path, QByteArray("short\0text", 10)));
        EXPECT_EQ(readFile(m_path), QByteArray("short\0text", 10));
        EXPECT_EQ(mode(m_path), kept);
    }
    EXPECT_EQ(names(m_home.path()), QStringList(u"file"_s));
}

TEST_F(AtomicFileTest, FollowsLinksToRegularFilesOfTheUser) {
    m_home.write(u"other/real"_s, "old");
    const auto link = m_home.path(u"link"_s);
    ASSERT_TRUE(QFile::link(u"other/real"_s, link) && QFile::link(link, m_path));
    ASSERT_TRUE(writeFileAtomically(m_path, "new"));
    EXPECT_EQ(m_home.read(u"other/real"_s), "new");
    EXPECT_EQ(readDocument(m_path), QByteArray("new"));
    EXPECT_TRUE(QFileInfo(link).isSymLink() && QFileInfo(m_path).isSymLink());
}

TEST_F(AtomicFileTest, RefusesEverythingElseWithoutWaiting) {
    const auto foreign = m_home.write(u"foreign"_s, "text");
    const bool isForeign = ::chown(QFile::encodeName(foreign).constData(), 65534, 65534) == 0; // needs root
    QFile(m_home.write(u"large"_s, {})).resize(documentLimit + 1);
    ASSERT_EQ(::mkfifo(QFile::encodeName(m_home.path(u"fifo"_s)).constData(), 0600), 0);
    const QString link = m_home.path(u"link"_s);
    for (const auto& [target, problem] : std::initializer_list<std::pair<QString, QString>>{
             {m_home.path(u"fifo"_s), u"something that isn't a regular file"_s},
             {u"missing"_s, u"a missing file"_s},
             {u"link"_s, u"a missing file"_s},
             {isForeign ? foreign : u"/etc/passwd"_s, u"another user's file"_s}}) {
        ASSERT_TRUE(QFile::link(target, link));
        EXPECT_EQ(readDocument(link), std::nullopt) << target.toStdString();
        EXPECT_EQ(writeFileAtomically(link, "text"),
                  std::unexpected(link + u" was left as it is: it is a link to "_s + problem + u'.'));
        EXPECT_EQ(QFile::symLinkTarget(link), QDir(m_home.path()).filePath(target));
        QFile::remove(link);
    }
    for (const auto& [name, problem] : std::initializer_list<std::pair<QString, QString>>{
             {u"fifo"_s, u"it isn't a regular file"_s}, {u"large"_s, u"it is too large"_s}}) {
        EXPECT_EQ(readDocument(m_home.path(name)), std::nullopt) << name.toStdString();
        EXPECT_EQ(writeFileAtomically(m_home.path(name), "text"),
                  std::unexpected(m_home.path(name) + u" was left as it is: "_s + problem + u'.'));
    }
    EXPECT_EQ(writeFileAtomically(m_home.path(), "text"), std::unexpected(m_home.path() + u": Is a directory"_s));
    EXPECT_EQ(readFile(m_home.path(u"fifo"_s)), std::nullopt);
    EXPECT_EQ(readFile(m_home.path()), std::nullopt);
    EXPECT_FALSE(writeFileAtomically(m_home.path(u"missing/file"_s), "text"));
    EXPECT_EQ(names(m_home.path()), QStringList({u"fifo"_s, u"foreign"_s, u"large"_s}));
}

TEST_F(AtomicFileTest, AnIgnoredDocumentIsLoggedOnce) {
    static int lines = 0;
    const auto handler = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& line) {
        lines += line.endsWith(u"is ignored: it isn't a regular file"_s) ? 1 : 0;
    });
    readDocument(m_path);
    QDir().mkdir(m_path);
    readDocument(m_path);
    readDocument(m_path);
    qInstallMessageHandler(handler);
    EXPECT_EQ(lines, 1);
}

TEST_F(AtomicFileTest, ReadsUpToItsLimit) {
    ASSERT_TRUE(writeFileAtomically(m_path, QByteArray(10000, 'x')));
    EXPECT_EQ(readFile(m_path, 10000), QByteArray(10000, 'x'));
    EXPECT_EQ(readFile(m_path, 9999), std::nullopt);
}

TEST_F(AtomicFileTest, AFullDiskKeepsTheOldFile) {
    const SmallDisk disk(256);
    if (!disk.isThere()) {
        GTEST_SKIP() << disk.reason();
    }
    const auto path = disk.path(u"settings"_s);
    ASSERT_TRUE(writeFileAtomically(path, "old"));
    disk.fill();
    const std::expected<void, QString> isFull = std::unexpected(path + u": No space left on device"_s);
    EXPECT_EQ(writeFileAtomically(path, QByteArray(500000, 'n')), isFull);
    EXPECT_EQ(readFile(path), QByteArray("old"));
    EXPECT_EQ(names(disk.path()).filter(u"tunedeck"_s), QStringList());
}

TEST_F(AtomicFileTest, CreatesFoldersUnlessAFileIsInTheWay) {
    const auto deep = m_home.path(u"a/ü b/c"_s);
    EXPECT_TRUE(createFolder(deep) && createFolder(deep + u'/') && QFileInfo(deep).isDir());
    m_home.write(u"file"_s, "text");
    const std::expected<void, QString> isBlocked = std::unexpected(m_path + u"/below: Not a directory"_s);
    EXPECT_EQ(createFolder(m_path + u"/below"_s), isBlocked);
    EXPECT_FALSE(createFolder(m_path));
}

} // namespace
} // namespace tunedeck::test
