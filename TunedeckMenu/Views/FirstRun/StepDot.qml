import QtQuick
import Tunedeck.Views

/// One step: longer when it is the one on the screen.
Rectangle {
    id: dot

    required property int index
    property int current: 0
    readonly property bool here: index === current

    antialiasing: true
    color: here ? Theme.accentFill : Theme.tint(Theme.text, 0.2)
    height: 8
    radius: 4
    width: here ? 20 : 8

    Behavior on width  {
        enabled: !Theme.still

        NumberAnimation {
            duration: Theme.appear
            easing.type: Easing.OutQuad
        }
    }
}
