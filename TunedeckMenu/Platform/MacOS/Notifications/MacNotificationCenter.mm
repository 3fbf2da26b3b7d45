#include "TunedeckMenu/Platform/MacOS/Notifications/MacNotificationCenter.h"

#include "TunedeckMenu/Platform/Log.h"
#include "TunedeckMenu/Platform/MacOS/System/MacStrings.h"

#import <UserNotifications/UserNotifications.h>

/// Shows notifications while the application is in front, and reports clicks.
@interface MacNotificationDelegate : NSObject <UNUserNotificationCenterDelegate>
- (instancetype)initWithCenter:(tunedeck::NotificationCenter*)center;
@end

@implementation MacNotificationDelegate {
    tunedeck::NotificationCenter* _center;
}

- (instancetype)initWithCenter:(tunedeck::NotificationCenter*)center {
    self = [super init];
    if (self) {
        _center = center;
    }
    return self;
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler {
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList |
                      UNNotificationPresentationOptionSound);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
    auto* const opened = _center;
    // Which thread calls this isn't documented.
    QMetaObject::invokeMethod(
        opened,
        [opened, identifier = tunedeck::fromNSString(response.notification.request.identifier)] {
            Q_EMIT opened->opened(identifier);
        },
        Qt::QueuedConnection);
    completionHandler();
}

@end

namespace tunedeck {

namespace {

/// Nil outside a bundle, where asking for the center raises an exception.
UNUserNotificationCenter* currentCenter() {
    return [[NSBundle mainBundle] bundleIdentifier] == nil ? nil : [UNUserNotificationCenter currentNotificationCenter];
}

} // namespace

MacNotificationCenter::MacNotificationCenter() : m_delegate([[MacNotificationDelegate alloc] initWithCenter:this]) {}

MacNotificationCenter::~MacNotificationCenter() {
    currentCenter().delegate = nil;
}

void MacNotificationCenter::start() {
    UNUserNotificationCenter* center = currentCenter();
    center.delegate = m_delegate;
    [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                          completionHandler:^(BOOL granted, NSError* error) {
                            if (!granted) {
                                qCInfo(appLog).noquote()
                                    << "notifications aren't allowed" << fromNSString([error localizedDescription]);
                            }
                          }];
}

void MacNotificationCenter::post(const UserNotification& notification) {
    UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
    content.title = toNSString(notification.title);
    content.body = toNSString(notification.body);
    content.threadIdentifier = toNSString(notification.thread);
    content.sound = [UNNotificationSound defaultSound];
    // Without a trigger it is delivered at once; one with the same identifier is replaced.
    UNNotificationRequest* request = [UNNotificationRequest requestWithIdentifier:toNSString(notification.identifier)
                                                                          content:content
                                                                          trigger:nil];
    [currentCenter() addNotificationRequest:request withCompletionHandler:nil];
}

} // namespace tunedeck
