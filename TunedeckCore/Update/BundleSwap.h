#pragma once

#include "TunedeckCore/Update/Exchange.h"
#include "TunedeckCore/Update/UpdateError.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <functional>

namespace tunedeck::UpdateInstaller {

using Exchange = std::function<bool(const QByteArray& first, const QByteArray& second)>;

/// Swaps the bundle `with` into the place of the installed one, on the same volume, and removes the old bundle.
/// `aside`: unused path on that volume, where the old bundle is for a moment if the file system has no exchange.
/// Returns the path of the installed bundle.
std::expected<QString, UpdateError> replace(const QString& installed, const QString& with, const QString& aside,
                                            const Exchange& exchange = &exchangeFolders);

} // namespace tunedeck::UpdateInstaller
