#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckCore/SettingsFile.h"
#include "TunedeckCore/UserDefaults.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace tunedeck::test {
namespace {

class Settings : public testing::Test {
protected:
    /// The content after a write to a file with `content`.
    QByteArray rewritten(const QByteArray& content) {
        home.write(relative, content);
        EXPECT_TRUE(file.setOnboarded(true));
        return home.read(relative);
    }

    TemporaryHome home;
    QString relative = u".tunedeck/settings.json"_s;
    SettingsFile file = SettingsFile::standard();
};

TEST_F(Settings, IgnoreMissingMalformedAndMistypedValues) {
    EXPECT_EQ(file.url, home.path(relative));
    EXPECT_EQ(file.downloadDir(), std::nullopt);
    EXPECT_FALSE(file.onboarded());
    for (const char* content : {"[]", R"({"download_dir":5,"onboarded":1})"}) {
        home.write(relative, content);
        EXPECT_EQ(file.downloadDir(), std::nullopt) << content;
        EXPECT_FALSE(file.onboarded()) << content;
    }
    home.write(relative, R"({"download_dir":"/a","download_dir":"/m\u00fcsik","onboarded":true})");
    EXPECT_EQ(file.downloadDir(), u"/müsik"_s);
    EXPECT_TRUE(file.onboarded());
}

TEST_F(Settings, CreateTheFolderAndReplaceAFileThatIsNotAnObject) {
    ASSERT_TRUE(file.setDownloadDir(u"/a/b \"c\""_s));
    EXPECT_EQ(home.read(relative), "{\n  \"download_dir\": \"/a/b \\\"c\\\"\"\n}\n");
    ASSERT_TRUE(file.setOnboarded(false));
    ASSERT_TRUE(file.setDownloadDir({}));
    EXPECT_EQ(home.read(relative), "{\n  \"onboarded\": false\n}\n");
    for (const char* content : {"", "[1]", "{\"a\":1", "{\"a\":\"\\ud800\"}"}) {
        EXPECT_EQ(rewritten(content), "{\n  \"onboarded\": true\n}\n") << content;
    }
}

TEST_F(Settings, KeepOtherKeysUnchanged) {
    EXPECT_EQ(rewritten(R"({"z":18446744073709551615,"x":[1.0,1e400,-5E+400,0.10,-0,123456789012345678901234567890],
        "onboarded":0,"w":{"b":null,"a":{},"c":[]},"v":"\u00e9 \/ \n\u0000\u001f\u007f","u":1,"u":2})")
                  .replace("\n  ", "")
                  .replace("  ", ""),
              R"({"onboarded": true,"u": 2,"v": "é / \n\u0000\u001F)"
              "\x7F"
              R"(","w": {"a": {},"b": null,"c": []},"x": [1.0,1e400,-5E+400,0.10,-0,123456789012345678901234567890],)"
              R"("z": 18446744073709551615)"
              "\n}\n");
}

TEST_F(Settings, KeepAFileBeyondTheLimits) {
    const QByteArray deep = "{\"a\":" + QByteArray(512, '[') + QByteArray(512, ']') + "}";
    const QByteArray number = "{\"a\":1" + QByteArray(400, '0') + "}";
    for (const QByteArray& content : {deep, number, QByteArray("{\"a\":\"" + QByteArray(1024 * 1024, 'x') + "\"}")}) {
        home.write(relative, content);
        const auto result = file.setOnboarded(true);
        ASSERT_FALSE(result);
        EXPECT_TRUE(result.error().contains(u" was left as it is: "_s)) << result.error().toStdString();
        EXPECT_EQ(home.read(relative), content);
    }
}

TEST_F(Settings, ReportAnUnwritablePathWithoutBlocking) {
    const SettingsFile pipe{home.path(u"pipe"_s)};
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe.url).constData(), 0600), 0);
    EXPECT_EQ(pipe.downloadDir(), std::nullopt);
    EXPECT_FALSE(pipe.setDownloadDir(u"/m"_s));
}

TEST(UserDefaults, AreReadAndWrittenInARegularFileOnly) {
    const TemporaryHome home;
    const UserDefaults defaults(home.path(u"folder/defaults"_s));
    defaults.setValue(u"a key"_s, u"2026-11-22T10:00:00Z"_s);
    EXPECT_EQ(defaults.value(u"a key"_s), u"2026-11-22T10:00:00Z");
    QFile::link(home.path(u"folder/defaults"_s), home.path(u"link"_s));
    const UserDefaults linked(home.path(u"link"_s));
    linked.setValue(u"b"_s, u"1"_s);
    EXPECT_EQ(home.read(u"folder/defaults"_s), "[General]\na%20key=2026-11-22T10:00:00Z\nb=1\n");
    EXPECT_TRUE(QFileInfo(home.path(u"link"_s)).isSymLink());

    ASSERT_EQ(::mkfifo(QFile::encodeName(home.path(u"fifo"_s)).constData(), 0600), 0);
    QFile(home.write(u"large"_s, "[General]\nb=1\n")).resize(qint64{30} * 1024 * 1024 * 1024);
    QFile::link(home.path(u"fifo"_s), home.path(u"link to it"_s));
    for (const auto& name : {u"fifo"_s, u"large"_s, u"link to it"_s}) {
        const UserDefaults refused(home.path(name));
        refused.setValue(u"b"_s, u"2"_s);
        EXPECT_EQ(refused.value(u"b"_s), QString()) << name.toStdString();
    }
    EXPECT_EQ(QFileInfo(home.path(u"large"_s)).size(), qint64{30} * 1024 * 1024 * 1024);
}

TEST(Paths, AreAbbreviatedOnlyBelowTheHomeFolder) {
    const QString home = u"/Users/me"_s;
    EXPECT_EQ(abbreviatingHome(home, home), u"~"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users/me/Music/a"_s, home), u"~/Music/a"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users/me2"_s, home), u"/Users/me2"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users/me/x"_s, u"/Users/me/"_s), u"~/x"_s);
}

TEST(Paths, InGuardedPlacesAreRecognisedByWholeComponents) {
    const std::vector<std::pair<QString, std::optional<QString>>> cases{
        {u"/Users/me/Desktop"_s, u"your Desktop"_s},
        {u"/Users/me/Documents/a/b"_s, u"Documents"_s},
        {u"/Users/me/Downloads"_s, u"Downloads"_s},
        {u"/Users/me/Library/Mobile Documents/x"_s, u"iCloud Drive"_s},
        {u"/Volumes/USB"_s, u"an external or network drive"_s},
        {u"/Users/me/Documents2"_s, {}},
        {u"/Users/me/Library"_s, {}},
        {u"/Users/you/Desktop"_s, {}},
        {u"/VolumesX"_s, {}},
    };
    for (const auto& [path, place] : cases) {
        EXPECT_EQ(protectedLocation(path, u"/Users/me"_s), place) << path.toStdString();
    }
}

} // namespace
} // namespace tunedeck::test
