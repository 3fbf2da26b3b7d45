import QtQuick
import Tunedeck.Views

/// A folder with its path; pressing shows it.
Control {
    id: row

    property string path
    property string title
    property string subtitle

    implicitHeight: Math.max(icon.height, words.implicitHeight) + 12
    label: title + ", " + subtitle

    Rectangle {
        anchors.fill: parent
        color: Theme.text
        opacity: row.hovered ? 0.06 : 0
        radius: 8

        Behavior on opacity  {
            NumberAnimation {
                duration: Theme.hover
                easing.type: Easing.OutQuad
            }
        }
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

        Text {
            color: Theme.text
            elide: Text.ElideRight
            font.family: Theme.family
            font.pixelSize: Theme.bodySize
            font.weight: Font.Medium
            text: row.title
            textFormat: Text.PlainText
            width: parent.width
        }

        Text {
            color: Theme.secondary
            elide: Text.ElideMiddle
            font.family: Theme.family
            font.pixelSize: Theme.captionSize
            text: row.subtitle
            textFormat: Text.PlainText
            width: parent.width
        }
    }
}
