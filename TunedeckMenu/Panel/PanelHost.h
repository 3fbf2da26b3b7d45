#pragma once

#include "TunedeckMenu/Panel/PanelActions.h"
#include "TunedeckMenu/Panel/RowSlice.h"

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
    /// Includes another part of a long list in the content.
    virtual void showRows(RowRange RowRanges::* list, RowRange range) = 0;
};

} // namespace tunedeck
