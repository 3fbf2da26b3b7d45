#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/Linux/Instance/LinuxRelauncher.h"

#include <QCoreApplication>
#include <QFile>

namespace tunedeck::test {

TEST(RelauncherTest, StartsTheBundleWithTheProcessToWaitFor) {
    const TemporaryHome home;
    QFile program(home.writeScript(u"A.app/Contents/MacOS/Tunedeck"_s, "echo $* > $0.new && mv $0.new $0.args"));
    LinuxRelauncher relauncher;
    EXPECT_TRUE(relauncher.isReplaced(home.path(u"A.app"_s)));
    EXPECT_TRUE(relauncher.relaunch(home.path(u"A.app"_s), {u"--show"_s}));
    ASSERT_TRUE(runUntil([&] { return QFile::exists(program.fileName() + u".args"_s); }));
    EXPECT_EQ(home.read(u"A.app/Contents/MacOS/Tunedeck.args"_s),
              "--after " + QByteArray::number(QCoreApplication::applicationPid()) + " --show\n");
    program.remove();
    EXPECT_FALSE(relauncher.relaunch(home.path(u"A.app"_s), {}));
    EXPECT_FALSE(relauncher.isReplaced(home.path(u"A.app"_s)));
    ASSERT_TRUE(QFile::link(QCoreApplication::applicationFilePath(), program.fileName()));
    EXPECT_FALSE(relauncher.isReplaced(home.path(u"A.app"_s)));
}

} // namespace tunedeck::test
