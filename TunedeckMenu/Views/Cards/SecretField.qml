import QtQuick
import Tunedeck.Views

/// A URL or key with its Copy button.
Item {
    id: field

    required property string label
    required property string shownValue
    required property string key
    required property string help
    required property string description
    required property string button
    required property string buttonSymbol

    signal copied

    implicitHeight: copy.implicitHeight

    Label {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        caption: true
        color: Theme.secondary
        text: field.label
        width: visible ? Math.round(34 * Theme.scale) : 0
    }

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.left: name.right
        anchors.right: copy.left
        anchors.rightMargin: 8
        anchors.top: parent.top
        color: Theme.field
        radius: Theme.controlRadius

        Label {
            anchors.left: parent.left
            anchors.margins: 8
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideMiddle
            font.pixelSize: Theme.caption2Size
            mono: true
            text: field.shownValue
        }
    }

    CopyButton {
        id: copy

        anchors.right: parent.right
        hint: field.help
        label: field.button
        symbol: field.buttonSymbol

        Accessible.description: field.description

        onClicked: field.copied()
    }
}
