import QtQuick
import Tunedeck.Views

/// A tool and its state.
Item {
    id: row

    required property toolRowView view

    implicitHeight: Math.round(34 * Theme.scale)

    Symbol {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.symbolColor(row.view.tone)
        name: row.view.symbol
        size: Math.round(16 * Theme.scale)
        x: 14
    }

    Label {
        anchors.left: mark.right
        anchors.leftMargin: 10
        anchors.right: how.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        elide: Text.ElideRight
        font.weight: Font.Medium
        text: row.view.name
    }

    Label {
        id: how

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        caption: true
        color: Theme.textColor(row.view.tone)
        text: row.view.state
        wrapMode: Text.NoWrap
    }
}
