import QtQuick
import Tunedeck.Views

/// A text with a coloured dot before its first line.
Item {
    id: line

    property alias dotSize: dot.size
    property alias tone: dot.tone
    property alias label: label
    /// What the dot's colour says, for screen readers.
    property string meaning

    implicitHeight: label.implicitHeight
    visible: label.text !== ""

    Dot {
        id: dot

        y: Math.round((metrics.height - height) / 2)
    }

    FontMetrics {
        id: metrics

        font: label.font
    }

    Label {
        id: label

        Accessible.description: line.meaning

        anchors.left: dot.right
        anchors.leftMargin: 8
        anchors.right: parent.right
    }
}
