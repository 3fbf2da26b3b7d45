import QtQuick
import Tunedeck.Views

/// A spinner with what is being done, and a note when that takes long. Hidden without a text.
Column {
    id: line

    property alias text: busy.text
    property string note

    spacing: 6
    visible: text !== ""

    BusyLine {
        id: busy

        anchors.horizontalCenter: parent.horizontalCenter
    }

    Label {
        caption: true
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
        text: line.note
        width: parent.width
    }
}
