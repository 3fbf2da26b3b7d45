#pragma once

#include "TunedeckMenu/Platform/UserNotification.h"

#include <QObject>
#include <QString>

namespace tunedeck {

/// The desktop's notifications. Reports no errors: without a notification server nothing is shown.
class NotificationCenter : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Prepares posting (authorization, the server's capabilities). Call it once, before post(). Returns at once.
    virtual void start() = 0;
    /// Shows a notification with the default sound.
    virtual void post(const UserNotification& notification) = 0;

Q_SIGNALS:
    /// The user clicked a notification.
    void opened(const QString& identifier);
};

} // namespace tunedeck
