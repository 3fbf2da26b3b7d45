#include "Tests/Helpers/Test.h"
#include "TunedeckMenu/Platform/BundleFacts.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QCoreApplication>
#include <QSettings>

namespace tunedeck::test {

TEST(SystemFactsTest, DescribesTheBundleAndTheSystem) {
    const TemporaryHome folder;
    const auto bundle = folder.path(u"A.app"_s);
    EXPECT_EQ(bundleFacts(bundle).version, u"dev"_s);
    EXPECT_EQ(bundleFacts(bundle).identifier, u"com.brightfold.tunedeck.menu"_s);
    folder.write(u"A.app/Contents/Info.plist"_s,
                 "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>org.x</string>"
                 "<key>CFBundleShortVersionString</key><string>1.2.3</string></dict></plist>");
    EXPECT_EQ(bundleFacts(bundle).version, u"1.2.3"_s);
    EXPECT_EQ(bundleFacts(bundle).identifier, u"org.x"_s);
    folder.write(
        u"A.app/Contents/Info.plist"_s,
        QByteArray::fromHex("62706c6973743030d101025f101a434642756e646c6553686f727456657273696f6e537472696e67"
                            "55312e322e34080b28000000000000010100000000000000030000000000000000000000000000002e"));
    EXPECT_EQ(bundleFacts(bundle).version, u"1.2.4"_s) << "a binary property list";

    EXPECT_EQ(systemFacts().home, folder.path());
    EXPECT_TRUE(QCoreApplication::applicationDirPath().startsWith(systemFacts().bundle));
    const auto system = QSettings(u"/etc/os-release"_s, QSettings::IniFormat);
    EXPECT_EQ(systemFacts().systemVersionText, system.value(u"PRETTY_NAME"_s).toString());
    EXPECT_EQ(systemFacts().systemVersion[0], system.value(u"VERSION_ID"_s).toString().section(u'.', 0, 0).toInt());
}

} // namespace tunedeck::test
