import QtQuick
import Tunedeck.Views

/// A small switch with its title beside it.
Control {
    id: toggle

    checkable: true
    implicitHeight: Math.max(Theme.controlHeight, title.implicitHeight)
    implicitWidth: title.x + title.implicitWidth
    pressedScale: 1
    role: Accessible.CheckBox

    Rectangle {
        id: track

        anchors.verticalCenter: parent.verticalCenter
        border.color: toggle.checked ? Theme.accentFillEdge : Theme.controlEdge
        border.width: 1
        color: toggle.checked ? Theme.accentFill : Theme.separator
        height: 16
        radius: 8
        width: 27

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            color: "#ffffff"
            height: 12
            radius: 6
            width: 12
            x: toggle.checked ? parent.width - width - 2 : 2

            Behavior on x  {
                enabled: !Theme.still

                NumberAnimation {
                    duration: Theme.quick
                    easing.type: Easing.OutQuad
                }
            }
        }
    }

    Text {
        id: title

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.text
        font.family: Theme.family
        font.pixelSize: Theme.captionSize
        text: toggle.label
        textFormat: Text.PlainText
        x: track.width + 8
    }
}
