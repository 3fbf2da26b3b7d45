#include "Tests/Platform/Starts.h"
#include "TunedeckMenu/Platform/Relauncher.h"
#include "TunedeckMenu/Platform/SingleInstance.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cstring>
#include <vector>

namespace tunedeck {
namespace {

using namespace std::chrono_literals;
using test::nextLine;
using test::startInstance;

class SingleInstanceTest : public testing::Test {
protected:
    [[nodiscard]] QString socket() const { return m_folder.filePath(QStringLiteral("app.socket")); }

    // Hands a request over and returns what the start said.
    [[nodiscard]] std::string ask(const QString& request, int patience = 2000) const {
        const auto process = startInstance(socket(), request, patience);
        const auto said = nextLine(*process);
        process->waitForFinished();
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
    const auto first = startInstance(socket(), QStringLiteral("show"));
    ASSERT_EQ(nextLine(*first), "first");
    struct stat info{};
    ASSERT_EQ(::stat(QFile::encodeName(socket()).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600U);

    EXPECT_EQ(ask(QStringLiteral("show")), "handed over");
    EXPECT_EQ(nextLine(*first), "show");
    qputenv("XDG_ACTIVATION_TOKEN", "token-7");
    EXPECT_EQ(ask(QStringLiteral("show")), "handed over");
    qunsetenv("XDG_ACTIVATION_TOKEN");
    EXPECT_EQ(nextLine(*first), "show token-7");

    // The one that ends leaves the place to the next at once.
    EXPECT_EQ(ask(QStringLiteral("quit")), "handed over");
    EXPECT_EQ(nextLine(*first), "quit token-7");
    const auto next = startInstance(socket(), QStringLiteral("show"));
    EXPECT_EQ(nextLine(*next), "first");
    EXPECT_TRUE(first->waitForFinished());
    EXPECT_EQ(ask(QStringLiteral("quit")), "handed over");
    EXPECT_TRUE(next->waitForFinished());
}

TEST_F(SingleInstanceTest, OfManySimultaneousStartsOneIsTheFirst) {
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<QProcess>> starts;
        for (int i = 0; i < 8; ++i) {
            starts.push_back(startInstance(socket(), QStringLiteral("show"), 8000));
        }
        int firsts = 0;
        int handedOver = 0;
        QProcess* first = nullptr;
        for (const auto& start : starts) {
            const auto said = nextLine(*start);
            if (said == "handed over") {
                ++handedOver;
                start->waitForFinished();
            }
            if (said == "first") {
                ++firsts;
                first = start.get();
            }
        }
        EXPECT_EQ(firsts, 1);
        EXPECT_EQ(handedOver, 7);
        ASSERT_NE(first, nullptr);
        first->kill(); // what it leaves behind must not hinder the next round
        first->waitForFinished();
        EXPECT_TRUE(QFile::exists(socket()));
    }
}

TEST_F(SingleInstanceTest, AFirstInstanceThatHangsIsSaidSoInTimeAndHearsNothingLate) {
    const auto first = startInstance(socket(), QStringLiteral("show"));
    ASSERT_EQ(nextLine(*first), "first");
    ::kill(static_cast<pid_t>(first->processId()), SIGSTOP);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(ask(QStringLiteral("show"), 300), "unanswered");
    EXPECT_GE(time.elapsed(), 300);
    ::kill(static_cast<pid_t>(first->processId()), SIGCONT);
    EXPECT_EQ(ask(QStringLiteral("quit")), "handed over");
    EXPECT_EQ(nextLine(*first), "quit");
    EXPECT_TRUE(first->waitForFinished());
}

TEST_F(SingleInstanceTest, NonsenseOnTheSocketIsNoRequestAndHindersNobody) {
    const auto first = startInstance(socket(), QStringLiteral("show"));
    ASSERT_EQ(nextLine(*first), "first");
    std::vector<int> clients;
    for (const auto& bytes : {QByteArray("SHOW\n"), QByteArray("\n"), QByteArray("rm -rf;x\n").prepend('.'),
                              QByteArray(5000, 'a'), QByteArray("sho"), QByteArray("\0show\n", 6)}) {
        clients.push_back(connectAndSend(bytes));
    }
    EXPECT_EQ(ask(QStringLiteral("quit")), "handed over");
    EXPECT_EQ(nextLine(*first), "quit");
    for (const int client : clients) {
        ::close(client);
    }
    EXPECT_TRUE(first->waitForFinished());
}

TEST_F(SingleInstanceTest, UnusualFoldersDoNotKeepTheApplicationFromRunning) {
    const auto deep = m_folder.filePath(QString(120, u'd'));
    ASSERT_TRUE(QDir().mkpath(deep));
    SingleInstance inDeepFolder(deep + QStringLiteral("/app.socket"));
    ASSERT_EQ(inDeepFolder.acquire("show"), SingleInstance::Role::first);
    inDeepFolder.answer();
    const auto second = startInstance(deep + QStringLiteral("/app.socket"), QStringLiteral("show"), 300);
    EXPECT_EQ(nextLine(*second), "unanswered"); // heard, but this process runs no event loop here
    second->waitForFinished();

    SingleInstance nowhere(m_folder.filePath(QStringLiteral("missing/app.socket")));
    EXPECT_EQ(nowhere.acquire("show"), SingleInstance::Role::first);
    SingleInstance noPath{QString()};
    EXPECT_EQ(noPath.acquire("show"), SingleInstance::Role::first);
}

TEST(WaitForExit, EndsWithTheProcessOrWithTheTime) {
    QProcess process;
    process.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    ASSERT_TRUE(process.waitForStarted());
    const auto id = static_cast<pid_t>(process.processId());
    EXPECT_FALSE(waitForExit(id, 30ms));
    ::kill(id, SIGKILL);
    EXPECT_TRUE(waitForExit(id, 5s));
    process.waitForFinished();
    EXPECT_TRUE(waitForExit(id, 5s)); // nothing of that id any more
    EXPECT_TRUE(waitForExit(0, 5s));
    EXPECT_TRUE(waitForExit(-1, 5s));
}

} // namespace
} // namespace tunedeck
