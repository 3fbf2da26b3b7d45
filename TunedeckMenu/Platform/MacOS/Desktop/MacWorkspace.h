#pragma once

#include "TunedeckMenu/Platform/Workspace.h"

namespace tunedeck {

/// Opens with the user's programs and shows files in the Finder.
class MacWorkspace final : public Workspace {
public:
    bool open(const QUrl& url) override;
    void reveal(const QString& path) override;
    QIcon icon(const QString& path) override;
};

} // namespace tunedeck
