import QtQuick
import Tunedeck.Views

/// A backup and its Restore button.
Item {
    id: row

    required property backupRowView view

    implicitHeight: words.implicitHeight

    Column {
        id: words

        anchors.left: parent.left
        anchors.right: restore.left
        anchors.rightMargin: 10
        spacing: 2

        Item {
            implicitHeight: version.implicitHeight
            width: parent.width

            Label {
                id: version

                elide: Text.ElideMiddle
                font.pixelSize: Theme.captionSize
                font.weight: Font.Medium
                mono: true
                text: row.view.version
                width: Math.min(implicitWidth, parent.width - (latest.visible ? latest.width + 6 : 0))
            }

            Label {
                anchors.baseline: version.baseline
                anchors.left: version.right
                anchors.leftMargin: 7
                anchors.right: latest.visible ? latest.left : parent.right
                anchors.rightMargin: latest.visible ? 6 : 0
                caption: true
                color: Theme.secondary
                elide: Text.ElideRight
                text: row.view.date
            }

            Badge {
                id: latest

                anchors.right: parent.right
                anchors.verticalCenter: version.verticalCenter
                text: row.view.badge
                tone: Look.Good
            }
        }

        Label {
            caption: true
            color: Theme.secondary
            elide: Text.ElideRight
            text: row.view.reason
            width: parent.width
        }
    }

    PushButton {
        id: restore

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        usable: row.view.canRestore
        hint: row.view.help
        label: row.view.button

        onClicked: Panel.actions.restoreBackup(row.view.id)
    }
}
