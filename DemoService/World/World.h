#pragma once

#include "DemoService/Library/Library.h"
#include "DemoService/World/Cloud.h"
#include "DemoService/World/Downloads.h"
#include "DemoService/World/Jobs.h"
#include "DemoService/World/Links.h"
#include "DemoService/World/Toolbox.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tunedeck::demo {

/// Everything the service remembers.
struct State {
    std::string scenario;
    std::uint64_t seed = 1;
    /// Requests come and Rekordbox is opened and closed as soon as an assistant is connected.
    bool livesWhenConnected = false;
    Jobs jobs;
    /// Absent when no Rekordbox library was found.
    std::optional<Library> library;
    Links links;
    Toolbox toolbox;
    Cloud cloud;
    /// A download folder that is only told, not looked at.
    std::optional<DownloadFolder> stagedFolder;

    static void members(auto& self, auto& archive) {
        archive("scenario", self.scenario);
        archive("seed", self.seed);
        archive("lives_when_connected", self.livesWhenConnected);
        archive("jobs", self.jobs);
        archive("library", self.library);
        archive("links", self.links);
        archive("toolbox", self.toolbox);
        archive("cloud", self.cloud);
        archive("staged_folder", self.stagedFolder);
    }
};

/// The state file's text, and back; nothing when the text is no such file.
std::string stateText(const State& state);
std::optional<State> stateFromText(std::string_view text);

/// The model of what the service looks after. Time is handed in: nothing moves between two calls. Not thread-safe.
class World {
public:
    /// `speed` is how many times faster than in life things happen.
    World(State state, double speed);

    const State& state() const { return m_state; }
    /// Makes everything happen that is due at `now`, each thing at most once: after a long sleep the world goes on
    /// from where it was rather than catching up.
    void advance(Moment now);
    /// When something happens by itself next.
    std::optional<Moment> nextEvent() const;

    LibraryReply restore(Moment now, const std::string& version);
    LibraryReply apply(Moment now);
    LibraryReply takeBaseline(Moment now);
    LibraryReply retryFailed(Moment now);
    LibraryReply dismissFailed(Moment now);

    void installTools(Moment now);
    ToolReport tools(Moment now) const { return m_state.toolbox.reportAt(now); }

    LinkResult createLink(Moment now, const std::string& kind, std::optional<std::string> label);
    LinkResult rotateLink(Moment now, const std::string& id);
    std::optional<LinkProblem> deleteLink(Moment now, const std::string& id);

    /// What has happened since the last call; empty exactly when nothing has changed.
    std::vector<LogLine> takeJournal() { return std::exchange(m_journal, {}); }
    double speed() const { return m_speed; }

private:
    template<class Act>
    auto act(Moment now, Act action);
    LibraryReply onLibrary(Moment now, LibraryReply (Library::*action)(Turn&));
    std::optional<LinkProblem> cloudProblem(Turn& turn) const;
    void comeAlive(Turn& turn);

    State m_state;
    double m_speed;
    std::vector<LogLine> m_journal;
};

} // namespace tunedeck::demo
