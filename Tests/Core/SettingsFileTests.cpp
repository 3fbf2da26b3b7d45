#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckCore/SettingsFile.h"

#include <QFile>

#include <sys/stat.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

class Settings : public testing::Test {
protected:
    /// The content after a write to a file with `content`.
    QByteArray rewritten(const QByteArray& content) {
        home.write(relative, content);
        EXPECT_TRUE(file.setOnboarded(true));
        return home.read(relative);
    }

    test::TemporaryHome home;
    QString relative = u".tunedeck/settings.json"_s;
    SettingsFile file = SettingsFile::standard();
};

TEST_F(Settings, IgnoreMissingMalformedAndMistypedValues) {
    EXPECT_EQ(file.url, home.path(relative));
    EXPECT_EQ(file.downloadDir(), std::nullopt);
    EXPECT_FALSE(file.onboarded());
    for (const char* content : {"", "[]", "{", "null", R"({"download_dir":5,"onboarded":1})", R"({"downloadDir":"/m"})",
                                R"({"download_dir":null,"onboarded":"true"})", "{\"download_dir\":\"\xFF\"}"}) {
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
    EXPECT_EQ(file.downloadDir(), u"/a/b \"c\""_s);
    ASSERT_TRUE(file.setDownloadDir({}));
    EXPECT_EQ(home.read(relative), "{\n  \"onboarded\": false\n}\n");
    for (const char* content : {"", "[1]", "{\"a\":1", "{\"a\":\"\\ud800\"}"}) {
        EXPECT_EQ(rewritten(content), "{\n  \"onboarded\": true\n}\n") << content;
    }
    home.write(relative, R"({"z":1,"a":2})");
    ASSERT_TRUE(file.setDownloadDir({}));
    EXPECT_EQ(home.read(relative), "{\n  \"a\": 2,\n  \"z\": 1\n}\n");
}

TEST_F(Settings, KeepOtherKeysUnchanged) {
    EXPECT_EQ(rewritten(R"({"z":18446744073709551615,"y":-9223372036854775808,"x":[1,"1",1.0,1e400,-5E+400,0.10,-0,
        123456789012345678901234567890],"onboarded":0,"w":{"b":null,"a":{},"c":[],"\u0041":true},
        "v":"\ud83c\udfb5 \u00e9 \/ \\ \" \n\u0000\u001f\u007f\u2028","u":1,"u":2,"":"\ufeff"})")
                  .replace("\n  ", "")
                  .replace("  ", ""),
              "{\"\": \"\xEF\xBB\xBF\",\"onboarded\": true,\"u\": 2,"
              R"("v": "🎵 é / \\ \" \n\u0000\u001F)"
              "\x7F\xE2\x80\xA8"
              R"(","w": {"A": true,"a": {},"b": null,"c": []},"x": [1,"1",1.0,1e400,-5E+400,0.10,-0,)"
              R"(123456789012345678901234567890],"y": -9223372036854775808,"z": 18446744073709551615)"
              "\n}\n");
}

TEST_F(Settings, KeepAFileBeyondTheLimits) {
    const QByteArray deep = "{\"a\":" + QByteArray(511, '[') + QByteArray(511, ']') + "}";
    const QByteArray nested = rewritten(deep).replace('\n', "").replace(' ', "");
    EXPECT_EQ(nested, QByteArray(deep).replace("}", ",\"onboarded\":true}"));
    for (const QByteArray& content : {QByteArray("{\"a\":" + QByteArray(512, '[') + QByteArray(512, ']') + "}"),
                                      QByteArray("{\"a\":1" + QByteArray(400, '0') + "}"),
                                      QByteArray("{\"a\":\"" + QByteArray(17 * 1024 * 1024, 'x') + "\"}")}) {
        home.write(relative, content);
        const auto result = file.setOnboarded(true);
        ASSERT_FALSE(result);
        EXPECT_TRUE(result.error().contains(u" was left as it is: "_s)) << result.error().toStdString();
        EXPECT_EQ(home.read(relative), content);
        EXPECT_FALSE(file.onboarded());
    }
}

TEST_F(Settings, NeverBlockAndReportAnUnwritablePath) {
    home.write(u".tunedeck/settings.json/file"_s, {});
    EXPECT_FALSE(file.onboarded());
    EXPECT_FALSE(file.setOnboarded(true));
    const SettingsFile inFile{home.write(u"file"_s, {}) + "/settings.json"_L1};
    EXPECT_FALSE(inFile.setOnboarded(true));
    const SettingsFile pipe{home.path(u"pipe"_s)};
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe.url).constData(), 0600), 0);
    EXPECT_EQ(pipe.downloadDir(), std::nullopt);
    EXPECT_FALSE(pipe.setDownloadDir(u"/m"_s));
}

TEST(Paths, AreAbbreviatedOnlyBelowTheHomeFolder) {
    const QString home = u"/Users/me"_s;
    EXPECT_EQ(abbreviatingHome(home, home), u"~"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users/me/"_s, home), u"~/"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users/me/Music/a"_s, home), u"~/Music/a"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users/me2"_s, home), u"/Users/me2"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users/me/x"_s, u"/Users/me/"_s), u"~/x"_s);
    EXPECT_EQ(abbreviatingHome(u"/Users"_s, home), u"/Users"_s);
}

TEST(Paths, InGuardedPlacesAreRecognisedByWholeComponents) {
    const QString home = u"/Users/me"_s;
    EXPECT_EQ(protectedLocation(u"/Users/me/Desktop"_s, home), u"your Desktop"_s);
    EXPECT_EQ(protectedLocation(u"/Users/me/Documents/a/b"_s, home), u"Documents"_s);
    EXPECT_EQ(protectedLocation(u"/Users/me/Downloads"_s, home), u"Downloads"_s);
    EXPECT_EQ(protectedLocation(u"/Users/me/Library/Mobile Documents/x"_s, home), u"iCloud Drive"_s);
    EXPECT_EQ(protectedLocation(u"/Volumes"_s, home), u"an external or network drive"_s);
    EXPECT_EQ(protectedLocation(u"/Volumes/USB"_s, home), u"an external or network drive"_s);
    for (const auto& path : {u"/Users/me/Documents2"_s, u"/Users/me/Library"_s, home, u"/Users/you/Desktop"_s,
                             u"/VolumesX"_s, u"/mnt/Volumes"_s}) {
        EXPECT_EQ(protectedLocation(path, home), std::nullopt) << path.toStdString();
    }
    EXPECT_EQ(protectedLocation(u"/Users/me/Desktop"_s, u"/Users/me/"_s), std::nullopt);
}

} // namespace
