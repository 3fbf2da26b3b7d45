import QtQuick
import Tunedeck.Views

/// Fades `target` in each time it is restarted.
Ease {
    from: 0
    property: "opacity"
    to: 1
}
