#include "Tests/Helpers/Desktop/BareDesktop.h"
#include "Tests/Helpers/Test.h"
#include "Tests/Peers/NotificationServer.h"
#include "Tests/Platform/SettingsPortal.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace tunedeck::test {
namespace {

/// Asks the application on this bus to show its window. False while it doesn't own its name.
bool activate(const QString& address, const QString& method, const QVariantList& arguments) {
    const auto name = u"activator"_s;
    auto call = QDBusMessage::createMethodCall(u"com.brightfold.tunedeck.menu"_s, u"/com/brightfold/tunedeck/menu"_s,
                                               u"org.freedesktop.Application"_s, method);
    call.setArguments(arguments);
    const auto reply = QDBusConnection::connectToBus(address, name).call(call);
    QDBusConnection::disconnectFromBus(name);
    return reply.type() == QDBusMessage::ReplyMessage;
}

TEST(BusRestartTest, EveryPartOfThePlatformReconnects) {
    if (!BareDesktop::isPossible()) {
        GTEST_SKIP() << "Xvfb, trayer or dbus-daemon is missing; ./tools/test installs them";
    }
    BareDesktop desktop;
    const auto address = desktop.busAddress();
    const auto application = desktop.startSelf(u"--desktop"_s); // before there is a bus
    ASSERT_EQ(application->nextLine(), "ready");
    for (const bool isDark : {true, false, true}) {
        const auto bus = desktop.startBus();
        SettingsPortal portal({{u"org.freedesktop.appearance"_s, {{u"color-scheme"_s, isDark ? 1U : 2U}}}}, address);
        EXPECT_EQ(application->nextLine(), isDark ? "dark" : "light");
        portal.change(u"org.freedesktop.appearance"_s, u"color-scheme"_s, isDark ? 2U : 1U);
        EXPECT_EQ(application->nextLine(), isDark ? "light" : "dark");
        portal.change(u"org.freedesktop.appearance"_s, u"color-scheme"_s, isDark ? 1U : 2U);
        EXPECT_EQ(application->nextLine(), isDark ? "dark" : "light");

        NotificationServer server({u"actions"_s}, address);
        for (const uint replaced : {0U, 1U}) { // the second shows that the first reply has arrived, before the click
            const auto before = server.calls.size();
            application->write(u"post job"_s);
            ASSERT_TRUE(runUntil([&] { return server.calls.size() > before; }));
            EXPECT_EQ(server.calls.back().replaces, replaced);
        }
        Q_EMIT server.ActionInvoked(server.calls[0].id, u"default"_s);
        EXPECT_EQ(application->nextLine(), "opened job");

        EXPECT_TRUE(runUntil([&] { return activate(address, u"Activate"_s, {QVariantMap()}); }));
        EXPECT_EQ(application->nextLine(), "reopen");
        EXPECT_TRUE(activate(address, u"Open"_s, {QStringList(u"file:///x"_s), QVariantMap()}));
        EXPECT_EQ(application->nextLine(), "reopen");
        EXPECT_TRUE(activate(address, u"ActivateAction"_s, {u"x"_s, QVariantList(), QVariantMap()}));
        EXPECT_EQ(application->nextLine(), "reopen");
        EXPECT_FALSE(activate(address, u"deleteLater"_s, {}));
        bus->kill();
    }
}

} // namespace
} // namespace tunedeck::test
