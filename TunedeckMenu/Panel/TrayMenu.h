#pragma once

#include "TunedeckMenu/Panel/ServiceState.h"

#include <QList>
#include <QString>

namespace tunedeck {

struct PanelState;

/// An entry of the icon's menu.
struct TrayMenuEntry {
    enum class Kind { Text, Separator, Open, StartService, RepairTools, ApplyChanges, OpenLog, Quit };

    Kind kind = Kind::Text;
    QString text = {};
    bool enabled = true;

    [[nodiscard]] bool isShown() const { return kind == Kind::Separator ? enabled : !text.isEmpty(); }
    bool operator==(const TrayMenuEntry&) const = default;
};

/// All entries, shown and hidden. There are always the same kinds in the same order, so that an open menu can be
/// updated in place.
using TrayMenu = QList<TrayMenuEntry>;

/// What matters of the panel, for desktops that open the menu when the icon is clicked. Without times, which would
/// change by themselves. `service` is the latest state; the one in `panel` may be older.
TrayMenu trayMenu(const ServiceState& service, const PanelState& panel);

/// The application's name and the service's state.
QString trayToolTip(const ServiceState& service);

} // namespace tunedeck
