#pragma once

#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

/// An assistant's URL or key with a Copy button; hidden without a key.
struct SecretFieldView {
    Q_GADGET
    VIEW_PROPERTY(QString, label);      ///< "URL", "Key"; empty for a private URL, which has no label
    VIEW_PROPERTY(QString, shownValue); ///< masked while secrets are hidden
    VIEW_PROPERTY(QString, key);        ///< identifies the value in PanelActions::copySecret()
    VIEW_PROPERTY(QString, help);
    VIEW_PROPERTY(QString, button);     ///< "Copy" or "Copied"
    VIEW_PROPERTY(QString, buttonName); ///< for screen readers; unique among the rows
    VIEW_PROPERTY(QString, buttonSymbol);
    bool operator==(const SecretFieldView&) const = default;
};

/// `copied`: the value was copied a moment ago.
SecretFieldView privateUrlField(const QString& key, const QString& shown, bool copied);
/// `label`: "URL" or "Key".
SecretFieldView shortcutField(const QString& label, const QString& key, const QString& shown, bool copied);

} // namespace tunedeck
