#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace tunedeck {

/// Writes to the system's journal in its native protocol. Never blocks.
class Journal {
public:
    using Fields = std::vector<std::pair<QByteArray, QByteArray>>;

    explicit Journal(const QString& socketPath);

    /// Sends one entry. Returns false when there is no journal, it is busy or the entry is too large.
    [[nodiscard]] bool send(const Fields& fields) const;

    /// Encodes an entry: a line per field; a value of several lines is preceded by its length.
    static QByteArray encode(const Fields& fields);

private:
    FileDescriptor m_socket;
};

} // namespace tunedeck
