import QtQuick
import Tunedeck.Views

/// Fades `target` in each time it is restarted.
NumberAnimation {
    duration: Theme.fadeDuration
    from: 0
    property: "opacity"
    to: 1
}
