#include "DemoService/Scenarios/Crowd.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <QStringList>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

struct Texts {
    QString german = u"Donaudampfschifffahrtsgesellschaftskapitänsgeburtstagsüberraschungsfeier"_s;
    QString hebrew = u"מסיבת יום שישי 🎧 תל אביב"_s;
    QString arabic = u"أغاني الصيف المفضلة لدي"_s;
    QString emoji = u"🏳️‍🌈👩🏽‍🎤🔥 Pride Closing 🇩🇪🇧🇷 B2B 👨‍👩‍👧‍👦"_s;
    QString folder = u"/Volumes/Aufnahmen und Sicherungen der Diskothek am Bahnhof/Musikbibliothek "
                     "(gemeinsam genutzt)/Neuzugänge/2026/November/Wochenende 47/Freitag und Samstag/"
                     "Heruntergeladen mit Tunedeck/Noch nicht einsortiert"_s;
};

void addJobs(Stage& stage, const Texts& texts) {
    stage.state.jobs = {};
    const auto names = Jobs::playlists();
    for (int i = 15; i > 0; --i) {
        stage.addDoneJob(names[i % names.size()], i, 26h * i);
    }
    stage.addFailedJob(
        texts.german,
        u"yt-dlp: this video isn't available in your country, and neither are the eleven others on the list; "
        "ask for another upload of the same tracks, or try again later when the limit has been lifted."_s,
        3h);
    stage.addDoneJob(texts.arabic, 1, 40min);
    stage.addJob(texts.german, job_state::running, u"Downloading 3 of 120"_s, 3min);
    stage.addJob(texts.hebrew, job_state::queued, u"Waiting to start"_s, 40s);
    stage.addJob(texts.emoji, job_state::queued, u"Waiting to start"_s, 20s);
}

void addLibrary(Stage& stage, const Texts& texts) {
    stage.state.library = Library{.dbPath = texts.folder + u"/rekordbox/master.db"_s, .rekordboxRunning = true};
    addManyBackups(stage, 60);
    if (auto& applied = stage.library().lastApplied) {
        applied->summary = u"Add 120 tracks to "_s + inQuotes(texts.german);
    }
    stage.addPending(u"Add 1 track to "_s + inQuotes(texts.arabic), 39min);
    stage.addPending(u"Add 14 tracks to the new playlist "_s + inQuotes(texts.emoji), 30min);
    stage.addPending(u"Add 3 tracks to "_s + inQuotes(texts.hebrew), 20min);
    stage.addFailed(u"Rename “Sommer” to "_s + inQuotes(texts.german),
                    u"The playlist was changed in Rekordbox in the meantime."_s, 5h);
    stage.library().lastError = u"The library database is locked by another program."_s;
}

void addLinks(Stage& stage, const Texts& texts) {
    stage.state.links.all.clear();
    stage.addLink(link_kind::chatgpt, u"ChatGPT"_s, 30 * 24h, 3h);
    stage.addLink(link_kind::chatgpt, u"ChatGPT (Arbeitsbereich der Veranstaltungsgemeinschaft Bahnhofstraße)"_s,
                  9 * 24h);
    stage.addLink(link_kind::claude, u"Claude"_s, 26 * 24h, 26h);
    stage.addLink(link_kind::claude, u"Claude on another Mac"_s, 60 * 24h, 50 * 24h).url.reset();
    stage.addLink(link_kind::claude, texts.arabic, 2 * 24h);
    stage.addLink(link_kind::telegram, u"Telegram"_s, 20 * 24h, 40min);
    stage.addLink(link_kind::telegram, u"Telegram"_s, 1min);
    stage.addLink(link_kind::telegram, u"Telegram"_s, 2h);
    stage.addLink(link_kind::shortcut, u"iPhone"_s, 12 * 24h, 5h);
    stage.addLink(link_kind::shortcut, u"iPhone 🏳️‍🌈"_s, 11 * 24h);
    stage.addLink(link_kind::shortcut, u"Old iPhone"_s, 90 * 24h, 80 * 24h).token.reset();
    stage.addLink(u"watch"_s, {}, 24h, 23h).label.reset();
}

} // namespace

void addManyBackups(Stage& stage, int count) {
    const auto names = Jobs::playlists();
    stage.addFirstBackup(2h + 11h * (count - 1));
    for (int i = 1; i < count; ++i) {
        const bool newPlaylist = i % 7 == 0;
        stage.addAppliedChange(u"Add "_s + counted(1 + i % 9, u"track"_s) + u" to "_s +
                                   (newPlaylist ? u"the new playlist "_s : QString()) +
                                   inQuotes(names[i % names.size()]),
                               newPlaylist ? Library::Minor : Library::Patch, 2h + 11h * (count - 1 - i));
        if (i % 23 == 0) {
            stage.library().backups.front().reason = u"Before restoring v1.0.0"_s;
        }
    }
}

void prepareCrowd(Stage& stage) {
    const Texts texts;
    addJobs(stage, texts);
    addLibrary(stage, texts);
    addLinks(stage, texts);
    stage.state.stagedFolder = {.downloadDir = texts.folder, .downloadDirSource = u"default"_s};
}

} // namespace tunedeck::demo
