import QtQuick
import Tunedeck.Views

/// Explains how to make the hidden tray icon visible.
Card {
    id: card

    readonly property textCardView view: Panel.hiddenIcon

    symbol: view.symbol
    title: view.title

    Label {
        text: card.view.text
        width: parent.width
    }
}
