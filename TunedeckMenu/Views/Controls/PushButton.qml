import QtQuick
import Tunedeck.Views

/// A button with a title: outlined, `prominent` (filled) or `borderless`. Hidden without a label.
Control {
    id: button

    property bool prominent: false
    property bool borderless: false
    property bool large: false
    property string symbol

    readonly property color foreground: prominent ? Theme.accentText : borderless ? Theme.accent : Theme.text

    implicitHeight: large ? Theme.largeControlHeight : Theme.controlHeight
    implicitWidth: row.implicitWidth + (borderless ? 12 : large ? 28 : 20)
    visible: label !== ""

    Rectangle {
        anchors.fill: parent
        border.color: button.borderless ? "transparent" : button.prominent ? Theme.accentFillEdge : Theme.controlEdge
        border.width: 1
        color: button.prominent ? Theme.accentFill : button.borderless ? "transparent" : Theme.control
        radius: Theme.controlRadius

        HoverOverlay {
            anchors.margins: button.borderless ? 0 : 1
            color: button.prominent ? "#ffffff" : Theme.text
            control: button
            radius: parent.radius - 1
            strength: button.prominent ? 0.1 : 0.06
        }
    }

    // The ring around the button has nearly the colour of the accent.
    Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        border.color: Theme.accentText
        border.width: 2
        color: "transparent"
        radius: Theme.controlRadius - 2
        visible: button.prominent && button.focusShown
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 6

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            color: button.foreground
            height: Math.round(13 * Theme.scale)
            visible: button.busy
            width: height
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: button.foreground
            name: button.symbol
            size: Math.round(12 * Theme.scale)
            visible: name !== "" && !button.busy
        }

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            color: button.foreground
            font.pixelSize: button.large ? Theme.bodySize : Theme.captionSize
            font.weight: Font.Medium
            text: button.label
        }
    }
}
