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
}
