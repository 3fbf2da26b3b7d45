#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {

/// One local notification.
struct UserNotification {
    QString identifier; ///< a later one with the same identifier replaces this one
    QString thread;     ///< groups the notifications of one subject; may be empty
    QString title;
    QString body; ///< plain text
    bool operator==(const UserNotification&) const = default;
};

/// The desktop's notifications. Nothing here fails: without a server a notification has no visible effect.
class NotificationCenter : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Gets ready to post (authorization, the server's capabilities), without waiting.
    virtual void start() = 0;
    /// Delivers a notification now, with the default sound.
    virtual void post(const UserNotification& notification) = 0;

Q_SIGNALS:
    /// The user clicked a notification.
    void opened(const QString& identifier);
};

} // namespace tunedeck
