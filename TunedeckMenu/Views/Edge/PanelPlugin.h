#pragma once

#include "TunedeckMenu/Panel/PanelModule.h"

#include <QObject>

namespace tunedeck {

/// Entry point of the plugin.
class PanelPlugin : public QObject, public PanelModule {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TunedeckPanelModule_iid FILE "PanelModule.json")
    Q_INTERFACES(tunedeck::PanelModule)
public:
    std::unique_ptr<PanelViews> createViews(PanelHost& host, const Appearance& appearance) override;
};

} // namespace tunedeck
