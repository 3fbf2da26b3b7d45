#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <thread>

namespace tunedeck {
namespace {

using namespace test;

class AtomicFileTest : public testing::Test {
protected:
    test::TemporaryHome m_home;
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
    ASSERT_TRUE(writeFileAtomically(m_path, QByteArray(100000, 'a')));
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
    const auto second = m_home.path(u"second"_s);
    ASSERT_TRUE(QFile::link(u"other/real"_s, link));
    ASSERT_TRUE(QFile::link(link, second));
    for (const auto* text : {"new", "newer"}) {
        ASSERT_TRUE(writeFileAtomically(second, text));
        EXPECT_EQ(m_home.read(u"other/real"_s), text);
        EXPECT_TRUE(QFileInfo(link).isSymLink() && QFileInfo(second).isSymLink());
    }
    ASSERT_TRUE(QFile::link(u"circle"_s, m_home.path(u"circle"_s)));
    EXPECT_FALSE(writeFileAtomically(m_home.path(u"circle"_s), "text"));
}

TEST_F(AtomicFileTest, FoldersAndFifosAreRefusedWithoutWaiting) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
    EXPECT_EQ(readFile(m_path), std::nullopt);
    EXPECT_FALSE(writeFileAtomically(m_path, "text"));
    EXPECT_EQ(readFile(m_home.path()), std::nullopt);
    const auto folder = writeFileAtomically(m_home.path(), "text");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error(), m_home.path() + u": Is a directory"_s);
    EXPECT_FALSE(writeFileAtomically(m_home.path(u"missing/file"_s), "text"));
    EXPECT_EQ(names(m_home.path()), QStringList(u"file"_s));
}

TEST_F(AtomicFileTest, ReadsUpToItsLimitAndFilesWithoutASize) {
    ASSERT_TRUE(writeFileAtomically(m_path, QByteArray(10000, 'x')));
    EXPECT_EQ(readFile(m_path, 10000), QByteArray(10000, 'x'));
    EXPECT_EQ(readFile(m_path, 9999), std::nullopt);
    EXPECT_EQ(readFile(m_home.path(u"missing"_s)), std::nullopt);
    EXPECT_TRUE(readFile(u"/proc/self/environ"_s).value_or(QByteArray()).contains("PATH="));
    EXPECT_EQ(readFile(u"/dev/zero"_s), std::nullopt);
}

TEST_F(AtomicFileTest, ReadersNeverSeeAHalfWrittenFileOfTwoWriters) {
    ASSERT_TRUE(writeFileAtomically(m_path, QByteArray(50000, 'a')));
    const auto write = [&](const std::stop_token& stop, char letter) {
        while (!stop.stop_requested()) {
            EXPECT_TRUE(writeFileAtomically(m_path, QByteArray(50000, letter)));
        }
    };
    const std::jthread first(write, 'a');
    const std::jthread second(write, 'b');
    for (int round = 0; round < 300; ++round) {
        const auto bytes = readFile(m_path);
        ASSERT_TRUE(bytes);
        ASSERT_EQ(*bytes, QByteArray(50000, bytes->front()));
    }
}

TEST_F(AtomicFileTest, AFullOrReadOnlyDiskKeepsTheOldFile) {
    const test::SmallDisk disk(256);
    if (!disk.isThere()) {
        GTEST_SKIP() << disk.reason();
    }
    const auto path = disk.path(u"settings"_s);
    ASSERT_TRUE(writeFileAtomically(path, "old"));
    const auto expectOld = [&](const char* reason) {
        const auto written = writeFileAtomically(path, QByteArray(500000, 'n'));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error(), path + u": "_s + QString::fromLatin1(reason));
        EXPECT_EQ(readFile(path), QByteArray("old"));
        EXPECT_EQ(names(disk.path()).filter(u"tunedeck"_s), QStringList());
    };
    disk.fill();
    expectOld("No space left on device");
    disk.makeRoom();
    disk.setReadOnly(true);
    expectOld("Read-only file system");
    disk.setReadOnly(false);
    EXPECT_TRUE(writeFileAtomically(path, "new"));
}

TEST_F(AtomicFileTest, CreatesFoldersUnlessAFileIsInTheWay) {
    const auto deep = m_home.path(u"a/ü b/c"_s);
    EXPECT_TRUE(createFolder(deep));
    EXPECT_TRUE(createFolder(deep + u'/'));
    EXPECT_TRUE(QFileInfo(deep).isDir());
    m_home.write(u"file"_s, "text");
    const auto blocked = createFolder(m_path + u"/below"_s);
    ASSERT_FALSE(blocked);
    EXPECT_TRUE(blocked.error().endsWith(u": Not a directory"_s)) << blocked.error().toStdString();
    EXPECT_FALSE(createFolder(m_path));
}

} // namespace
} // namespace tunedeck
