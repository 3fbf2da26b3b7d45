import QtQuick
import Tunedeck.Views

/// Shows which of the steps is the current one: its dot is longer.
Row {
    spacing: 7

    Accessible.role: Accessible.StaticText
    Accessible.name: Onboarding.content.stepLabel

    Repeater {
        model: Onboarding.content.stepCount

        Rectangle {
            required property int index
            readonly property bool isCurrent: index === Onboarding.content.step

            antialiasing: true
            color: isCurrent ? Theme.accentFill : Theme.tint(Theme.text, 0.2)
            height: 8
            radius: 4
            width: isCurrent ? 20 : 8

            Behavior on width  {
                Ease {
                }
            }
        }
    }
}
