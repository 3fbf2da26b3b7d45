import QtQuick
import Tunedeck.Views

/// Tells how to get the icon back into sight.
Card {
    id: card

    property textCardView view

    symbol: view.symbol
    title: view.title

    Binding on view  {
        restoreMode: Binding.RestoreNone
        value: Panel.hiddenIcon
        when: Panel.hiddenIcon.shown
    }

    Label {
        text: card.view.text
        width: parent.width
    }
}
