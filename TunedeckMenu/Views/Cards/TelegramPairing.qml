import QtQuick
import Tunedeck.Views

/// Pairs a Telegram link: the QR code to scan, or a button that creates a new code.
Item {
    id: block

    property telegramPairingView view

    signal openPressed
    signal newCodePressed

    readonly property bool hasCode: view.startUrl !== ""

    implicitHeight: hasCode ? Math.max(code.height, column.implicitHeight) : column.implicitHeight

    QRCodeView {
        id: code

        faded: block.view.expired
        name: block.view.qrName
        text: block.view.startUrl
        visible: block.hasCode
    }

    Column {
        id: column

        anchors.left: block.hasCode ? code.right : parent.left
        anchors.leftMargin: block.hasCode ? 12 : 0
        anchors.right: parent.right
        spacing: 6

        Label {
            caption: true
            text: block.view.text
            width: parent.width
        }

        PushButton {
            usable: !block.view.busy
            hint: block.view.openHelp
            label: block.view.openButton
            prominent: true

            Accessible.name: block.view.openName

            onClicked: block.openPressed()
        }

        PushButton {
            usable: !block.view.busy
            hint: block.view.newCodeHelp
            label: block.view.newCodeButton
            prominent: block.view.expired

            Accessible.name: block.view.newCodeName

            onClicked: block.newCodePressed()
        }

        Label {
            caption: true
            color: Theme.secondary
            font.pixelSize: Theme.caption2Size
            text: block.view.expiryNote
            width: parent.width
        }
    }
}
