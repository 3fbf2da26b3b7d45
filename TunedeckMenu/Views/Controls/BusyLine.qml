import QtQuick
import Tunedeck.Views

/// A spinner with a text. Hidden without a text.
Row {
    property alias text: label.text

    spacing: 7
    visible: text !== ""

    Spinner {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        height: Math.round(13 * Theme.scale)
        width: height
    }

    Label {
        id: label

        caption: true
        color: Theme.secondary
    }
}
