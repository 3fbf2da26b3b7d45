#pragma once

#include <QString>

#include <cstdint>

namespace tunedeck {

/// Why an update check or an installation failed.
struct UpdateError {
    enum class Kind {
        http,        ///< the server's response has another status than 200
        wrongApp,    ///< the archive contains another application or version
        checksum,    ///< the archive doesn't match the feed
        noApp,       ///< the archive contains no application
        notWritable, ///< the application's folder isn't writable
        other        ///< a file or network error, described by the platform
    };

    Kind kind = Kind::other;
    int status = 0;      ///< for http; 0 for a response that isn't HTTP
    QString detail = {}; ///< for wrongApp and other

    static UpdateError http(int status) { return {.kind = Kind::http, .status = status}; }
    static UpdateError wrongApp(QString detail) { return {.kind = Kind::wrongApp, .detail = std::move(detail)}; }
    static UpdateError wrongVersion(const QString& found, const QString& expected);
    static UpdateError other(QString detail) { return {.kind = Kind::other, .detail = std::move(detail)}; }

    /// One sentence for the user.
    [[nodiscard]] QString description() const;
    bool operator==(const UpdateError&) const = default;
};

} // namespace tunedeck
