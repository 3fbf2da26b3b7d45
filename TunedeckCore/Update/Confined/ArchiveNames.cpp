#include "TunedeckCore/Update/Confined/ArchiveNames.h"

#include <algorithm>
#include <climits>
#include <ranges>
#include <string_view>
#include <vector>

namespace tunedeck {

namespace {

std::vector<std::string_view> components(std::string_view path) {
    std::vector<std::string_view> result;
    for (const auto part : std::views::split(path, '/')) {
        if (const std::string_view name(part.begin(), part.end()); !name.empty() && name != ".") {
            result.push_back(name);
        }
    }
    return result;
}

/// Whether the target of a link, `depth` levels below a folder, is inside it. ".." is only allowed at the start: after
/// a name it could leave the folder if that name is a link.
bool staysInside(std::string_view target, std::size_t depth) {
    if (target.empty() || target.front() == '/') {
        return false;
    }
    bool climbing = true;
    std::size_t climbed = 0;
    for (const std::string_view part : components(target)) {
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
    std::string result;
    for (const std::string_view part : components(name)) {
        if (part == ".." || part.size() > NAME_MAX) {
            return std::nullopt;
        }
        result += result.empty() ? "" : "/";
        result += part;
    }
    return result.empty() ? std::nullopt : std::optional(result);
}

bool ArchiveNames::add(const std::string& name, const std::string* target) {
    if (!m_names.insert(name).second) {
        return false;
    }
    if (target) {
        m_links.insert(name);
        // Only the top folder is installed, elsewhere: a link in it mustn't climb out of it.
        const std::size_t level = components(name).size();
        return staysInside(*target, level > 2 ? level - 2 : 0);
    }
    return true;
}

bool ArchiveNames::anyBelowLink() const {
    return std::ranges::any_of(m_links, [this](const std::string& link) {
        const auto below = m_names.lower_bound(link + "/");
        return below != m_names.end() && below->starts_with(link + "/");
    });
}

} // namespace tunedeck
