import QtQuick
import Tunedeck.Views

/// A progress bar; `value` is 0 to 1.
Rectangle {
    id: bar

    property real value: 0

    color: Theme.tint(Theme.text, 0.12)
    implicitHeight: 5
    radius: height / 2

    Accessible.role: Accessible.ProgressBar
    Accessible.name: Math.round(Math.max(0, Math.min(1, value)) * 100) + " %"

    Rectangle {
        color: Theme.accentFill
        height: parent.height
        radius: parent.radius
        visible: bar.value > 0
        width: Math.max(height, parent.width * Math.max(0, Math.min(1, bar.value)))

        Behavior on width  {
            enabled: !Theme.reduceMotion

            NumberAnimation {
                duration: Theme.fadeDuration
            }
        }
    }
}
