#pragma once

#include "TunedeckMenu/Platform/NotificationCenter.h"

@class MacNotificationDelegate;

namespace tunedeck {

/// Posts through the user-notification center, which exists for a bundle only: does nothing when the program was
/// started outside one.
class MacNotificationCenter final : public NotificationCenter {
public:
    MacNotificationCenter();
    ~MacNotificationCenter() override;

    void start() override;
    void post(const UserNotification& notification) override;

private:
    MacNotificationDelegate* m_delegate;
};

} // namespace tunedeck
