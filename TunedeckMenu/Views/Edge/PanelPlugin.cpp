#include "TunedeckMenu/Views/Edge/PanelPlugin.h"

#include "TunedeckMenu/Views/Edge/QuickViews.h"

// Referenced explicitly: the linker would drop the QML types and resources of the static library as unused.
void qml_register_types_Tunedeck_Views(); // NOLINT(readability-identifier-naming): generated name

static void keepStaticParts() {
    [[maybe_unused]] static volatile auto keep = &qml_register_types_Tunedeck_Views;
    Q_INIT_RESOURCE(symbols);
}

namespace tunedeck {

std::unique_ptr<PanelViews> PanelPlugin::createViews(PanelHost& host, const Appearance& appearance) {
    keepStaticParts();
    return std::make_unique<QuickViews>(host, appearance);
}

} // namespace tunedeck
