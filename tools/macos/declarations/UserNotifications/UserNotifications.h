// https://developer.apple.com/documentation/usernotifications
#pragma once

#import <Foundation/Foundation.h>

@class UNNotificationTrigger;

// https://developer.apple.com/documentation/usernotifications/unauthorizationoptions
typedef NSUInteger UNAuthorizationOptions;
enum : UNAuthorizationOptions { UNAuthorizationOptionSound = 1 << 1, UNAuthorizationOptionAlert = 1 << 2 };

// https://developer.apple.com/documentation/usernotifications/unnotificationpresentationoptions
typedef NSUInteger UNNotificationPresentationOptions;
enum : UNNotificationPresentationOptions {
    UNNotificationPresentationOptionSound = 1 << 1,
    UNNotificationPresentationOptionList = 1 << 3,
    UNNotificationPresentationOptionBanner = 1 << 4
};

// https://developer.apple.com/documentation/usernotifications/unnotificationsettings/authorizationstatus
typedef enum UNAuthorizationStatus : NSInteger {
    UNAuthorizationStatusNotDetermined,
    UNAuthorizationStatusDenied,
    UNAuthorizationStatusAuthorized,
    UNAuthorizationStatusProvisional
} UNAuthorizationStatus;

@interface UNNotificationSettings : NSObject
@property(nonatomic, readonly) UNAuthorizationStatus authorizationStatus;
@end

@interface UNNotificationSound : NSObject
+ (UNNotificationSound* _Nonnull)defaultSound;
@end

// https://developer.apple.com/documentation/usernotifications/unnotificationcontent
@interface UNNotificationContent : NSObject
@end

// https://developer.apple.com/documentation/usernotifications/unmutablenotificationcontent
@interface UNMutableNotificationContent : UNNotificationContent
@property(nonatomic, copy) NSString* _Nonnull title;
@property(nonatomic, copy) NSString* _Nonnull body;
@property(nonatomic, copy) NSString* _Nonnull threadIdentifier;
@property(nonatomic, copy) UNNotificationSound* _Nullable sound;
@end

// https://developer.apple.com/documentation/usernotifications/unnotificationrequest
@interface UNNotificationRequest : NSObject
@property(nonatomic, readonly, copy) NSString* _Nonnull identifier;
+ (instancetype _Nonnull)requestWithIdentifier:(NSString* _Nonnull)identifier
                                       content:(UNNotificationContent* _Nonnull)content
                                       trigger:(UNNotificationTrigger* _Nullable)trigger;
@end

@interface UNNotification : NSObject
@property(nonatomic, readonly, copy) UNNotificationRequest* _Nonnull request;
@end

@interface UNNotificationResponse : NSObject
@property(nonatomic, readonly, copy) UNNotification* _Nonnull notification;
@end

@class UNUserNotificationCenter;

// https://developer.apple.com/documentation/usernotifications/unusernotificationcenterdelegate
// These methods are optional there and required here: a wrong name would otherwise pass unnoticed.
@protocol UNUserNotificationCenterDelegate <NSObject>
- (void)userNotificationCenter:(UNUserNotificationCenter* _Nonnull)center
       willPresentNotification:(UNNotification* _Nonnull)notification
         withCompletionHandler:(void (^_Nonnull)(UNNotificationPresentationOptions options))completionHandler;
- (void)userNotificationCenter:(UNUserNotificationCenter* _Nonnull)center
    didReceiveNotificationResponse:(UNNotificationResponse* _Nonnull)response
             withCompletionHandler:(void (^_Nonnull)(void))completionHandler;
@end

// https://developer.apple.com/documentation/usernotifications/unusernotificationcenter
@interface UNUserNotificationCenter : NSObject
@property(nonatomic, weak) id<UNUserNotificationCenterDelegate> _Nullable delegate;
+ (UNUserNotificationCenter* _Nonnull)currentNotificationCenter;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^_Nonnull)(BOOL granted, NSError* _Nullable error))completionHandler;
- (void)getNotificationSettingsWithCompletionHandler:
    (void (^_Nonnull)(UNNotificationSettings* _Nonnull settings))completionHandler;
- (void)addNotificationRequest:(UNNotificationRequest* _Nonnull)request
         withCompletionHandler:(void (^_Nullable)(NSError* _Nullable error))completionHandler;
@end
