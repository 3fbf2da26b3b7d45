import QtQuick
import Tunedeck.Views

/// Shows which control the keyboard is at.
Rectangle {
    anchors.fill: parent
    anchors.margins: -2
    border.color: Theme.focus
    border.width: 2
    color: "transparent"
    radius: Theme.controlRadius + 2
}
