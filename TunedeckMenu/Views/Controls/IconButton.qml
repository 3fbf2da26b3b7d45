import QtQuick
import Tunedeck.Views

/// A square button of one symbol, called by its label; a busy mark stands in for the symbol meanwhile.
Control {
    id: button

    property string symbol
    property bool busy: false

    hint: label
    implicitHeight: Math.round(26 * Theme.scale)
    implicitWidth: Math.round(26 * Theme.scale)
    pressedScale: 0.92
    usable: !busy

    // What is announced as the name needs no second saying.
    Accessible.description: ""

    Rectangle {
        anchors.fill: parent
        color: Theme.text
        opacity: button.hovered && button.usable ? 0.08 : 0
        radius: Theme.controlRadius

        Behavior on opacity  {
            NumberAnimation {
                duration: Theme.hover
                easing.type: Easing.OutQuad
            }
        }
    }

    Symbol {
        anchors.centerIn: parent
        color: Theme.secondary
        name: button.symbol
        size: 14 * Theme.scale
        visible: !button.busy
    }

    Spinner {
        anchors.centerIn: parent
        color: Theme.secondary
        visible: button.busy
    }
}
