#pragma once

#include <QString>
#include <QStringList>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tunedeck {

/// A semantic version. Build metadata is dropped.
struct SemVer {
    std::int64_t major = 0;
    std::int64_t minor = 0;
    std::int64_t patch = 0;
    QStringList prerelease; ///< identifiers; empty for a release

    /// Parses "1.4.0" or "v1.4.0-beta.2+build", with surrounding spaces and tabs. All three numbers are required.
    static std::optional<SemVer> parse(const QString& text);

    /// The version as text, without "v" and build metadata.
    [[nodiscard]] QString description() const;

    bool operator==(const SemVer&) const = default;

    /// Precedence: a pre-release precedes its release; numeric identifiers precede others and compare by value, without
    /// a limit on their size. "1" and "01" are equivalent but not equal.
    friend std::weak_ordering operator<=>(const SemVer& a, const SemVer& b);
    friend std::size_t qHash(const SemVer& version, std::size_t seed) noexcept;
};

} // namespace tunedeck
