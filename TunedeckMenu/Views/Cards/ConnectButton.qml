import QtQuick
import Tunedeck.Views

/// Connects an assistant; shows which plan it requires.
Control {
    id: button

    required property string rowId
    required property string name
    required property string plan
    required property string accessibleName
    required property string help
    required property string symbol
    property bool chosen: false

    hint: help
    implicitHeight: Math.round(32 * Theme.scale)
    label: accessibleName

    Rectangle {
        anchors.fill: parent
        border.color: button.chosen ? Theme.accent : Theme.controlEdge
        border.width: 1
        color: Theme.control
        radius: 7

        HoverOverlay {
            anchors.margins: 1
            control: button
            radius: 6
            strength: 0.05
        }
    }

    Symbol {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.accent
        name: button.symbol
        size: Math.round(13 * Theme.scale)
        x: 9
    }

    PlainText {
        anchors.left: mark.right
        anchors.leftMargin: 7
        anchors.right: tag.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        elide: Text.ElideRight
        font.pixelSize: Math.round(12.5 * Theme.scale)
        font.weight: Font.Medium
        text: button.name
    }

    PlainText {
        id: tag

        anchors.right: parent.right
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        font.pixelSize: Theme.caption2Size
        text: button.plan
    }
}
