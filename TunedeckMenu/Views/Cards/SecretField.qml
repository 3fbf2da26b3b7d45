import QtQuick
import Tunedeck.Views

/// A URL or key with its Copy button; hidden without a key.
Item {
    id: field

    required property secretFieldView view

    signal copied

    implicitHeight: copy.implicitHeight
    visible: view.key !== ""

    Label {
        id: name

        anchors.verticalCenter: parent.verticalCenter
        caption: true
        color: Theme.secondary
        text: field.view.label
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
            text: field.view.shownValue
        }
    }

    PushButton {
        id: copy

        anchors.right: parent.right
        implicitWidth: Math.round(74 * Theme.scale)
        hint: field.view.help
        label: field.view.button
        symbol: field.view.buttonSymbol

        Accessible.name: field.view.buttonName

        onClicked: field.copied()
        onLabelChanged: if (visible)
            fade.restart()

        FadeIn {
            id: fade

            from: 0.3
            target: copy
        }
    }
}
