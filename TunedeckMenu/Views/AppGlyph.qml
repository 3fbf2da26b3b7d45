import QtQuick
import Tunedeck.Views

/// The application's own mark.
Item {
    id: glyph

    property real size: 34

    implicitHeight: size
    implicitWidth: size

    Rectangle {
        color: "#000000"
        height: glyph.size
        opacity: 0.12
        radius: glyph.size * 8 / 34
        width: glyph.size
        y: 1
    }

    Rectangle {
        anchors.fill: parent
        border.color: Qt.rgba(1, 1, 1, 0.18)
        border.width: 0.5
        radius: glyph.size * 8 / 34

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
        size: glyph.size * 18 / 34
    }
}
