// https://developer.apple.com/documentation/servicemanagement/smappservice
#pragma once

#import <Foundation/Foundation.h>

typedef enum SMAppServiceStatus : NSInteger {
    SMAppServiceStatusNotRegistered,
    SMAppServiceStatusEnabled,
    SMAppServiceStatusRequiresApproval,
    SMAppServiceStatusNotFound
} SMAppServiceStatus;

@interface SMAppService : NSObject
@property(class, readonly) SMAppService* _Nonnull mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError* _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* _Nullable* _Nullable)error;
@end
