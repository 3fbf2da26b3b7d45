#pragma once

#include "TunedeckMenu/Platform/Relauncher.h"

namespace tunedeck {

/// Starts the bundle's program through a shell that waits a second.
class LinuxRelauncher final : public Relauncher {
public:
    bool relaunch(const QString& bundle, const QStringList& arguments) override;
    [[nodiscard]] bool isReplaced(const QString& bundle) const override;
};

} // namespace tunedeck
