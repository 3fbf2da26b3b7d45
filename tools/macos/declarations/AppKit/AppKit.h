// What GNUstep's AppKit lacks: https://developer.apple.com/documentation/appkit
#pragma once

#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wgnu-include-next"
#include_next <AppKit/AppKit.h>
#import <Foundation/NSAppleEventDescriptor.h>
#import <Foundation/NSAppleEventManager.h>
#pragma clang diagnostic pop

// https://developer.apple.com/documentation/appkit/nsevent/eventtypemask
constexpr NSInteger NSEventMaskLeftMouseDown = 1 << 1;
constexpr NSInteger NSEventMaskRightMouseDown = 1 << 3;

// https://developer.apple.com/documentation/appkit/nswindow/occlusionstate-swift.struct
typedef enum NSWindowOcclusionState : NSUInteger { NSWindowOcclusionStateVisible = 1UL << 1 } NSWindowOcclusionState;

@interface NSWindow (Declarations)
@property(readonly) NSWindowOcclusionState occlusionState;
@end

// https://developer.apple.com/documentation/appkit/nsstatusitem
@interface NSStatusItem (Declarations)
@property(readonly, strong) NSStatusBarButton* _Nullable button;
@property(copy) NSString* _Null_unspecified autosaveName;
@property(getter=isVisible) BOOL visible;
@end

// https://developer.apple.com/documentation/appkit/nsaccessibilityprotocol
@interface NSView (Declarations)
- (void)setAccessibilityLabel:(NSString* _Nullable)label;
@end

// https://developer.apple.com/documentation/appkit/nsimage
@interface NSImage (Declarations)
+ (instancetype _Nullable)imageWithSystemSymbolName:(NSString* _Nonnull)name
                           accessibilityDescription:(NSString* _Nullable)description;
- (void)setTemplate:(BOOL)isTemplate;
@end

// https://developer.apple.com/documentation/appkit/nsscreen
@interface NSScreen (Declarations)
@property(readonly) NSRect auxiliaryTopLeftArea;
@property(readonly) NSRect auxiliaryTopRightArea;
@end

// https://developer.apple.com/documentation/appkit/nsapplication
@interface NSApplication (Declarations)
- (void)activate;
@property(readonly, strong) NSAppearance* _Nonnull effectiveAppearance;
@end

// https://developer.apple.com/documentation/foundation/nsappleeventmanager
typedef unsigned int AEEventClass;
typedef unsigned int AEEventID;
constexpr AEEventClass kCoreEventClass = 0x61657674;   // "aevt"
constexpr AEEventID kAEReopenApplication = 0x72617070; // "rapp"

@interface NSAppleEventManager (Declarations)
+ (NSAppleEventManager* _Nonnull)sharedAppleEventManager;
- (void)setEventHandler:(id _Nonnull)handler
            andSelector:(SEL _Nonnull)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end

// https://developer.apple.com/documentation/appkit/nscolorspace
@interface NSColorSpace (Declarations)
@property(class, strong, readonly) NSColorSpace* _Nonnull sRGBColorSpace;
@end

// https://developer.apple.com/documentation/appkit/nscolor/controlaccentcolor
@interface NSColor (Declarations)
@property(class, strong, readonly) NSColor* _Nonnull controlAccentColor;
@end

// https://developer.apple.com/documentation/appkit/nspasteboard/clearcontents()
@interface NSPasteboard (Declarations)
- (NSInteger)clearContents;
@end

// https://developer.apple.com/documentation/appkit/nsworkspace
@interface NSWorkspace (Declarations)
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property(readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>* _Nonnull)urls;
@end
extern "C" NSString* const _Nonnull NSWorkspaceActiveSpaceDidChangeNotification;
extern "C" NSString* const _Nonnull NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;

// https://developer.apple.com/documentation/appkit/nsrunningapplication
@interface NSRunningApplication (Declarations)
+ (NSArray<NSRunningApplication*>* _Nonnull)runningApplicationsWithBundleIdentifier:(NSString* _Nonnull)identifier;
@end
