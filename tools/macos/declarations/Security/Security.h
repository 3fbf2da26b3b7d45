// https://developer.apple.com/documentation/security/code-signing-services
#pragma once

#include <CoreFoundation/CoreFoundation.h>

typedef struct __SecCode* SecCodeRef;
typedef const struct __SecCode* SecStaticCodeRef;
typedef struct __SecRequirement* SecRequirementRef;
typedef uint32_t SecCSFlags;

constexpr OSStatus errSecSuccess = 0;
constexpr SecCSFlags kSecCSDefaultFlags = 0;
constexpr SecCSFlags kSecCSCheckAllArchitectures = 1 << 0;
constexpr SecCSFlags kSecCSCheckNestedCode = 1 << 3;
constexpr SecCSFlags kSecCSStrictValidate = 1 << 4;
constexpr uint32_t kSecCodeSignatureAdhoc = 0x0002;
extern "C" const CFStringRef _Nonnull kSecCodeInfoFlags;

extern "C" {
OSStatus SecCodeCopySelf(SecCSFlags flags, SecCodeRef _Nullable* _Nonnull self);
OSStatus SecCodeCopyStaticCode(SecCodeRef _Nonnull code, SecCSFlags flags,
                               SecStaticCodeRef _Nullable* _Nonnull staticCode);
OSStatus SecCodeCopyDesignatedRequirement(SecStaticCodeRef _Nonnull code, SecCSFlags flags,
                                          SecRequirementRef _Nullable* _Nonnull requirement);
OSStatus SecCodeCopySigningInformation(SecStaticCodeRef _Nonnull code, SecCSFlags flags,
                                       CFDictionaryRef _Nullable* _Nonnull information);
OSStatus SecStaticCodeCreateWithPath(CFURLRef _Nonnull path, SecCSFlags flags,
                                     SecStaticCodeRef _Nullable* _Nonnull staticCode);
OSStatus SecStaticCodeCheckValidity(SecStaticCodeRef _Nonnull code, SecCSFlags flags,
                                    SecRequirementRef _Nullable requirement);
}
