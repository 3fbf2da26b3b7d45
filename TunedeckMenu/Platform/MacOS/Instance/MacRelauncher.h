#pragma once

#include "TunedeckMenu/Platform/Relauncher.h"

#include <sys/stat.h>

namespace tunedeck {

/// Opens the bundle through Launch Services in one second.
class MacRelauncher final : public Relauncher {
public:
    /// Notes which file the running program is: create it at the start.
    explicit MacRelauncher(const QString& bundle);

    bool relaunch(const QString& bundle, const QStringList& arguments) override;
    [[nodiscard]] bool isReplaced(const QString& bundle) const override;

private:
    struct stat m_running{};
};

} // namespace tunedeck
