#include "Tests/Helpers/Test.h"
#include "Tests/Peers/NotificationServer.h"
#include "TunedeckMenu/Platform/Platform.h"

namespace tunedeck::test {

TEST(LinuxPlatformTest, UsesTheFactsOfTheBundle) {
    const TemporaryHome home;
    const auto platform =
        createPlatform({.home = home.path(), .bundle = u"/opt/A.app"_s, .bundleIdentifier = u"org.a"_s});
    ASSERT_TRUE(platform->loginItem().setEnabled(true));
    const auto entry = home.read(u".config/autostart/com.brightfold.tunedeck.menu.desktop"_s);
    EXPECT_TRUE(entry.contains("\nTryExec=/opt/A.app/Contents/MacOS/Tunedeck\nIcon=/opt/A.app/")) << entry.data();

    NotificationServer server({});
    platform->notifications().post({.identifier = u"a"_s, .thread = {}, .title = {}, .body = {}});
    ASSERT_TRUE(runUntil([&] { return !server.calls.empty(); }));
    EXPECT_EQ(server.calls[0].name, u"Tunedeck"_s);
    EXPECT_EQ(server.calls[0].hints.value(u"desktop-entry"_s), u"org.a"_s);
    EXPECT_TRUE(server.calls[0].icon.startsWith(u"/opt/A.app/")) << server.calls[0].icon.toStdString();
}

} // namespace tunedeck::test
