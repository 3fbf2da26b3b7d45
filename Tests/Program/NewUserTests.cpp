#include "Tests/Peers/NotificationServer.h"
#include "Tests/Program/Journey.h"
#include "Tests/Program/Web.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace tunedeck::test {

namespace {

using namespace Qt::StringLiterals;

/// Somebody who has never had Tunedeck; the demo service does in a moment what otherwise takes it a while.
class NewUserJourney : public Journey {
protected:
    void SetUp() override {
        Journey::SetUp();
        if (IsSkipped() || HasFatalFailure()) {
            return;
        }
        layOut(bundle, "1.4.0");
        const auto carried = bundle + u"/Contents/Helpers/tunedeck"_s;
        const auto demo = folder->filePath(u"demo"_s);
        ASSERT_TRUE(QFile::rename(carried, demo));
        replaceProgram(u"hurried"_s, "exec '" + QFile::encodeName(demo) + "' --speed 4");
        ASSERT_TRUE(QFile::copy(folder->filePath(u"bin/hurried"_s), carried));
    }
};

TEST_F(NewUserJourney, LeadsFromTheFirstStartThroughEverythingToTheRemoval) {
    NotificationServer notifications({u"body"_s}, busAddress());
    const auto isAnnounced = [&notifications](const QStringList& titles) {
        return std::ranges::any_of(notifications.calls, [&](const auto& call) { return titles.contains(call.title); });
    };
    start();
    ASSERT_TRUE(sees(u"Install the tools"_s)) << "by itself, without a second start";
    EXPECT_TRUE(sees(u"Step 1 of 3"_s));
    ASSERT_TRUE(sees(u"spotdl environment"_s));
    picture(u"1-tools"_s);
    ASSERT_TRUE(press(u"Continue"_s));
    ASSERT_TRUE(sees(u"is backed up. Every change is backed up first; restore any time from the menu."_s));
    picture(u"2-rekordbox"_s);
    ASSERT_TRUE(press(u"Continue"_s));
    ASSERT_TRUE(sees(u"Pick where you'll ask for tracks."_s));
    picture(u"3-assistants"_s);
    ASSERT_TRUE(press(u"Claude"_s));
    ASSERT_TRUE(sees(u"Paste this into Claude"_s));
    picture(u"4-private-link"_s);
    ASSERT_TRUE(sees(u"Connected. Try: “Add "_s));
    picture(u"5-connected"_s);
    ASSERT_TRUE(press(u"Done"_s));
    ASSERT_TRUE(eventually([this] { return windows() == QStringList{u"Tunedeck"_s}; }));
    ASSERT_TRUE(sees(u"Running · connected to the cloud"_s));

    // While Rekordbox is open, which may be for a minute, the button waits with the user.
    ASSERT_TRUE(eventually([this] {
        const auto groups = screen->texts().filter(u"Backups ("_s);
        return !groups.isEmpty() && screen->press(groups.first());
    }));
    ASSERT_TRUE(press(u"Restore"_s) || press(u"Restore"_s) || press(u"Restore"_s));
    ASSERT_TRUE(sees(u"Restore your Rekordbox library to v"_s));
    picture(u"6-restore"_s);
    ASSERT_TRUE(press(u"Restore"_s));
    EXPECT_TRUE(eventually([this] { return read(u".tunedeck/demo-state.json"_s).contains("Before restoring v"); }));
    EXPECT_TRUE(sees(u"Before restoring v"_s));
    picture(u"7-restored"_s);

    // In a hurry, a download may be over before it is seen to begin.
    const QStringList titles{u"New download request"_s, u"Added to Rekordbox"_s, u"Download failed"_s};
    ASSERT_TRUE(eventually([&] { return isAnnounced(titles); }));
    const auto trail = read(u".tunedeck/notifications.log"_s);
    EXPECT_FALSE(trail.isEmpty());
    picture(u"8-request"_s);

    ASSERT_TRUE(press(u"More"_s));
    ASSERT_TRUE(press(u"Disconnect"_s));
    ASSERT_TRUE(sees(u"Disconnect Claude?"_s));
    picture(u"9-disconnect"_s);
    ASSERT_TRUE(press(u"Disconnect"_s));
    EXPECT_TRUE(eventually([this] { return screen->texts().filter(u"More"_s).isEmpty(); }));
    picture(u"10-disconnected"_s);

    Web web;
    const auto fresh = folder->filePath(u"fresh/Tunedeck.app"_s);
    layOut(fresh, "1.4.1", '!');
    web.publish(zipOf(fresh));
    ASSERT_TRUE(press(u"Check for Updates"_s));
    ASSERT_TRUE(sees(u"Tunedeck 1.4.1 is available."_s));
    picture(u"11-update"_s);
    const auto old = processes();
    ASSERT_TRUE(press(u"Update to 1.4.1"_s));
    ASSERT_TRUE(eventually([&] { return processes().size() == 1 && processes() != old && icons() == 1; }));
    ASSERT_TRUE(opensWith(u"Version 1.4.1"_s));
    picture(u"12-updated"_s);

    const auto removed = run({u"--remove"_s});
    EXPECT_EQ(removed.status, 0) << removed.output.toStdString();
    EXPECT_TRUE(eventually([this] { return processes().isEmpty() && icons() == 0; }));
    EXPECT_FALSE(QFile::exists(home + u"/.tunedeck/bin/tunedeck"_s));
    EXPECT_TRUE(QDir(home + u"/Library/LaunchAgents"_s).isEmpty());
    EXPECT_TRUE(
        output(u"systemctl"_s, {u"--user"_s, u"list-unit-files"_s, u"--no-legend"_s, u"com.brightfold.*"_s}).isEmpty());
    EXPECT_TRUE(read(u".tunedeck/settings.json"_s).contains("onboarded")) << "what the user has set stays";
    EXPECT_TRUE(read(u".tunedeck/notifications.log"_s).startsWith(trail));
    picture(u"13-removed"_s);
}

} // namespace

} // namespace tunedeck::test
