#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tunedeck {

/// A semantic version. Build metadata is not kept.
struct SemVer {
    std::int64_t major = 0;
    std::int64_t minor = 0;
    std::int64_t patch = 0;
    QStringList prerelease; ///< identifiers; empty for a release

    /// Reads "1.4.0", "v1.4.0-beta.2+build" with spaces and tabs around it; all three numbers are needed. Nothing for
    /// any other text.
    static std::optional<SemVer> parse(const QString& text);

    /// The canonical text, without "v" and build metadata.
    [[nodiscard]] QString description() const;

    bool operator==(const SemVer&) const = default;

    /// Precedence: a pre-release comes before its release, numeric identifiers before others and by their value, which
    /// may be of any size. "1" and "01" are neither less than each other nor equal.
    friend bool operator<(const SemVer& a, const SemVer& b);
    friend bool operator>(const SemVer& a, const SemVer& b) { return b < a; }
    friend bool operator<=(const SemVer& a, const SemVer& b) { return !(b < a); }
    friend bool operator>=(const SemVer& a, const SemVer& b) { return !(a < b); }
    friend std::size_t qHash(const SemVer& version, std::size_t seed) noexcept;
};

} // namespace tunedeck
