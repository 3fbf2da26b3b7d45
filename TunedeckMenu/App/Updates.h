#pragma once

#include "TunedeckMenu/Model/MenuServices.h"

namespace tunedeck {

/// The way to newer versions of the running bundle: the product's signed feed, fetched with the bundle's download
/// helper, and the installer.
UpdateServices updateServices(const SystemFacts& facts);

} // namespace tunedeck
