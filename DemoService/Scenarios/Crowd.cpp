#include "DemoService/Scenarios/Crowd.h"

#include "DemoService/Scenarios/Staging.h"
#include "DemoService/World/Catalogue.h"
#include "DemoService/World/Words.h"

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

constexpr auto germanName = "Donaudampfschifffahrtsgesellschaftskapitänsgeburtstagsüberraschungsfeier";
constexpr auto hebrewName = "מסיבת יום שישי 🎧 תל אביב";
constexpr auto arabicName = "أغاني الصيف المفضلة لدي";
constexpr auto emojiName =
    "🏳️‍🌈👩🏽‍🎤🔥 Pride Closing 🇩🇪🇧🇷 B2B 👨‍👩‍👧‍👦";

constexpr auto longFolder = "/Volumes/Aufnahmen und Sicherungen der Diskothek am Bahnhof/Musikbibliothek "
                            "(gemeinsam genutzt)/Neuzugänge/2026/November/Wochenende 47/Freitag und Samstag/"
                            "Heruntergeladen mit Tunedeck/Noch nicht einsortiert";

void stageJobs(State& state, Moment now) {
    state.jobs = {};
    for (int i = 15; i > 0; --i) {
        const auto names = catalogue::playlists();
        addDoneJob(state, std::string(names[static_cast<std::size_t>(i) % names.size()]), i, now - 26h * i);
    }
    addFailedJob(state, germanName,
                 "yt-dlp: this video isn't available in your country, and neither are the eleven others on the list; "
                 "ask for another upload of the same tracks, or try again later when the limit has been lifted.",
                 now - 3h);
    addDoneJob(state, arabicName, 1, now - 40min);
    addStagedJob(state, germanName, job_state::running, "Downloading 3 of 120", now - 3min);
    addStagedJob(state, hebrewName, job_state::queued, "Waiting to start", now - 40s);
    addStagedJob(state, emojiName, job_state::queued, "Waiting to start", now - 20s);
}

void stageLibrary(State& state, Moment now) {
    Library& library = state.library.emplace();
    library.dbPath = std::string(longFolder) + "/rekordbox/master.db";
    library.rekordboxRunning = true;
    addManyBackups(library, 60, now);
    library.lastApplied = {.at = library.backups.front().createdAt,
                           .version = library.currentVersion,
                           .summary = "Add 120 tracks to " + inQuotes(germanName)};
    addPending(library, "Add 1 track to " + inQuotes(arabicName), now - 39min);
    addPending(library, "Add 14 tracks to the new playlist " + inQuotes(emojiName), now - 30min);
    addPending(library, "Add 3 tracks to " + inQuotes(hebrewName), now - 20min);
    addFailed(library, "Rename " + inQuotes("Sommer") + " to " + inQuotes(germanName),
              "The playlist was changed in Rekordbox in the meantime.", now - 5h);
    library.lastError = "The library database is locked by another program.";
}

void stageLinks(State& state, Moment now) {
    state.links.all.clear();
    addLink(state, link_kind::chatgpt, "ChatGPT", now - 30 * 24h, now - 3h);
    addLink(state, link_kind::chatgpt, "ChatGPT (Arbeitsbereich der Veranstaltungsgemeinschaft Bahnhofstraße)",
            now - 9 * 24h);
    addLink(state, link_kind::claude, "Claude", now - 26 * 24h, now - 26h);
    addLink(state, link_kind::claude, "Claude on another Mac", now - 60 * 24h, now - 50 * 24h).url.reset();
    addLink(state, link_kind::claude, arabicName, now - 2 * 24h);
    addLink(state, link_kind::telegram, "Telegram", now - 20 * 24h, now - 40min);
    addLink(state, link_kind::telegram, "Telegram", now - 1min);
    addLink(state, link_kind::telegram, "Telegram", now - 2h);
    addLink(state, link_kind::shortcut, "iPhone", now - 12 * 24h, now - 5h);
    addLink(state, link_kind::shortcut, "iPhone 🏳️‍🌈", now - 11 * 24h);
    addLink(state, link_kind::shortcut, "Old iPhone", now - 90 * 24h, now - 80 * 24h).token.reset();
    Link& unknown = addLink(state, "watch", "", now - 24h, now - 23h);
    unknown.label.reset();
}

} // namespace

void addManyBackups(Library& library, int count, Moment now) {
    const auto names = catalogue::playlists();
    std::string version = "1.0.0";
    addBackup(library, version, "First backup, before any change", now - 2h - 11h * (count - 1));
    for (int i = 1; i < count; ++i) {
        const bool newPlaylist = i % 7 == 0;
        version = raised(version, newPlaylist ? Bump::minor : Bump::patch);
        const auto& name = names[static_cast<std::size_t>(i) % names.size()];
        std::string reason = i % 23 == 0 ? "Before restoring v1.0.0"
                                         : "Before: Add " + counted(1 + i % 9, "track") + " to " +
                                               (newPlaylist ? "the new playlist " : "") + inQuotes(name);
        addBackup(library, version, std::move(reason), now - 2h - 11h * (count - 1 - i));
    }
    library.lastApplied = {.at = library.backups.front().createdAt,
                           .version = version,
                           .summary = library.backups.front().reason.substr(std::string_view("Before: ").size())};
}

void stageCrowd(State& state, Moment now) {
    stageJobs(state, now);
    stageLibrary(state, now);
    stageLinks(state, now);
    state.stagedFolder = {.dir = longFolder, .source = "default", .writable = true, .error = {}};
}

} // namespace tunedeck::demo
