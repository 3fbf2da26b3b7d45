import QtQuick
import Tunedeck.Views

/// The dot of a step; the current one is longer.
Rectangle {
    id: dot

    required property int index
    readonly property bool isCurrent: index === Onboarding.content.step

    antialiasing: true
    color: isCurrent ? Theme.accentFill : Theme.tint(Theme.text, 0.2)
    height: 8
    radius: 4
    width: isCurrent ? 20 : 8

    Behavior on width  {
        enabled: !Theme.reduceMotion

        NumberAnimation {
            duration: Theme.fadeDuration
            easing.type: Easing.OutQuad
        }
    }
}
