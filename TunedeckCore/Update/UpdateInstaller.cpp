#include "TunedeckCore/Update/UpdateInstaller.h"

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

#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

namespace tunedeck {

namespace {

using UpdateInstaller::Result;

constexpr std::int64_t archiveLimit = std::int64_t{1024} * 1024 * 1024;
constexpr qint64 hashChunk = 1'048'576;

std::unexpected<UpdateError> error(UpdateError::Kind kind) {
    return std::unexpected(UpdateError{.kind = kind});
}

std::unexpected<UpdateError> other(const QString& detail) {
    return std::unexpected(UpdateError::other(detail));
}

/// All that follows the download; blocking.
Result<QString> putInPlace(const ScratchFolder& scratch, const Release& release, const QString& installed,
                           const QString& bundleID, const std::stop_token& stop) {
    const QString zip = scratch.at(QStringLiteral("update.zip"));
    const auto digest = UpdateInstaller::sha256Hex(zip, stop);
    if (!digest) {
        return std::unexpected(digest.error());
    }
    if (digest->compare(release.sha256, Qt::CaseInsensitive) != 0) {
        return error(UpdateError::Kind::checksum);
    }
    const auto app = UpdateInstaller::unpack(zip, scratch.at(QStringLiteral("unpacked")), stop);
    if (!app) {
        return std::unexpected(app.error());
    }
    if (const auto valid = UpdateInstaller::validate(*app, bundleID, release.version); !valid) {
        return std::unexpected(valid.error());
    }
    if (stop.stop_requested()) {
        return other(QStringLiteral("The update was stopped."));
    }
    // What is gone by then needn't be brought to the disk before the swap.
    QFile::remove(zip);
    return UpdateInstaller::replace(installed, *app);
}

} // namespace

QCoro::Task<Result<QString>> UpdateInstaller::install(Release release, QString installed, QString bundleID,
                                                      Downloader downloader, DownloadProgress progress,
                                                      std::stop_token stop) {
    installed = QDir::cleanPath(installed); // with a "/" at its end, it would count as the folder that it is in
    if (access(QFile::encodeName(QFileInfo(installed).absolutePath()).constData(), W_OK) != 0) {
        co_return error(UpdateError::Kind::notWritable);
    }
    auto made = ScratchFolder::make(installed);
    if (!made) {
        co_return other(made.error());
    }
    // Shared with the work in the background, which may outlive a stopped task by a moment.
    const auto scratch = std::make_shared<ScratchFolder>(std::move(*made));
    const QUrl url(release.url, QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty()) {
        co_return error(UpdateError::Kind::noApp);
    }
    const QString part = scratch->at(QStringLiteral("download"));
    DownloadRequest request{.url = url, .file = part, .limit = archiveLimit};
    const auto status = co_await downloader.download(request, std::move(progress), stop);
    if (!status) {
        co_return other(status.error());
    }
    if (*status != 200) {
        co_return std::unexpected(UpdateError::http(*status));
    }
    if (QFile file(part); !file.rename(scratch->at(QStringLiteral("update.zip")))) {
        co_return other(file.errorString());
    }
    std::function<Result<QString>(std::stop_token)> work = [=](std::stop_token stopped) {
        return putInPlace(*scratch, release, installed, bundleID, stopped);
    };
    auto result = co_await inBackground<Result<QString>>(std::move(work), stop);
    if (!result) {
        co_return other(QStringLiteral("The update was stopped."));
    }
    co_return *result;
}

Result<QString> UpdateInstaller::sha256Hex(const QString& path, std::stop_token stop) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return other(file.errorString());
    }
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> hasher(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    EVP_DigestInit_ex(hasher.get(), EVP_sha256(), nullptr);
    std::vector<char> chunk(hashChunk);
    qint64 count = 0;
    while ((count = file.read(chunk.data(), hashChunk)) > 0) {
        if (stop.stop_requested()) {
            return other(QStringLiteral("The update was stopped."));
        }
        EVP_DigestUpdate(hasher.get(), chunk.data(), static_cast<std::size_t>(count));
    }
    if (count < 0) {
        return other(file.errorString());
    }
    QByteArray digest(EVP_MAX_MD_SIZE, '\0');
    unsigned int size = 0;
    EVP_DigestFinal_ex(hasher.get(), reinterpret_cast<unsigned char*>(digest.data()), &size);
    digest.truncate(size);
    return QString::fromLatin1(digest.toHex());
}

Result<QString> UpdateInstaller::unpack(const QString& zip, const QString& folder, std::stop_token stop) {
    if (const auto made = createFolder(folder); !made) {
        return other(made.error());
    }
    if (!unpackZip(zip, folder, stop)) {
        return error(UpdateError::Kind::noApp);
    }
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const auto entries = QDir(folder).entryInfoList(everything, QDir::Name);
    for (const QFileInfo& entry : entries) {
        if (entry.suffix() == u"app" && !entry.baseName().isEmpty()) { // ".app" by itself is a name, no extension
            return entry.filePath();
        }
    }
    return error(UpdateError::Kind::noApp);
}

Result<void> UpdateInstaller::validate(const QString& app, const QString& bundleID, const QString& version) {
    const auto bytes = readFile(app + QStringLiteral("/Contents/Info.plist"), 1024 * 1024);
    const auto info = bytes ? parsePropertyList(*bytes) : std::nullopt;
    if (!info) {
        return error(UpdateError::Kind::noApp);
    }
    const auto text = [&](const char* key) {
        return textValue(*info, QString::fromLatin1(key)).value_or(QStringLiteral("?"));
    };
    if (const QString found = text("CFBundleIdentifier"); found != bundleID) {
        return std::unexpected(UpdateError::wrongApp(QStringLiteral("bundle ") + found));
    }
    if (const QString found = text("CFBundleShortVersionString"); found != version) {
        return std::unexpected(UpdateError::wrongApp(QStringLiteral("version %1, expected %2").arg(found, version)));
    }
    return {};
}

void UpdateInstaller::sweep(const QString& installed) {
    ScratchFolder::sweep(installed);
}

} // namespace tunedeck
