#pragma once

#include "TunedeckMenu/Panel/Appearance.h"
#include "TunedeckMenu/Panel/PanelHost.h"
#include "TunedeckMenu/Panel/PanelViews.h"

#include <QtPlugin>

#include <memory>

namespace tunedeck {

/// Entry point of the plugin that contains all Qt Quick code. The application loads it when a window is first needed.
class PanelModule {
public:
    virtual ~PanelModule() = default;
    /// Creates the windows, hidden. The host must outlive them.
    virtual std::unique_ptr<PanelViews> createViews(PanelHost& host, const Appearance& appearance) = 0;
};

} // namespace tunedeck

#define TunedeckPanelModule_iid "com.brightfold.tunedeck.PanelModule/1"
Q_DECLARE_INTERFACE(tunedeck::PanelModule, TunedeckPanelModule_iid)
