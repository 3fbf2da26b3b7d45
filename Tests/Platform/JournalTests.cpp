#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/System/Journal.h"
#include "TunedeckMenu/Platform/Linux/System/OsRelease.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>

namespace tunedeck {
namespace {

using namespace test;

TEST(JournalTest, EntriesArriveWholeAndAFullOrMissingJournalNeverBlocks) {
    const QTemporaryDir folder;
    const auto path = folder.filePath(u"socket"_s);
    const Journal without(path);
    EXPECT_FALSE(without.send({{"MESSAGE", "lost"}}));

    const FileDescriptor server(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(server.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    const Journal journal(path);
    EXPECT_TRUE(journal.send({{"MESSAGE", "one\ntwo"}, {"CATEGORY", "app"}}));
    char bytes[128];
    const auto size = ::recv(server.get(), bytes, sizeof bytes, 0);
    EXPECT_EQ(QByteArray(bytes, size), QByteArray("MESSAGE\n\7\0\0\0\0\0\0\0one\ntwo\nCATEGORY=app\n", 37));

    int sent = 0;
    while (sent < 100000 && journal.send({{"MESSAGE", "flood"}})) { // nobody reads
        ++sent;
    }
    EXPECT_LT(sent, 100000);
}

TEST(OsReleaseTest, ReadsTheShellsQuotingAndOddFiles) {
    const auto debian =
        OsRelease::parse("NAME=\"Debian\"\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\nVERSION_ID=\"12\"\n");
    EXPECT_EQ(debian.name, u"Debian GNU/Linux 12 (bookworm)"_s);
    EXPECT_EQ(debian.version, (std::array{12, 0, 0}));
    const auto other = OsRelease::parse("# PRETTY_NAME=no\n=\nVERSION_ID='22.04.3.9'\r\nNAME=\"A \\\"b\\\" \\$c\"");
    EXPECT_EQ(other.name, u"A \"b\" $c"_s);
    EXPECT_EQ(other.version, (std::array{22, 4, 3}));
    const auto rolling = OsRelease::parse("VERSION_ID=rolling\nPRETTY_NAME=\"");
    EXPECT_EQ(rolling.version, (std::array{0, 0, 0}));
    EXPECT_EQ(OsRelease::parse({}).name, u"Linux"_s);
}

} // namespace
} // namespace tunedeck
