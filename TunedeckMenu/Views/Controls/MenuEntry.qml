import QtQuick
import Tunedeck.Views

/// An entry of a PopupMenu.
Control {
    id: entry

    readonly property bool highlighted: hovered || activeFocus

    implicitHeight: Theme.controlHeight
    pressedScale: 1
    ringRadius: 5
    width: parent ? parent.width : 0
    role: Accessible.MenuItem

    Rectangle {
        anchors.fill: parent
        color: Theme.accentFill
        radius: 5
        visible: entry.highlighted
    }

    PlainText {
        anchors.verticalCenter: parent.verticalCenter
        color: entry.highlighted ? Theme.accentText : Theme.text
        font.pixelSize: Theme.bodySize
        text: entry.label
        x: 12
    }
}
