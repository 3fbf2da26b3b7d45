import QtQuick
import Tunedeck.Views

/// Base of all buttons: press effect, focus ring and accessibility. `content` draws it.
Pressable {
    id: control

    property string label
    property int role: Accessible.Button
    property bool busy: false
    property real pressedScale: 0.97
    property real ringRadius: Theme.controlRadius + 2
    default property alias content: body.data

    opacity: usable ? 1 : 0.5
    usable: !busy

    Accessible.role: role
    Accessible.name: label
    Accessible.description: hint

    Item {
        id: body

        anchors.fill: parent
        opacity: control.pressed ? 0.8 : 1
        scale: control.pressed && !Theme.reduceMotion ? control.pressedScale : 1

        Behavior on opacity  {
            Ease {
                duration: Theme.pressDuration
            }
        }
        Behavior on scale  {
            Ease {
                duration: Theme.pressDuration
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        border.color: Theme.focus
        border.width: 2
        color: "transparent"
        radius: control.ringRadius
        visible: control.focusShown
    }
}
