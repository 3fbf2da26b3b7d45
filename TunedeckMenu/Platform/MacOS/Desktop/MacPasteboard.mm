#include "TunedeckMenu/Platform/MacOS/Desktop/MacPasteboard.h"

#include "TunedeckMenu/Platform/MacOS/System/MacStrings.h"

#import <AppKit/AppKit.h>

namespace tunedeck {

namespace {

/// The mark that clipboard managers have agreed on (nspasteboard.org); its content doesn't matter.
NSString* const concealedType = @"org.nspasteboard.ConcealedType";

void copy(const QString& text, NSArray<NSString*>* marks) {
    NSPasteboard* board = [NSPasteboard generalPasteboard];
    [board clearContents];
    [board setString:toNSString(text) forType:NSPasteboardTypeString];
    for (NSString* mark in marks) {
        [board setString:@"" forType:mark];
    }
}

} // namespace

void MacPasteboard::setText(const QString& text) {
    copy(text, @[]);
}

void MacPasteboard::setSecret(const QString& text) {
    copy(text, @[ concealedType ]);
}

} // namespace tunedeck
