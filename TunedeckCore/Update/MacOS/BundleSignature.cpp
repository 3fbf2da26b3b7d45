#include "TunedeckCore/Update/BundleSignature.h"

#include <QByteArray>
#include <QFile>

#include <CoreFoundation/CoreFoundation.h>
#include <Security/Security.h>

#include <memory>
#include <type_traits>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};
/// Owns a Core Foundation object.
template<class Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, Release>;

// Nested code is the helpers and the panel's module; the network isn't asked about revoked certificates.
constexpr SecCSFlags checks = kSecCSCheckAllArchitectures | kSecCSCheckNestedCode | kSecCSStrictValidate;

std::unexpected<QString> failure(const QString& what, OSStatus status) {
    return std::unexpected(u"%1 (code signature, status %2)."_s.arg(what, QString::number(status)));
}

/// Whether this signature names no signer: that of a build for development.
bool isAdHoc(SecStaticCodeRef code) {
    CFDictionaryRef facts = nullptr;
    if (SecCodeCopySigningInformation(code, kSecCSDefaultFlags, &facts) != errSecSuccess) {
        return false;
    }
    const Owned<CFDictionaryRef> owner(facts);
    const auto* number = static_cast<CFNumberRef>(CFDictionaryGetValue(facts, kSecCodeInfoFlags));
    std::uint32_t flags = 0;
    return number != nullptr && CFNumberGetValue(number, kCFNumberSInt32Type, &flags) &&
           (flags & kSecCodeSignatureAdhoc) != 0;
}

} // namespace

std::expected<void, QString> checkBundleSignature(const QString& bundle) {
    SecCodeRef self = nullptr;
    if (const auto status = SecCodeCopySelf(kSecCSDefaultFlags, &self); status != errSecSuccess) {
        return failure(u"This application isn't signed"_s, status);
    }
    const Owned<SecCodeRef> selfOwner(self);
    SecStaticCodeRef running = nullptr;
    if (const auto status = SecCodeCopyStaticCode(self, kSecCSDefaultFlags, &running); status != errSecSuccess) {
        return failure(u"This application isn't signed"_s, status);
    }
    const Owned<SecStaticCodeRef> runningOwner(running);
    SecRequirementRef requirement = nullptr;
    // That of an ad-hoc signature is its own hash, which no other build has.
    if (!isAdHoc(running)) {
        if (const auto status = SecCodeCopyDesignatedRequirement(running, kSecCSDefaultFlags, &requirement);
            status != errSecSuccess) {
            return failure(u"This application isn't signed"_s, status);
        }
    }
    const Owned<SecRequirementRef> requirementOwner(requirement);
    const auto path = QFile::encodeName(bundle);
    const Owned<CFURLRef> url(CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.constData()), path.size(), true));
    SecStaticCodeRef fresh = nullptr;
    if (const auto status = SecStaticCodeCreateWithPath(url.get(), kSecCSDefaultFlags, &fresh);
        status != errSecSuccess) {
        return failure(u"The new version isn't signed"_s, status);
    }
    const Owned<SecStaticCodeRef> freshOwner(fresh);
    if (const auto status = SecStaticCodeCheckValidity(fresh, checks, requirement); status != errSecSuccess) {
        return failure(u"The new version isn't signed like this one"_s, status);
    }
    return {};
}

} // namespace tunedeck
