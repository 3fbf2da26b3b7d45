#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/Service/ServiceCleanup.h"
#include "TunedeckMenu/Platform/Uninstall.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <unistd.h>

namespace tunedeck::test {

TEST(UninstallTest, JoinsTheUsersSessionOnlyWhenItHasNone) {
    const auto runtime = qgetenv("XDG_RUNTIME_DIR");
    const auto session = "/run/user/" + QByteArray::number(::getuid());
    joinSession();
    EXPECT_EQ(qgetenv("XDG_RUNTIME_DIR"), runtime);
    qunsetenv("XDG_RUNTIME_DIR");
    joinSession();
    EXPECT_EQ(qgetenv("XDG_RUNTIME_DIR"), QFileInfo::exists(QFile::decodeName(session)) ? session : QByteArray());
    qputenv("XDG_RUNTIME_DIR", runtime);
}

TEST(UninstallTest, FindsProcessesOfADeletedProgram) {
    const TemporaryHome home;
    const auto program = home.path(u"bin/service"_s);
    home.write(u"bin/other"_s, "");
    ASSERT_TRUE(QFile::copy(u"/bin/sleep"_s, program));
    EXPECT_TRUE(processesRunning(program).empty());
    QProcess process;
    process.start(program, {u"1000"_s});
    ASSERT_TRUE(process.waitForStarted());
    const std::vector<pid_t> expected{static_cast<pid_t>(process.processId())};
    EXPECT_TRUE(runUntil([&] { return processesRunning(program) == expected; }));
    ASSERT_TRUE(QFile::link(home.path(u"bin"_s), home.path(u"linked"_s)));
    EXPECT_EQ(processesRunning(home.path(u"linked/service"_s)), expected);
    QFile::remove(program);
    EXPECT_EQ(processesRunning(program), expected);
    EXPECT_TRUE(processesRunning(home.path(u"bin/other"_s)).empty());
    process.kill();
    process.waitForFinished();
}

TEST(UninstallTest, RemovesUnitLinksAndLoginItemWithoutAManager) {
    const TemporaryHome home;
    const auto unit = u"com.brightfold.tunedeck.service"_s;
    const auto units = home.path(u".config/systemd/user"_s);
    home.write(u".config/systemd/user/"_s + unit, "[Unit]");
    home.write(u".config/systemd/user/other.target.wants/mine"_s, "");
    for (const auto& target : {u"/other.target.wants/"_s, u"/default.target.requires/"_s}) {
        QDir().mkpath(units + target);
        ASSERT_TRUE(QFile::link(units + u'/' + unit, units + target + unit));
    }
    home.write(u".config/autostart/com.brightfold.tunedeck.menu.desktop"_s, "[Desktop Entry]\nHidden=true\n");
    const auto uninstall = uninstallOf({.home = home.path()});
    EXPECT_EQ(uninstall.removeLoginItem().done,
              QStringList(u"Removed ~/.config/autostart/com.brightfold.tunedeck.menu.desktop."_s));
    EXPECT_EQ(uninstall.removeLoginItem(), Removal());

    const auto systemctl = home.writeScript(u"systemctl"_s, "echo $* >> $0.calls\nexit 1");
    const SystemdUserManager none{.unitFolder = units, .systemctl = systemctl};
    auto removal = runToEnd(removeUnit(none, home.path(), {}));
    removal.done.sort();
    EXPECT_EQ(removal.done, QStringList({u"Removed ~/.config/systemd/user/"_s + unit + u'.',
                                         u"Removed ~/.config/systemd/user/default.target.requires/"_s + unit + u'.',
                                         u"Removed ~/.config/systemd/user/other.target.wants/"_s + unit + u'.'}));
    EXPECT_EQ(removal.failures, QStringList());
    EXPECT_FALSE(QFileInfo::exists(units + u"/default.target.requires"_s));
    EXPECT_TRUE(QFileInfo::exists(units + u"/other.target.wants/mine"_s));
    EXPECT_EQ(runToEnd(removeUnit(none, home.path(), {})), Removal());
    EXPECT_EQ(home.read(u"systemctl.calls"_s), "--user daemon-reload\n");
}

} // namespace tunedeck::test
