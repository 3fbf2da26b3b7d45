#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Installation/Removal.h"
#include "TunedeckCore/Installation/ServiceRemover.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <map>

namespace tunedeck::test {
namespace {

const QString programPath = u".tunedeck/bin/tunedeck"_s;
const QString plistPath = u"Library/LaunchAgents/com.brightfold.tunedeck.plist"_s;

/// With a fake supervisor, whose own state is one file.
class ServiceRemoverTest : public testing::Test {
protected:
    void SetUp() override {
        m_home.write(programPath, "program");
        m_home.write(plistPath, "list");
        m_home.write(u"unit"_s, "unit");
        m_home.write(u".tunedeck/settings.json"_s, "{}");
    }

    QCoro::Task<std::int32_t> launchctl(QStringList arguments) {
        m_asked << arguments.join(u' ');
        co_return m_answers[arguments.front()];
    }
    QCoro::Task<Removal> forget() {
        Removal removal;
        removal.note(u"the unit"_s, removeFile(m_home.path(u"unit"_s)));
        co_return removal;
    }

    [[nodiscard]] ServiceRemover remover() {
        return {m_home.path(),
                ServiceInstaller(m_home.path(), std::nullopt, 501, {}, m_clock),
                501,
                {.launchctl = [this](const QStringList& arguments, std::stop_token) { return launchctl(arguments); },
                 .forget = [this](std::stop_token) { return forget(); },
                 .processes = [this](const QString&) { return m_processes(); }},
                m_clock};
    }
    Removal remove() { return runToEnd(remover().remove({})); }
    [[nodiscard]] bool isThere(const QString& relative) const { return QFileInfo::exists(m_home.path(relative)); }

    TemporaryHome m_home;
    ManualClock m_clock;
    QStringList m_asked;
    std::map<QString, std::int32_t> m_answers;
    std::function<std::vector<pid_t>()> m_processes = [] { return std::vector<pid_t>(); };
};

TEST_F(ServiceRemoverTest, RemovesTheServiceAndKeepsTheUsersFiles) {
    m_home.write(u".tunedeck/bin/tunedeck.new"_s, "half a program");
    EXPECT_EQ(remove().done, QStringList({u"Stopped and disabled the service."_s, u"Removed the unit."_s,
                                          u"Removed ~/"_s + plistPath + u'.', u"Removed ~/"_s + programPath + u'.',
                                          u"Removed ~/.tunedeck/bin/tunedeck.new."_s}));
    EXPECT_EQ(m_asked,
              QStringList({u"print gui/501/com.brightfold.tunedeck"_s, u"bootout gui/501/com.brightfold.tunedeck"_s}));
    EXPECT_FALSE(isThere(u".tunedeck/bin"_s));
    EXPECT_TRUE(isThere(u".tunedeck/settings.json"_s));

    m_answers = {{u"print"_s, 4}, {u"bootout"_s, 1}};
    m_home.write(u".tunedeck/bin/ffmpeg"_s, "a tool");
    EXPECT_EQ(remove(), Removal());
    EXPECT_TRUE(isThere(u".tunedeck/bin/ffmpeg"_s));
}

TEST_F(ServiceRemoverTest, ReportsFailuresAndContinues) {
    m_answers[u"bootout"_s] = 5;
    QFile::remove(m_home.path(plistPath));
    m_home.write(plistPath + u"/mine"_s, "keep");
    const auto removal = remove();
    EXPECT_EQ(removal.failures, QStringList({u"Couldn't stop the service: launchctl bootout exited 5."_s,
                                             m_home.path(plistPath) + u": Is a directory."_s}));
    EXPECT_EQ(removal.done, QStringList({u"Removed the unit."_s, u"Removed ~/"_s + programPath + u'.'}));
}

TEST_F(ServiceRemoverTest, TerminatesAndThenKillsARunningService) {
    m_answers = {{u"print"_s, -1}, {u"bootout"_s, -1}};
    for (const bool isStubborn : {false, true}) {
        QProcess service;
        m_processes = [&service] {
            return service.state() == QProcess::NotRunning
                       ? std::vector<pid_t>()
                       : std::vector<pid_t>{static_cast<pid_t>(service.processId())};
        };
        service.start(u"/bin/sh"_s, {u"-c"_s, (isStubborn ? u"trap '' TERM; "_s : QString()) +
                                                  u"echo ready; while :; do sleep 0.1; done"_s});
        ASSERT_TRUE(service.waitForReadyRead());
        const auto ending = endingOf(remover().remove({}));
        if (isStubborn) {
            m_clock.advance(4900ms);
            EXPECT_EQ(service.state(), QProcess::Running);
            m_clock.advance(100ms);
        }
        ASSERT_TRUE(service.waitForFinished()); // signals are delivered asynchronously
        m_clock.advance(100ms);
        ASSERT_TRUE(ending->value) << isStubborn;
        EXPECT_EQ(ending->value->failures, QStringList());
        EXPECT_TRUE(ending->value->done.contains(u"Ended the service."_s));
    }
    // The files are removed even if the service survives SIGKILL.
    m_home.write(programPath, "program");
    m_processes = [] { return std::vector<pid_t>{std::numeric_limits<pid_t>::max()}; };
    const auto ending = endingOf(remover().remove({}));
    m_clock.advance(6s);
    ASSERT_TRUE(ending->value);
    EXPECT_EQ(ending->value->failures, QStringList(u"The service is still running and couldn't be stopped."_s));
    EXPECT_FALSE(isThere(programPath));
}

TEST_F(ServiceRemoverTest, KeepsTheFilesWhenStopped) {
    m_processes = [] { return std::vector<pid_t>{std::numeric_limits<pid_t>::max()}; };
    std::stop_source source;
    const auto ending = endingOf(remover().remove(source.get_token()));
    source.request_stop();
    ASSERT_TRUE(ending->value);
    EXPECT_TRUE(isThere(programPath));
}

} // namespace
} // namespace tunedeck::test
