import QtQuick
import Tunedeck.Views

/// The changes to the library that couldn't be applied.
Column {
    id: changes

    readonly property rekordboxView view: Panel.content.rekordbox

    spacing: 6

    RowColumn {
        model: Panel.failedChanges
        spacing: 6
        width: parent.width

        delegate: Banner {
            id: banner

            required property bannerView view

            detail: view.detail
            text: view.text
            tone: view.tone
            width: parent.width

            Component.onCompleted: fade.restart()

            FadeIn {
                id: fade

                target: banner
            }
        }
    }

    Flow {
        spacing: 8
        topPadding: 2
        width: parent.width

        PushButton {
            usable: !changes.view.busy
            hint: changes.view.busyHelp
            label: changes.view.retryButton

            onClicked: Panel.actions.retryFailedChanges()
        }

        PushButton {
            usable: !changes.view.busy
            hint: changes.view.busyHelp
            label: changes.view.dismissButton

            onClicked: Panel.actions.dismissFailedChanges()
        }
    }
}
