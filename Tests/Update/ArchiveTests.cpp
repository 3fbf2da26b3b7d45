#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/Update/Zip.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"
#include "TunedeckCore/Update/Confined/Archive.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

#include <filesystem>

namespace tunedeck::test {

namespace {

constexpr unsigned linkMode = 0120777;

class ArchiveTest : public testing::Test {
protected:
    bool unpack(const QByteArray& bytes, ArchiveLimits limits = {}) {
        QDir(destination()).removeRecursively();
        QDir().mkpath(destination());
        return unpackZip(home.write(u"a.zip"_s, bytes), destination(), limits).has_value();
    }

    /// Whether the archive is rejected before anything is written.
    bool rejects(const std::vector<ZipEntry>& entries, ZipStyle style = {}) {
        std::vector<ZipEntry> all{{.name = "first", .contents = "harmless"}};
        all.insert(all.end(), entries.begin(), entries.end());
        return !unpack(zip(all, style)) &&
               QDir(destination()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot) &&
               QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size() == 2;
    }

    QString destination() const { return home.path(u"to"_s); }
    QByteArray read(const char* name) const { return home.read(u"to/"_s + QFile::decodeName(name)); }
    unsigned mode(const char* name) const {
        struct stat facts{};
        lstat(QFile::encodeName(destination() + u'/' + QFile::decodeName(name)).constData(), &facts);
        return facts.st_mode;
    }

    TemporaryHome home;
};

} // namespace

TEST_F(ArchiveTest, KeepsLinksInsideAndPermissionsExceptOfOthersToWrite) {
    ASSERT_TRUE(unpack(zip({
        {.name = "a.app/", .mode = 040755},
        {.name = "a.app/run", .contents = "#!", .mode = 0100777},
        {.name = "a.app/deep/er/data", .contents = "d", .mode = 0100660},
        {.name = "a.app/deep/link", .mode = linkMode, .linkTarget = "../run"},
        {.name = "a.app/other", .mode = linkMode, .linkTarget = "deep/er"},
    })));
    EXPECT_EQ(mode("a.app/run"), 0100755U);
    EXPECT_EQ(mode("a.app/deep/er/data"), 0100640U);
    EXPECT_EQ(read("a.app/deep/link"), "#!");
    EXPECT_EQ(read("a.app/other/data"), "d");
}

TEST_F(ArchiveTest, RejectsNamesOutsideTheFolderAndDuplicates) {
    for (const QByteArray& name :
         {QByteArray("../out"), QByteArray("a/.."), QByteArray("/etc/out"), QByteArray(300, 'n')}) {
        EXPECT_TRUE(rejects({{.name = name, .contents = "x"}})) << name.data();
    }
    EXPECT_TRUE(rejects({{.name = "a/twice"}, {.name = "a//./twice"}}));
}

TEST_F(ArchiveTest, RejectsLinksOutsideTheFolderAndNamesBelowLinks) {
    for (const char* target : {"/etc", "..", "./../x"}) {
        EXPECT_TRUE(rejects({{.name = "l", .mode = linkMode, .linkTarget = target}})) << target;
    }
    EXPECT_TRUE(rejects({{.name = "d/l", .mode = linkMode, .linkTarget = "../x"}}))
        << "only the top folder is installed";
    EXPECT_TRUE(rejects({{.name = "d/e/l", .mode = linkMode, .linkTarget = "../../x"}}));
    EXPECT_TRUE(rejects({{.name = "d/e/l", .mode = linkMode, .linkTarget = "a/../b"}})) << "a may be a link";
    EXPECT_TRUE(rejects({{.name = "l", .mode = linkMode, .linkTarget = "d"}, {.name = "l/file", .contents = "x"}}));
    EXPECT_TRUE(rejects({{.name = "l/file", .contents = "x"}, {.name = "l", .mode = linkMode, .linkTarget = "d"}}));
}

TEST_F(ArchiveTest, RejectsSetuidSetgidAndEncryptedEntries) {
    EXPECT_TRUE(rejects({{.name = "setuid", .contents = "x", .mode = 0104755}}));
    EXPECT_TRUE(rejects({{.name = "setgid", .contents = "x", .mode = 0102755}}));
    EXPECT_TRUE(rejects({{.name = "locked", .contents = "x"}}, {.encrypted = true}));
}

TEST_F(ArchiveTest, CreatesNoDevicesOrFifos) {
    // libarchive can't write them, so patch the type in the central directory.
    const auto typed = [](char type) {
        QByteArray bytes = zip({{.name = "first", .contents = "x"}});
        bytes[bytes.indexOf("PK\x01\x02") + 41] = static_cast<char>(type | 1);
        return bytes;
    };
    EXPECT_FALSE(unpack(typed('\x20'))) << "a character device";
    EXPECT_FALSE(unpack(typed('\x60'))) << "a block device";
    EXPECT_TRUE(unpack(typed('\x10'))) << "a FIFO becomes a file";
    EXPECT_TRUE(S_ISREG(mode("first")));
}

TEST_F(ArchiveTest, RejectsArchivesAboveTheLimits) {
    std::vector<ZipEntry> many;
    for (int i = 0; i < 20'001; ++i) {
        many.push_back({.name = "f" + QByteArray::number(i)});
    }
    EXPECT_FALSE(unpack(zip(many)));
    many.pop_back();
    EXPECT_TRUE(unpack(zip(many)));
    const QByteArray big = zip({{.name = "big", .contents = QByteArray(2'000'000, '\0')}});
    EXPECT_LT(big.size(), 10'000);
    EXPECT_FALSE(unpack(big, {.bytes = 1'999'999}));
    EXPECT_TRUE(unpack(big, {.bytes = 2'000'000}));
}

TEST_F(ArchiveTest, RejectsTruncatedArchives) {
    const QByteArray whole = zip({{.name = "a", .contents = QByteArray(5000, 'a')}, {.name = "b", .contents = "b"}});
    EXPECT_FALSE(unpack(whole.left(whole.size() / 2)));
    EXPECT_FALSE(unpackZip(home.path(u"missing.zip"_s), destination()));
}

TEST_F(ArchiveTest, DistinguishesAFullDiskFromAnInvalidArchive) {
    const QByteArray large(200'000, 'x');
    const QString archive = home.write(u"a.zip"_s, zip({{.name = "a", .contents = large}}));
    const QString invalid = home.write(u"b.zip"_s, zip({{.name = "a"}, {.name = "a/b"}}));
    const SmallDisk disk(64);
    if (!disk.isThere()) {
        GTEST_SKIP() << disk.reason();
    }
    EXPECT_EQ(unpackZip(archive, disk.path()).error().description(), u"No space left on device");
    EXPECT_EQ(unpackZip(invalid, disk.path()).error().kind, UpdateError::Kind::noApp);
}

TEST_F(ArchiveTest, UnpacksNamesInOtherEncodings) {
    QByteArray bytes = zip({{.name = "latin-\xe9", .contents = "l"}});
    // Clear bit 11 of the flags, which marks UTF-8 names, in both headers of the entry.
    bytes[bytes.indexOf("PK\x03\x04") + 7] = '\0';
    bytes[bytes.indexOf("PK\x01\x02") + 9] = '\0';
    EXPECT_TRUE(unpack(bytes));
    const std::filesystem::path name = home.path().toStdString() + "/to/latin-\xe9";
    EXPECT_EQ(std::filesystem::file_size(name), 1U);
    EXPECT_TRUE(removeTree(destination())) << "Qt can't represent the name";
    EXPECT_FALSE(std::filesystem::exists(name));
}

} // namespace tunedeck::test
