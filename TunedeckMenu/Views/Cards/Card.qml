import QtQuick
import Tunedeck.Views

/// A card: a heading with an optional accessory at its right, and the content.
Plate {
    id: card

    property string title
    property string symbol
    property alias accessory: accessory.data
    default property alias content: body.data

    implicitHeight: column.implicitHeight + 2 * Theme.cardPadding

    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Column {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.cardPadding
        anchors.right: parent.right
        spacing: Theme.spacing
        y: Theme.cardPadding

        Item {
            implicitHeight: Math.max(heading.implicitHeight, Math.round(18 * Theme.scale))
            width: parent.width

            Symbol {
                id: mark

                anchors.verticalCenter: parent.verticalCenter
                color: Theme.secondary
                name: card.symbol
                size: Math.round(13 * Theme.scale)
            }

            Label {
                id: heading

                anchors.left: mark.right
                anchors.leftMargin: 6
                anchors.verticalCenter: parent.verticalCenter
                caption: true
                color: Theme.secondary
                font.weight: Font.DemiBold
                heading: true
                text: card.title
            }

            Row {
                id: accessory

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
            }
        }

        Column {
            id: body

            spacing: Theme.spacing
            width: parent.width
        }
    }
}
