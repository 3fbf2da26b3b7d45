import QtQuick
import Tunedeck.Views

/// The connected assistants, those that can be connected, and the cloud between.
Card {
    id: card

    readonly property assistantsView view: Panel.assistants

    symbol: view.symbol
    title: view.title

    accessory: IconButton {
        label: card.view.revealLabel
        symbol: card.view.revealSymbol
        visible: card.view.canReveal

        onClicked: Panel.actions.toggleRevealSecrets()
    }

    Label {
        color: Theme.secondary
        text: card.view.emptyText
        width: parent.width
    }

    Column {
        spacing: Theme.spacing
        visible: children.length > 1
        width: parent.width

        Repeater {
            model: Panel.links

            LinkRow {
                width: parent.width
            }
        }
    }

    ConnectGrid {
        visible: children.length > 1
        width: parent.width
    }

    Item {
        implicitHeight: cloud.implicitHeight
        visible: cloud.text !== ""
        width: parent.width

        Dot {
            size: 6
            tone: card.view.cloudTone
            y: Math.round((line.height - height) / 2)
        }

        FontMetrics {
            id: line

            font: cloud.font
        }

        Label {
            id: cloud

            anchors.left: parent.left
            anchors.leftMargin: 14
            anchors.right: parent.right
            caption: true
            color: Theme.secondary
            text: card.view.cloudText
        }
    }
}
