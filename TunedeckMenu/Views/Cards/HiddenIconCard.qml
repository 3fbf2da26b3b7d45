import QtQuick
import Tunedeck.Views

/// Explains how to make the hidden tray icon visible.
Card {
    id: card

    readonly property hiddenIconView view: Panel.content.hiddenIcon

    symbol: "menubar.rectangle"
    title: view.title

    Label {
        text: card.view.text
        width: parent.width
    }

    Label {
        text: card.view.missingTray
        width: parent.width
    }

    Flow {
        spacing: 8
        width: parent.width

        PushButton {
            label: card.view.guideButton
            prominent: true

            onClicked: Panel.actions.openDesktopGuide()
        }

        PushButton {
            label: card.view.dismissButton

            onClicked: Panel.actions.dismissMissingTray()
        }
    }
}
