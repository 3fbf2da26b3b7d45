#pragma once

#include "Tests/Soak/Trail.h"

#include <cstdint>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tunedeck::soak {

/// Compares what was announced with what was served to the follow loop: an event for each job that appears, is done or
/// fails between two documents that the loop got, one for each new applied change, none else, none twice and each in
/// the round in which its document came.
class Judge {
public:
    explicit Judge(const Files& files);

    /// Goes on to the present; false when something is wrong. `finally` also looks at what came after the last round.
    bool proceed(bool finally = false);
    [[nodiscard]] const std::string& fault() const { return m_fault; }

    /// A line of notifications.log.
    struct Announcement {
        std::int64_t at = 0; ///< in the machine's monotonic time: the end of its round
        std::string kind;
        std::string id;
        std::string label;
        bool operator==(const Announcement& other) const {
            return kind == other.kind && id == other.id && label == other.label;
        }
    };
    [[nodiscard]] const std::vector<Announcement>& announcements() const { return m_announcements; }

    /// What the figures are made of.
    struct Counts {
        int rounds = 0;
        int answered = 0;  ///< a good document came
        int uncertain = 0; ///< it may have come too late
        int served = 0;    ///< documents, to whomever
        int jobs = 0;      ///< different ones, as far as the loop saw them
    };
    [[nodiscard]] Counts counts() const;

private:
    /// What a status document says, as far as it is to be announced.
    struct Document {
        struct Job {
            std::string id;
            std::string state;
            std::string playlist;
        };
        std::vector<Job> jobs;
        bool hasLibrary = false;
        std::optional<std::string> appliedAt;
        std::string version;
        std::string summary;
    };
    struct Sending {
        std::int64_t at = 0;
        std::shared_ptr<const Document> document;
        bool isGood = false;
        bool isWhole = false;
    };
    struct Round {
        std::int64_t begin = 0;
        std::int64_t end = 0;
        int port = 0;
        std::size_t size = 0;
    };
    /// What a follower remembers of the documents before.
    struct Memory {
        std::optional<std::map<std::string, std::string>> jobs;
        std::optional<std::optional<std::string>> applied;
        auto operator<=>(const Memory&) const = default;
    };

    void readServed();
    static Document documentOf(const std::vector<std::string>& parts);
    bool judge(const Round& round);
    std::vector<Announcement> announcedUntil(const Round& round);
    static std::vector<Announcement> expected(const Document& document, Memory& memory);
    bool fail(const Round& round, const std::string& what);

    std::ifstream m_served;
    std::ifstream m_rounds;
    std::filesystem::path m_log;
    std::size_t m_read = 0; ///< of the log
    std::string m_lastStamp;
    std::shared_ptr<const Document> m_document;
    std::map<int, std::vector<Sending>> m_sendings; ///< by port
    std::optional<Round> m_next;
    std::set<Memory> m_memories{Memory{}}; ///< those that are possible
    std::set<std::string> m_jobs;
    std::vector<Announcement> m_announcements;
    Counts m_counts;
    std::string m_fault;
};

} // namespace tunedeck::soak
