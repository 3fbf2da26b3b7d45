#include "Tests/Peers/NotificationServer.h"
#include "Tests/Program/Journey.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace tunedeck::test {

namespace {

/// A user without any Tunedeck files. The demo service runs at eight times its speed.
class NewUserJourney : public Journey {
protected:
    void prepare() override {
        const auto program = bundle + u"/Contents/Helpers/tunedeck"_s;
        const auto demo = folder->filePath(u"demo"_s);
        ASSERT_TRUE(QFile::rename(program, demo));
        replaceProgram(u"fast"_s, "exec '" + QFile::encodeName(demo) + "' --speed 8");
        ASSERT_TRUE(QFile::copy(folder->filePath(u"bin/fast"_s), program));
    }
};

TEST_F(NewUserJourney, WorksFromTheFirstStartToTheRemoval) {
    NotificationServer notifications({u"body"_s}, busAddress());
    const auto isAnnounced = [&notifications](const QStringList& titles) {
        return std::ranges::any_of(notifications.calls, [&](const auto& call) { return titles.contains(call.title); });
    };
    start();
    ASSERT_TRUE(sees(u"Install the tools"_s)) << "without a second start";
    EXPECT_TRUE(sees(u"Step 1 of 3"_s));
    ASSERT_TRUE(sees(u"spotdl environment"_s));
    ASSERT_TRUE(press(u"Continue"_s));
    ASSERT_TRUE(sees(u"is backed up. Every change is backed up first; restore any time from the menu."_s));
    ASSERT_TRUE(press(u"Continue"_s));
    ASSERT_TRUE(sees(u"Pick where you'll ask for tracks."_s));
    ASSERT_TRUE(press(u"Claude"_s));
    ASSERT_TRUE(sees(u"Paste this into Claude"_s));
    ASSERT_TRUE(sees(u"Connected. Try: “Add "_s));
    ASSERT_TRUE(press(u"Done"_s));
    ASSERT_TRUE(eventually([this] { return windows() == QStringList{u"Tunedeck"_s}; }));
    ASSERT_TRUE(sees(u"Running · connected to the cloud"_s));

    // A short download may end before its start is noticed.
    const QStringList titles{u"New download request"_s, u"Added to Rekordbox"_s, u"Download failed"_s};
    ASSERT_TRUE(eventually([&] { return isAnnounced(titles); }));
    const auto log = read(u".tunedeck/notifications.log"_s);
    EXPECT_FALSE(log.isEmpty());

    ASSERT_TRUE(press(u"More"_s));
    ASSERT_TRUE(press(u"Disconnect"_s));
    ASSERT_TRUE(sees(u"Disconnect Claude?"_s));
    ASSERT_TRUE(press(u"Disconnect"_s));
    EXPECT_TRUE(eventually([this] { return screen->texts().filter(u"More"_s).isEmpty(); }));

    const auto removed = run({u"--remove"_s});
    EXPECT_EQ(removed.status, 0) << removed.output.toStdString();
    EXPECT_TRUE(eventually([this] { return processes().isEmpty() && icons() == 0; }));
    EXPECT_FALSE(QFile::exists(home + u"/.tunedeck/bin/tunedeck"_s));
    EXPECT_TRUE(QDir(home + u"/Library/LaunchAgents"_s).isEmpty());
    EXPECT_TRUE(
        output(u"systemctl"_s, {u"--user"_s, u"list-unit-files"_s, u"--no-legend"_s, u"com.brightfold.*"_s}).isEmpty());
    EXPECT_TRUE(read(u".tunedeck/settings.json"_s).contains("onboarded")) << "settings stay";
    EXPECT_TRUE(read(u".tunedeck/notifications.log"_s).startsWith(log));
}

} // namespace

} // namespace tunedeck::test
