#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

TEST(DownloadsCard, OffersTheDefaultInsteadOfACustomFolder) {
    ServiceStatus status = goodStatus();
    status.downloadDir = u"/Users/me/Music"_s;
    const auto card = [&] { return downloadsCard(ServiceState::running(status), {}, u"/Users/me"_s); };
    const QString buttons = u"changeButton: Change Folder… | changeHelp: New downloads go to the folder you pick. "
                            "Songs already saved stay where they are. | %1note: Applies from the next download."_s;
    const QString folder = u"title: Downloads | badge: %1 | folderPath: /Users/me/Music | "
                           "folderTitle: Show in Finder | folderSubtitle: ~/Music | tone: Warning | "_s;
    EXPECT_EQ(textOf(card()), (folder.arg(u"Default"_s) + buttons.arg(QString())).toStdString());
    status.downloadDirSource = u"settings"_s;
    EXPECT_EQ(textOf(card()),
              (folder.arg(u"Custom"_s) + buttons.arg(u"defaultButton: Use Default | "_s)).toStdString());
    status.downloadDirSource = u"environment"_s;
    EXPECT_EQ(textOf(card()), (folder.arg(u"Default"_s) + buttons.arg(QString())).toStdString());
    EXPECT_EQ(textOf(downloadsCard(ServiceState::notRunning(), {}, u"/Users/me"_s)),
              (u"title: Downloads | badge: Default | stoppedText: Start tunedeck to see where songs are saved. | "
               "tone: Warning | "_s +
               buttons.arg(QString()))
                  .toStdString());
}

TEST(DownloadsCard, WarnsAboutTheMostSeriousProblem) {
    ServiceStatus status = goodStatus();
    status.downloadDir = u"/Users/me/Documents/Sets"_s;
    const auto warning = [&](std::optional<QString> custom = {}) {
        return downloadsCard(ServiceState::running(status), custom, u"/Users/me"_s).warning;
    };
    EXPECT_EQ(warning().text,
              u"macOS may block the background service from saving to Documents. If downloads fail, pick "
              u"a folder in ~/Music.");
    status.downloadDirWritable = false;
    EXPECT_EQ(warning().text, u"tunedeck can't write to this folder.");
    status.downloadDirError = u"Disk full"_s;
    EXPECT_EQ(warning().text, u"Disk full");
    EXPECT_TRUE(warning().shown);
    status = goodStatus();
    EXPECT_FALSE(warning(u"/Volumes/USB"_s).shown) << "the folder of the running service counts";
    const auto stopped = downloadsCard(ServiceState::notRunning(), u"/Volumes/USB"_s, u"/Users/me"_s).warning;
    EXPECT_TRUE(stopped.shown && stopped.text.contains(u"an external or network drive"));
}

} // namespace tunedeck::test
