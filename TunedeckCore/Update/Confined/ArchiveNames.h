#pragma once

#include <optional>
#include <set>
#include <string>

namespace tunedeck {

/// Checks by their names that an archive's entries stay inside the folder that they are unpacked into.
class ArchiveNames {
public:
    /// The name without "." and repeated "/". Nothing if it is empty or absolute, contains ".." or has a component that
    /// is too long for a file name.
    static std::optional<std::string> normalised(const std::string& name);

    /// Adds an entry's normalised name and, for a symbolic link, its target. False for a duplicate name and for a
    /// target outside the link's top folder.
    bool add(const std::string& name, const std::string* target);

    /// Whether an entry's name has a link as one of its folders. Valid once all entries are added.
    [[nodiscard]] bool anyBelowLink() const;

private:
    std::set<std::string> m_names;
    std::set<std::string> m_links;
};

} // namespace tunedeck
