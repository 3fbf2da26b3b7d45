import QtQuick
import Tunedeck.Views

/// Tints a control while the pointer is over it.
Rectangle {
    required property Control control
    property real strength: 0.06

    anchors.fill: parent
    color: Theme.text
    opacity: control.hovered && control.usable ? strength : 0

    Behavior on opacity  {
        Ease {
            duration: Theme.hoverDuration
        }
    }
}
