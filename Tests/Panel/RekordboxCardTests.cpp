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

TEST(RekordboxCard, BackupsCanBeRestoredOnlyWhileRekordboxIsClosed) {
    Library library;
    library.backups = {backup(u"1.2.0"_s, ago(305)), backup(u"1.1.0"_s, u"long ago"_s), backup(u"1.2.0"_s, ago(1))};
    const auto row = [&](qsizetype i, bool busy = false) { return textOf(card(library, busy).backups.rows.at(i)); };
    EXPECT_EQ(row(0), "id: 1.2.0 | version: 1.2.0 | date: 5 minutes ago | badge: Latest | reason: Before a change | "
                      "help: Restore the library to v1.2.0 | canRestore: true");
    EXPECT_EQ(row(1), "id: 1.1.0 | version: 1.1.0 | reason: Before a change | "
                      "help: Restore the library to v1.1.0 | canRestore: true");
    EXPECT_EQ(card(library).backups.rows[2].badge, u"Latest") << "same version as the first";
    EXPECT_EQ(row(1, true), "id: 1.1.0 | version: 1.1.0 | reason: Before a change | "
                            "help: Restore the library to v1.1.0. Another change to the library is under way.");
    library.rekordboxRunning = true;
    EXPECT_EQ(row(1), "id: 1.1.0 | version: 1.1.0 | reason: Before a change | "
                      "help: Restore the library to v1.1.0. Quit Rekordbox to restore a backup.");
}

TEST(RekordboxCard, IsNotGreenWhileAChangeCouldNotBeApplied) {
    Library library;
    EXPECT_EQ(card(library).tone, look::Tone::Good);
    library.failed = {{u"7"_s, u"Rename it"_s, u"It is locked."_s}};
    EXPECT_EQ(card(library).tone, look::Tone::Warning);
    EXPECT_EQ(card(library).headline, u"Up to date");
}

TEST(RekordboxCard, ShowsWhatTheServiceReports) {
    Library library = pendingLibrary(1, false);
    library.currentVersion = u"1.3.0"_s;
    library.backups = {backup(u"1.3.0"_s, ago(305))};
    library.failed = {{u"7"_s, u"Rename it"_s, u"It is locked."_s}};
    const RekordboxView busy = card(library, true);
    EXPECT_EQ(textOf(busy), "badge: Library v1.3.0 | "
                            "badgeHelp: Semver of your Rekordbox library's latest backup | hasLibrary: true | "
                            "headline: Applying 1 change… | tone: Accent | detail: Change 1 | failedShown: true | "
                            "failedNote: 1 change couldn't be applied | retryButton: Retry | "
                            "dismissButton: Dismiss | applyButton: Applying… | busy: true | "
                            "busyHelp: Another change to the library is under way. | backupsTitle: Backups (1) | "
                            "xmlText: rekordbox xml | xmlButton: Show | xmlHelp: /srv/music/tunedeck.xml");
    ASSERT_EQ(busy.failed.rows.size(), 1);
    EXPECT_EQ(textOf(busy.failed.rows[0]),
              "shown: true | text: Couldn't apply “Rename it” | detail: It is locked. | id: 7");
    EXPECT_EQ(textOf(card(pendingLibrary(0, true))),
              "hasLibrary: true | headline: Up to date · Rekordbox is open | tone: Good | "
              "backupsTitle: Backups (0) | backupsNote: Quit Rekordbox to restore a backup. | xmlText: rekordbox xml | "
              "xmlButton: Show | xmlHelp: /srv/music/tunedeck.xml");
    EXPECT_EQ(textOf(rekordboxCard(ServiceState::running(goodStatus()), true, moment())),
              "xmlText: rekordbox xml | xmlButton: Show | "
              "xmlHelp: /srv/music/tunedeck.xml");
    EXPECT_EQ(textOf(rekordboxCard(ServiceState::notRunning(), false, moment())),
              "xmlText: Shown when tunedeck is running.");
}

} // namespace tunedeck::test
