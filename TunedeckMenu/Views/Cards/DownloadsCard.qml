import QtQuick
import Tunedeck.Views

/// The download folder, and buttons that change it.
Card {
    id: card

    readonly property downloadsView view: Panel.content.downloads

    symbol: "arrow.down.circle"
    title: view.title

    accessory: Badge {
        text: card.view.badge
    }

    PathRow {
        hint: card.view.folderPath
        path: card.view.folderPath
        subtitle: card.view.folderSubtitle
        title: card.view.folderTitle
        visible: path !== ""
        width: parent.width + 12
        x: -6

        onClicked: Panel.actions.revealDownloads()
    }

    Label {
        color: Theme.secondary
        text: card.view.stoppedText
        width: parent.width
    }

    FadeLoader {
        shown: card.view.warning.shown
        width: parent.width

        sourceComponent: Banner {
            text: Panel.content.downloads.warning.text
            tone: Panel.content.downloads.warning.tone
        }
    }

    Flow {
        spacing: 8
        width: parent.width

        PushButton {
            hint: card.view.changeHelp
            label: card.view.changeButton
            prominent: true

            onClicked: Panel.actions.chooseFolder()
        }

        PushButton {
            label: card.view.defaultButton

            onClicked: Panel.actions.useDefaultFolder()
        }
    }

    Label {
        caption: true
        color: Theme.secondary
        text: card.view.note
        width: parent.width
    }
}
