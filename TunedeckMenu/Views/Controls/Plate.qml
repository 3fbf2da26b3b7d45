import QtQuick
import Tunedeck.Views

/// The background of a card.
Rectangle {
    border.color: Theme.cardEdge
    border.width: 1
    color: Theme.card
    radius: Theme.cardRadius
}
