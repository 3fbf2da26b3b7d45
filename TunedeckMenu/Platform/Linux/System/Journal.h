#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace tunedeck {

/// The system's journal, written to in its own datagram protocol. Never waits.
class Journal {
public:
    using Fields = std::vector<std::pair<QByteArray, QByteArray>>;

    /// `path`: the journal's socket.
    explicit Journal(const QString& path);

    /// Sends one entry; false when there is no journal, it is busy or the entry is too large for it.
    [[nodiscard]] bool send(const Fields& fields) const;

    /// An entry as it goes over the socket: one line a field, a length before values of several lines.
    static QByteArray encode(const Fields& fields);

private:
    FileDescriptor m_socket;
};

} // namespace tunedeck
