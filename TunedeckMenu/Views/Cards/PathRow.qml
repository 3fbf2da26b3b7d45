import QtQuick
import Tunedeck.Views

/// A folder and its path; opens it in the file manager when pressed.
Control {
    id: row

    property string path
    property string title
    property string subtitle

    implicitHeight: Math.max(icon.height, words.implicitHeight) + 12
    label: title + ", " + subtitle

    HoverOverlay {
        control: row
        radius: 8
    }

    FileIcon {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        height: 32
        path: row.path
        width: 32
        x: 6
    }

    Symbol {
        anchors.centerIn: icon
        color: Theme.accent
        name: "folder.fill"
        size: 25
        visible: !icon.known
    }

    Column {
        id: words

        anchors.left: icon.right
        anchors.leftMargin: 9
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        PlainText {
            elide: Text.ElideRight
            font.pixelSize: Theme.bodySize
            font.weight: Font.Medium
            text: row.title
            width: parent.width
        }

        PlainText {
            color: Theme.secondary
            elide: Text.ElideMiddle
            text: row.subtitle
            width: parent.width
        }
    }
}
