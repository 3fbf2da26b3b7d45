#pragma once

#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QString>

#include <optional>

namespace tunedeck {

/// What macOS reports about the application as a login item; the values are those of SMAppServiceStatus.
enum class LoginItemStatus { NotRegistered, Enabled, RequiresApproval, NotFound };

LoginItemState loginItemState(LoginItemStatus status);

/// Why the application doesn't open at login after it was registered; nothing if it does.
std::optional<QString> loginItemProblem(LoginItemStatus status);

} // namespace tunedeck
