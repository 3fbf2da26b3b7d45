import QtQuick
import Tunedeck.Views

/// A text with a coloured dot before its first line.
Item {
    property alias dotSize: dot.size
    property alias tone: dot.tone
    property alias label: label

    implicitHeight: label.implicitHeight
    visible: label.text !== ""

    Dot {
        id: dot

        y: Math.round((line.height - height) / 2)
    }

    FontMetrics {
        id: line

        font: label.font
    }

    Label {
        id: label

        anchors.left: dot.right
        anchors.leftMargin: 8
        anchors.right: parent.right
    }
}
