#pragma once

#include <QString>

#include <optional>

namespace tunedeck::json {

/// Why a document was rejected.
struct Error {
    QString path;              ///< of the member, as in "recentJobs[2].jobId"; empty for the document itself
    QString reason;            ///< for people, without the path
    bool beyondLimits = false; ///< the document may be valid, but exceeds a limit on its size, depth or numbers

    /// One sentence for the user.
    [[nodiscard]] QString description() const;
};

/// Prefixes the path of `error`, if there is one, with the name or index of the containing value.
std::optional<Error> within(const QString& parent, std::optional<Error> error);

} // namespace tunedeck::json
