import QtQuick
import Tunedeck.Views

/// The application's own mark.
Item {
    implicitHeight: 34
    implicitWidth: 34

    Rectangle {
        color: "#000000"
        height: 34
        opacity: 0.12
        radius: 8
        width: 34
        y: 1
    }

    Rectangle {
        anchors.fill: parent
        border.color: Qt.rgba(1, 1, 1, 0.18)
        border.width: 0.5
        radius: 8

        gradient: Gradient {
            GradientStop {
                color: Qt.rgba(0.55, 0.36, 0.97, 1)
                position: 0
            }
            GradientStop {
                color: Qt.rgba(0.94, 0.3, 0.6, 1)
                position: 1
            }
        }
    }

    Symbol {
        anchors.centerIn: parent
        color: "#ffffff"
        name: "music.note.list"
        size: 18
    }
}
