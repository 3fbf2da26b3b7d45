#include "Tests/Soak/Driver/Judge.h"

#include "Tests/Soak/Timeline.h"

#include <algorithm>
#include <sstream>

namespace tunedeck::soak {

namespace {

/// The application gives the service 2 s; an answer that took about as long may have counted or not.
constexpr std::int64_t surelyInTime = 1'850'000'000;
/// Records of one moment are complete after this time.
constexpr std::int64_t settled = 3'000'000'000;

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

/// The next whole line of a file that grows.
std::optional<std::string> nextLine(std::ifstream& file) {
    file.clear();
    const auto start = file.tellg();
    std::string line;
    if (std::getline(file, line) && !file.eof()) {
        return line;
    }
    file.clear();
    file.seekg(start);
    return std::nullopt;
}

std::string told(const std::vector<Judge::Announcement>& announcements) {
    std::string text;
    for (const auto& one : announcements) {
        text += "\n    " + one.kind + ' ' + one.id + ' ' + one.label;
    }
    return text.empty() ? "\n    nothing" : text;
}

} // namespace

Judge::Judge(const Files& files) : m_log(files.notifications()) {
    for (const auto& file : {files.served(), files.rounds()}) {
        const Trail created(file);
    }
    m_served.open(files.served());
    m_rounds.open(files.rounds());
}

Judge::Counts Judge::counts() const {
    auto counts = m_counts;
    counts.jobs = static_cast<int>(m_jobs.size());
    return counts;
}

bool Judge::proceed(bool finally) {
    const auto until = realTime().count() - (finally ? 0 : settled);
    readServed();
    while (m_fault.empty()) {
        if (!m_next) {
            const auto line = nextLine(m_rounds);
            if (!line) {
                break;
            }
            Round round;
            std::istringstream(*line) >> round.begin >> round.end >> round.port >> round.size;
            m_next = round;
        }
        if (m_next->end > until) {
            return true;
        }
        judge(*m_next);
        m_next.reset();
    }
    std::error_code none;
    if (finally && m_fault.empty() && std::filesystem::file_size(m_log, none) != m_read && !none) {
        m_fault = "notifications.log has lines that belong to no round";
    }
    return m_fault.empty();
}

void Judge::readServed() {
    while (const auto line = nextLine(m_served)) {
        const auto parts = split(*line, '\t');
        if (parts.at(0) == "D") {
            m_document = std::make_shared<Document>(documentOf(parts));
            continue;
        }
        auto& sendings = m_sendings[std::stoi(parts.at(2))];
        if (parts[0] == "S") {
            ++m_counts.served;
            sendings.push_back({.at = std::stoll(parts[1]), .document = m_document, .isGood = parts.at(3) == "1"});
        } else if (!sendings.empty()) {
            sendings.back().isWhole = true;
        }
    }
}

Judge::Document Judge::documentOf(const std::vector<std::string>& parts) {
    Document document;
    std::size_t at = 1;
    for (; parts.at(at) != "|"; at += 3) {
        document.jobs.push_back({parts[at], parts.at(at + 1), parts.at(at + 2)});
    }
    document.hasLibrary = ++at < parts.size();
    if (document.hasLibrary && parts[at] != "none") {
        document.appliedAt = parts[at];
        document.version = parts.at(at + 1);
        document.summary = parts.at(at + 2);
    }
    return document;
}

std::vector<Judge::Announcement> Judge::expected(const Document& document, Memory& memory) {
    std::vector<Announcement> events;
    std::map<std::string, std::string> states;
    for (const auto& job : document.jobs) {
        states[job.id] = job.state;
        if (!memory.jobs) {
            continue;
        }
        const auto before = memory.jobs->find(job.id);
        const bool wasThere = before != memory.jobs->end();
        if ((job.state == "queued" || job.state == "running") && !wasThere) {
            events.push_back({.kind = "requested", .id = job.id, .label = job.playlist});
        } else if ((job.state == "done" || job.state == "failed") && !(wasThere && before->second == job.state)) {
            events.push_back(
                {.kind = job.state == "done" ? "finished" : "failed", .id = job.id, .label = job.playlist});
        }
    }
    memory.jobs = std::move(states);
    if (document.hasLibrary) {
        const bool isFirst = !memory.applied;
        if (!isFirst && document.appliedAt && *memory.applied != document.appliedAt) {
            events.push_back({.kind = "library", .id = document.version, .label = document.summary});
        }
        memory.applied = document.appliedAt;
    }
    return events;
}

std::vector<Judge::Announcement> Judge::announcedUntil(const Round& round) {
    std::string text(round.size - m_read, '\0');
    std::ifstream log(m_log, std::ios::binary);
    log.seekg(static_cast<std::streamoff>(m_read));
    log.read(text.data(), static_cast<std::streamsize>(text.size()));
    m_read = round.size;
    std::vector<Announcement> found;
    for (const auto& line : split(text, '\n')) {
        Announcement one{.at = round.end};
        std::istringstream stream(line);
        std::string stamp;
        stream >> stamp >> one.kind >> one.id;
        stream.get();
        std::getline(stream, one.label);
        if (stamp < m_lastStamp) {
            fail(round, "the stamps of notifications.log go back: " + line);
        }
        m_lastStamp = stamp;
        found.push_back(std::move(one));
    }
    return found;
}

bool Judge::judge(const Round& round) {
    ++m_counts.rounds;
    if (round.size < m_read) {
        return fail(round, "notifications.log has become shorter");
    }
    const auto found = announcedUntil(round);
    m_announcements.insert(m_announcements.end(), found.begin(), found.end());

    const Sending* sending = nullptr;
    for (const auto& one : m_sendings[round.port]) {
        if (one.at >= round.begin && one.at <= round.end) {
            sending = &one;
        }
    }
    const bool mayHaveCome = sending != nullptr && sending->isGood;
    const bool came = mayHaveCome && sending->isWhole && round.end - round.begin < surelyInTime;
    m_counts.answered += came ? 1 : 0;
    m_counts.uncertain += mayHaveCome && !came ? 1 : 0;

    std::set<Memory> possible;
    std::string wanted;
    for (const auto& memory : m_memories) {
        if (!came && found.empty()) {
            possible.insert(memory);
        }
        if (mayHaveCome) {
            Memory after = memory;
            const auto events = expected(*sending->document, after);
            if (events == found) {
                possible.insert(std::move(after));
            }
            wanted = told(events);
        }
    }
    if (possible.empty()) {
        return fail(round, "wanted:" + (mayHaveCome ? wanted : told({})) + "\n  announced:" + told(found));
    }
    m_memories = std::move(possible);
    if (came) {
        for (const auto& job : sending->document->jobs) {
            m_jobs.insert(job.id);
        }
    }
    // A port is used again after a while, and what was sent to it then may have been read by now.
    for (auto sendings = m_sendings.begin(); sendings != m_sendings.end();) {
        const auto done = sendings->first == round.port ? round.end : round.begin - settled;
        std::erase_if(sendings->second, [&](const Sending& old) { return old.at <= done; });
        sendings = sendings->second.empty() ? m_sendings.erase(sendings) : std::next(sendings);
    }
    return true;
}

bool Judge::fail(const Round& round, const std::string& what) {
    if (m_fault.empty()) {
        m_fault = "round " + std::to_string(m_counts.rounds) + " (" +
                  std::to_string((round.end - round.begin) / 1000000) + " ms, port " + std::to_string(round.port) +
                  "): " + what;
    }
    return false;
}

} // namespace tunedeck::soak
