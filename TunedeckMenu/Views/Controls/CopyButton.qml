import QtQuick
import Tunedeck.Views

/// A copy button; its new title fades in after the copy.
PushButton {
    id: button

    implicitWidth: Math.round(74 * Theme.scale)

    onLabelChanged: if (visible && !Theme.reduceMotion)
        fade.restart()

    FadeIn {
        id: fade

        from: 0.3
        target: button
    }
}
