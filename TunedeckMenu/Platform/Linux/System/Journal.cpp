#include "TunedeckMenu/Platform/Linux/System/Journal.h"

#include <QFile>
#include <QtEndian>

#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>

namespace tunedeck {

Journal::Journal(const QString& socketPath) {
    const auto name = QFile::encodeName(socketPath);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path) {
        return;
    }
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (socket && ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
        m_socket = std::move(socket);
    }
}

bool Journal::send(const Fields& fields) const {
    if (!m_socket) {
        return false;
    }
    const auto entry = encode(fields);
    return ::send(m_socket.get(), entry.constData(), static_cast<std::size_t>(entry.size()), MSG_NOSIGNAL) ==
           entry.size();
}

QByteArray Journal::encode(const Fields& fields) {
    QByteArray entry;
    for (const auto& [name, value] : fields) {
        entry += name;
        if (value.contains('\n')) {
            const auto size = qToLittleEndian(static_cast<quint64>(value.size()));
            entry += '\n';
            entry.append(reinterpret_cast<const char*>(&size), sizeof size);
        } else {
            entry += '=';
        }
        entry += value;
        entry += '\n';
    }
    return entry;
}

} // namespace tunedeck
