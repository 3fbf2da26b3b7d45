#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/System/Journal.h"
#include "TunedeckMenu/Platform/Log.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>

namespace tunedeck::test {

TEST(JournalTest, SendsWholeEntriesAndNeverBlocks) {
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

TEST(LogTest, WritesToTheErrorOutputWithoutAJournal) {
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
    const auto previous = qInstallMessageHandler(nullptr);
    installSystemLog();
    testing::internal::CaptureStderr();
    qCWarning(appLog, "a warning");
    qInfo("%s", QByteArray(50'000, 'x').constData());
    qInstallMessageHandler(previous);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "com.brightfold.tunedeck.menu:app: a warning\ncom.brightfold.tunedeck.menu:default: " +
                  std::string(48 * 1024, 'x') + '\n');
}

} // namespace tunedeck::test
