#include "TunedeckCore/Update/UpdateInstaller.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Async/Background.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/PropertyList.h"
#include "TunedeckCore/Update/Archive.h"
#include "TunedeckCore/Update/BundleSwap.h"
#include "TunedeckCore/Update/ScratchFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <openssl/evp.h>
#include <unistd.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

using UpdateInstaller::Result;

constexpr std::int64_t archiveLimit = std::int64_t{1024} * 1024 * 1024;
const QString archiveName = u"update.zip"_s;
constexpr qint64 hashChunk = 1'048'576;
const QString cancelled = u"The update was cancelled."_s;

std::unexpected<UpdateError> failure(UpdateError::Kind kind) {
    return std::unexpected(UpdateError{.kind = kind});
}

std::unexpected<UpdateError> failure(const QString& detail) {
    return std::unexpected(UpdateError::other(detail));
}

/// The blocking steps after the download.
Result<QString> installArchive(const ScratchFolder& scratch, const Release& release, const QString& installed,
                               const QString& bundleID, const std::stop_token& stop) {
    const QString zip = scratch.filePath(archiveName);
    const auto digest = UpdateInstaller::sha256Hex(zip, stop);
    if (!digest) {
        return std::unexpected(digest.error());
    }
    if (digest->compare(release.sha256, Qt::CaseInsensitive) != 0) {
        return failure(UpdateError::Kind::checksum);
    }
    const auto app = UpdateInstaller::unpack(zip, scratch.filePath(u"unpacked"_s), stop);
    if (!app) {
        return std::unexpected(app.error());
    }
    if (const auto valid = UpdateInstaller::validate(*app, bundleID, release.version); !valid) {
        return std::unexpected(valid.error());
    }
    if (stop.stop_requested()) {
        return failure(cancelled);
    }
    // Before replace() syncs the volume, so that the archive isn't written out.
    QFile::remove(zip);
    return UpdateInstaller::replace(installed, *app);
}

} // namespace

QCoro::Task<Result<QString>> UpdateInstaller::install(Release release, QString installed, QString bundleID,
                                                      Downloader downloader, DownloadProgress progress,
                                                      std::stop_token stop) {
    installed = QDir::cleanPath(installed); // the parent of "a/b/" would be "a/b"
    if (access(QFile::encodeName(QFileInfo(installed).absolutePath()).constData(), W_OK) != 0) {
        co_return failure(UpdateError::Kind::notWritable);
    }
    // Shared with the background thread, which may outlive a cancelled task.
    const auto scratch = ScratchFolder::create(installed);
    if (!scratch) {
        co_return failure(scratch.error());
    }
    const QUrl url(release.url, QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty()) {
        co_return failure(UpdateError::Kind::noApp);
    }
    DownloadRequest request{.url = url, .file = (*scratch)->filePath(archiveName), .limit = archiveLimit};
    const auto status = co_await downloader.download(request, std::move(progress), stop);
    if (!status) {
        co_return failure(status.error());
    }
    if (*status != 200) {
        co_return std::unexpected(UpdateError::http(*status));
    }
    std::function<Result<QString>(std::stop_token)> work = [=, folder = *scratch](std::stop_token token) {
        return installArchive(*folder, release, installed, bundleID, token);
    };
    auto result = co_await inBackground<Result<QString>>(std::move(work), stop);
    if (!result) {
        co_return failure(cancelled);
    }
    co_return *result;
}

Result<QString> UpdateInstaller::sha256Hex(const QString& path, std::stop_token stop) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return failure(file.errorString());
    }
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> hasher(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    EVP_DigestInit_ex(hasher.get(), EVP_sha256(), nullptr);
    std::vector<char> chunk(hashChunk);
    qint64 count = 0;
    while ((count = file.read(chunk.data(), hashChunk)) > 0) {
        if (stop.stop_requested()) {
            return failure(cancelled);
        }
        EVP_DigestUpdate(hasher.get(), chunk.data(), static_cast<std::size_t>(count));
    }
    if (count < 0) {
        return failure(file.errorString());
    }
    QByteArray digest(EVP_MD_get_size(EVP_sha256()), '\0');
    EVP_DigestFinal_ex(hasher.get(), reinterpret_cast<unsigned char*>(digest.data()), nullptr);
    return QString::fromLatin1(digest.toHex());
}

Result<QString> UpdateInstaller::unpack(const QString& zip, const QString& folder, std::stop_token stop) {
    if (const auto created = createFolder(folder); !created) {
        return failure(created.error());
    }
    if (!unpackZip(zip, folder, stop)) {
        return failure(UpdateError::Kind::noApp);
    }
    const auto filters = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const auto entries = QDir(folder).entryInfoList(filters, QDir::Name);
    for (const QFileInfo& entry : entries) {
        if (entry.suffix() == u"app" && !entry.baseName().isEmpty()) { // ".app" is a name without an extension
            return entry.filePath();
        }
    }
    return failure(UpdateError::Kind::noApp);
}

Result<void> UpdateInstaller::validate(const QString& app, const QString& bundleID, const QString& version) {
    const auto bytes = readFile(BundlePaths(app).infoPlist(), 1024 * 1024);
    const auto info = bytes ? parsePropertyList(*bytes) : std::nullopt;
    if (!info) {
        return failure(UpdateError::Kind::noApp);
    }
    const auto text = [&](const QString& key) { return textValue(*info, key).value_or(u"?"_s); };
    if (const QString found = text(u"CFBundleIdentifier"_s); found != bundleID) {
        return std::unexpected(UpdateError::wrongApp(u"bundle "_s + found));
    }
    if (const QString found = text(u"CFBundleShortVersionString"_s); found != version) {
        return std::unexpected(UpdateError::wrongApp(u"version %1, expected %2"_s.arg(found, version)));
    }
    return {};
}

} // namespace tunedeck
