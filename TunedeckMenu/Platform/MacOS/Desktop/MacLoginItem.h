#pragma once

#include "TunedeckMenu/Platform/LoginItem.h"
#include "TunedeckMenu/Platform/MacValues/LoginItemStatus.h"

namespace tunedeck {

/// The application itself as a login item of macOS.
class MacLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override;
    std::expected<void, QString> setEnabled(bool enabled) override;

    static LoginItemStatus status();
};

} // namespace tunedeck
