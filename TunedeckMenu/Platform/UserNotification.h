#pragma once

#include <QString>

namespace tunedeck {

/// One desktop notification.
struct UserNotification {
    QString identifier; ///< a later notification with the same identifier replaces this one
    QString thread;     ///< groups the notifications of one subject; may be empty
    QString title;
    QString body; ///< plain text
    bool operator==(const UserNotification&) const = default;
};

} // namespace tunedeck
