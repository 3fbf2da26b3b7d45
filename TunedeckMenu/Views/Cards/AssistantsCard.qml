import QtQuick
import Tunedeck.Views

/// The connected assistants, those that can be connected, and the state of the cloud.
Card {
    id: card

    readonly property assistantsView view: Panel.content.assistants

    symbol: "sparkles"
    title: view.title

    accessory: IconButton {
        label: card.view.revealLabel
        symbol: card.view.revealSymbol
        visible: label !== ""

        onClicked: Panel.actions.toggleRevealSecrets()
    }

    Label {
        color: Theme.secondary
        text: card.view.emptyText
        width: parent.width
    }

    RowColumn {
        model: Panel.links
        spacing: Theme.spacing
        visible: count > 0
        width: parent.width

        delegate: LinkRow {
            width: parent.width
        }
    }

    ConnectGrid {
        visible: children.length > 1
        width: parent.width
    }

    DotLine {
        dotSize: 6
        label.caption: true
        label.color: Theme.secondary
        label.text: card.view.cloudText
        tone: card.view.cloudTone
        width: parent.width
    }
}
