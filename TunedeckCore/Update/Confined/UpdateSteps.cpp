#include "TunedeckCore/Update/Confined/UpdateSteps.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/PropertyList.h"
#include "TunedeckCore/Update/Confined/Archive.h"
#include "TunedeckCore/Update/Confined/FeedSignature.h"
#include "TunedeckCore/Update/UpdateFeed.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <openssl/evp.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr qint64 hashChunk = 1'048'576;
const UpdateError noApp{.kind = UpdateError::Kind::noApp};

/// Whether the program that the application's restart will run is the one that Info.plist names, a regular file of the
/// bundle and executable.
bool hasProgram(const QString& app, const QString& executable) {
    const QFileInfo program(BundlePaths(app).application());
    return program.fileName() == executable && program.isFile() && program.isExecutable() &&
           program.canonicalFilePath().startsWith(QFileInfo(app).canonicalFilePath() + u'/');
}

} // namespace

bool UpdateFeed::verify(const QByteArray& bytes, const QString& signature, const QString& publicKey) {
    return isSignedBy(bytes, signature, publicKey);
}

std::expected<QString, UpdateError> UpdateInstaller::sha256Hex(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return std::unexpected(UpdateError::other(file.errorString()));
    }
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> hasher(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    EVP_DigestInit_ex(hasher.get(), EVP_sha256(), nullptr);
    std::vector<char> chunk(hashChunk);
    qint64 count = 0;
    while ((count = file.read(chunk.data(), hashChunk)) > 0) {
        EVP_DigestUpdate(hasher.get(), chunk.data(), static_cast<std::size_t>(count));
    }
    if (count < 0) {
        return std::unexpected(UpdateError::other(file.errorString()));
    }
    QByteArray digest(EVP_MD_get_size(EVP_sha256()), '\0');
    EVP_DigestFinal_ex(hasher.get(), reinterpret_cast<unsigned char*>(digest.data()), nullptr);
    return QString::fromLatin1(digest.toHex());
}

std::expected<QString, UpdateError> UpdateInstaller::unpack(const QString& zip, const QString& folder) {
    if (const auto created = createFolder(folder); !created) {
        return std::unexpected(UpdateError::other(created.error()));
    }
    if (const auto unpacked = unpackZip(zip, folder); !unpacked) {
        return std::unexpected(unpacked.error());
    }
    const auto filters = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const auto entries = QDir(folder).entryInfoList(filters, QDir::Name);
    for (const QFileInfo& entry : entries) {
        if (entry.suffix() == u"app" && !entry.completeBaseName().isEmpty()) { // ".app" is a name without an extension
            return entry.filePath();
        }
    }
    return std::unexpected(noApp);
}

std::expected<void, UpdateError> UpdateInstaller::validate(const QString& app, const QString& bundleID,
                                                           const QString& version) {
    const auto bytes = readFile(BundlePaths(app).infoPlist(), 1024 * 1024);
    const auto info = bytes ? parsePropertyList(*bytes, PropertyListFormat::XmlOrBinary) : std::nullopt;
    if (!info) {
        return std::unexpected(noApp);
    }
    const auto text = [&](const QString& key) { return textValue(*info, key).value_or(u"?"_s); };
    if (const QString found = text(u"CFBundleIdentifier"_s); found != bundleID) {
        return std::unexpected(UpdateError::wrongApp(u"bundle "_s + found));
    }
    if (const QString found = text(u"CFBundleShortVersionString"_s); found != version) {
        return std::unexpected(UpdateError::wrongVersion(found, version));
    }
    return hasProgram(app, text(u"CFBundleExecutable"_s)) ? std::expected<void, UpdateError>() : std::unexpected(noApp);
}

} // namespace tunedeck
