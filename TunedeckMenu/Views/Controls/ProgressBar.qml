import QtQuick
import Tunedeck.Views

/// A progress bar; `value` is 0 to 1, negative to hide the bar.
Rectangle {
    id: bar

    property real value: 0

    color: Theme.tint(Theme.text, 0.12)
    implicitHeight: 5
    radius: height / 2
    visible: value >= 0

    Accessible.role: Accessible.ProgressBar
    Accessible.name: Math.round(Math.max(0, Math.min(1, value)) * 100) + " %"

    Rectangle {
        color: Theme.accentFill
        height: parent.height
        radius: parent.radius
        visible: bar.value > 0
        width: Math.max(height, parent.width * Math.min(1, bar.value))

        Behavior on width  {
            Ease {
            }
        }
    }
}
