#include "TunedeckCore/Update/ArchiveNames.h"

#include <climits>
#include <string_view>
#include <vector>

namespace tunedeck {

namespace {

std::vector<std::string_view> parts(std::string_view path) {
    std::vector<std::string_view> found;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        const std::string_view part = path.substr(start, end - start);
        if (!part.empty() && part != ".") {
            found.push_back(part);
        }
        start = end + 1;
    }
    return found;
}

/// Whether a link in a folder `depth` levels below the root leads to something inside. Only leading ".." are taken: one
/// behind a name could climb out of wherever a link of that name leads.
bool staysInside(std::string_view target, std::size_t depth) {
    if (target.empty() || target.front() == '/') {
        return false;
    }
    bool climbing = true;
    std::size_t climbed = 0;
    for (const std::string_view part : parts(target)) {
        if (part != "..") {
            climbing = false;
        } else if (!climbing || ++climbed > depth) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<std::string> ArchiveNames::normalised(const std::string& name) {
    if (name.empty() || name.front() == '/') {
        return std::nullopt;
    }
    std::string made;
    for (const std::string_view part : parts(name)) {
        if (part == ".." || part.size() > NAME_MAX) {
            return std::nullopt;
        }
        made += made.empty() ? "" : "/";
        made += part;
    }
    return made.empty() ? std::nullopt : std::optional(made);
}

bool ArchiveNames::add(const std::string& name, const std::string* target) {
    if (!m_names.insert(name).second) {
        return false;
    }
    if (target) {
        m_links.insert(name);
        return staysInside(*target, parts(name).size() - 1);
    }
    return true;
}

bool ArchiveNames::leadThroughNoLink() const {
    for (const std::string& link : m_links) {
        const auto below = m_names.lower_bound(link + "/");
        if (below != m_names.end() && below->starts_with(link + "/")) {
            return false;
        }
    }
    return true;
}

} // namespace tunedeck
