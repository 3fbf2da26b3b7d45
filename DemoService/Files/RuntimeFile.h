#pragma once

#include <QString>

#include <expected>
#include <utility>

namespace tunedeck::demo {

/// The file from which clients learn the service's port. It exists while the service runs.
class RuntimeFile {
public:
    explicit RuntimeFile(QString path) : m_path(std::move(path)) {}

    /// Writes the port and this process's id; creates the folder if needed.
    std::expected<void, QString> publish(int port) const;
    /// Removes the file, unless another process has published its own port in the meantime.
    void withdraw() const;

private:
    QString m_path;
};

} // namespace tunedeck::demo
