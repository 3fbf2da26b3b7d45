#pragma once

#include <QString>

namespace tunedeck::json {

/// Why a document was rejected.
struct Error {
    QString path;              ///< of the member, as in "recentJobs[2].jobId"; empty for the document itself
    QString reason;            ///< for people, without the path
    bool beyondLimits = false; ///< the document may be valid, but exceeds a limit on its size, depth or numbers

    /// One sentence for the user.
    [[nodiscard]] QString description() const {
        using namespace Qt::StringLiterals;
        return u"Unreadable document: %1%2."_s.arg(path.isEmpty() ? path : u"\"%1\" "_s.arg(path), reason);
    }
};

} // namespace tunedeck::json
