#include "DemoService/Files/HomePaths.h"
#include "DemoService/Files/JsonFile.h"
#include "DemoService/World/DownloadFolder.h"
#include "Tests/Helpers/TemporaryHome.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>
#include <httplib.h>

#include <csignal>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

namespace {

/// The real program in the test's home folder; killed with the test.
class Program {
public:
    explicit Program(const QStringList& arguments) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(TUNEDECK_DEMO_PROGRAM), arguments);
        m_process.waitForReadyRead(10'000); // its first line comes when it is ready
        m_port = m_process.readLine().trimmed().split(':').constLast().toInt();
    }
    ~Program() {
        m_process.kill();
        m_process.waitForFinished();
    }

    int port() const { return m_port; }
    httplib::Client client() const { return httplib::Client("127.0.0.1", m_port); }
    std::string get(const std::string& path) const {
        const auto result = client().Get(path);
        return result && result->status == 200 ? result->body : "";
    }
    int post(const std::string& path, const std::string& body) const {
        const auto result = client().Post(path, body, "application/json");
        return result ? result->status : 0;
    }
    /// Ends the program; its exit status.
    int end(int signal) {
        ::kill(static_cast<pid_t>(m_process.processId()), signal);
        m_process.waitForFinished();
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

private:
    QProcess m_process;
    int m_port = 0;
};

} // namespace

TEST(DemoProgram, PublishesItsPortWhileItRunsAndContinuesWhereItEnded) {
    const test::TemporaryHome home;
    const HomePaths paths{home.path()};
    const auto publishedPort = [&] { return readObject(paths.runtimeFile()).at(u"port"_s); };
    std::string links;
    {
        Program program({u"--scenario"_s, u"quiet"_s, u"--speed"_s, u"1000"_s});
        EXPECT_EQ(publishedPort(), json::Value(program.port()));
        EXPECT_EQ(program.post("/local/links", R"({"kind":"chatgpt"})"), 201);
        EXPECT_EQ(program.post("/local/rekordbox/restore", R"({"version":"1.0.0"})"), 200);
        EXPECT_EQ(program.post("/local/links", std::string(70'000, ' ')), 413);
        links = program.get("/local/links");
        EXPECT_NE(links.find("chatgpt"), std::string::npos);
        Program second({u"--port"_s, QString::number(program.port())});
        EXPECT_EQ(second.end(0), 1) << "the port is taken";
        EXPECT_EQ(program.end(SIGTERM), 0);
    }
    EXPECT_FALSE(QFile::exists(paths.runtimeFile()));
    EXPECT_TRUE(home.read(u".tunedeck/rekordbox.xml"_s).contains(R"(Name="Friday")"));
    {
        Program again({});
        EXPECT_EQ(again.get("/local/links"), links);
        EXPECT_NE(again.get("/local/status").find("Before restoring v1.0.0"), std::string::npos);
        home.write(u".tunedeck/runtime.json"_s, R"({"port": 1, "pid": 1})");
        EXPECT_EQ(again.end(SIGINT), 0);
        EXPECT_EQ(publishedPort(), json::Value(1)) << "another process has published its port";
    }
    EXPECT_EQ(Program({u"--scenario"_s, u"fresh"_s}).get("/local/links"), R"({"links":[]})");
    home.write(u".tunedeck/demo-state.json"_s, R"({"scenario":)");
    EXPECT_NE(Program({}).get("/local/status"), "") << "starts anew after a damaged state file";
}

TEST(DemoProgram, RejectsWrongOptions) {
    for (const auto& arguments : {QStringList{u"--scenario"_s, u"none"_s},
                                  {u"--port=65536"_s},
                                  {u"--speed=nan"_s},
                                  {u"--speed=1001"_s},
                                  {u"--unknown"_s},
                                  {u"extra"_s}}) {
        EXPECT_EQ(QProcess::execute(QStringLiteral(TUNEDECK_DEMO_PROGRAM), arguments), 2)
            << arguments.join(u' ').toStdString();
    }
}

TEST(DownloadFolder, IsTheChosenOneOrTheDefaultAndSaysWhyItIsNotWritable) {
    const test::TemporaryHome home;
    const HomePaths paths{home.path()};
    const DownloadFolder staged{.path = u"/staged"_s, .writable = false};
    EXPECT_EQ(DownloadFolder::current(paths, staged).path, u"/staged"_s);
    auto folder = DownloadFolder::current(paths, {});
    EXPECT_EQ(folder.path, home.path(u"Music/Tunedeck"_s));
    EXPECT_TRUE(folder.writable && QFile::exists(folder.path));
    home.write(u".tunedeck/settings.json"_s, R"({"download_dir": "/nowhere"})");
    folder = DownloadFolder::current(paths, staged);
    EXPECT_EQ(folder.source, u"settings"_s);
    EXPECT_FALSE(folder.writable);
    EXPECT_EQ(folder.error, u"The folder doesn't exist. Is its drive connected?"_s);
}

} // namespace tunedeck::demo
