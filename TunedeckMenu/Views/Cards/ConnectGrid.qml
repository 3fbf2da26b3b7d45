import QtQuick
import Tunedeck.Views

/// The assistants that can still be connected, two in a row; a last one that is alone has the row for itself.
Flow {
    id: grid

    spacing: 8

    Repeater {
        id: rows

        model: Panel.connectRows

        ConnectButton {
            required property int index
            readonly property bool alone: index % 2 === 0 && index === rows.count - 1 // qmllint disable unqualified

            usable: !Panel.assistants.busy
            width: alone ? parent.width : (parent.width - 8) / 2

            onClicked: Panel.actions.connectAssistant(rowId)
        }
    }
}
