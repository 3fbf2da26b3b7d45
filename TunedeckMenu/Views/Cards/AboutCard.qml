import QtQuick
import Tunedeck.Views

/// Version, updates and diagnostics.
Card {
    id: card

    readonly property aboutView view: Panel.content.about

    symbol: "info.circle"
    title: view.title

    accessory: Label {
        caption: true
        color: Theme.secondary
        text: card.view.version
        wrapMode: Text.NoWrap
    }

    Column {
        spacing: 3
        width: parent.width

        Label {
            text: card.view.updateText
            width: parent.width
        }

        Label {
            caption: true
            color: Theme.secondary
            elide: Text.ElideRight
            maximumLineCount: 6
            text: card.view.updateDetail
            width: parent.width
            wrapMode: Text.Wrap
        }
    }

    ProgressBar {
        value: card.view.progress
        width: parent.width
    }

    Flow {
        spacing: 8
        width: parent.width

        PushButton {
            hint: card.view.busyHelp
            usable: !card.view.busy
            label: card.view.updateButton
            prominent: true

            onClicked: Panel.actions.installUpdate()
        }

        PushButton {
            busy: card.view.busy
            hint: card.view.busyHelp
            label: card.view.checkButton

            onClicked: Panel.actions.checkForUpdates()
        }

        PushButton {
            hint: card.view.diagnosticsHelp
            label: card.view.diagnosticsButton

            onClicked: Panel.actions.copyDiagnostics()
        }
    }
}
