#pragma once

#include "TunedeckCore/Support/Http/HttpFailure.h"
#include "TunedeckCore/Support/Json/Error.h"

#include <variant>

namespace tunedeck {

/// Why there is no document: no reply, a reply with another status than 200, or an invalid document.
using DocumentFailure = std::variant<HttpFailure, int, json::Error>;

} // namespace tunedeck
