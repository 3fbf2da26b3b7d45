import QtQuick
import Tunedeck.Views

/// A spinner with a text.
Row {
    id: line

    property alias text: label.text

    spacing: 7

    Spinner {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        height: Math.round(13 * Theme.scale)
        visible: line.visible
        width: height
    }

    Label {
        id: label

        caption: true
        color: Theme.secondary
    }
}
