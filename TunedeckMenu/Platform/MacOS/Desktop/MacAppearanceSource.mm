#include "TunedeckMenu/Platform/MacOS/Desktop/MacAppearanceSource.h"

#import <AppKit/AppKit.h>

/// Reports every change of the settings to the source.
@interface MacAppearanceObserver : NSObject
- (instancetype)initWithSource:(tunedeck::MacAppearanceSource*)source;
- (void)stop;
- (void)settingsChanged:(NSNotification*)notification;
@end

@implementation MacAppearanceObserver {
    tunedeck::MacAppearanceSource* _source;
}

- (instancetype)initWithSource:(tunedeck::MacAppearanceSource*)source {
    self = [super init];
    if (self) {
        _source = source;
        [NSApp addObserver:self forKeyPath:@"effectiveAppearance" options:0 context:nullptr];
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(settingsChanged:)
                                                     name:NSSystemColorsDidChangeNotification
                                                   object:nil];
        [[[NSWorkspace sharedWorkspace] notificationCenter]
            addObserver:self
               selector:@selector(settingsChanged:)
                   name:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                 object:nil];
    }
    return self;
}

- (void)stop {
    [NSApp removeObserver:self forKeyPath:@"effectiveAppearance"];
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [[[NSWorkspace sharedWorkspace] notificationCenter] removeObserver:self];
}

- (void)settingsChanged:(NSNotification*)notification {
    _source->check();
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
    _source->check();
}

@end

namespace tunedeck {

namespace {

std::optional<QRgb> accentColor() {
    NSColor* color = [[NSColor controlAccentColor] colorUsingColorSpace:[NSColorSpace sRGBColorSpace]];
    if (color == nil) {
        return std::nullopt;
    }
    const auto byte = [](double part) { return qRound(part * 255); };
    return qRgb(byte([color redComponent]), byte([color greenComponent]), byte([color blueComponent]));
}

} // namespace

MacAppearanceSource::MacAppearanceSource()
    : m_observer([[MacAppearanceObserver alloc] initWithSource:this]), m_notified(current()) {}

MacAppearanceSource::~MacAppearanceSource() {
    [m_observer stop];
}

Appearance MacAppearanceSource::current() const {
    NSString* match = [[NSApp effectiveAppearance]
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
    return {.dark = static_cast<bool>([match isEqualToString:NSAppearanceNameDarkAqua]),
            .reduceMotion = static_cast<bool>(workspace.accessibilityDisplayShouldReduceMotion),
            .moreContrast = static_cast<bool>(workspace.accessibilityDisplayShouldIncreaseContrast),
            .accent = accentColor()};
}

void MacAppearanceSource::check() {
    const auto now = current();
    if (now != m_notified) {
        m_notified = now;
        Q_EMIT changed();
    }
}

} // namespace tunedeck
