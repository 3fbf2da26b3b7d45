#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/fsuid.h>
#include <sys/stat.h>

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

TEST_F(AtomicFileTest, FollowsLinksAlsoToWhatIsNotThereYet) {
    QDir(m_home.path()).mkpath(u"other"_s);
    const auto link = m_home.path(u"link"_s);
    ASSERT_TRUE(QFile::link(u"other/real"_s, link) && QFile::link(link, m_path));
    for (const auto* text : {"new", "newer"}) {
        ASSERT_TRUE(writeFileAtomically(m_path, text));
        EXPECT_EQ(m_home.read(u"other/real"_s), text);
        EXPECT_TRUE(QFileInfo(link).isSymLink() && QFileInfo(m_path).isSymLink());
    }
    ASSERT_TRUE(QFile::link(u"circle"_s, m_home.path(u"circle"_s)));
    EXPECT_FALSE(writeFileAtomically(m_home.path(u"circle"_s), "text"));
}

TEST_F(AtomicFileTest, FoldersAndFifosAreRefusedWithoutWaiting) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
    EXPECT_EQ(readFile(m_path), std::nullopt);
    EXPECT_FALSE(writeFileAtomically(m_path, "text"));
    EXPECT_EQ(readFile(m_home.path()), std::nullopt);
    const std::expected<void, QString> isFolder = std::unexpected(m_home.path() + u": Is a directory"_s);
    EXPECT_EQ(writeFileAtomically(m_home.path(), "text"), isFolder);
    EXPECT_FALSE(writeFileAtomically(m_home.path(u"missing/file"_s), "text"));
    EXPECT_EQ(names(m_home.path()), QStringList(u"file"_s));
}

TEST_F(AtomicFileTest, ReadsUpToItsLimitAndFilesWithoutASize) {
    ASSERT_TRUE(writeFileAtomically(m_path, QByteArray(10000, 'x')));
    EXPECT_EQ(readFile(m_path, 10000), QByteArray(10000, 'x'));
    EXPECT_EQ(readFile(m_path, 9999), std::nullopt);
    EXPECT_TRUE(readFile(u"/proc/self/environ"_s).value_or(QByteArray()).contains("PATH="));
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

TEST(RemoveTree, RemovesFoldersThatAreNotWritable) {
    const auto user = ::setfsuid(65534); // root may write anywhere
    const QTemporaryDir home;
    QDir(home.path()).mkpath(u"tree/inner/folder"_s);
    for (const auto* name : {"tree/inner", "tree"}) {
        ::chmod(QFile::encodeName(home.filePath(QString::fromLatin1(name))).constData(), 0500);
    }
    EXPECT_TRUE(removeTree(home.filePath(u"tree"_s)));
    EXPECT_FALSE(QFileInfo::exists(home.filePath(u"tree"_s)));
    ::setfsuid(static_cast<uid_t>(user));
}

} // namespace
} // namespace tunedeck::test
