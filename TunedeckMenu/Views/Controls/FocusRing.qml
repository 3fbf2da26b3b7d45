import QtQuick
import Tunedeck.Views

/// Marks the control that has the keyboard focus.
Rectangle {
    anchors.fill: parent
    anchors.margins: -2
    border.color: Theme.focus
    border.width: 2
    color: "transparent"
    radius: Theme.controlRadius + 2
}
