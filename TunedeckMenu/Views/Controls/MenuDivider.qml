import QtQuick
import Tunedeck.Views

/// A line between two groups of menu entries.
Item {
    implicitHeight: 9
    width: parent ? parent.width : 0

    Rectangle {
        anchors.centerIn: parent
        color: Theme.raisedEdge
        height: 1
        width: parent.width - 12
    }
}
