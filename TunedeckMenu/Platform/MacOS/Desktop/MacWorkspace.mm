#include "TunedeckMenu/Platform/MacOS/Desktop/MacWorkspace.h"

#include "TunedeckMenu/Platform/MacOS/System/MacStrings.h"

#include <QFileIconProvider>
#include <QFileInfo>

#import <AppKit/AppKit.h>

namespace tunedeck {

bool MacWorkspace::open(const QUrl& url) {
    NSURL* target = url.isValid() && !url.isRelative() ? toNSURL(url) : nil;
    return target != nil && [[NSWorkspace sharedWorkspace] openURL:target];
}

void MacWorkspace::reveal(const QString& path) {
    [[NSWorkspace sharedWorkspace] activateFileViewerSelectingURLs:@[ [NSURL fileURLWithPath:toNSString(path)] ]];
}

QIcon MacWorkspace::icon(const QString& path) {
    return QFileIconProvider().icon(QFileInfo(path)); // asks the workspace
}

} // namespace tunedeck
