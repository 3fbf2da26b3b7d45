#pragma once

#include <QString>
#include <QUrl>

#import <Foundation/Foundation.h>

namespace tunedeck {

// Qt has these conversions too, but declares them on macOS only; these can be type-checked on every system.

inline NSString* toNSString(const QString& text) {
    return [NSString stringWithCharacters:reinterpret_cast<const unichar*>(text.utf16())
                                   length:static_cast<NSUInteger>(text.size())];
}

inline QString fromNSString(NSString* text) {
    return QString::fromUtf8([text UTF8String]);
}

inline NSURL* toNSURL(const QUrl& url) {
    return [NSURL URLWithString:toNSString(url.toString(QUrl::FullyEncoded))];
}

} // namespace tunedeck
