#pragma once

#include <QByteArray>
#include <QString>

#include <array>

namespace tunedeck {

/// How a Linux system names itself.
struct OsRelease {
    QString name; ///< as shown to users ("Debian GNU/Linux 12 (bookworm)"); "Linux" when it doesn't say
    std::array<int, 3> version{};

    /// Of the text of an os-release file; unknown and malformed lines are skipped.
    static OsRelease parse(const QByteArray& text);
};

} // namespace tunedeck
