#include "Tests/Helpers/Test.h"
#include "Tests/Peers/NotificationServer.h"
#include "Tests/Peers/TrayHost.h"
#include "Tests/Platform/SettingsPortal.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxLoginItem.h"
#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

namespace tunedeck::test {
namespace {

class SystemProbeTest : public testing::Test {
protected:
    void SetUp() override {
        if (!QDBusConnection::sessionBus().isConnected()) {
            GTEST_SKIP() << "no session bus; use tools/lib/desktop";
        }
    }

    const SystemProbe m_probe = systemProbe(systemFacts());
    const qint64 m_self = QCoreApplication::applicationPid();
};

TEST_F(SystemProbeTest, FindsTheTrayAndTheIconOfAProcess) {
    const auto x11 = runToEnd(m_probe.tray(m_self, {}));
    ASSERT_TRUE(x11);
    EXPECT_EQ(x11->exists, !qEnvironmentVariableIsEmpty("DISPLAY")) << "tools/lib/desktop has an X11 tray";
    EXPECT_FALSE(x11->showsIcon);

    TrayHost host;
    auto bus = QDBusConnection::sessionBus();
    auto registration =
        QDBusMessage::createMethodCall(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
                                       u"org.kde.StatusNotifierWatcher"_s, u"RegisterStatusNotifierItem"_s);
    registration << u"item"_s;
    for (const bool isRegistered : {false, true}) {
        if (isRegistered) {
            bus.asyncCall(registration);
            ASSERT_TRUE(runUntil([&] { return host.items().front().startsWith(bus.baseService()); }));
        }
        const auto own = runToEnd(m_probe.tray(m_self, {}));
        ASSERT_TRUE(own && own->exists);
        EXPECT_EQ(own->showsIcon, isRegistered);
        EXPECT_EQ(runToEnd(m_probe.tray(1, {}))->showsIcon, false);
    }
    host.setHostRegistered(false);
    EXPECT_FALSE(runToEnd(m_probe.tray(m_self, {}))->showsIcon) << "the X11 tray again";
}

TEST_F(SystemProbeTest, FindsTheNotificationServerAndThePortal) {
    const auto missing = runToEnd(m_probe.notifications({}));
    EXPECT_FALSE(missing->exists);
    EXPECT_TRUE(missing->advice.contains(u"dunst"));
    EXPECT_EQ(runToEnd(m_probe.settings({})), false);
    const NotificationServer server({u"body"_s, u"actions"_s});
    const SettingsPortal portal({});
    const auto notifications = runToEnd(m_probe.notifications({}));
    EXPECT_TRUE(notifications->exists);
    EXPECT_EQ(notifications->capabilities, (QStringList{u"body"_s, u"actions"_s}));
    EXPECT_EQ(runToEnd(m_probe.settings({})), true);
}

TEST_F(SystemProbeTest, DistinguishesABrokenLoginItemFromNone) {
    const TemporaryHome home;
    const SystemFacts facts{.home = home.path(), .bundle = home.path()};
    const auto probe = systemProbe(facts);
    EXPECT_EQ(probe.loginItem(), LoginItemState::Off);
    home.write(u".config/autostart/com.brightfold.tunedeck.menu.desktop"_s,
               "[Desktop Entry]\nExec=/bin/true\nTryExec=/bin/true\n");
    EXPECT_EQ(probe.loginItem(), LoginItemState::On);
    home.write(u".config/autostart/com.brightfold.tunedeck.menu.desktop"_s,
               "[Desktop Entry]\nExec=/bin/true\nTryExec=/nowhere/Tunedeck\n");
    EXPECT_EQ(probe.loginItem(), LoginItemState::Broken);
}

} // namespace
} // namespace tunedeck::test
