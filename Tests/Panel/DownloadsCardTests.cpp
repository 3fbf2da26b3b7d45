#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

TEST(DownloadsCard, OffersTheDefaultInsteadOfACustomFolder) {
    ServiceStatus status = goodStatus();
    status.downloadDir = u"/Users/me/Music"_s;
    const auto card = [&] { return downloadsCard(ServiceState::running(status), {}, u"/Users/me"_s); };
    const std::string folder = " | folderPath: /Users/me/Music | folderTitle: Show in Finder | folderSubtitle: ~/Music";
    EXPECT_EQ(textOf(card()), "badge: Default" + folder);
    status.downloadDirSource = u"settings"_s;
    EXPECT_EQ(textOf(card()), "badge: Custom" + folder + " | defaultButton: Use Default");
    status.downloadDirSource = u"environment"_s;
    EXPECT_EQ(textOf(card()), "badge: Default" + folder);
    EXPECT_EQ(textOf(downloadsCard(ServiceState::notRunning(), {}, u"/Users/me"_s)),
              "badge: Default | stoppedText: Start tunedeck to see where songs are saved.");
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
