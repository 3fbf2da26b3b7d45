#pragma once

#include "TunedeckCore/Service/Assistants.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

/// A button that connects an assistant; `id` is the assistant's raw value.
struct ConnectRowView {
    Q_GADGET
    VIEW_PROPERTY(QString, id);
    VIEW_PROPERTY(QString, name);
    VIEW_PROPERTY(QString, plan); ///< empty when the assistant is free
    VIEW_PROPERTY(QString, accessibleName);
    VIEW_PROPERTY(QString, help);
    VIEW_PROPERTY(QString, symbol);
    bool operator==(const ConnectRowView&) const = default;
};

/// `busy`: another link is being changed.
ConnectRowView connectRow(Assistant assistant, const QString& symbol, bool busy);

} // namespace tunedeck
