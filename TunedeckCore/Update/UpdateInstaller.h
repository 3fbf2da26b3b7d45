#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Update/Appcast.h"
#include "TunedeckCore/Update/UpdateError.h"

#include <QCoroTask>
#include <QString>

#include <expected>
#include <stop_token>

namespace tunedeck {

/// Replaces the installed application with a newer release. The installed bundle is untouched until the last step;
/// after a failure it is unchanged and no temporary files remain.
namespace UpdateInstaller {

template<class T>
using Result = std::expected<T, UpdateError>;

/// Downloads, verifies, unpacks, validates and swaps in a release. `installed`: path of the bundle; `bundleID`:
/// expected identifier of the new one. Returns the path of the new bundle.
QCoro::Task<Result<QString>> install(Release release, QString installed, QString bundleID, Downloader downloader,
                                     DownloadProgress progress, std::stop_token stop);

/// SHA-256 of a file in lower-case hexadecimal.
Result<QString> sha256Hex(const QString& path, std::stop_token stop = {});

/// Creates the folder, unpacks the archive into it and returns the path of the application in it.
Result<QString> unpack(const QString& zip, const QString& folder, std::stop_token stop = {});

/// Checks that the application has this identifier and exactly this version.
Result<void> validate(const QString& app, const QString& bundleID, const QString& version);

} // namespace UpdateInstaller

} // namespace tunedeck
