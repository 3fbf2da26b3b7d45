#pragma once

#include "TunedeckCore/Support/Http/Downloader.h"
#include "TunedeckCore/Update/Appcast.h"
#include "TunedeckCore/Update/BundleSignature.h"
#include "TunedeckCore/Update/UpdateError.h"

#include <QCoroTask>
#include <QString>

#include <expected>
#include <stop_token>

namespace tunedeck {

/// Replaces the installed application with a newer release. The installed bundle is untouched until the last step;
/// after a failure it is unchanged and no temporary files remain.
namespace UpdateInstaller {

/// Downloads, verifies, unpacks, validates and swaps in a release. `installed`: path of the bundle; `bundleID`:
/// expected identifier of the new one; `helper`: path of the update helper; `checkSignature`: runs before the new
/// program does. Returns the path of the new bundle.
QCoro::Task<std::expected<QString, UpdateError>> install(Release release, QString installed, QString bundleID,
                                                         QString helper, DownloadProgress progress,
                                                         std::stop_token stop,
                                                         SignatureCheck checkSignature = &checkBundleSignature);

} // namespace UpdateInstaller

} // namespace tunedeck
