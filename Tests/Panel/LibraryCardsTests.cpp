#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

namespace {

using Library = ServiceStatus::Library;

RekordboxView card(const Library& library, bool busy = false) {
    ServiceStatus status = goodStatus();
    status.rekordboxDb = library;
    return rekordboxCard(ServiceState::running(status), busy, moment());
}

Library pendingLibrary(int changes, bool open) {
    Library library;
    library.rekordboxRunning = open;
    for (int i = 1; i <= changes; ++i) {
        library.pending.push_back({QString::number(i), ago(60), u"Change %1"_s.arg(i)});
    }
    return library;
}

DownloadsView downloads(const QString& folder, const char* source = "default") {
    ServiceStatus status = goodStatus();
    status.downloadDir = folder;
    status.downloadDirSource = QString::fromLatin1(source);
    return downloadsCard(ServiceState::running(status), {}, u"/Users/me"_s);
}

} // namespace

TEST(RekordboxCard, HeadlineDependsOnRekordboxAndThePendingChanges) {
    EXPECT_EQ(card(pendingLibrary(0, true)).headline, u"Up to date · Rekordbox is open");
    EXPECT_EQ(card(pendingLibrary(0, false)).headline, u"Up to date");
    EXPECT_EQ(card(pendingLibrary(1, true)).headline, u"1 change waiting — quit Rekordbox to apply");
    EXPECT_EQ(card(pendingLibrary(2, true)).headline, u"2 changes waiting — quit Rekordbox to apply");
    EXPECT_EQ(card(pendingLibrary(1, false)).headline, u"Applying 1 change…");
    EXPECT_EQ(card(pendingLibrary(2, false)).headline, u"Applying 2 changes…");
}

TEST(RekordboxCard, ShowsTheLastErrorOnlyWhileChangesWait) {
    Library library = pendingLibrary(0, false);
    EXPECT_EQ(card(library).detail, QString());
    library.lastApplied = Library::Applied{ago(305), {}, u"Added 3 tracks"_s};
    library.lastError = u"Locked"_s;
    EXPECT_EQ(card(library).detail, u"Added 3 tracks · 5 minutes ago");
    library.lastApplied->at = u"yesterday"_s;
    EXPECT_EQ(card(library).detail, u"Added 3 tracks");
    library.pending = pendingLibrary(2, false).pending;
    EXPECT_EQ(card(library).detail, u"Last try failed: Locked");
    library.lastError.reset();
    EXPECT_EQ(card(library).detail, u"Change 1 · Change 2");
}

TEST(RekordboxCard, OffersToApplyOnlyWhileRekordboxIsClosed) {
    EXPECT_EQ(card(pendingLibrary(1, true)).applyButton, QString());
    EXPECT_EQ(card(pendingLibrary(0, false)).applyButton, QString());
    EXPECT_EQ(card(pendingLibrary(1, false)).applyButton, u"Apply Now");
    const RekordboxView busy = card(pendingLibrary(1, false), true);
    EXPECT_EQ(busy.applyButton, u"Applying…");
    EXPECT_TRUE(busy.busy);
}

TEST(RekordboxCard, ToneDependsOnWhatNeedsAttention) {
    EXPECT_EQ(card(pendingLibrary(0, true)).tone, look::Tone::Good);
    EXPECT_EQ(card(pendingLibrary(1, false)).tone, look::Tone::Accent);
    EXPECT_EQ(card(pendingLibrary(1, true)).tone, look::Tone::Warning);
    Library library = pendingLibrary(1, false);
    library.lastError = u"Locked"_s;
    EXPECT_EQ(card(library).tone, look::Tone::Warning);
    library.pending.clear();
    EXPECT_EQ(card(library).tone, look::Tone::Good);
}

TEST(RekordboxCard, ListsFailedChangesWithTheirButtons) {
    Library library;
    EXPECT_EQ(card(library).retryButton, QString());
    EXPECT_EQ(card(library).dismissButton, QString());
    EXPECT_EQ(card(library).badge, QString());
    library.currentVersion = u"1.2.0"_s;
    library.failed = {{u"7"_s, u"Add 2 tracks"_s, u"File not found"_s}};
    const RekordboxView view = card(library);
    EXPECT_EQ(view.badge, u"Library v1.2.0");
    EXPECT_EQ(view.failed.at(0).text, u"Couldn't apply “Add 2 tracks”");
    EXPECT_EQ(view.failed.at(0).detail, u"File not found");
    EXPECT_EQ(view.failed.at(0).id, u"7");
    EXPECT_EQ(view.retryButton, u"Retry");
    EXPECT_EQ(view.dismissButton, u"Dismiss");
}

