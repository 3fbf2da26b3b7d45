#pragma once

#include "TunedeckCore/MenuBarPlacement.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

/// A card with a single text.
struct TextCardView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, title);
    VIEW_PROPERTY(QString, text);
    bool operator==(const TextCardView&) const = default;
};

TextCardView hiddenIconCard(const MenuBarIconVisibility& icon);

} // namespace tunedeck
