import QtQuick
import Tunedeck.Views

/// One entry of a menu.
Control {
    id: entry

    readonly property bool chosen: hovered || activeFocus

    implicitHeight: Theme.controlHeight
    pressedScale: 1
    ringRadius: 5
    width: parent ? parent.width : 0
    role: Accessible.MenuItem

    Rectangle {
        anchors.fill: parent
        color: Theme.accentFill
        radius: 5
        visible: entry.chosen
    }

    Text {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        color: entry.chosen ? Theme.accentText : Theme.text
        font.family: Theme.family
        font.pixelSize: Theme.bodySize
        text: entry.label
        textFormat: Text.PlainText
        x: 12
    }
}