TEST(RekordboxCard, BackupsCanBeRestoredOnlyWhileRekordboxIsClosed) {
    Library library;
    library.backups = {backup("1.2.0", ago(305)), backup("1.1.0", u"long ago"_s), backup("1.2.0", ago(1))};
    RekordboxView closed = card(library);
    EXPECT_EQ(closed.backupsTitle, u"Backups (3)");
    EXPECT_EQ(closed.backupsNote, QString());
    EXPECT_EQ(closed.backups[0].date, u"5 minutes ago");
    EXPECT_EQ(closed.backups[1].date, QString());
    EXPECT_EQ(closed.backups[0].badge, u"Latest");
    EXPECT_EQ(closed.backups[1].badge, QString());
    EXPECT_EQ(closed.backups[2].badge, u"Latest") << "same version as the first";
    EXPECT_TRUE(closed.backups[1].canRestore);
    EXPECT_TRUE(closed.backups[1].help.contains(u"1.1.0"));
    const RekordboxView busy = card(library, true);
    EXPECT_FALSE(busy.backups[0].canRestore);
    EXPECT_EQ(busy.backups[0].help, u"Restore the library to v1.2.0. Another change to the library is under way.");
    EXPECT_EQ(busy.busyHelp, u"Another change to the library is under way.");
    EXPECT_EQ(closed.busyHelp, QString());
    library.rekordboxRunning = true;
    EXPECT_FALSE(card(library).backups[0].canRestore);
    EXPECT_EQ(card(library).backupsNote, u"Quit Rekordbox to restore a backup.");
}

TEST(RekordboxCard, HidesWhatTheServiceDoesNotReport) {
    const RekordboxView without = rekordboxCard(ServiceState::running(goodStatus()), false, moment());
    EXPECT_FALSE(without.hasLibrary);
    EXPECT_EQ(without.xmlText, u"rekordbox xml");
    EXPECT_EQ(without.xmlHelp, u"/srv/music/tunedeck.xml");
    const RekordboxView stopped = rekordboxCard(ServiceState::notRunning(), false, moment());
    EXPECT_EQ(stopped.xmlText, u"Shown when tunedeck is running.");
    EXPECT_EQ(stopped.xmlButton, QString());
}

TEST(DownloadsCard, AbbreviatesTheHomeFolderOnlyAtASlash) {
    EXPECT_EQ(downloads(u"/Users/me/Music/Tunedeck"_s).folderSubtitle, u"~/Music/Tunedeck");
    EXPECT_EQ(downloads(u"/Users/me2/Sets"_s).folderSubtitle, u"/Users/me2/Sets");
    EXPECT_EQ(downloads(u"/Users/me/Music/Tunedeck"_s).folderHelp, u"/Users/me/Music/Tunedeck");
}

TEST(DownloadsCard, OffersTheDefaultFolderOnlyForACustomOne) {
    EXPECT_EQ(downloads(u"/Users/me/Music"_s).badge, u"Default");
    EXPECT_EQ(downloads(u"/Users/me/Music"_s).defaultButton, QString());
    EXPECT_EQ(downloads(u"/Users/me/Music"_s, "environment").badge, u"Default");
    EXPECT_EQ(downloads(u"/Users/me/Music"_s, "settings").badge, u"Custom");
    EXPECT_EQ(downloads(u"/Users/me/Music"_s, "settings").defaultButton, u"Use Default");
    EXPECT_TRUE(downloads(u"/Users/me/Music"_s).hasFolder);
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
    status = goodStatus();
    EXPECT_FALSE(warning(u"/Volumes/USB"_s).shown) << "the folder of the running service counts";

    const auto stopped = [](std::optional<QString> custom) {
        return downloadsCard(ServiceState::notRunning(), custom, u"/Users/me"_s);
    };
    EXPECT_TRUE(stopped(u"/Volumes/USB"_s).warning.text.contains(u"an external or network drive"));
    EXPECT_FALSE(stopped({}).warning.shown);
    EXPECT_FALSE(stopped({}).hasFolder);
    EXPECT_EQ(stopped({}).stoppedText, u"Start tunedeck to see where songs are saved.");
}

} // namespace tunedeck::test
