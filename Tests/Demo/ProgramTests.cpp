#include "DemoService/Files/Files.h"
#include "DemoService/Files/Record.h"
#include "Tests/Demo/TempHome.h"

#include <gtest/gtest.h>
#include <httplib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>
#include <utility>
#include <vector>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

/// The real program in a home folder of its own, ended with the test.
class Program {
public:
    Program(const HomePaths& paths, std::vector<std::string> arguments) : m_paths(paths) {
        m_pid = ::fork();
        if (m_pid == 0) {
            ::setenv("HOME", paths.home.c_str(), 1);
            arguments.insert(arguments.begin(), TUNEDECK_DEMO_PROGRAM);
            std::vector<char*> raw;
            raw.reserve(arguments.size() + 1);
            for (std::string& argument : arguments) {
                raw.push_back(argument.data());
            }
            raw.push_back(nullptr);
            const std::string log = paths.home / "log";
            if (std::freopen(log.c_str(), "a", stderr) != nullptr &&
                std::freopen("/dev/null", "w", stdout) != nullptr) {
                ::execv(raw.front(), raw.data());
            }
            ::_exit(127);
        }
        while (port() == 0 && ::waitpid(m_pid, &m_status, WNOHANG) == 0) {
            std::this_thread::sleep_for(5ms);
        }
        m_ended = port() == 0;
    }
    ~Program() {
        if (!m_ended) {
            end(SIGKILL);
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// The port of the runtime file, when the file is this process's.
    int port() const {
        const auto text = readFile(m_paths.runtimeFile());
        const auto file = text ? parseObject(*text) : std::nullopt;
        return file && (*file)["pid"].GetInt() == m_pid ? (*file)["port"].GetInt() : 0;
    }
    /// Ends the program, unless it has ended by itself. Its exit status; negative for a signal.
    int end(int signal) {
        if (!std::exchange(m_ended, true)) {
            ::kill(m_pid, signal);
            ::waitpid(m_pid, &m_status, 0);
        }
        return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -WTERMSIG(m_status);
    }
    httplib::Client client() const { return httplib::Client("127.0.0.1", port()); }

private:
    HomePaths m_paths;
    pid_t m_pid = 0;
    int m_status = 0;
    bool m_ended = false;
};

std::string get(const Program& program, const std::string& path) {
    const auto result = program.client().Get(path);
    return result && result->status == 200 ? result->body : "";
}

} // namespace

TEST(DemoProgram, TheRuntimeFileStandsWhileItRunsAndTheStateOutlivesIt) {
    const TempHome home;
    std::string links;
    {
        Program program(home.paths, {"--scenario", "quiet", "--speed", "1000"});
        ASSERT_GT(program.port(), 0);
        EXPECT_EQ(program.client().Post("/local/links", R"({"kind":"chatgpt"})", "application/json")->status, 201);
        EXPECT_EQ(
            program.client().Post("/local/rekordbox/restore", R"({"version":"1.0.0"})", "application/json")->status,
            200);
        links = get(program, "/local/links");
        EXPECT_NE(links.find("chatgpt"), std::string::npos);
        EXPECT_EQ(program.end(SIGTERM), 0);
    }
    EXPECT_FALSE(std::filesystem::exists(home.paths.runtimeFile()));
    {
        Program again(home.paths, {});
        EXPECT_EQ(get(again, "/local/links"), links);
        EXPECT_NE(get(again, "/local/status").find("Before restoring v1.0.0"), std::string::npos);
        EXPECT_EQ(again.end(SIGINT), 0);
    }
    {
        const Program other(home.paths, {"--scenario", "fresh"});
        EXPECT_EQ(get(other, "/local/links"), R"({"links":[]})");
    } // killed, so that nobody removes the file
    EXPECT_TRUE(std::filesystem::exists(home.paths.runtimeFile()));
    writeFileAtomically(home.paths.stateFile(), "{\"scenario\":");
    const Program anew(home.paths, {});
    EXPECT_NE(get(anew, "/local/status"), "") << "a broken file only starts anew";
}

} // namespace tunedeck::demo
