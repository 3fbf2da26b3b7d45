#pragma once

#include "TunedeckMenu/Panel/PanelModule.h"

#include <memory>

namespace tunedeck {

/// Creates the application's windows.
class ViewsSource {
public:
    virtual ~ViewsSource() = default;
    /// Returns null, after notifying the user, when the windows can't be created. The host must outlive the views.
    virtual std::unique_ptr<PanelViews> createViews(PanelHost& host, const Appearance& appearance) = 0;
};

} // namespace tunedeck
