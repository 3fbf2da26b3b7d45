#include "TunedeckMenu/Platform/MacOS/Tray/MacStatusItem.h"

#include "TunedeckMenu/Platform/MacOS/System/MacStrings.h"
#include "TunedeckMenu/Platform/MacValues/ScreenCoordinates.h"

/// Passes clicks and changes of the space on to the item.
@interface MacStatusItemTarget : NSObject
- (instancetype)initWithItem:(tunedeck::StatusItem*)item;
- (void)clicked:(id)sender;
- (void)spaceChanged:(NSNotification*)notification;
@end

@implementation MacStatusItemTarget {
    tunedeck::StatusItem* _item;
}

- (instancetype)initWithItem:(tunedeck::StatusItem*)item {
    self = [super init];
    if (self) {
        _item = item;
    }
    return self;
}

- (void)clicked:(id)sender {
    [NSApp activate]; // else the panel would open behind the other applications, without the keyboard
    Q_EMIT _item->activated();
}

- (void)spaceChanged:(NSNotification*)notification {
    Q_EMIT _item->spaceChanged();
}

@end

namespace tunedeck {

namespace {

/// Where the system remembers the item's place, in points from the right edge of the menu bar.
NSString* const positionKey = @"NSStatusItem Preferred Position TunedeckStatusItem";
constexpr NSInteger firstPosition = 220;

QRectF fromRect(NSRect rectangle) {
    return {rectangle.origin.x, rectangle.origin.y, rectangle.size.width, rectangle.size.height};
}

} // namespace

MacStatusItem::MacStatusItem() : m_target([[MacStatusItemTarget alloc] initWithItem:this]) {}

MacStatusItem::~MacStatusItem() {
    [[[NSWorkspace sharedWorkspace] notificationCenter] removeObserver:m_target];
    if (m_item != nil) {
        [[NSStatusBar systemStatusBar] removeStatusItem:m_item];
    }
}

void MacStatusItem::install() {
    // Qt's settings have a file of their own; the menu bar reads the bundle's.
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    if ([defaults objectForKey:positionKey] == nil) {
        [defaults setInteger:firstPosition forKey:positionKey];
    }
    m_item = [[NSStatusBar systemStatusBar] statusItemWithLength:NSSquareStatusItemLength];
    m_item.autosaveName = @"TunedeckStatusItem";
    NSStatusBarButton* button = m_item.button;
    button.target = m_target;
    button.action = @selector(clicked:);
    [button sendActionOn:NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown];
    [button setAccessibilityLabel:@"Tunedeck"];
    draw();
    [[[NSWorkspace sharedWorkspace] notificationCenter] addObserver:m_target
                                                           selector:@selector(spaceChanged:)
                                                               name:NSWorkspaceActiveSpaceDidChangeNotification
                                                             object:nil];
}

void MacStatusItem::setSymbol(const QString& symbol, const QString& toolTip) {
    if (symbol != m_symbol || toolTip != m_toolTip) {
        m_symbol = symbol;
        m_toolTip = toolTip;
        draw();
    }
}

void MacStatusItem::draw() {
    if (m_item == nil || m_symbol.isEmpty()) {
        return;
    }
    NSImage* image = [NSImage imageWithSystemSymbolName:toNSString(m_symbol) accessibilityDescription:@"Tunedeck"];
    [image setTemplate:YES];
    m_item.button.image = image;
    m_item.button.toolTip = toNSString(m_toolTip);
}

NSWindow* MacStatusItem::window() const {
    return m_item.button.window;
}

bool MacStatusItem::isAvailable() const {
    return window() != nil;
}

std::optional<QRect> MacStatusItem::geometry() const {
    NSScreen* primary = [[NSScreen screens] firstObject];
    if (!isAvailable() || primary == nil) {
        return std::nullopt;
    }
    return fromLowerLeft(fromRect([window() frame]), [primary frame].size.height);
}

std::optional<MenuBarPlacement> MacStatusItem::placement() const {
    NSScreen* screen = [window() screen];
    if (screen == nil) {
        screen = [NSScreen mainScreen];
    }
    if (!isAvailable() || screen == nil) {
        return std::nullopt;
    }
    auto measured =
        MenuBarPlacement::measured(fromRect([window() frame]), fromRect([screen frame]),
                                   fromRect(screen.auxiliaryTopLeftArea), fromRect(screen.auxiliaryTopRightArea));
    measured.occluded = ([window() occlusionState] & NSWindowOcclusionStateVisible) == 0;
    measured.userHidden = !m_item.visible;
    return measured;
}

} // namespace tunedeck
