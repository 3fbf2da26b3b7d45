#include "TunedeckMenu/Platform/MacOS/Instance/MacReopenListener.h"

#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckMenu/Platform/MacOS/System/MacStrings.h"

#import <AppKit/AppKit.h>

@interface MacReopenHandler : NSObject
- (instancetype)initWithListener:(tunedeck::ReopenListener*)listener;
- (void)reopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply;
@end

@implementation MacReopenHandler {
    tunedeck::ReopenListener* _listener;
}

- (instancetype)initWithListener:(tunedeck::ReopenListener*)listener {
    self = [super init];
    if (self) {
        _listener = listener;
    }
    return self;
}

- (void)reopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply {
    Q_EMIT _listener->reopenRequested();
}

@end

namespace tunedeck {

using namespace Qt::StringLiterals;

MacReopenListener::MacReopenListener() : m_handler([[MacReopenHandler alloc] initWithListener:this]) {}

MacReopenListener::~MacReopenListener() {
    [[NSAppleEventManager sharedAppleEventManager] removeEventHandlerForEventClass:kCoreEventClass
                                                                        andEventID:kAEReopenApplication];
}

void MacReopenListener::start() {
    // In the event loop: when the application has finished launching, it has set its own handler, which this replaces.
    QMetaObject::invokeMethod(
        this,
        [handler = m_handler] {
            [[NSAppleEventManager sharedAppleEventManager] setEventHandler:handler
                                                               andSelector:@selector(reopen:withReplyEvent:)
                                                             forEventClass:kCoreEventClass
                                                                andEventID:kAEReopenApplication];
        },
        Qt::QueuedConnection);
}

/// For starts from a shell; Launch Services don't start the application twice. The request can't be awaited, so it
/// counts as accepted when it was sent.
ReopenReply requestReopen(std::chrono::milliseconds /*timeout*/) {
    NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
    const auto self = [[NSProcessInfo processInfo] processIdentifier];
    NSArray<NSRunningApplication*>* applications =
        identifier == nil ? @[] : [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier];
    for (NSRunningApplication* running in applications) {
        if (running.processIdentifier != self && running.finishedLaunching) {
            const auto bundle = fromNSString([running.bundleURL path]);
            return startDetached(u"/usr/bin/open"_s, {bundle}) ? ReopenReply::Accepted : ReopenReply::None;
        }
    }
    return ReopenReply::None;
}

} // namespace tunedeck
