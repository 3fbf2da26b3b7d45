import QtQuick
import Tunedeck.Views

/// The state of the Rekordbox library, its backups and its XML file.
Card {
    id: card

    readonly property rekordboxView view: Panel.content.rekordbox

    symbol: "square.stack.3d.up"
    title: view.title

    accessory: Badge {
        hint: card.view.badgeHelp
        monospaced: true
        text: card.view.badge
        width: Math.min(implicitWidth, card.width - 2 * Theme.cardPadding - 102 * Theme.scale)
    }

    Column {
        spacing: 3
        visible: card.view.hasLibrary
        width: parent.width

        DotLine {
            label.font.weight: Font.Medium
            label.text: card.view.headline
            meaning: card.view.failedNote
            tone: card.view.tone
            width: parent.width
        }

        Label {
            caption: true
            color: Theme.secondary
            elide: Text.ElideRight
            maximumLineCount: 3
            text: card.view.detail
            width: parent.width - x
            wrapMode: Text.Wrap
            x: 15
        }
    }

    FadeLoader {
        shown: card.view.failedShown
        width: parent.width

        sourceComponent: FailedChanges {
        }
    }

    PushButton {
        busy: card.view.busy
        hint: card.view.busyHelp
        label: card.view.applyButton
        prominent: true

        onClicked: Panel.actions.applyLibraryNow()
    }

    Disclosure {
        title: card.view.backupsTitle
        visible: card.view.hasLibrary
        width: parent.width

        content: Column {
            spacing: 10
            topPadding: 4

            RowColumn {
                model: Panel.backups
                spacing: 10
                width: parent.width

                delegate: BackupRow {
                    width: parent.width
                }
            }

            Label {
                caption: true
                color: Theme.secondary
                text: Panel.content.rekordbox.backupsNote
                width: parent.width
            }
        }
    }

    Rectangle {
        color: Theme.separator
        height: 1
        visible: card.view.hasLibrary
        width: parent.width
    }

    Item {
        implicitHeight: Math.max(show.visible ? show.implicitHeight : 0, xml.implicitHeight)
        width: parent.width

        Symbol {
            id: sheet

            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            name: "doc.text"
            size: Math.round(13 * Theme.scale)
            visible: show.visible
        }

        Label {
            id: xml

            anchors.left: show.visible ? sheet.right : parent.left
            anchors.leftMargin: show.visible ? 7 : 0
            anchors.right: show.visible ? show.left : parent.right
            anchors.verticalCenter: parent.verticalCenter
            caption: true
            color: show.visible ? Theme.text : Theme.secondary
            text: card.view.xmlText
        }

        PushButton {
            id: show

            anchors.right: parent.right
            anchors.rightMargin: -6
            anchors.verticalCenter: parent.verticalCenter
            borderless: true
            hint: card.view.xmlHelp
            label: card.view.xmlButton

            onClicked: Panel.actions.revealXML()
        }
    }
}
