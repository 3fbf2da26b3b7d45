import QtQuick
import Tunedeck.Views

/// A copy button; its new title fades in after the copy.
PushButton {
    id: button

    implicitWidth: Math.round(74 * Theme.scale)

    onLabelChanged: if (visible && !Theme.reduceMotion)
        fade.restart()

    NumberAnimation {
        id: fade

        duration: Theme.fadeDuration
        from: 0.3
        property: "opacity"
        target: button
        to: 1
    }
}
