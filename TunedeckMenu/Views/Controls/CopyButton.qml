import QtQuick
import Tunedeck.Views

/// Copies a value; says so for a moment by its title.
PushButton {
    id: button

    implicitWidth: Math.round(74 * Theme.scale)

    onLabelChanged: if (visible && !Theme.still)
        turn.restart()

    NumberAnimation {
        id: turn

        duration: Theme.appear
        from: 0.3
        property: "opacity"
        target: button
        to: 1
    }
}
