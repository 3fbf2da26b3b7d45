import QtQuick
import Tunedeck.Views

/// A titled button: prominent (filled), plain (outlined) or borderless; small unless `large`.
Control {
    id: button

    property bool prominent: false
    property bool borderless: false
    property bool large: false
    property bool busy: false
    property string symbol

    readonly property color ink: prominent ? Theme.accentText : borderless ? Theme.accent : Theme.text

    implicitHeight: large ? Theme.largeControlHeight : Theme.controlHeight
    implicitWidth: row.implicitWidth + (borderless ? 12 : large ? 28 : 20)
    role: Accessible.Button

    Rectangle {
        anchors.fill: parent
        border.color: button.borderless ? "transparent" : button.prominent ? Theme.accentFillEdge : Theme.controlEdge
        border.width: 1
        color: button.prominent ? Theme.accentFill : button.borderless ? "transparent" : Theme.control
        radius: Theme.controlRadius

        Rectangle {
            anchors.fill: parent
            anchors.margins: button.borderless ? 0 : 1
            color: button.prominent ? "#ffffff" : Theme.text
            opacity: button.hovered && button.usable ? (button.prominent ? 0.1 : 0.06) : 0
            radius: parent.radius - 1

            Behavior on opacity  {
                NumberAnimation {
                    duration: Theme.hover
                    easing.type: Easing.OutQuad
                }
            }
        }
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 6

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            color: button.ink
            height: Math.round(13 * Theme.scale)
            visible: button.busy
            width: height
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: button.ink
            name: button.symbol
            size: Math.round(12 * Theme.scale)
            visible: name !== "" && !button.busy
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: button.ink
            font.family: Theme.family
            font.pixelSize: button.large ? Theme.bodySize : Theme.captionSize
            font.weight: Font.Medium
            text: button.label
            textFormat: Text.PlainText
        }
    }
}
