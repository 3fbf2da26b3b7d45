import QtQuick
import Tunedeck.Views

/// A busy mark with what is being done.
Row {
    id: line

    property alias text: words.text

    spacing: 7

    Spinner {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        height: Math.round(13 * Theme.scale)
        visible: line.visible
        width: height
    }

    Label {
        id: words

        caption: true
        color: Theme.secondary
    }
}
