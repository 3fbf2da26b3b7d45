import QtQuick
import Tunedeck.Views

/// A switch with its title.
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
                Ease {
                    time: Theme.pressDuration
                }
            }
        }
    }

    PlainText {
        id: title

        anchors.verticalCenter: parent.verticalCenter
        text: toggle.label
        x: track.width + 8
    }
}
