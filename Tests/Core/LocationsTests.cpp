#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Locations/UserPaths.h"

#include <pwd.h>
#include <unistd.h>

namespace tunedeck::test {

TEST(UserPaths, UsesHomeOnlyIfItIsAbsolute) {
    const TemporaryHome home;
    EXPECT_EQ(UserPaths::current().home(), home.path());
    const auto account = QString::fromLocal8Bit(::getpwuid(::getuid())->pw_dir);
    for (const auto* value : {"", "relative/home"}) {
        qputenv("HOME", value);
        EXPECT_EQ(UserPaths::current().home(), account) << value;
    }
    qputenv("HOME", "/home//dj/");
    EXPECT_EQ(UserPaths::current().dataFolder(), u"/home/dj/.tunedeck"_s);
    EXPECT_EQ(UserPaths(u"/"_s).serviceLog(), u"/Library/Logs/tunedeck.log"_s);
}

TEST(BundlePaths, FindsTheBundleOfAProgram) {
    const auto bundle = BundlePaths::containing(u"/opt/Tunedeck.app/Contents/MacOS/Tunedeck"_s);
    EXPECT_EQ(bundle.bundle(), u"/opt/Tunedeck.app"_s);
    EXPECT_EQ(bundle.service(), u"/opt/Tunedeck.app/Contents/Helpers/tunedeck"_s);
    EXPECT_EQ(BundlePaths::containing(u"/usr/bin/tunedeck"_s).bundle(), u"/usr/bin"_s);
}

} // namespace tunedeck::test
