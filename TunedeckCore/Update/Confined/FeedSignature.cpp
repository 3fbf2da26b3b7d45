#include "TunedeckCore/Update/Confined/FeedSignature.h"

#include "TunedeckCore/Support/Text/Base64.h"

#include <openssl/evp.h>

#include <memory>

namespace tunedeck {

namespace {

constexpr int keyBytes = 32;       // RFC 8032, 5.1.5
constexpr int signatureBytes = 64; // RFC 8032, 5.1.6

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Context = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;

const unsigned char* raw(const QByteArray& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

} // namespace

bool isSignedBy(const QByteArray& bytes, const QString& signature, const QString& publicKey) {
    const auto key = decodeBase64(publicKey.toUtf8());
    const auto signedWith = decodeBase64(signature.trimmed().toUtf8());
    if (!key || key->size() != keyBytes || !signedWith || signedWith->size() != signatureBytes) {
        return false;
    }
    const Key evpKey(EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, raw(*key), keyBytes), &EVP_PKEY_free);
    const Context context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    return evpKey && context && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, evpKey.get()) == 1 &&
           EVP_DigestVerify(context.get(), raw(*signedWith), signatureBytes, raw(bytes),
                            static_cast<std::size_t>(bytes.size())) == 1;
}

} // namespace tunedeck
