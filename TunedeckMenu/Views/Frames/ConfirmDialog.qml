import QtQuick
import Tunedeck.Views

/// A confirmation dialog. Return confirms, Escape and closing the window cancel.
Window {
    id: window

    required property string message
    required property string informativeText
    required property string confirmLabel
    required property string cancelLabel
    required property bool warning
    readonly property real wantedHeight: texts.contentHeight + buttons.implicitHeight + 40 + 12
    readonly property real wantedWidth: Math.round(320 + (Theme.scale - 1) * 160)

    signal answered(bool confirmed)

    color: Theme.window
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    modality: Qt.ApplicationModal
    title: "Tunedeck"

    onClosing: answered(false)

    Item {
        anchors.fill: parent
        focus: true

        Accessible.role: Accessible.AlertMessage
        Accessible.name: window.message

        // A Return that repeats was meant for the control that asked.
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Escape)
                window.answered(false);
            else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !event.isAutoRepeat)
                window.answered(true);
        }

        ScrollArea {
            id: texts

            anchors.bottom: buttons.top
            anchors.bottomMargin: 12
            anchors.left: parent.left
            anchors.leftMargin: 20
            anchors.right: parent.right
            anchors.rightMargin: 20
            anchors.top: parent.top
            anchors.topMargin: 20
            spacing: 10

            Item {
                height: 46
                width: parent.width

                AppGlyph {
                    id: glyph

                    anchors.centerIn: parent
                    size: 46
                }

                Symbol {
                    anchors.bottom: parent.bottom
                    anchors.left: glyph.right
                    anchors.leftMargin: -8
                    color: Theme.warningMark
                    name: "exclamationmark.triangle.fill"
                    size: 20
                    visible: window.warning
                }
            }

            Label {
                font.weight: Font.DemiBold
                heading: true
                horizontalAlignment: Text.AlignHCenter
                text: window.message
                width: parent.width
            }

            Label {
                caption: true
                color: Theme.secondary
                horizontalAlignment: Text.AlignHCenter
                text: window.informativeText
                width: parent.width
            }
        }

        Column {
            id: buttons

            anchors.bottom: parent.bottom
            anchors.bottomMargin: 20
            spacing: 10
            width: parent.width - 40
            x: 20

            PushButton {
                label: window.confirmLabel
                large: true
                prominent: true
                width: parent.width

                onClicked: window.answered(true)
            }

            PushButton {
                label: window.cancelLabel
                large: true
                width: parent.width

                onClicked: window.answered(false)
            }
        }
    }
}
