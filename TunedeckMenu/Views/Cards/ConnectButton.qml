import QtQuick
import Tunedeck.Views

/// Connects one assistant; says when it takes a paid plan.
Control {
    id: button

    required property string rowId
    required property string name
    required property string plan
    required property string help
    required property string symbol
    property bool chosen: false

    hint: help
    implicitHeight: Math.round(32 * Theme.scale)
    label: plan === "" ? name : name + ", " + plan

    Rectangle {
        anchors.fill: parent
        border.color: button.chosen ? Theme.accent : Theme.controlEdge
        border.width: 1
        color: Theme.control
        radius: 7

        Rectangle {
            anchors.fill: parent
            anchors.margins: 1
            color: Theme.text
            opacity: button.hovered && button.usable ? 0.05 : 0
            radius: 6

            Behavior on opacity  {
                NumberAnimation {
                    duration: Theme.hover
                    easing.type: Easing.OutQuad
                }
            }
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

    Text {
        anchors.left: mark.right
        anchors.leftMargin: 7
        anchors.right: tag.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.text
        elide: Text.ElideRight
        font.family: Theme.family
        font.pixelSize: Math.round(12.5 * Theme.scale)
        font.weight: Font.Medium
        text: button.name
        textFormat: Text.PlainText
    }

    Text {
        id: tag

        anchors.right: parent.right
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        font.family: Theme.family
        font.pixelSize: Theme.caption2Size
        text: button.plan
        textFormat: Text.PlainText
    }
}
