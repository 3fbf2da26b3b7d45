import QtQuick
import Tunedeck.Views

/// A QR code on white; a symbol if the text has no code.
Item {
    id: view

    property alias text: code.text
    property string name
    property bool faded: false

    implicitHeight: 112
    implicitWidth: 112

    Accessible.role: Accessible.Graphic
    Accessible.name: name

    Rectangle {
        anchors.fill: parent
        border.color: Qt.rgba(0, 0, 0, 0.08)
        border.width: 1
        color: "#ffffff"
        opacity: view.faded ? 0.25 : 1
        radius: 8
        visible: code.drawable

        Behavior on opacity  {
            Ease {
                time: 200
            }
        }

        QRCodeItem {
            id: code

            anchors.fill: parent
        }
    }

    Symbol {
        anchors.centerIn: parent
        color: Theme.secondary
        name: "qrcode"
        size: 34
        visible: !code.drawable
    }

    Symbol {
        anchors.centerIn: parent
        color: Theme.text
        name: "clock.badge.xmark"
        size: 24
        visible: view.faded
    }
}
