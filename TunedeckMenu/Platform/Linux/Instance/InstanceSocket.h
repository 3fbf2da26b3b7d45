#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>

#include <optional>

namespace tunedeck::instance {

/// The longest line that is sent or read: a word, a space and an activation token.
constexpr qsizetype longestLine = 320;

/// A request as it goes over the socket: a word and, perhaps, an activation token.
struct Request {
    QByteArray word;
    QByteArray token = {};

    [[nodiscard]] QByteArray line() const;
    /// The request of a line without its line feed; nothing for anything that isn't one.
    static std::optional<Request> parse(const QByteArray& line);
};

/// An exclusive lock on the file, made when it is missing. Nothing in `descriptor` when another process has it.
struct Lock {
    FileDescriptor descriptor;
};
/// Nothing when the file can't be had at all.
std::optional<Lock> takeLock(const QString& path);

/// A listening socket at the path, in the place of one that a dead process left; only for the owner of the lock.
FileDescriptor listenAt(const QString& path);

/// True when the process at the other end belongs to this user.
bool isOwnUser(int descriptor);

/// How a request fared.
enum class Delivery { taken, refused, silent };
/// Sends a request to the instance that listens at the path; `refused` when none listens or it hung up.
Delivery deliver(const QString& path, const Request& request, const QDeadlineTimer& deadline);

} // namespace tunedeck::instance
