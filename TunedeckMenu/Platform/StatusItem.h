#pragma once

#include "TunedeckCore/MenuBarPlacement.h"
#include "TunedeckMenu/Panel/TrayMenu.h"

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

    /// Requests the icon from the desktop, which may show it later or never (see availabilityChanged).
    virtual void install() = 0;
    /// True when the icon is docked in a tray or registered with a tray host.
    [[nodiscard]] virtual bool isAvailable() const = 0;
    /// True on platforms whose desktops may lack a tray, so that an icon that isn't available means just that.
    [[nodiscard]] virtual bool needsTray() const = 0;
    /// Shows a symbol ("music.note.list", "exclamationmark.triangle"). Does nothing when it is already shown.
    virtual void setSymbol(const QString& symbol, const QString& toolTip) = 0;
    /// Sets the entries of the item's menu, first before install(). Does nothing when they are equal; else changes
    /// those that differ in place.
    virtual void setMenu(const TrayMenu& menu) = 0;
    /// Where the icon is on the screen, if the desktop reports it.
    [[nodiscard]] virtual std::optional<QRect> geometry() const = 0;
    /// The measurement for the placement rule. Nothing when there is no item (see isAvailable()) or the desktop doesn't
    /// report where it is.
    [[nodiscard]] virtual std::optional<MenuBarPlacement> placement() const = 0;

Q_SIGNALS:
    /// The icon was clicked.
    void activated();
    /// The item's menu is about to be shown.
    void menuOpening();
    /// An entry of the menu was selected.
    void selected(tunedeck::TrayMenuEntry::Kind kind);
    /// The user switched to another space, where the panel at the icon doesn't belong.
    void spaceChanged();
    /// The desktop's tray appeared or disappeared.
    void availabilityChanged();
};

} // namespace tunedeck
