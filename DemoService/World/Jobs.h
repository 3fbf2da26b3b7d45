#pragma once

#include "DemoService/World/Turn.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tunedeck::demo {

namespace job_state {
inline constexpr auto queued = "queued";
inline constexpr auto running = "running";
inline constexpr auto done = "done";
inline constexpr auto failed = "failed";
} // namespace job_state

/// One request for music.
struct Job {
    std::string id;
    std::string state;
    std::string playlist;
    std::string message;
    std::optional<Moment> createdAt;
    std::optional<Moment> finishedAt;
    std::optional<int> links;
    std::optional<int> tracks;
    std::optional<int> errors;
    std::optional<std::string> xmlVersion;

    /// How many tracks it will have got, and how many it has.
    int wanted = 0;
    int got = 0;
    /// Nothing comes of it.
    bool doomed = false;
    /// When its next step is; a staged job without one stays as it is.
    std::optional<Moment> nextStep;

    bool isFinished() const { return state == job_state::done || state == job_state::failed; }

    static void members(auto& self, auto& archive) {
        archive("job_id", self.id);
        archive("state", self.state);
        archive("playlist", self.playlist);
        archive("message", self.message);
        archive("created_at", self.createdAt);
        archive("finished_at", self.finishedAt);
        archive("links", self.links);
        archive("tracks", self.tracks);
        archive("errors", self.errors);
        archive("xml_version", self.xmlVersion);
        archive.own("wanted", self.wanted);
        archive.own("got", self.got);
        archive.own("doomed", self.doomed);
        archive.own("next_step", self.nextStep);
    }
};

/// The download jobs: they arrive, wait for the tools, run track by track, and are done or fail.
struct Jobs {
    /// The newest first.
    std::vector<Job> recent;
    int lastNumber = 0;
    /// The version of the import XML that the last finished job wrote.
    int xmlVersion = 0;
    /// When the next request comes by itself; none when nothing happens by itself.
    std::optional<Moment> nextArrival;

    /// A new request from an assistant.
    void request(Turn& turn);
    /// Lets the jobs go on; returns those that are done now (valid until the next call). Without tools none starts.
    std::vector<const Job*> advance(Turn& turn, bool toolsReady);
    /// Plans the next arrival; while two jobs are unfinished nobody asks for more.
    void scheduleArrival(Turn& turn, Span least, Span most);
    std::optional<Moment> nextEvent(bool toolsReady) const;

    static void members(auto& self, auto& archive) {
        archive("recent", self.recent);
        archive("last_number", self.lastNumber);
        archive("xml_version", self.xmlVersion);
        archive("next_arrival", self.nextArrival);
    }

private:
    void step(Job& job, Turn& turn);
    void finish(Job& job, Turn& turn);
};

} // namespace tunedeck::demo
