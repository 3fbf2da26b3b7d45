#pragma once

#include "TunedeckCore/MenuBarPlacement.h"

#include <QObject>
#include <QRect>
#include <QString>

#include <optional>

namespace tunedeck {

/// The icon in the menu bar or tray.
class StatusItem : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Asks the desktop for the icon; it may come later or never (see availabilityChanged).
    virtual void install() = 0;
    /// Whether the desktop has taken the icon, as far as is known now: docked in a tray, or registered with a host that
    /// may not tell where it shows it.
    [[nodiscard]] virtual bool isAvailable() const = 0;
    /// Shows this symbol ("music.note.list", "exclamationmark.triangle"); set only when it differs.
    virtual void setSymbol(const QString& symbol, const QString& toolTip) = 0;
    /// Where the icon is on the screen, or nothing when the desktop doesn't tell.
    [[nodiscard]] virtual std::optional<QRect> geometry() const = 0;
    /// The measurement for the placement rule, or nothing: when isAvailable() is false there is no item, else the
    /// desktop doesn't tell its place and nothing is known of whether it can be seen.
    [[nodiscard]] virtual std::optional<MenuBarPlacement> placement() const = 0;

Q_SIGNALS:
    /// The icon was clicked.
    void activated();
    /// An entry of its menu was chosen.
    void openRequested();
    void quitRequested();
    /// The desktop's tray came or went.
    void availabilityChanged();
};

} // namespace tunedeck
