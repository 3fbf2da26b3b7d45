#pragma once

#include "TunedeckMenu/Panel/PanelActions.h"

#include <QIcon>
#include <QString>

namespace tunedeck {

/// What the views need from the application.
class PanelHost {
public:
    virtual ~PanelHost() = default;
    virtual PanelActions& actions() = 0;
    /// The icon of the file or folder at a path.
    virtual QIcon fileIcon(const QString& path) = 0;
};

} // namespace tunedeck
