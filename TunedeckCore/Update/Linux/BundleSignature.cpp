#include "TunedeckCore/Update/BundleSignature.h"

namespace tunedeck {

std::expected<void, QString> checkBundleSignature(const QString& /*bundle*/) {
    return {};
}

} // namespace tunedeck
