#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

namespace {

using Library = ServiceStatus::Library;
using look::Tone;

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

Library::Backup backup(const QString& version, const QString& createdAt) {
    return {version, createdAt, u"Before a change"_s, 1};
}

DownloadsView downloads(const QString& folder, const char* source = "default") {
    ServiceStatus status = goodStatus();
    status.downloadDir = folder;
    status.downloadDirSource = QString::fromLatin1(source);
    return downloadsCard(ServiceState::running(status), {}, u"/Users/me"_s);
}

} // namespace

TEST(RekordboxCard, DependsOnRekordboxAndThePendingChanges) {
    const struct {
        int changes;
        bool isOpen;
        QString headline;
        Tone tone;
        QString applyButton = {};
    } cases[] = {
        {0, true, u"Up to date · Rekordbox is open"_s, Tone::Good},
        {0, false, u"Up to date"_s, Tone::Good},
        {1, true, u"1 change waiting — quit Rekordbox to apply"_s, Tone::Warning},
        {2, true, u"2 changes waiting — quit Rekordbox to apply"_s, Tone::Warning},
        {1, false, u"Applying 1 change…"_s, Tone::Accent, u"Apply Now"_s},
        {2, false, u"Applying 2 changes…"_s, Tone::Accent, u"Apply Now"_s},
    };
    for (const auto& [changes, isOpen, headline, tone, applyButton] : cases) {
        const RekordboxView view = card(pendingLibrary(changes, isOpen));
        EXPECT_EQ((QStringList{view.headline, view.applyButton}), (QStringList{headline, applyButton}));
        EXPECT_EQ(view.tone, tone) << headline.toStdString();
    }
    const RekordboxView busy = card(pendingLibrary(1, false), true);
    EXPECT_EQ(busy.applyButton, u"Applying…");
    EXPECT_TRUE(busy.busy);
}

TEST(RekordboxCard, ShowsTheLastErrorOnlyWhileChangesWait) {
    Library library = pendingLibrary(0, false);
    EXPECT_EQ(card(library).detail, QString());
    library.lastApplied = Library::Applied{ago(305), {}, u"Added 3 tracks"_s};
    library.lastError = u"Locked"_s;
    EXPECT_EQ(card(library).detail, u"Added 3 tracks · 5 minutes ago");
    library.lastApplied->at = u"yesterday"_s;
    EXPECT_EQ(card(library).detail, u"Added 3 tracks");
    EXPECT_EQ(card(library).tone, Tone::Good);
    library.pending = pendingLibrary(2, false).pending;
    EXPECT_EQ(card(library).detail, u"Last try failed: Locked");
    EXPECT_EQ(card(library).tone, Tone::Warning);
    library.lastError.reset();
    EXPECT_EQ(card(library).detail, u"Change 1 · Change 2");
}

TEST(RekordboxCard, BackupsCanBeRestoredOnlyWhileRekordboxIsClosed) {
    Library library;
    library.backups = {backup(u"1.2.0"_s, ago(305)), backup(u"1.1.0"_s, u"long ago"_s), backup(u"1.2.0"_s, ago(1))};
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
    EXPECT_EQ((QStringList{without.xmlText, without.xmlHelp}),
              (QStringList{u"rekordbox xml"_s, u"/srv/music/tunedeck.xml"_s}));
    const RekordboxView stopped = rekordboxCard(ServiceState::notRunning(), false, moment());
    EXPECT_EQ(stopped.xmlText, u"Shown when tunedeck is running.");
    EXPECT_EQ(stopped.xmlButton, QString());
}

TEST(DownloadsCard, AbbreviatesTheHomeFolderAndOffersTheDefaultInsteadOfACustomFolder) {
    const struct {
        DownloadsView card;
        QStringList texts; ///< folder, badge, button
    } cases[] = {
        {downloads(u"/Users/me/Music"_s), {u"~/Music"_s, u"Default"_s, {}}},
        {downloads(u"/Users/me2/Sets"_s, "environment"), {u"/Users/me2/Sets"_s, u"Default"_s, {}}},
        {downloads(u"/Users/me/Music"_s, "settings"), {u"~/Music"_s, u"Custom"_s, u"Use Default"_s}},
    };
    for (const auto& [card, texts] : cases) {
        EXPECT_EQ((QStringList{card.folderSubtitle, card.badge, card.defaultButton}), texts);
        EXPECT_TRUE(card.hasFolder);
    }
    EXPECT_EQ(cases[0].card.folderHelp, u"/Users/me/Music");
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
