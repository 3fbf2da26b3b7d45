#include "TunedeckMenu/Platform/MacValues/LoginItemStatus.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

LoginItemState loginItemState(LoginItemStatus status) {
    switch (status) {
    case LoginItemStatus::Enabled:
        return LoginItemState::On;
    case LoginItemStatus::RequiresApproval:
        return LoginItemState::Broken;
    case LoginItemStatus::NotRegistered:
    case LoginItemStatus::NotFound:
        break;
    }
    return LoginItemState::Off;
}

std::optional<QString> loginItemProblem(LoginItemStatus status) {
    switch (status) {
    case LoginItemStatus::Enabled:
        return std::nullopt;
    case LoginItemStatus::RequiresApproval:
        return u"macOS requires your approval. Allow Tunedeck in System Settings, General, Login Items."_s;
    case LoginItemStatus::NotRegistered:
    case LoginItemStatus::NotFound:
        break;
    }
    return u"macOS didn't register Tunedeck. Move it to the Applications folder and try again."_s;
}

} // namespace tunedeck
