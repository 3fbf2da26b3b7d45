#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Update/Appcast.h"
#include "TunedeckCore/Update/UpdateError.h"

#include <QCoroTask>
#include <QString>

#include <expected>
#include <stop_token>

namespace tunedeck {

/// Puts a newer release in the place of the installed application. Until the last step the installed one is untouched;
/// a failure leaves it exactly as it was and nothing behind.
namespace UpdateInstaller {

template<class T>
using Result = std::expected<T, UpdateError>;

/// Downloads, checks, unpacks, validates and swaps in a release. `installed`: path of the bundle; `bundleID`: what the
/// new one must be. Gives the new bundle's path.
QCoro::Task<Result<QString>> install(Release release, QString installed, QString bundleID, Downloader downloader,
                                     DownloadProgress progress, std::stop_token stop);

/// SHA-256 of a file's bytes in lower-case hexadecimal, read in chunks of 1 MiB.
Result<QString> sha256Hex(const QString& path, std::stop_token stop = {});

/// Unpacks the archive into the folder, which is made, and gives the path of the application in it.
Result<QString> unpack(const QString& zip, const QString& folder, std::stop_token stop = {});

/// Whether the application is the expected one in exactly that version.
Result<void> validate(const QString& app, const QString& bundleID, const QString& version);

/// Removes what updates that were killed left beside the bundle; those under way are left alone.
void sweep(const QString& installed);

} // namespace UpdateInstaller

} // namespace tunedeck
