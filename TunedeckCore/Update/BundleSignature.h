#pragma once

#include <QString>

#include <expected>
#include <functional>

namespace tunedeck {

/// Whether a bundle may replace the running application as far as its code signature goes. An error is a sentence.
using SignatureCheck = std::function<std::expected<void, QString>(const QString& bundle)>;

/// Requires a valid signature that satisfies the running application's own requirement. Accepts every bundle where
/// bundles aren't signed. Reads the whole bundle, so it blocks.
std::expected<void, QString> checkBundleSignature(const QString& bundle);

} // namespace tunedeck
