#pragma once

#include <optional>
#include <set>
#include <string>

namespace tunedeck {

/// Decides by the names alone whether an archive's entries stay inside the folder that they are unpacked into.
class ArchiveNames {
public:
    /// The name without "." and doubled "/"; nothing when it is empty, absolute, has ".." or a part longer than a file
    /// name may be.
    static std::optional<std::string> normalised(const std::string& name);

    /// Takes an entry's normalised name and, for a symbolic link, its target. False when it can't be allowed by itself
    /// or beside those before.
    bool add(const std::string& name, const std::string* target);

    /// Whether no entry's name leads through a link; asked when all are known.
    [[nodiscard]] bool leadThroughNoLink() const;

private:
    std::set<std::string> m_names;
    std::set<std::string> m_links;
};

} // namespace tunedeck
