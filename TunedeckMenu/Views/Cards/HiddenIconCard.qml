import QtQuick
import Tunedeck.Views

/// Tells how to get the icon back into sight.
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
