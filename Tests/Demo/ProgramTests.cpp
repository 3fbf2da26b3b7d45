#include "DemoService/Files/HomePaths.h"
#include "DemoService/Files/JsonFile.h"
#include "Tests/Helpers/TemporaryHome.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>
#include <httplib.h>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

namespace {

const auto programPath = u"" TUNEDECK_DEMO_PROGRAM ""_s;

/// The real program in the test's home folder; killed with the test.
class Program {
public:
    explicit Program(const QStringList& arguments) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(programPath, arguments);
        m_process.waitForReadyRead(10'000); // its first line comes when it is ready
        m_port = m_process.readLine().trimmed().split(':').constLast().toInt();
    }
    ~Program() {
        m_process.kill();
        m_process.waitForFinished();
    }

    int port() const { return m_port; }
    int post(const std::string& path, const std::string& body) const {
        return httplib::Client("127.0.0.1", m_port).Post(path, body, "application/json")->status;
    }
    QByteArray get(const std::string& path) const {
        const auto result = httplib::Client("127.0.0.1", m_port).Get(path);
        return result && result->status == 200 ? QByteArray::fromStdString(result->body) : QByteArray();
    }
    /// Terminates the program; its exit status.
    int end() {
        m_process.terminate();
        m_process.waitForFinished();
        return m_process.exitCode();
    }

private:
    QProcess m_process;
    int m_port = 0;
};

} // namespace

TEST(DemoProgram, PublishesItsPortWhileItRunsAndContinuesWhereItEnded) {
    const test::TemporaryHome home;
    const QString runtimeFile = HomePaths{home.path()}.runtimeFile();
    const auto publishedPort = [&] { return *readObject(runtimeFile).find("port"_L1); };
    Program program({u"--scenario"_s, u"quiet"_s, u"--speed"_s, u"1000"_s});
    EXPECT_EQ(publishedPort(), json::Value(program.port()));
    EXPECT_EQ(program.post("/local/links", R"({"kind":"chatgpt"})"), 201);
    EXPECT_EQ(program.post("/local/rekordbox/restore", R"({"version":"1.0.0"})"), 200);
    EXPECT_EQ(program.post("/local/links", std::string(70'000, ' ')), 413);
    const auto links = program.get("/local/links");
    EXPECT_TRUE(links.contains("chatgpt"));
    EXPECT_EQ(QProcess::execute(programPath, {u"--port"_s, QString::number(program.port())}), 1) << "it is taken";
    EXPECT_EQ(program.end(), 0);
    EXPECT_FALSE(QFile::exists(runtimeFile));
    EXPECT_TRUE(home.read(u".tunedeck/rekordbox.xml"_s).contains(R"(Name="Friday")"));

    EXPECT_EQ(Program({u"--scenario"_s, u"quiet"_s}).get("/local/links"), links);
    Program again({});
    EXPECT_EQ(again.get("/local/links"), links);
    const auto status = again.get("/local/status");
    EXPECT_TRUE(status.contains("Before restoring v1.0.0") && status.contains(R"("download_dir_writable":true)"));
    home.write(u".tunedeck/settings.json"_s, R"({"download_dir": "/nowhere"})");
    const auto unwritable = again.get("/local/status");
    EXPECT_TRUE(unwritable.contains("The folder doesn't exist.") && unwritable.contains(R"(dir_writable":false)"));
    home.write(u".tunedeck/runtime.json"_s, R"({"port": 1, "pid": 1})");
    EXPECT_EQ(again.end(), 0);
    EXPECT_EQ(publishedPort(), json::Value(1)) << "another process has published its port";

    EXPECT_EQ(Program({u"--scenario"_s, u"fresh"_s}).get("/local/links"), R"({"links":[]})");
    home.write(u".tunedeck/demo-state.json"_s, R"({"scenario":)");
    EXPECT_NE(Program({}).get("/local/status"), "") << "starts anew after a damaged state file";
}

TEST(DemoProgram, RejectsWrongOptions) {
    for (const auto& option : {u"--scenario=x"_s, u"--port=65536"_s, u"--speed=nan"_s, u"--speed=1001"_s, u"x"_s}) {
        EXPECT_EQ(QProcess::execute(programPath, {option}), 2) << option.toStdString();
    }
}

} // namespace tunedeck::demo
