import QtQuick
import Tunedeck.Views

/// Shown while the background service is stopped; starts it.
Card {
    id: card

    readonly property notRunningView view: Panel.content.notRunning

    symbol: "bolt.horizontal.circle"
    title: view.title

    Label {
        text: card.view.text
        width: parent.width
    }

    PushButton {
        busy: card.view.starting
        label: card.view.button
        large: true
        prominent: true
        width: parent.width

        onClicked: Panel.actions.restartService()
    }
}
