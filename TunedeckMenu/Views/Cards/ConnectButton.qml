import QtQuick
import Tunedeck.Views

/// Connects an assistant; shows which plan it requires.
Control {
    id: button

    required property connectRowView view
    property bool chosen: false

    hint: view.help
    implicitHeight: Math.round(32 * Theme.scale)
    label: view.accessibleName

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
        name: button.view.symbol
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
        text: button.view.name
    }

    PlainText {
        id: tag

        anchors.right: parent.right
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        font.pixelSize: Theme.caption2Size
        text: button.view.plan
    }
}
