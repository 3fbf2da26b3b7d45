// https://developer.apple.com/documentation/corefoundation
#pragma once

#include <stdint.h>

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFURL* CFURLRef;
typedef long CFIndex;
typedef CFIndex CFNumberType;
typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef int32_t OSStatus;

constexpr CFNumberType kCFNumberSInt32Type = 3;

extern "C" {
void CFRelease(CFTypeRef _Nonnull object);
const void* _Nullable CFDictionaryGetValue(CFDictionaryRef _Nonnull dictionary, const void* _Nullable key);
Boolean CFNumberGetValue(CFNumberRef _Nonnull number, CFNumberType type, void* _Nonnull value);
CFURLRef _Nullable CFURLCreateFromFileSystemRepresentation(CFAllocatorRef _Nullable allocator,
                                                           const UInt8* _Nonnull buffer, CFIndex length,
                                                           Boolean isDirectory);
}
