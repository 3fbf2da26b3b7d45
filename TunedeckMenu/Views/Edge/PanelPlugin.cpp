#include "TunedeckMenu/Views/Edge/PanelPlugin.h"

#include "TunedeckMenu/Views/Edge/QuickViews.h"

// The registration of the QML types and their files live in a static library, whose linker would leave them out.
void qml_register_types_Tunedeck_Views(); // NOLINT(readability-identifier-naming): so qmltyperegistrar calls it

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
