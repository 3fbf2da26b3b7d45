#pragma once

#include <QString>

#include <cstdint>

namespace tunedeck {

/// Why an update could not be found or installed.
struct UpdateError {
    enum class Kind {
        http,        ///< the server's answer was none of use
        wrongApp,    ///< the archive holds another application or version
        checksum,    ///< the archive isn't the one that the feed names
        noApp,       ///< the archive holds no application
        notWritable, ///< the application's folder can't be written
        other        ///< what the platform says of a file or the network
    };

    Kind kind = Kind::other;
    int status = 0;      ///< of http; 0 for an answer that wasn't HTTP
    QString detail = {}; ///< of wrongApp and other

    static UpdateError http(int status) { return {.kind = Kind::http, .status = status}; }
    static UpdateError wrongApp(QString detail) { return {.kind = Kind::wrongApp, .detail = std::move(detail)}; }
    static UpdateError other(QString detail) { return {.kind = Kind::other, .detail = std::move(detail)}; }

    /// One sentence for the user.
    [[nodiscard]] QString description() const;
    bool operator==(const UpdateError&) const = default;
};

} // namespace tunedeck
