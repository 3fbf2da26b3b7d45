#include "Tests/Helpers/SmallDisk.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Helpers/TestServer.h"
#include "TunedeckCore/Support/Async/HelperProgram.h"
#include "TunedeckCore/Support/Http/Downloader.h"
#include "UpdateHelper/Confinement.h"
#include "UpdateHelper/Linux/Landlock.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace tunedeck::test {

namespace {

/// Helpers that misbehave, as shell scripts.
class UpdateHelperTest : public testing::Test {
protected:
    QString script(const QByteArray& text) { return home.writeScript(u"helper"_s, text); }

    auto run(const QString& program) {
        return runToEnd(runHelper(program, {.subcommand = u"verify"_s, .timeLimit = 300ms}, {}));
    }

    TemporaryHome home;
};

/// Runs `attempt` in a confined process. Returns the errno that it returns.
template<class Attempt>
int confined(const helper::Permissions& permissions, Attempt attempt) {
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        _exit(helper::confine(parent, permissions) ? (attempt() < 0 ? errno : 0) : 255);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST_F(UpdateHelperTest, ReportsHelpersThatMisbehave) {
    const auto good = run(script("echo progress 1 >&2; echo noise >&2; echo result a%20%0Ab >&2; exit 2"));
    ASSERT_TRUE(good);
    EXPECT_EQ(good->status, HelperStatus::Refused);
    EXPECT_EQ(good->text, u"a \nb");
    for (const char* text : {"kill -SEGV $$", "exit 0", "echo result x; exit 0", "echo result x >&2; exit 9",
                             "head -c 1000000 /dev/zero >&2", "echo result x >&2; kill -KILL $$"}) {
        const QString path = script(text);
        EXPECT_EQ(run(path).error(), u"The helper program %1 ended unexpectedly."_s.arg(path)) << text;
    }
    EXPECT_EQ(run(script("sleep 60")).error(), u"The program didn't finish in time.");
    EXPECT_EQ(run(script("cat /dev/zero >&2")).error(), u"The program didn't finish in time.");
    EXPECT_TRUE(run(home.path(u"missing"_s)).error().contains(u"No such file"));
}

TEST_F(UpdateHelperTest, CountsAndStoresWhatAHelperSends) {
    const QString file = home.path(u"body"_s);
    const auto download = [&](const QByteArray& text, const QString& to) {
        const DownloadRequest request{.url = QUrl(u"http://x.example"_s), .file = to, .limit = 4, .timeout = 60s};
        return runToEnd(Downloader(script(text)).download(request, {}, {}));
    };
    EXPECT_EQ(download("printf abcd; echo 'result ' >&2", file), 200);
    EXPECT_EQ(home.read(u"body"_s), "abcd");
    EXPECT_EQ(download("printf abcde; sleep 60", file).error(), u"The download exceeds its size limit.");
    const SmallDisk disk(16);
    if (disk.isThere()) {
        disk.fill();
        EXPECT_EQ(download("printf abcd; sleep 60", disk.path(u"body"_s)).error(), u"No space left on device");
    }
}

TEST_F(UpdateHelperTest, RunsWithoutPrivilegesCoreDumpsAndMuchMemory) {
    const auto isLimited = [](auto resource, rlim_t value) {
        rlimit limit{};
        return getrlimit(resource, &limit) == 0 && limit.rlim_cur == value && limit.rlim_max == value;
    };
    constexpr rlim_t memory = rlim_t{TUNEDECK_ADDRESS_SPACE_MIB} * 1024 * 1024;
    const auto isRestricted = [&] {
        errno = EINVAL;
        return prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 1 && isLimited(RLIMIT_CORE, 0) && isLimited(RLIMIT_FSIZE, 0) &&
                       (memory == 0 || isLimited(RLIMIT_AS, memory))
                   ? 0
                   : -1;
    };
    EXPECT_EQ(confined({}, isRestricted), 0);
}

TEST_F(UpdateHelperTest, IsConfinedToItsFiles) {
    const int version = helper::landlockVersion();
    RecordProperty("Landlock", version);
    std::printf("Landlock version %d\n", version);
    if (version == 0) {
        GTEST_SKIP() << "the kernel has no Landlock";
    }
    const std::string other = home.write(u"other"_s, "other").toStdString();
    const std::string own = home.write(u"own"_s, "own").toStdString();
    const std::string folder = home.path(u"folder"_s).toStdString();
    const helper::Permissions fetch{.network = true};
    const helper::Permissions verify{.files = {own}};
    const helper::Permissions unpack{.files = {own}, .folder = folder, .fileSize = 5};
    const auto reads = [](const std::string& path) { return open(path.c_str(), O_RDONLY); };
    const auto writes = [](const std::string& path) { return open(path.c_str(), O_WRONLY | O_CREAT, 0600); };
    const auto socketTo = [](int port) {
        sockaddr_in address{.sin_family = AF_INET, .sin_port = htons(static_cast<in_port_t>(port)), .sin_addr = {}};
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return connect(socket(AF_INET, SOCK_STREAM, 0), reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    };
    const TestServer server;
    EXPECT_EQ(confined(fetch, [&] { return reads(other); }), 0);
    EXPECT_EQ(confined(verify, [&] { return reads(own); }), 0);
    EXPECT_EQ(confined(unpack, [&] { return reads(own); }), 0);
    EXPECT_EQ(
        confined(unpack, [&] { return writes(folder + "/new") < 0 ? -1 : mkdir((folder + "/sub").c_str(), 0700); }), 0);
    EXPECT_EQ(confined(fetch, [&] { return socketTo(server.port()); }), 0);
    for (const auto& permissions : {fetch, verify, unpack}) {
        const auto name = permissions.network ? "fetch" : permissions.folder.empty() ? "verify" : "unpack";
        for (const auto& path : {other, own, other + ".new"}) {
            EXPECT_EQ(confined(permissions, [&] { return writes(path); }), EACCES) << name << ' ' << path;
        }
        EXPECT_EQ(confined(permissions, [&] { return unlink(other.c_str()); }), EACCES) << name;
        EXPECT_EQ(confined(permissions, [&] { return rename(other.c_str(), (folder + "/x").c_str()); }), EACCES)
            << name;
        EXPECT_EQ(confined(permissions, [&] { return execl("/bin/true", "true", nullptr); }), EACCES) << name;
        EXPECT_EQ(confined(permissions, [&] { return truncate(other.c_str(), 0); }), version >= 3 ? EACCES : 0) << name;
        if (!permissions.network) {
            EXPECT_EQ(confined(permissions, [&] { return reads(other); }), EACCES) << name;
            EXPECT_EQ(confined(permissions, [&] { return socketTo(server.port()); }), version >= 4 ? EACCES : 0)
                << name;
        }
        EXPECT_EQ(confined(permissions, [] { return kill(getppid(), 0); }), version >= 6 ? EPERM : 0) << name;
    }
    confined(unpack, [&] { return static_cast<int>(write(writes(folder + "/new"), "123456", 6)); });
    EXPECT_EQ(home.read(u"folder/new"_s), "12345") << "the file size is limited";
}

} // namespace tunedeck::test
