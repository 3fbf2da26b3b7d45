#include "Tests/Helpers/Desktop/DesktopParts.h"
#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/SingleInstance.h"
#include "TunedeckMenu/Platform/WaitForExit.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cstring>
#include <vector>

namespace tunedeck {
namespace {

using namespace test;

class SingleInstanceTest : public testing::Test {
protected:
    [[nodiscard]] QString socket() const { return m_folder.filePath(u"app.socket"_s); }

    [[nodiscard]] std::unique_ptr<Program> start(const QString& request = u"show"_s, int patience = 2000) const {
        return test::startInstance(socket(), request, patience);
    }

    // Hands a request over and returns what the start said.
    [[nodiscard]] std::string ask(const QString& request, int patience = 2000) const {
        const auto process = start(request, patience);
        const auto said = process->nextLine();
        EXPECT_TRUE(process->ends());
        return said;
    }

    // A client that says these bytes and is still there.
    [[nodiscard]] int connectAndSend(const QByteArray& bytes) const {
        const int client = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, QFile::encodeName(socket()).constData(), sizeof address.sun_path - 1);
        EXPECT_EQ(::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::send(client, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL),
                  bytes.size());
        return client;
    }

    QTemporaryDir m_folder;
};

TEST_F(SingleInstanceTest, ASecondStartHandsItsRequestAndItsActivationTokenToTheFirst) {
    const auto first = start();
    ASSERT_EQ(first->nextLine(), "first");
    struct stat info{};
    ASSERT_EQ(::stat(QFile::encodeName(socket()).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600U);

    EXPECT_EQ(ask(u"show"_s), "handed over");
    EXPECT_EQ(first->nextLine(), "show");
    qputenv("XDG_ACTIVATION_TOKEN", "token-7");
    EXPECT_EQ(ask(u"show"_s), "handed over");
    qunsetenv("XDG_ACTIVATION_TOKEN");
    EXPECT_EQ(first->nextLine(), "show token-7");

    // The one that ends leaves the place to the next at once.
    EXPECT_EQ(ask(u"quit"_s), "handed over");
    EXPECT_EQ(first->nextLine(), "quit token-7");
    const auto next = start();
    EXPECT_EQ(next->nextLine(), "first");
    EXPECT_TRUE(first->ends());
    EXPECT_EQ(ask(u"quit"_s), "handed over");
    EXPECT_TRUE(next->ends());
}

TEST_F(SingleInstanceTest, OfManySimultaneousStartsOneIsTheFirst) {
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<Program>> starts;
        for (int i = 0; i < 8; ++i) {
            starts.push_back(start(u"show"_s, 8000));
        }
        std::vector<Program*> firsts;
        for (const auto& start : starts) {
            const auto said = start->nextLine();
            if (said == "first") {
                firsts.push_back(start.get());
            } else {
                EXPECT_EQ(said, "handed over");
            }
        }
        ASSERT_EQ(firsts.size(), 1U);
        firsts.front()->kill(); // what it leaves behind must not hinder the next round
        EXPECT_TRUE(QFile::exists(socket()));
    }
}

TEST_F(SingleInstanceTest, AFirstInstanceThatHangsIsSaidSoInTimeAndHearsNothingLate) {
    const auto first = start();
    ASSERT_EQ(first->nextLine(), "first");
    ::kill(first->id(), SIGSTOP);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(ask(u"show"_s, 300), "unanswered");
    EXPECT_GE(time.elapsed(), 300);
    ::kill(first->id(), SIGCONT);
    EXPECT_EQ(ask(u"quit"_s), "handed over");
    EXPECT_EQ(first->nextLine(), "quit");
    EXPECT_TRUE(first->ends());
}

TEST_F(SingleInstanceTest, NonsenseOnTheSocketIsNoRequestAndHindersNobody) {
    const auto first = start();
    ASSERT_EQ(first->nextLine(), "first");
    std::vector<int> clients;
    for (const auto& bytes : {QByteArray("SHOW\n"), QByteArray("\n"), QByteArray("rm -rf;x\n").prepend('.'),
                              QByteArray(5000, 'a'), QByteArray("sho"), QByteArray("\0show\n", 6)}) {
        clients.push_back(connectAndSend(bytes));
    }
    EXPECT_EQ(ask(u"quit"_s), "handed over");
    EXPECT_EQ(first->nextLine(), "quit");
    for (const int client : clients) {
        ::close(client);
    }
    EXPECT_TRUE(first->ends());
}

TEST_F(SingleInstanceTest, UnusualFoldersDoNotKeepTheApplicationFromRunning) {
    const auto deep = m_folder.filePath(QString(120, u'd'));
    ASSERT_TRUE(QDir().mkpath(deep));
    SingleInstance inDeepFolder(deep + u"/app.socket"_s);
    ASSERT_EQ(inDeepFolder.acquire("show"), SingleInstance::Role::first);
    inDeepFolder.answer();
    const auto second = test::startInstance(deep + u"/app.socket"_s, u"show"_s, 300);
    EXPECT_EQ(second->nextLine(), "unanswered"); // heard, but this process runs no event loop here
    EXPECT_TRUE(second->ends());

    SingleInstance nowhere(m_folder.filePath(u"missing/app.socket"_s));
    EXPECT_EQ(nowhere.acquire("show"), SingleInstance::Role::first);
    SingleInstance noPath{QString()};
    EXPECT_EQ(noPath.acquire("show"), SingleInstance::Role::first);
}

TEST(WaitForExit, EndsWithTheProcessOrWithTheTime) {
    QProcess process;
    process.start(u"sleep"_s, {u"60"_s});
    ASSERT_TRUE(process.waitForStarted());
    const auto id = static_cast<pid_t>(process.processId());
    EXPECT_FALSE(waitForExit(id, 30ms));
    ::kill(id, SIGKILL);
    EXPECT_TRUE(waitForExit(id, 5s));
    process.waitForFinished();
    EXPECT_TRUE(waitForExit(id, 5s)); // nothing of that id any more
}

} // namespace
} // namespace tunedeck
